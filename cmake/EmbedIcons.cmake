# Turns SVG files into one C++ source: cmake -DOUT=icons.cpp -DICONS="a.svg;b.svg" -P EmbedIcons.cmake
# A file "add-title.svg" becomes the entry named "add-title".
#
# Circles and rounded rectangles are drawn as paths that are not closed where they already end at
# their beginning: the toolkit takes a closing line without a length apart a thousand times, which
# was nine tenths of the time that a picture took.
set(text "// Made by cmake/EmbedIcons.cmake from packaging/icons.\n#include \"ui/widgets/icons.h\"\n\n")
string(APPEND text "namespace corvane {\n\nconst std::vector<embedded_icon>& embedded_icons() {\n")
string(APPEND text "  static const std::vector<embedded_icon> icons = {\n")
foreach(icon IN LISTS ICONS)
  get_filename_component(name ${icon} NAME_WE)
  file(READ ${icon} svg)
  string(APPEND text "      {\"${name}\", R\"svg(${svg})svg\"},\n")
endforeach()
string(APPEND text "  };\n  return icons;\n}\n\n}  // namespace corvane\n")
file(WRITE ${OUT} "${text}")
