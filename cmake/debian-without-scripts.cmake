# Run by cpack when the packages are made. It gives a package with libraries scripts that call ldconfig; Debian does that
# by a trigger (packaging/debian/triggers), and a package without scripts can break nothing while it comes and goes.
foreach(package IN LISTS CPACK_PACKAGE_FILES)
  set(content ${CPACK_TEMPORARY_DIRECTORY}/content)
  file(REMOVE_RECURSE ${content})
  execute_process(COMMAND dpkg-deb --raw-extract ${package} ${content} COMMAND_ERROR_IS_FATAL ANY)
  if(EXISTS ${content}/DEBIAN/triggers)
    file(REMOVE ${content}/DEBIAN/postinst ${content}/DEBIAN/postrm)
    execute_process(COMMAND dpkg-deb --root-owner-group -Zxz --build ${content} ${package}
      OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  endif()
  file(REMOVE_RECURSE ${content})
endforeach()
