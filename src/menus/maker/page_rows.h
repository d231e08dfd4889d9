// What of a menu's page is for its heading, its entries and the ways to other pages.
#pragma once

#include "disc/disc_description.h"
#include "formats/drawn_page.h"
#include "platform/result.h"

namespace corvane {

struct menu_design;

/// Of which kind the menus of a disc are; all of them of one.
struct page_form {
  video_standard standard = video_standard::ntsc;
  bool is_wide = false;  ///< 16:9

  int height() const { return standard == video_standard::pal ? 576 : 480; }
  double pixel_aspect() const { return page_pixel_aspect(height(), is_wide); }
  bool operator==(const page_form&) const = default;
};

/// Ways that a page can have: to play all or the title, back, to the previous and the next page.
inline constexpr int most_ways = 4;

/// The 80 % of a picture of so many lines in which every television shows texts; on even lines.
page_box title_safe_area(int height);

/// The design with no more entries on a page than there can be on one of this form: with fewer
/// rows, else fewer columns.
menu_design design_for(menu_design design, const page_form& form);

/// All on even lines and within the safe area.
struct page_parts {
  page_box heading, rule, entries, ways;  ///< a rule that is not wanted has no height
  page_box sheet;                         ///< of the entries, with room around them
  int entry_width = 0, entry_height = 0;  ///< of one entry, pixels
  int across = 0;                         ///< pixels between entries beside each other
};

/// The design for pictures of so many lines: its lengths are lines of a picture that has 480, and
/// are as long on the screen in one that has more. Borders and outlines stay as they are.
menu_design in_lines(menu_design design, int height);

/// `design`: in the lines of the form's picture.
page_parts parts_of(const menu_design& design, const page_form& form);

/// So many lines, as wide as that on a screen, in pixels.
int pixels_across(int lines, double pixel_aspect);

/// Why a page of the design has no room for its entries, as a clause: "each of the 12 rows gets 14
/// lines, and needs 24".
failure why_no_room(const menu_design& design);

}  // namespace corvane
