# Makes a tree with a page of kept behaviour, code and a test, and fails unless the check refuses it for the fault named;
# without a fault, unless the check passes it.
file(REMOVE_RECURSE ${TREE})
file(WRITE ${TREE}/docs/kept-behaviour.md "${PAGE}\n")
file(WRITE ${TREE}/src/link/kept.cpp "${CODE}\n")
file(WRITE ${TREE}/tests/link/kept_test.cpp "TEST_F(Wire, Is_kept) {\n}\n// TEST(Wire, Is_gone) {\n")
execute_process(COMMAND ${CMAKE_COMMAND} -D SOURCE_DIR=${TREE} -P ${CHECK}
  RESULT_VARIABLE result OUTPUT_VARIABLE text ERROR_VARIABLE text)
if(FAULT STREQUAL "" AND NOT result EQUAL 0)
  message(FATAL_ERROR "expected no fault, got ${result}: ${text}")
endif()
string(REGEX REPLACE "[ \n]+" " " text "${text}")
string(FIND "${text}" "${FAULT}" place)
if(NOT FAULT STREQUAL "" AND (result EQUAL 0 OR place EQUAL -1))
  message(FATAL_ERROR "expected the fault '${FAULT}', got ${result}: ${text}")
endif()
