# What the packages for Windows hold. Both have the same tree:
#   the .zip runs from wherever it is unpacked; records are kept beside the program, in db
#   the installer puts it, without db, where the user's programs are, with records in the user's own folder
# ./package windows makes both. The pages are made by the target package_files, which needs pandoc.
set(text ${CMAKE_BINARY_DIR}/texts)

install(TARGETS vantrel RUNTIME DESTINATION .)
install(TARGETS visa RUNTIME DESTINATION bench)
install(DIRECTORY bench/benches DESTINATION bench)
install(DIRECTORY ${CMAKE_BINARY_DIR}/packed/doc DESTINATION .)
install(FILES ${drawn}/vantrel.ico DESTINATION .)
install(DIRECTORY DESTINATION db COMPONENT folder)

# Our own texts end their lines as the system's do.
macro(install_text source place name)
  configure_file(packaging/windows/${source} ${text}/${place}/${name} @ONLY NEWLINE_STYLE WIN32)
  install(FILES ${text}/${place}/${name} DESTINATION ${place})
endmacro()
install_text(READ-ME-FIRST.txt . READ-ME-FIRST.txt)
install_text(vantrel-bench.cmd . vantrel-bench.cmd)
install_text(licences.txt licences READ-ME.txt)
install(FILES LICENSE DESTINATION . RENAME LICENSE.txt)

# The terms of what is linked in.
macro(install_terms name file)
  install(FILES ${file} DESTINATION licences RENAME ${name}.txt)
endmacro()
install_terms(qt /usr/share/doc/qt6-base-dev-tools/copyright)
install_terms(sqlite /usr/share/doc/libsqlite3-0/copyright)
install_terms(gcc /usr/share/doc/gcc-mingw-w64-base/copyright)
install_terms(mingw-w64 /usr/share/doc/mingw-w64-common/copyright)
foreach(name GPL-2 GPL-3 LGPL-3)
  install_terms(${name} /usr/share/common-licenses/${name})
endforeach()
