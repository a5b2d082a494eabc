# SPDX-License-Identifier: MIT
# What a Debian installation holds besides the three programs: the menu entry, its icon, the
# AppStream metadata, a man page per program (made from its --help by help2man at build time,
# so it never falls behind) and bash completion for the two command-line tools. `make package`
# builds the .deb with CPack; its dependencies come from the binaries (dpkg-shlibdeps).
include(GNUInstallDirs)

set(desktop_data ${PROJECT_SOURCE_DIR}/data/desktop)
install(FILES ${desktop_data}/morvane-egse.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${desktop_data}/morvane-egse.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)
configure_file(${desktop_data}/morvane-egse.metainfo.xml ${PROJECT_BINARY_DIR}/data/org.morvane.egse.metainfo.xml @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/data/org.morvane.egse.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${PROJECT_SOURCE_DIR}/data/completion/morvane-cli ${PROJECT_SOURCE_DIR}/data/completion/morvane-sim
        DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)

# Man pages: one per program that is built, from its own --help and --version.
find_program(HELP2MAN help2man)
set(man_descriptions
    "morvane-egse=ground-support workstation of the Morvane instrument"
    "morvane-cli=decode Morvane telemetry files as the workstation shows them"
    "morvane-sim=simulated Morvane instrument: configuration, telemetry files and a live feed")
set(man_pages)
if(HELP2MAN)
  foreach(entry ${man_descriptions})
    string(REPLACE "=" ";" parts "${entry}")
    list(GET parts 0 program)
    list(GET parts 1 description)
    if(NOT TARGET ${program})
      continue()
    endif()
    set(page ${PROJECT_BINARY_DIR}/man/${program}.1)
    add_custom_command(OUTPUT ${page}
      COMMAND ${CMAKE_COMMAND} -E make_directory ${PROJECT_BINARY_DIR}/man
      COMMAND ${HELP2MAN} --no-info --no-discard-stderr --section=1 --name=${description}
              --output=${page} $<TARGET_FILE:${program}>
      DEPENDS ${program}
      COMMENT "Writing the man page of ${program}" VERBATIM)
    list(APPEND man_pages ${page})
  endforeach()
  add_custom_target(man_pages ALL DEPENDS ${man_pages})
  install(FILES ${man_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
else()
  message(STATUS "help2man not found: the package will have no man pages (make deps installs it)")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME morvane-egse)
set(CPACK_PACKAGE_VENDOR "Morvane EGSE developers")
set(CPACK_PACKAGE_CONTACT "Morvane EGSE developers <egse@morvane.invalid>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Ground-support workstation for the Morvane gas-analysis instrument")
set(CPACK_PACKAGE_DESCRIPTION
    "Reads, evaluates and exports the telemetry of the Morvane instrument: the workstation\n\
(morvane-egse), the batch tool (morvane-cli) and the simulated instrument (morvane-sim).")
set(CPACK_PACKAGE_INSTALL_DIRECTORY morvane-egse)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Loaded at run time (server archives, workbooks, file digests), so the linker's list does not
# name them.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libpq5, libxlsxwriter4, libssl3 | libssl3t64")
set(CPACK_DEBIAN_PACKAGE_SUGGESTS "bash-completion")
# Only the programs and their data: the tests and benchmarks install nothing.
set(CPACK_INSTALL_CMAKE_PROJECTS "${PROJECT_BINARY_DIR};${PROJECT_NAME};ALL;/")
include(CPack)

# The package test builds the .deb from this build tree (nothing is compiled again), unpacks
# it into a temporary root and runs the unpacked batch tool. Only a build of the whole product
# makes the package: not one without the workstation, nor a sanitizer build.
if(MORVANE_TESTS AND MORVANE_GUI AND NOT MORVANE_SANITIZE)
  add_test(NAME Package.UnpackedBatchToolPrintsItsVersion
           COMMAND ${PROJECT_SOURCE_DIR}/tests/package/deb_package_test.sh ${PROJECT_BINARY_DIR} ${PROJECT_VERSION})
  set_tests_properties(Package.UnpackedBatchToolPrintsItsVersion PROPERTIES RUN_SERIAL TRUE TIMEOUT 600)
endif()
