# Writes one generated scene: cmake -DPYTHON=... -DGENERATOR=... -DSCENE="city 10000" -DOUTPUT=file -P this
separate_arguments(args UNIX_COMMAND "${SCENE}")
execute_process(COMMAND ${PYTHON} ${GENERATOR} ${args} OUTPUT_FILE ${OUTPUT}.tmp RESULT_VARIABLE status)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "${GENERATOR} ${SCENE} failed: ${status}")
endif()
file(RENAME ${OUTPUT}.tmp ${OUTPUT})
