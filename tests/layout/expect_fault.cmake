# Makes a tree of one source file with one line, and fails unless the check refuses it for the fault named.
file(REMOVE_RECURSE ${TREE})
file(WRITE ${TREE}/src/${FILE} "${LINE}\n")
execute_process(COMMAND ${CMAKE_COMMAND} -D SOURCE_DIR=${TREE} -P ${CHECK}
  RESULT_VARIABLE result OUTPUT_VARIABLE text ERROR_VARIABLE text)
string(REGEX REPLACE "[ \n]+" " " text "${text}")  # a long message comes on several lines
if(result EQUAL 0 OR NOT text MATCHES "src/${FILE}: ${FAULT}")
  message(FATAL_ERROR "expected the fault '${FAULT}', got ${result}: ${text}")
endif()
