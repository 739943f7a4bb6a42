# Installs the frameworks as the CMake package Kovan, for other hosts and other plug-ins: the targets Kovan::Platform,
# Kovan::Logging, Kovan::UIExtension and Kovan::LuaSequencer, with headers that are included as they are here.
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(KOVAN_HEADER_FOLDER ${CMAKE_INSTALL_INCLUDEDIR}/interactive-station)
set(PLUGIN_FOLDER ${CMAKE_INSTALL_LIBDIR}/interactive-station)
set(CMAKE_INSTALL_RPATH $ORIGIN/../${CMAKE_INSTALL_LIBDIR})

# install_framework(target name folder): a library with all headers of its folder.
function(install_framework target name folder)
  set_target_properties(${target} PROPERTIES
    EXPORT_NAME ${name} VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR} INSTALL_RPATH $ORIGIN)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${CMAKE_SOURCE_DIR}> $<INSTALL_INTERFACE:${KOVAN_HEADER_FOLDER}>)
  target_compile_features(${target} PUBLIC cxx_std_20)
  install(TARGETS ${target} EXPORT KovanTargets LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
  install(DIRECTORY ${CMAKE_SOURCE_DIR}/${folder}/ DESTINATION ${KOVAN_HEADER_FOLDER}/${folder}
    FILES_MATCHING PATTERN "*.h")
endfunction()

function(install_package)
  set(folder ${CMAKE_INSTALL_LIBDIR}/cmake/Kovan)
  install(EXPORT KovanTargets NAMESPACE Kovan:: DESTINATION ${folder})
  configure_package_config_file(${CMAKE_SOURCE_DIR}/cmake/KovanConfig.cmake.in
    ${CMAKE_BINARY_DIR}/generated/KovanConfig.cmake INSTALL_DESTINATION ${folder})
  write_basic_package_version_file(${CMAKE_BINARY_DIR}/generated/KovanConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
  install(FILES ${CMAKE_BINARY_DIR}/generated/KovanConfig.cmake ${CMAKE_BINARY_DIR}/generated/KovanConfigVersion.cmake
    DESTINATION ${folder})
endfunction()
