// The drawing of a disc's map, in the window and for a picture file.
#pragma once

#include "authoring/map_cards.h"
#include "authoring/map_layout.h"
#include "authoring/map_svg.h"
#include "examine/disc_map.h"
#include "platform/result.h"

#include <wx/geometry.h>
#include <wx/image.h>

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

class wxGraphicsContext;

namespace corvane {

/// A map as it is drawn: with its words and its pictures, which are of the size that they are shown
/// in, or larger.
struct drawn_map {
  disc_map map;
  std::vector<map_card> cards;  ///< one for each node
  map_layout layout;
  std::map<map_place, wxImage> pictures;
};

/// What stands out.
struct map_highlight {
  std::optional<std::size_t> node;  ///< the selected one
  int exit = 0;                     ///< its row that is selected, 1-based; 0: none
  bool has_keys = false;            ///< the map has the keyboard
  std::optional<std::size_t> over;  ///< the node that an arrow is dragged over
  std::string words;                ///< that are looked for: other nodes are drawn faintly
};

/// `visible`: in units of the layout; what lies outside is left out. The context's units are those
/// of the layout.
void draw_map(wxGraphicsContext& gc, const drawn_map& map, const map_colours& colours,
              const map_highlight& highlight, const wxRect2DDouble& visible);

/// Whether the toolkit can: not as it is built for Windows. Saved pictures hold none of videos
/// then.
bool makes_png();

/// The whole as the bytes of a PNG file, at twice the size of its units unless that would be larger
/// than picture programs like. Needs no display.
result<std::string> png_of(const drawn_map& map);

/// Pictures as PNG files, for svg_of.
std::map<map_place, std::string> png_pictures(const drawn_map& map);

}  // namespace corvane
