# What is installed, in three components, each of which becomes a Debian package (cmake/Debian.cmake):
#   libraries     the shared libraries that plug-ins and hosts are built against
#   development   headers and the CMake package Kovan: the targets Kovan::Platform, Kovan::Logging,
#                 Kovan::UIExtension and Kovan::LuaSequencer, with headers that are included as they are here
#   station       the program, InteractiveView, documents and examples (packaging/)
# Everything finds everything else from where it stands, so that the whole may be installed anywhere.
if(CMAKE_LIBRARY_ARCHITECTURE)
  # Debian's places for libraries, whatever the prefix.
  set(CMAKE_INSTALL_LIBDIR lib/${CMAKE_LIBRARY_ARCHITECTURE} CACHE PATH "Libraries, seen from the prefix")
endif()
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(KOVAN_HEADER_FOLDER ${CMAKE_INSTALL_INCLUDEDIR}/interactive-station)
set(PLUGIN_FOLDER ${CMAKE_INSTALL_LIBDIR}/interactive-station)
set(CMAKE_INSTALL_RPATH $ORIGIN/../${CMAKE_INSTALL_LIBDIR})
# A program that is installed comes from the build as it is; nothing else has to be built for it.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
# What the libraries promise to whoever was built against them: docs/compatibility.md. Before 1.0 each minor version is
# an interface of its own.
if(PROJECT_VERSION_MAJOR EQUAL 0)
  set(KOVAN_INTERFACE ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
else()
  set(KOVAN_INTERFACE ${PROJECT_VERSION_MAJOR})
endif()

# install_framework(target name folder [INTERNAL header...]): a library with the headers of its folder, but for those
# that only itself includes.
function(install_framework target name folder)
  cmake_parse_arguments(FRAMEWORK "" "" "INTERNAL" ${ARGN})
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${name} VERSION ${PROJECT_VERSION} SOVERSION ${KOVAN_INTERFACE} INSTALL_RPATH $ORIGIN)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}> $<INSTALL_INTERFACE:${KOVAN_HEADER_FOLDER}>)
  target_compile_features(${target} PUBLIC cxx_std_20)
  install(TARGETS ${target} EXPORT KovanTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}
    COMPONENT libraries NAMELINK_COMPONENT development)
  file(GLOB headers CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/${folder}/*.h)
  list(TRANSFORM FRAMEWORK_INTERNAL PREPEND ${CMAKE_SOURCE_DIR}/${folder}/)
  list(REMOVE_ITEM headers ${FRAMEWORK_INTERNAL})
  install(FILES ${headers} DESTINATION ${KOVAN_HEADER_FOLDER}/${folder} COMPONENT development)
endfunction()

function(install_package)
  set(folder ${CMAKE_INSTALL_LIBDIR}/cmake/Kovan)
  install(EXPORT KovanTargets NAMESPACE Kovan:: DESTINATION ${folder} COMPONENT development)
  configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/KovanConfig.cmake.in
    ${CMAKE_BINARY_DIR}/generated/KovanConfig.cmake INSTALL_DESTINATION ${folder})
  write_basic_package_version_file(${CMAKE_BINARY_DIR}/generated/KovanConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
  install(FILES ${CMAKE_BINARY_DIR}/generated/KovanConfig.cmake ${CMAKE_BINARY_DIR}/generated/KovanConfigVersion.cmake
    DESTINATION ${folder} COMPONENT development)
endfunction()
