# Fails unless the newest release that the change log tells of is the one that is built.
cmake_minimum_required(VERSION 3.25)
file(STRINGS ${CHANGES} releases REGEX "^## [0-9]")
list(GET releases 0 newest)
if(NOT newest STREQUAL "## ${RELEASE}")
  message(FATAL_ERROR "the newest release in the change log is '${newest}', and not '${RELEASE}'")
endif()
