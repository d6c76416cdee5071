# Cross build for 64-bit Windows with Debian's MinGW-w64 (posix thread model, for std::jthread).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(TOLMO_MINGW_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${TOLMO_MINGW_PREFIX}-gcc-posix)
set(CMAKE_CXX_COMPILER ${TOLMO_MINGW_PREFIX}-g++-posix)
set(CMAKE_RC_COMPILER ${TOLMO_MINGW_PREFIX}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${TOLMO_MINGW_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
# Tests run under Wine; scripts/wine-run prepares a quiet prefix inside the build tree.
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run)
