# Installed files, with their paths on the device. `cmake --install BUILD --prefix FOLDER` fills an image of the device's file
# system. `cpack` in the build folder makes a Debian package.
if(CMAKE_INSTALL_PREFIX_INITIALIZED_TO_DEFAULT)
  set(CMAKE_INSTALL_PREFIX "/" CACHE PATH "Root of the device's file system" FORCE)
endif()
include(GNUInstallDirs)
install(TARGETS cli RUNTIME)
# Makes the manual page from the Markdown at installation. Without lowdown, no page is made.
install(CODE "set(source \"${CMAKE_SOURCE_DIR}/docs/commands.md\")
  set(page \"${CMAKE_BINARY_DIR}/cli.1\")
  set(folder \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_MANDIR}/man1\")")
install(CODE [[
  unset(LOWDOWN CACHE)
  find_program(LOWDOWN lowdown)
  if(LOWDOWN)
    execute_process(COMMAND "${LOWDOWN}" -s -tman -M title=cli -M section=1 -o "${page}" "${source}"
      COMMAND_ERROR_IS_FATAL ANY)
    file(INSTALL "${page}" DESTINATION "${folder}")
  else()
    message(STATUS "Not installed: the manual page, which takes lowdown")
  endif()]])
install(FILES conf/factory/cw.conf conf/factory/sys.conf DESTINATION "${CMAKE_INSTALL_SYSCONFDIR}")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGING_INSTALL_PREFIX "/")
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "The developers of cli <cli@example.org>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION admin)
# Packages of the tools that the shell itself runs, and of tools that single commands run.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "coreutils, grep")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "hostname, iproute2, net-tools, procps, tftp")
if(CLI_ARCH)
  # The tool that finds dependencies knows only the packages of this machine.
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE "${CLI_ARCH}")
  string(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ", libc6 (>= 2.34), libreadline8 (>= 8.2)")
else()
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
endif()
file(WRITE "${CMAKE_BINARY_DIR}/conffiles" "/etc/cw.conf\n/etc/sys.conf\n")
set(CPACK_DEBIAN_PACKAGE_CONTROL_EXTRA "${CMAKE_BINARY_DIR}/conffiles")
include(CPack)
