# Installs the folder package's own part of the build into the folder PACKAGE and fails unless all is in its place.
cmake_minimum_required(VERSION 3.25)
file(REMOVE_RECURSE ${PACKAGE})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PACKAGE} --component folder
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)

foreach(file bin/vantrel bin/db add-to-menu LICENSE READ-ME-FIRST.txt)
  if(NOT EXISTS ${PACKAGE}/${file})
    message(FATAL_ERROR "the package lacks ${file}")
  endif()
endforeach()

file(GLOB records ${PACKAGE}/bin/db/*)
if(NOT IS_DIRECTORY ${PACKAGE}/bin/db OR records)
  message(FATAL_ERROR "bin/db is not an empty folder: ${records}")
endif()
