# Makes a drawing with the program in BIN, runs the example on it, and looks at what it prints. EXAMPLE: another build of it.
if(NOT EXAMPLE)
  set(EXAMPLE ${BIN}/example_records)
endif()
file(REMOVE_RECURSE ${WORK}/drawings)
file(MAKE_DIRECTORY ${WORK}/drawings)
set(ENV{TALDORK_REGISTRY} ${WORK}/drawings/registry)

function(run expected)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE code OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT code EQUAL 0)
    message(FATAL_ERROR "${ARGN}: exit code ${code}\n${output}${errors}")
  endif()
  if(NOT output MATCHES "${expected}")
    message(FATAL_ERROR "${ARGN}: prints\n${output}\ninstead of ${expected}")
  endif()
endfunction()

run("made" ${BIN}/taldork new ${WORK}/drawings/empty.dwg)
run("^30/1: header of key 30/1\n30/1: a further record\n$"
  ${EXAMPLE} ${WORK}/drawings/empty.dwg ${WORK}/drawings/filled.dwg)
run("30/1 +2 +34" ${BIN}/taldork records list ${WORK}/drawings/filled.dwg)
