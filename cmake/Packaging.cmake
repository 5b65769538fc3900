# The packages of the programs: `make package` (a Debian package of both programs with their
# desktop files, manual pages and completion) and, in the Windows build, `make package-windows`
# (a zip of arden-forge-cli.exe with the README and the licence). CPack reads what the install
# rules of the project install.

# Installing (and so packaging) builds only what the install rules need: `make package` builds
# the programs, manual pages and changelog first, not every test.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)

set(CPACK_PACKAGE_NAME arden-forge)
set(CPACK_PACKAGE_VENDOR Brackenware)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${ARDEN_MAINTAINER}")
set(CPACK_PACKAGE_HOMEPAGE_URL "${ARDEN_HOMEPAGE}")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "wizard and editor for VMware virtual machine configurations")
set(CPACK_PACKAGE_DESCRIPTION
  "Arden Forge creates and edits the configuration files of VMware virtual\n"
  "machines (.vmx) for GSX Server, Workstation, Player and Server, and saves them\n"
  "in the layout the chosen product and version expects, keeping every line it\n"
  "does not understand. It edits the virtual hardware, network adapters, shared\n"
  "folders and options, creates growable and preallocated virtual disks (.vmdk)\n"
  "and reads existing ones.\n"
  "\n"
  "The package holds the desktop program arden-forge and the command-line\n"
  "program arden-forge-cli, which runs the same engine from scripts.")
string(REPLACE ";" "" CPACK_PACKAGE_DESCRIPTION "${CPACK_PACKAGE_DESCRIPTION}")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_RESOURCE_FILE_README ${PROJECT_SOURCE_DIR}/README.md)
set(CPACK_STRIP_FILES ON)
# Folders the package makes are 0755 whatever the umask of the build.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

if(WIN32)
  set(CPACK_GENERATOR ZIP)
  set(CPACK_PACKAGE_FILE_NAME arden-forge-cli-${PROJECT_VERSION}-windows-x64)
  set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
  install(FILES ${PROJECT_SOURCE_DIR}/README.md DESTINATION .)
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION . RENAME LICENSE.txt)
else()
  set(CPACK_GENERATOR DEB)
  set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)  # arden-forge_<version>_amd64.deb
  set(CPACK_DEBIAN_PACKAGE_SECTION utils)
  set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
  # The libraries the programs link, as dpkg-shlibdeps finds them.
  set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
  # A single growable disk is made by qemu-img.
  set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qemu-utils)
  set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS OFF)

  # What Debian asks of every package in /usr/share/doc/<package>: the copyright in its
  # machine-readable form (the licence text from LICENSE) and a compressed changelog.
  set(doc_dir ${CMAKE_INSTALL_DATADIR}/doc/${CPACK_PACKAGE_NAME})
  set(package_dir ${CMAKE_BINARY_DIR}/package)
  file(READ ${PROJECT_SOURCE_DIR}/LICENSE licence)
  string(REGEX MATCH "Copyright \\(c\\) ([^\n]*)" holder "${licence}")
  set(holder ${CMAKE_MATCH_1})
  string(REGEX REPLACE "^MIT License\n\nCopyright \\(c\\) [^\n]*\n\n" "" licence "${licence}")
  string(REGEX REPLACE "\n$" "" licence "${licence}")
  string(REGEX REPLACE "\n\n" "\n.\n" licence "${licence}")
  string(REGEX REPLACE "\n" "\n " licence "${licence}")
  file(WRITE ${package_dir}/copyright
    "Format: https://www.debian.org/doc/packaging-manuals/copyright-format/1.0/\n"
    "Upstream-Name: Arden Forge\n"
    "Upstream-Contact: ${ARDEN_MAINTAINER}\n"
    "Source: ${ARDEN_HOMEPAGE}\n\n"
    "Files: *\n"
    "Copyright: ${holder}\n"
    "License: MIT\n\n"
    "License: MIT\n ${licence}\n")
  execute_process(COMMAND date -u -R -d "${ARDEN_RELEASE_DATE}"
                  OUTPUT_VARIABLE ARDEN_RELEASE_DATE_RFC2822 OUTPUT_STRIP_TRAILING_WHITESPACE)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/package/changelog.in ${package_dir}/changelog @ONLY)
  add_custom_command(OUTPUT ${package_dir}/changelog.gz
    COMMAND gzip -9n -c ${package_dir}/changelog > ${package_dir}/changelog.gz
    DEPENDS ${package_dir}/changelog VERBATIM)
  add_custom_target(package_changelog ALL DEPENDS ${package_dir}/changelog.gz)
  install(FILES ${package_dir}/copyright ${package_dir}/changelog.gz DESTINATION ${doc_dir})
endif()

include(CPack)
