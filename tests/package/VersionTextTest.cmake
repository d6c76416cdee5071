# The version texts of a few project versions: cmake -P VersionTextTest.cmake
include(${CMAKE_CURRENT_LIST_DIR}/../../cmake/ProductVersion.cmake)

function(expect_version_text major minor expected)
  tolmo_version_text(${major} ${minor} text)
  if(NOT text STREQUAL expected)
    message(SEND_ERROR "${major}.${minor} gives \"${text}\", not \"${expected}\"")
  endif()
endfunction()

expect_version_text(2 0 "2.00")
expect_version_text(2 5 "2.05")
expect_version_text(2 10 "2.10")
expect_version_text(10 99 "10.99")
expect_version_text(0 1 "0.01")
