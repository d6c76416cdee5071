# What a Windows user gets: the files of an installed or unzipped Tolmo, and the CPack set-up that
# makes the portable zip and the installer from them (`cmake --build --preset windows --target
# package`). Both are built here on Linux: the zip by CPack itself, the installer by NSIS's
# makensis with the script in cmake/nsis.

# Every package holds the program and its command-line companion, the languages, the patterns and
# the licence notice.
install(TARGETS tolmo tolmo-cli RUNTIME DESTINATION . COMPONENT program)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/resources/strings DESTINATION resources COMPONENT program
  FILES_MATCHING PATTERN "*.txt")
install(DIRECTORY ${PROJECT_SOURCE_DIR}/patterns/ DESTINATION patterns COMPONENT program
  FILES_MATCHING PATTERN "*.tlpat")
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE.txt DESTINATION . COMPONENT program)

# The zip alone holds the marker that keeps the settings beside the program; an installed program
# keeps them in the user's local application data.
set(portable_marker ${PROJECT_BINARY_DIR}/packaging/tolmo.portable)
file(WRITE ${portable_marker} "")
install(FILES ${portable_marker} DESTINATION . COMPONENT portable)

set(CPACK_PACKAGE_NAME "Tolmo")
set(CPACK_PACKAGE_VENDOR "the Tolmo authors")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Tolmo, a hex editor for 64-bit Windows")
set(CPACK_PACKAGE_VERSION "${TOLMO_VERSION_TEXT}")
set(CPACK_PACKAGE_FILE_NAME "Tolmo-${TOLMO_VERSION_TEXT}-win64")
set(CPACK_PACKAGE_INSTALL_DIRECTORY "Tolmo")
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE.txt)
set(CPACK_GENERATOR "ZIP;NSIS")
# The zip's files stand at its root, so that it unpacks into whatever folder the user picks.
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
set(CPACK_NSIS_PACKAGE_NAME "Tolmo")
set(CPACK_NSIS_DISPLAY_NAME "Tolmo")
set(CPACK_NSIS_INSTALL_ROOT "$PROGRAMFILES64")
set(CPACK_NSIS_UNINSTALL_NAME "Uninstall")
# Each package is one whole; the components only choose what goes in (see the file below).
set(CPACK_MONOLITHIC_INSTALL ON)
# What the installer takes, and its own file name.
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/cmake/PackagingPerGenerator.cmake)
# CPack looks for NSIS.template.in on the module path first: the project's own script.
list(PREPEND CMAKE_MODULE_PATH ${PROJECT_SOURCE_DIR}/cmake/nsis)
include(CPack)
