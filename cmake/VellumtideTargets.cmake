# Helpers for this project's own targets: one place for warnings, sanitizers and include roots.

find_program(VELLUMTIDE_CCACHE ccache)
if(VELLUMTIDE_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_C_COMPILER_LAUNCHER ${VELLUMTIDE_CCACHE})
  set(CMAKE_CXX_COMPILER_LAUNCHER ${VELLUMTIDE_CCACHE})
endif()

# The same sources give the same bytes wherever they lie; of two matching rules the last one counts.
if(NOT MSVC)
  foreach(folder ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR})
    add_compile_options($<$<CONFIG:Release>:-ffile-prefix-map=${folder}/=>)
  endforeach()
endif()

if(VELLUMTIDE_SANITIZE)
  add_compile_options(-fsanitize=${VELLUMTIDE_SANITIZE} -fno-sanitize-recover=all
                      -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${VELLUMTIDE_SANITIZE})
endif()
if(VELLUMTIDE_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# Applies the project's rules to one target.
function(vellumtide_rules target)
  target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/src ${CMAKE_SOURCE_DIR})
  set_target_properties(${target} PROPERTIES
    UNITY_BUILD ${VELLUMTIDE_UNITY} UNITY_BUILD_BATCH_SIZE 12)
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /utf-8 $<$<BOOL:${VELLUMTIDE_WERROR}>:/WX>)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow
                           $<$<BOOL:${VELLUMTIDE_WERROR}>:-Werror>)
    # GCC 12 sees overlapping copies in every "literal" + std::string.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
    # Compiled together, every file but the first looks like a header with a nameless namespace.
    if(VELLUMTIDE_UNITY AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${target} PRIVATE -Wno-subobject-linkage)
    endif()
  endif()
endfunction()

# vellumtide_alone(a.cpp ...): sources of this folder that are never compiled together with others.
function(vellumtide_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# Every room and the rooms it may use, lowest first. A room is a folder, under src/ unless it has
# that path from the root, and one library, vt_ROOM with its slashes as underscores. tests/doors
# holds each #include to this table, and docs/architecture.md shows it.
set(VELLUMTIDE_DOORS
  "aeapi:"
  "core: aeapi"
  "services: aeapi core"
  "services/dialogs: aeapi services"
  "kernel:"
  "glsl: kernel"
  "graph: kernel glsl"
  "bank: aeapi kernel"
  "gl: aeapi core"
  "nodes: core kernel glsl graph gl"
  "panel: aeapi core services kernel bank nodes"
  "host: aeapi core services services/dialogs kernel glsl graph bank gl nodes panel"
  "headless: aeapi"
  "headless/suites: headless"
  "cli/text: aeapi"
  "cli/files: cli/text"
  "cli/os: headless cli/text cli/files"
  "cli/image: headless cli/text cli/files cli/os"
  "cli/program: kernel graph bank headless cli/text cli/files cli/os"
  "cli/build_errors: kernel glsl graph cli/text cli/program"
  "cli/control: aeapi kernel bank headless cli/text cli/program"
  "cli/session: aeapi headless cli/text cli/files cli/os cli/image cli/program cli/build_errors"
  "cli/sequence: cli/text"
  "cli/render: cli/text cli/files cli/os cli/image cli/program cli/control cli/session cli/sequence"
  "cli/sheet: headless cli/text cli/files cli/os cli/image cli/program cli/control cli/session"
  "cli/help:"
  "cli/commands: glsl graph bank headless cli/text cli/files cli/os cli/image cli/program cli/build_errors cli/control cli/session cli/sequence cli/render cli/sheet cli/help"
  "cli: cli/text cli/os cli/help cli/commands")

# The room of the folder that is being configured: its path, without src/.
function(vellumtide_this_room out)
  file(RELATIVE_PATH room ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  string(REGEX REPLACE "^src/" "" room ${room})
  set(${out} ${room} PARENT_SCOPE)
endfunction()

# The library of a room.
function(vellumtide_library_of room out)
  string(REPLACE "/" "_" name vt_${room})
  set(${out} ${name} PARENT_SCOPE)
endfunction()

# The libraries of the rooms that `room` may use.
function(vellumtide_doors_of room out)
  set(libraries)
  set(known NO)
  foreach(row ${VELLUMTIDE_DOORS})
    if(row MATCHES "^${room}:(.*)$")
      set(known YES)
      separate_arguments(used UNIX_COMMAND "${CMAKE_MATCH_1}")
      foreach(door ${used})
        vellumtide_library_of(${door} library)
        list(APPEND libraries ${library})
      endforeach()
    endif()
  endforeach()
  if(NOT known)
    message(FATAL_ERROR "The room ${room} is not in the table of cmake/VellumtideTargets.cmake.")
  endif()
  set(${out} ${libraries} PARENT_SCOPE)
endfunction()

# vellumtide_room(SOURCES a.cpp ... LINKS lib ...): the library of the room that this folder is.
# LINKS are foreign libraries; those of other rooms come from the table.
function(vellumtide_room)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  vellumtide_this_room(room)
  vellumtide_library_of(${room} name)
  vellumtide_doors_of(${room} doors)
  vellumtide_part(${name} SOURCES ${ARG_SOURCES} LINKS ${doors} ${ARG_LINKS})
endfunction()

# vellumtide_part(name SOURCES a.cpp ... LINKS lib ...): a static library that is no room of its own.
function(vellumtide_part name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  vellumtide_rules(${name})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
endfunction()

# vellumtide_test(SOURCES a.cpp ... LINKS lib ... MEMORY filter): test_FOLDER, the GoogleTest program
# of a folder of tests. Each of its cases is a test of CTest with the folder as its label; those that
# MEMORY selects look at the memory of their process and have the label resident_memory. Under Wine,
# where every start of a program takes its time, the whole program is one test.
function(vellumtide_test)
  cmake_parse_arguments(ARG "" "MEMORY" "SOURCES;LINKS" ${ARGN})
  file(RELATIVE_PATH folder ${CMAKE_SOURCE_DIR}/tests ${CMAKE_CURRENT_SOURCE_DIR})
  string(REPLACE "/" "_" name test_${folder})
  add_executable(${name} ${ARG_SOURCES})
  vellumtide_rules(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gtest_main GTest::gmock)
  if(CMAKE_CROSSCOMPILING)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600 LABELS ${folder})
    return()
  endif()
  set(filter)
  if(ARG_MEMORY)
    gtest_discover_tests(${name} TEST_FILTER ${ARG_MEMORY} TEST_LIST ${name}_memory
      DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 600 LABELS resident_memory)
    set(filter TEST_FILTER -${ARG_MEMORY})
  endif()
  gtest_discover_tests(${name} ${filter} NO_PRETTY_VALUES
    DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 600 LABELS ${folder})
endfunction()
