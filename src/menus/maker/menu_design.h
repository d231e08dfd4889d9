// A design of menus: a small text file that says how pages look, whatever titles there are. What a
// person can write in it is told in docs/designs.md.
#pragma once

#include "formats/drawn_page.h"
#include "platform/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// How the entries of a page stand.
enum class menu_arrangement {
  list,             ///< texts
  thumbnails_list,  ///< a picture, and a text beside it
  grid,             ///< pictures with captions beneath them
};

struct design_text {
  text_style style;
  int least_size = 14;  ///< a text that is too long is made smaller, down to this; lines of an em
  page_align align = page_align::begin;
  int most_lines = 1;
  bool operator==(const design_text&) const = default;
};

/// What lies behind something; with an alpha of 0 nothing.
struct design_panel {
  page_colour colour{0, 0, 0, 0};
  int radius = 0;  ///< lines
  int border = 0;  ///< lines
  page_colour border_colour{0, 0, 0, 0};
  bool operator==(const design_panel&) const = default;
  bool is_seen() const { return colour.alpha > 0 || (border > 0 && border_colour.alpha > 0); }
};

/// A line, band or shadow, so thick; 0: none.
struct design_edge {
  int lines = 0;
  page_colour colour;
  bool operator==(const design_edge&) const = default;
};

/// Colour names as menus offer them (project/menu_rows.h).
struct design_look {
  std::string highlight = "yellow", select = "white";
  bool operator==(const design_look&) const = default;
};

struct menu_design {
  std::string name, about;
  menu_arrangement arrangement = menu_arrangement::list;
  int columns = 1, rows = 6;  ///< most entries of a page, beside and below each other
  int gap = 8;                ///< lines between entries; even
  page_background background = colour_background{};
  design_text heading, entry, way;  ///< ways lead to other pages: "next", "back"
  design_panel heading_panel, entry_panel, way_panel;
  design_edge heading_rule;            ///< beneath the heading, as wide as all entries
  design_edge upper_band, lower_band;  ///< over the background, along its edges
  design_panel sheet;                  ///< behind all entries together
  int thumbnail_border = 0;            ///< lines
  page_colour thumbnail_border_colour{255, 255, 255, 255};
  design_edge thumbnail_shadow;
  design_look entry_look, way_look;
  int frame = 2;  ///< pixels that the frame of a button is thick
  bool operator==(const menu_design&) const = default;

  int most_entries() const { return columns * rows; }
};

/// No design is larger, in bytes.
inline constexpr std::size_t largest_design = 64 * 1024;

/// Reads a design. `folder` (native): where a background picture that has no full path stands.
/// Fails with a clause that names the line and what is expected there: `line 4: "siez" is none of
/// the keys of [heading]: ...`.
result<menu_design> read_design(std::string_view text, const std::string& folder = {});

}  // namespace corvane
