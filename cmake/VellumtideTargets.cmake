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
  if(MSVC)
    target_compile_options(${target} PRIVATE /W4 /utf-8 $<$<BOOL:${VELLUMTIDE_WERROR}>:/WX>)
  else()
    target_compile_options(${target} PRIVATE -Wall -Wextra -Wshadow
                           $<$<BOOL:${VELLUMTIDE_WERROR}>:-Werror>)
    # GCC 12 sees overlapping copies in every "literal" + std::string.
    if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
      target_compile_options(${target} PRIVATE -Wno-restrict)
    endif()
  endif()
endfunction()

# vellumtide_room(name SOURCES a.cpp ... LINKS lib ...): a static library of one room.
function(vellumtide_room name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  vellumtide_rules(${name})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
endfunction()

# vellumtide_test(name SOURCES a.cpp ... LINKS lib ...): a GoogleTest program run by CTest.
function(vellumtide_test name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  vellumtide_rules(${name})
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} GTest::gtest_main GTest::gmock)
  add_test(NAME ${name} COMMAND ${name})
endfunction()
