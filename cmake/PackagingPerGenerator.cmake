# Read by cpack once for each package it makes, with CPACK_GENERATOR naming that package's kind.
# The installer takes the program's files alone, without the portable marker, and says in its
# name that it installs.
if(CPACK_GENERATOR STREQUAL "NSIS")
  string(REPLACE ";ALL;" ";program;" CPACK_INSTALL_CMAKE_PROJECTS "${CPACK_INSTALL_CMAKE_PROJECTS}")
  set(CPACK_PACKAGE_FILE_NAME "${CPACK_PACKAGE_FILE_NAME}-setup")
endif()
