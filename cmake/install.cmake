# What a package of the program holds. Records are kept in the folder beside the program file, so the package is a folder
# of its own, to be unpacked where its user may write: "cpack" in the build folder makes the archive.
install(TARGETS vantrel RUNTIME DESTINATION bin)
install(DIRECTORY DESTINATION bin/db)
install(FILES README.md LICENSE DESTINATION .)
install(FILES packaging/vantrel.desktop DESTINATION share/applications)
install(FILES packaging/org.vantrel.vantrel.metainfo.xml DESTINATION share/metainfo)
install(FILES src/platform/qt/icons/vantrel.svg DESTINATION share/icons/hicolor/scalable/apps)

set(CPACK_GENERATOR TGZ)
set(CPACK_PACKAGE_FILE_NAME vantrel-${PROJECT_VERSION}-${CMAKE_SYSTEM_NAME}-${CMAKE_SYSTEM_PROCESSOR})
set(CPACK_STRIP_FILES ON)
include(CPack)
