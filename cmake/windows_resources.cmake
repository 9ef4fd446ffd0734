# What Windows reads from the program file: icon, version, and how to run it. It opens no console.
enable_language(RC)
set(resources ${CMAKE_BINARY_DIR}/resources)
configure_file(packaging/windows/vantrel.rc.in ${resources}/vantrel.rc @ONLY)
configure_file(packaging/windows/vantrel.manifest.in ${resources}/vantrel.manifest @ONLY)
target_sources(vantrel PRIVATE ${resources}/vantrel.rc)
set_source_files_properties(${resources}/vantrel.rc PROPERTIES
  OBJECT_DEPENDS "${drawn}/vantrel.ico;${resources}/vantrel.manifest")
set_target_properties(vantrel PROPERTIES WIN32_EXECUTABLE ON)
