// The program's pictures: SVG files of packaging/icons, embedded at build time.
#pragma once

#include <wx/bmpbndl.h>
#include <wx/iconbndl.h>

#include <string_view>
#include <vector>

namespace corvane {

struct embedded_icon {
  const char* name;  ///< file name without ".svg"
  const char* svg;
};

/// Every embedded picture; generated.
const std::vector<embedded_icon>& embedded_icons();

/// The picture in an edge length of `edge` pixels at 100 %, sharp at every scale, and brighter on
/// the ground of a dark theme. An unknown name gives an empty bundle.
wxBitmapBundle icon_picture(std::string_view name, int edge);

/// The program's own icon in the sizes that window managers ask for.
wxIconBundle program_icon();

}  // namespace corvane
