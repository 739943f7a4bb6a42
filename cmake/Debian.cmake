# The Debian packages that cpack -G DEB makes of the components of cmake/Package.cmake. scripts/package makes and checks
# them; docs/packages.md says what is in them.
set(INTERACTIVE_MAINTAINER "Interactive Station maintainers <maintainers@station.example>"
  CACHE STRING "Who answers for the Debian packages: name <address>")

set(library_package libkovan${KOVAN_INTERFACE})
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME interactive-station)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# Each package has a description of its own.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGE_CONTACT "${INTERACTIVE_MAINTAINER}")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
# The same ones whatever the umask of who builds.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_COMPONENTS_ALL libraries development station)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${INTERACTIVE_MAINTAINER}")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SOURCE interactive-station)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# Where the libraries are found whose package is being made.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${CMAKE_LIBRARY_OUTPUT_DIRECTORY})

set(same_version "= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE}")

set(CPACK_DEBIAN_LIBRARIES_PACKAGE_NAME ${library_package})
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_SECTION libs)
set(debian ${CMAKE_SOURCE_DIR}/packaging/debian)
configure_file(${debian}/shlibs.in ${CMAKE_BINARY_DIR}/generated/debian/shlibs @ONLY)
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA ${debian}/triggers ${CMAKE_BINARY_DIR}/generated/debian/shlibs)
set(CPACK_POST_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/cmake/debian-without-scripts.cmake)
set(CPACK_COMPONENT_LIBRARIES_DESCRIPTION "frameworks of Interactive Station (shared libraries)
The libraries that the station, its plug-ins and other hosts are linked to:
views with exact frames, the system log, the protocol between host and
plug-in, and Lua sequences on threads of their own.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libkovan-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${library_package} (${same_version}), qt6-base-dev (>= 6.4), libspdlog-dev")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_RECOMMENDS "cmake (>= 3.25), interactive-station")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION "frameworks of Interactive Station (development files)
Headers and the CMake package Kovan, for plug-ins that the station loads and
for other hosts that load its plug-ins. The documents and two small examples
are in the package interactive-station.")

set(CPACK_DEBIAN_STATION_PACKAGE_NAME interactive-station)
set(CPACK_DEBIAN_STATION_PACKAGE_SECTION electronics)
# Qt loads its database drivers by name, so that no library tells of them. Its plug-ins for sound, for SVG, for X11 and
# for no display at all come with the libraries that the program is linked to.
set(CPACK_DEBIAN_STATION_PACKAGE_DEPENDS "${library_package} (${same_version}), libqt6sql6-sqlite, libqt6sql6-psql")
# Sounds are heard where one of these servers runs; a desktop has one.
set(CPACK_DEBIAN_STATION_PACKAGE_RECOMMENDS "qt6-wayland, pipewire-pulse | pulseaudio")
set(CPACK_COMPONENT_STATION_DESCRIPTION "operator input for multi-position test stations
A test station tests many units at once, each position driven by a Lua
sequence of its own. When a sequence needs a person, to scan a serial number,
flip a switch or judge a lamp, a panel asks for it, checks every entry and
returns the answer to Lua. This is the station with its plug-in
InteractiveView, documents and examples.")
include(CPack)
