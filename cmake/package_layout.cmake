# Read by cpack before it makes a package: which parts of the installation go into it, and where.
if(CPACK_GENERATOR STREQUAL DEB)
  set(layout system)
  set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
else()
  set(layout folder)
endif()
list(GET CPACK_INSTALL_CMAKE_PROJECTS 0 build)
set(CPACK_INSTALL_CMAKE_PROJECTS "${build};vantrel;common;/;${build};vantrel;${layout};/")
