# Runs the built tolmo-cli as a real process and checks exit codes and output.
# -DPROGRAM=path -DEMULATOR=launcher-or-empty -DWORK_FOLDER=folder for the files it makes.
file(REMOVE_RECURSE "${WORK_FOLDER}")
file(MAKE_DIRECTORY "${WORK_FOLDER}")
file(WRITE "${WORK_FOLDER}/hello.txt" "Hello, Tolmo! あ Tolmo")

set(failures 0)

# run(<expected exit code> <stdout regex> <stderr regex> args...)
function(run expected_code out_pattern err_pattern)
  execute_process(
    COMMAND ${EMULATOR} "${PROGRAM}" ${ARGN}
    WORKING_DIRECTORY "${WORK_FOLDER}"
    RESULT_VARIABLE code
    OUTPUT_VARIABLE out
    ERROR_VARIABLE err)
  set(ok TRUE)
  if(NOT code STREQUAL "${expected_code}")
    set(ok FALSE)
  endif()
  if(NOT out MATCHES "${out_pattern}")
    set(ok FALSE)
  endif()
  if(NOT err MATCHES "${err_pattern}")
    set(ok FALSE)
  endif()
  if(ok)
    message(STATUS "ok: ${ARGN}")
  else()
    message(SEND_ERROR "tolmo-cli ${ARGN}: exit code ${code} (wanted ${expected_code})\nstdout: ${out}\nstderr: ${err}")
  endif()
endfunction()

run(0 "^Usage: tolmo-cli COMMAND" "" --help)
run(0 "^Usage: tolmo-cli find FILE" "" find --help)
run(0 "^00000000: 48 65 6C 6C 6F 2C 20 54 6F 6C 6D 6F 21 20 E3 81  Hello, Tolmo! .\\.\n00000010: 82 20 54" "" dump hello.txt)
run(0 "^00000000: 48 65 6C 6C 6F 2C 20 54 6F 6C 6D 6F 21 20 E3 81  Hello, Tolmo! あ\n" "" dump hello.txt --encoding utf-8)
run(0 "^7\n18\n$" "" find hello.txt --text Tolmo --all)
run(0 "^14\n$" "" find hello.txt --text "あ" --encoding UTF-8)
run(0 "^2\n$" "" find hello.txt --hex "54 6F 6C 6D 6F" --count)
run(1 "^$" "No match was found\\." find hello.txt --text absent)
run(0 "UInt8: +72 / 0x48" "" inspect hello.txt --offset 0)
run(0 "^{\"edits\":1,\"size\":23,\"viaTemporaryFile\":false,\"saved\":true}\n$" "" patch hello.txt --overwrite 0 68 --json)
run(0 "^00000000: 68 65" "" dump hello.txt --length 1)
run(2 "^$" "tolmo-cli dump: --offset \"x\" is not a number" dump hello.txt --offset x)
run(2 "^$" "tolmo-cli: unknown command \"frob\"" frob)
run(2 "^$" "The hexadecimal bytes are not valid" find hello.txt --hex "4A 4")
run(2 "^$" "The file could not be opened" dump absent.bin)
