# The program's icons: drawn by QtSvg where it is there, else taken from pictures that scripts/draw-icons makes in all
# sizes. Takes the sources of the other way from core_sources, and sets icon_library and, for Windows, drawn, the folder with
# the icon of the program file.
find_package(Qt6Svg QUIET)
set(drawn ${CMAKE_BINARY_DIR}/drawn)
if(Qt6Svg_FOUND)
  set(icon_library Qt6::Svg)
  list(FILTER core_sources EXCLUDE REGEX "/icon_drawing_png.cpp$")
else()
  set(icon_library "")
  list(FILTER core_sources EXCLUDE REGEX "/(icon_drawing_svg.cpp|icons.qrc)$")
  file(GLOB drawings CONFIGURE_DEPENDS src/platform/qt/icons/*.svg)
  add_custom_command(
    OUTPUT ${drawn}/icons.cpp ${drawn}/vantrel.ico
    COMMAND scripts/draw-icons ${drawn}
    COMMAND Qt6::rcc --name icons --output ${drawn}/icons.cpp ${drawn}/icons.qrc
    DEPENDS scripts/draw-icons ${drawings}
    WORKING_DIRECTORY ${CMAKE_SOURCE_DIR}
    VERBATIM)
  list(APPEND core_sources ${drawn}/icons.cpp)
endif()
