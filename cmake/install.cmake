# What the packages hold. Both have the same tree and differ in the program's place:
#   folder  a .tar.gz that runs from wherever it is unpacked; records are kept beside the program, in bin/db
#   system  a .deb; the command bin/vantrel starts the program with records in the user's own folder
# ./package makes both. Pages, manuals and icons are made by the target package_files, which needs pandoc and rsvg-convert.
include(GNUInstallDirs)
set(doc share/doc/vantrel)
set(packed ${CMAKE_BINARY_DIR}/packed)

# ---- What has to be made first

set(GUIDE /usr/${doc}/docs/guide.html)
set(BENCH_GUIDE /usr/${doc}/bench/README.html)
set(BENCH_LIBRARY /usr/lib/vantrel/bench)
execute_process(COMMAND date --utc --rfc-email --date ${VANTREL_RELEASE_DATE}
  OUTPUT_VARIABLE DEBIAN_DATE OUTPUT_STRIP_TRAILING_WHITESPACE)
foreach(page vantrel.1 vantrel-bench.1 changelog org.vantrel.vantrel.metainfo.xml)
  configure_file(packaging/${page}.in ${CMAKE_BINARY_DIR}/${page} @ONLY)
endforeach()
add_custom_target(package_files
  COMMAND ${CMAKE_SOURCE_DIR}/packaging/make-files ${CMAKE_BINARY_DIR} ${packed}
  WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
  VERBATIM)

if(WIN32)
  include(${CMAKE_CURRENT_LIST_DIR}/install_windows.cmake)
  return()
endif()

# ---- What is packed

install(TARGETS vantrel RUNTIME DESTINATION bin COMPONENT folder)
install(DIRECTORY DESTINATION bin/db COMPONENT folder)
install(PROGRAMS packaging/add-to-menu DESTINATION . COMPONENT folder)
install(FILES LICENSE packaging/READ-ME-FIRST.txt DESTINATION . COMPONENT folder)

install(TARGETS vantrel RUNTIME DESTINATION lib/vantrel COMPONENT system)
install(PROGRAMS packaging/vantrel-of-user DESTINATION bin RENAME vantrel COMPONENT system)
install(FILES packaging/copyright ${packed}/changelog.gz DESTINATION ${doc} COMPONENT system)

install(TARGETS visa LIBRARY DESTINATION lib/vantrel/bench NAMELINK_SKIP COMPONENT common)
install(PROGRAMS packaging/vantrel-bench DESTINATION bin COMPONENT common)
install(DIRECTORY bench/benches DESTINATION share/vantrel COMPONENT common)
install(FILES packaging/vantrel.desktop DESTINATION share/applications COMPONENT common)
install(FILES ${packed}/org.vantrel.vantrel.metainfo.xml DESTINATION share/metainfo COMPONENT common)
install(DIRECTORY ${packed}/icons DESTINATION share COMPONENT common)
install(DIRECTORY ${packed}/man DESTINATION share COMPONENT common)
install(DIRECTORY ${packed}/doc/ DESTINATION ${doc} COMPONENT common)

# ---- The packages

set(CPACK_GENERATOR TGZ DEB)
set(CPACK_PROJECT_CONFIG_FILE ${CMAKE_CURRENT_LIST_DIR}/package_layout.cmake)
set(CPACK_PACKAGE_FILE_NAME vantrel-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_CONTACT "The VANTREL developers <vantrel@orlane.example>")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://www.orlane.example/vantrel")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS fonts-liberation)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS qt6-wayland)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "log the readings of bench multimeters with scanner cards")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"VANTREL connects up to four bench multimeters that carry a scanner card of
10 or 20 channels, over USB or GPIB through the VISA library of the machine.
It sets the function of every channel, runs scans on a schedule, shows the
readings in live tables and as a trend, and stores them in records, which it
lists, plots and saves as CSV.

A simulated bench comes with it, to try the program without instruments.")
include(CPack)
