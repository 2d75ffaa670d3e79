# Every package the project uses, found in one place; a missing one is named with the command that
# installs it.

function(vellumtide_need found what command)
  if(NOT ${found})
    message(FATAL_ERROR "Vellumtide needs ${what}. Install it with:\n    ${command}\n"
                        "or let scripts/demo.sh install everything that is missing.")
  endif()
endfunction()

if(WIN32 AND CMAKE_CROSSCOMPILING)
  include(WindowsDependencies)
  return()
endif()

if(WIN32)
  find_package(OpenGL REQUIRED)
else()
  set(OpenGL_GL_PREFERENCE GLVND)
  find_package(OpenGL QUIET COMPONENTS OpenGL EGL)
  vellumtide_need(OpenGL_OpenGL_FOUND "OpenGL" "apt-get install libgl-dev libegl-dev")
  vellumtide_need(OpenGL_EGL_FOUND "EGL" "apt-get install libegl-dev")
  vellumtide_need(OPENGL_GLU_FOUND "GLU" "apt-get install libglu1-mesa-dev")
endif()
find_package(GLEW QUIET)
vellumtide_need(GLEW_FOUND "GLEW" "apt-get install libglew-dev")

find_path(TINYXML_INCLUDE_DIR tinyxml.h)
find_library(TINYXML_LIBRARY tinyxml)
vellumtide_need(TINYXML_LIBRARY "TinyXML" "apt-get install libtinyxml-dev")
add_library(TinyXML::TinyXML INTERFACE IMPORTED)
target_include_directories(TinyXML::TinyXML INTERFACE ${TINYXML_INCLUDE_DIR})
target_link_libraries(TinyXML::TinyXML INTERFACE ${TINYXML_LIBRARY})
# Debian builds its TinyXML on std::string, which changes the classes' layout.
target_compile_definitions(TinyXML::TinyXML INTERFACE TIXML_USE_STL)

find_path(DUKTAPE_INCLUDE_DIR duktape.h)
find_library(DUKTAPE_LIBRARY duktape)
vellumtide_need(DUKTAPE_LIBRARY "Duktape" "apt-get install duktape-dev")
add_library(Duktape::Duktape INTERFACE IMPORTED)
target_include_directories(Duktape::Duktape INTERFACE ${DUKTAPE_INCLUDE_DIR})
target_link_libraries(Duktape::Duktape INTERFACE ${DUKTAPE_LIBRARY})

find_package(nlohmann_json QUIET)
vellumtide_need(nlohmann_json_FOUND "nlohmann-json" "apt-get install nlohmann-json3-dev")
if(VELLUMTIDE_CLI)
  find_package(CLI11 QUIET)
  vellumtide_need(CLI11_FOUND "CLI11" "apt-get install libcli11-dev")
  find_package(OpenImageIO QUIET)
  vellumtide_need(OpenImageIO_FOUND "OpenImageIO"
                  "apt-get install libopenimageio-dev openimageio-tools")
  # Debian's package names the include folder of a package that it does not depend on.
  get_target_property(oiio_includes OpenImageIO::OpenImageIO INTERFACE_INCLUDE_DIRECTORIES)
  foreach(folder IN LISTS oiio_includes)
    if(NOT EXISTS "${folder}")
      list(REMOVE_ITEM oiio_includes "${folder}")
    endif()
  endforeach()
  set_target_properties(OpenImageIO::OpenImageIO PROPERTIES
                        INTERFACE_INCLUDE_DIRECTORIES "${oiio_includes}")
endif()
if(VELLUMTIDE_TESTS)
  find_package(GTest QUIET)
  vellumtide_need(GTest_FOUND "GoogleTest" "apt-get install libgtest-dev libgmock-dev")
endif()
if(VELLUMTIDE_BENCH)
  find_package(benchmark QUIET)
  vellumtide_need(benchmark_FOUND "Google Benchmark" "apt-get install libbenchmark-dev")
endif()
