# Resources that a program or module carries on Windows; on other systems nothing is added.

if(WIN32)
  enable_language(RC)
endif()

# vellumtide_version(target description): version information.
function(vellumtide_version target description)
  if(NOT WIN32)
    return()
  endif()
  get_target_property(type ${target} TYPE)
  if(type STREQUAL EXECUTABLE)
    set(file_type VFT_APP)
    set(file_name ${target}.exe)
  else()
    set(file_type VFT_DLL)
    set(file_name ${target}.aex)
  endif()
  set(resource ${CMAKE_CURRENT_BINARY_DIR}/${target}_version.rc)
  configure_file(${CMAKE_SOURCE_DIR}/cmake/version.rc.in ${resource} @ONLY)
  target_sources(${target} PRIVATE ${resource})
endfunction()

# vellumtide_windows_program(target description): version information, and UTF-8 as the program's
# code page.
function(vellumtide_windows_program target description)
  if(MSVC)
    target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/cmake/program.manifest)
  elseif(WIN32)
    set(resource ${CMAKE_SOURCE_DIR}/cmake/manifest.rc)
    set_source_files_properties(${resource} PROPERTIES
      OBJECT_DEPENDS ${CMAKE_SOURCE_DIR}/cmake/program.manifest
      COMPILE_OPTIONS -I${CMAKE_SOURCE_DIR}/cmake)
    target_sources(${target} PRIVATE ${resource})
  endif()
  vellumtide_version(${target} "${description}")
endfunction()

# vellumtide_windows_module(target): the file name, the property list, the version and the one
# exported name of the module on Windows.
function(vellumtide_windows_module target)
  if(NOT WIN32)
    return()
  endif()
  set_target_properties(${target} PROPERTIES PREFIX "" SUFFIX ".aex")
  target_sources(${target} PRIVATE ${CMAKE_SOURCE_DIR}/src/host/property_list.rc
                                   ${CMAKE_SOURCE_DIR}/src/host/Vellumtide.def)
  set_source_files_properties(${CMAKE_SOURCE_DIR}/src/host/property_list.rc PROPERTIES
    OBJECT_DEPENDS ${CMAKE_SOURCE_DIR}/src/host/property_list.h)
  vellumtide_version(${target} "${PROJECT_DESCRIPTION}")
endfunction()
