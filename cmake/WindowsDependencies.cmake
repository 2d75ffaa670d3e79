# Packages of the cross build, compiled here for Windows: libraries from Debian's source packages,
# header-only ones from a copy of the installed headers, so that the machine's own include folder
# never comes before the target's.

set(VELLUMTIDE_WINDOWS_SOURCES ${CMAKE_BINARY_DIR}/sources CACHE PATH
    "Unpacked Debian source packages of the Windows build")
execute_process(
  COMMAND ${CMAKE_SOURCE_DIR}/scripts/fetch_windows_sources.sh ${VELLUMTIDE_WINDOWS_SOURCES}
  RESULT_VARIABLE fetch_result OUTPUT_QUIET)
if(fetch_result)
  message(FATAL_ERROR "Vellumtide needs the source packages of its Windows libraries, and they "
                      "cannot be fetched (see above). With a network, start again with:\n"
                      "    scripts/install_packages.sh windows")
endif()

find_package(OpenGL REQUIRED)

# vellumtide_library(name ALIAS alias SOURCES a.c ... INCLUDES dir ... DEFINES X ... LINKS lib ...)
# A static library of foreign sources: its headers are system headers, its warnings its makers'.
function(vellumtide_library name)
  cmake_parse_arguments(ARG "" "ALIAS" "SOURCES;INCLUDES;DEFINES;LINKS" ${ARGN})
  add_library(${name} STATIC EXCLUDE_FROM_ALL ${ARG_SOURCES})
  target_include_directories(${name} SYSTEM PUBLIC ${ARG_INCLUDES})
  target_compile_definitions(${name} PUBLIC ${ARG_DEFINES})
  target_link_libraries(${name} PUBLIC ${ARG_LINKS})
  target_compile_options(${name} PRIVATE
    -w $<$<CONFIG:Release>:-ffile-prefix-map=${VELLUMTIDE_WINDOWS_SOURCES}/=sources/>)
  add_library(${ARG_ALIAS} ALIAS ${name})
endfunction()

# vellumtide_headers(name ALIAS alias FOLDER dir PACKAGE package): headers copied from /usr/include.
function(vellumtide_headers name)
  cmake_parse_arguments(ARG "" "ALIAS;FOLDER;PACKAGE" "" ${ARGN})
  if(NOT EXISTS /usr/include/${ARG_FOLDER})
    message(FATAL_ERROR "Vellumtide needs the headers of ${name}. Install them with:\n"
                        "    apt-get install ${ARG_PACKAGE}")
  endif()
  file(COPY /usr/include/${ARG_FOLDER} DESTINATION ${CMAKE_BINARY_DIR}/headers/${name})
  add_library(${ARG_ALIAS} INTERFACE IMPORTED)
  target_include_directories(${ARG_ALIAS} INTERFACE ${CMAKE_BINARY_DIR}/headers/${name})
endfunction()

set(from ${VELLUMTIDE_WINDOWS_SOURCES})

# Licences of what ends up inside the programs, as name=file.
set(VELLUMTIDE_LICENCES)
foreach(library glew tinyxml duktape libpng1.6)
  list(APPEND VELLUMTIDE_LICENCES ${library}=${from}/${library}/debian/copyright)
endforeach()
foreach(package nlohmann-json3-dev libcli11-dev libz-mingw-w64-dev mingw-w64-common
        gcc-mingw-w64-base)
  list(APPEND VELLUMTIDE_LICENCES ${package}=/usr/share/doc/${package}/copyright)
endforeach()

vellumtide_library(glew ALIAS GLEW::GLEW
  SOURCES ${from}/glew/src/glew.c INCLUDES ${from}/glew/include
  DEFINES GLEW_STATIC LINKS OpenGL::GL)

set(tinyxml_sources tinyxml.cpp tinyxmlerror.cpp tinyxmlparser.cpp)
list(TRANSFORM tinyxml_sources PREPEND ${from}/tinyxml/)
vellumtide_library(tinyxml ALIAS TinyXML::TinyXML
  SOURCES ${tinyxml_sources} INCLUDES ${from}/tinyxml DEFINES TIXML_USE_STL)

vellumtide_library(duktape ALIAS Duktape::Duktape
  SOURCES ${from}/duktape/src/duktape.c INCLUDES ${from}/duktape/src)

vellumtide_headers(nlohmann_json ALIAS nlohmann_json::nlohmann_json
  FOLDER nlohmann PACKAGE nlohmann-json3-dev)

if(VELLUMTIDE_CLI)
  vellumtide_headers(CLI11 ALIAS CLI11::CLI11 FOLDER CLI PACKAGE libcli11-dev)

  # PNG is the image format of the command line on Windows.
  find_package(ZLIB QUIET)
  vellumtide_need(ZLIB_FOUND "zlib for mingw-w64" "apt-get install libz-mingw-w64-dev")
  set(png_sources png.c pngerror.c pngget.c pngmem.c pngpread.c pngread.c pngrio.c pngrtran.c
                  pngrutil.c pngset.c pngtrans.c pngwio.c pngwrite.c pngwtran.c pngwutil.c)
  list(TRANSFORM png_sources PREPEND ${from}/libpng1.6/)
  configure_file(${from}/libpng1.6/scripts/pnglibconf.h.prebuilt
                 ${CMAKE_BINARY_DIR}/headers/png/pnglibconf.h COPYONLY)
  vellumtide_library(png ALIAS PNG::PNG
    SOURCES ${png_sources} INCLUDES ${from}/libpng1.6 ${CMAKE_BINARY_DIR}/headers/png
    LINKS ZLIB::ZLIB)
endif()

if(VELLUMTIDE_TESTS)
  if(NOT EXISTS /usr/src/googletest/googletest/src/gtest-all.cc)
    message(FATAL_ERROR "Vellumtide's tests need GoogleTest's sources. Install them with:\n"
                        "    apt-get install googletest")
  endif()
  set(from /usr/src/googletest)
  vellumtide_library(gtest ALIAS GTest::gtest
    SOURCES ${from}/googletest/src/gtest-all.cc INCLUDES ${from}/googletest/include)
  vellumtide_library(gmock ALIAS GTest::gmock
    SOURCES ${from}/googlemock/src/gmock-all.cc INCLUDES ${from}/googlemock/include
    LINKS gtest)
  vellumtide_library(gtest_main ALIAS GTest::gtest_main
    SOURCES ${from}/googletest/src/gtest_main.cc LINKS gtest)
  target_include_directories(gtest PRIVATE ${from}/googletest)
  target_include_directories(gmock PRIVATE ${from}/googlemock)
endif()
