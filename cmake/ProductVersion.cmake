# The version text of the program and its packages: the major part, a point and the minor part
# in two digits, "2.00" for 2.0 and "2.10" for 2.10. A minor part of three digits or more has no
# such text and stops the configuration.
function(tolmo_version_text major minor out)
  if(NOT major MATCHES "^[0-9]+$" OR NOT minor MATCHES "^[0-9]+$")
    message(FATAL_ERROR "The version ${major}.${minor} is not two whole numbers")
  endif()
  if(minor GREATER 99)
    message(FATAL_ERROR "The minor version ${minor} has more than two digits")
  endif()
  if(minor LESS 10)
    set(${out} "${major}.0${minor}" PARENT_SCOPE)
  else()
    set(${out} "${major}.${minor}" PARENT_SCOPE)
  endif()
endfunction()
