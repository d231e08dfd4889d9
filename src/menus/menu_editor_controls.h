// What the controls of the menu editor `tsmenu` hold. The editor's model owns them and changes
// them; the window shows them after each event and computes none of them.
#pragma once

#include <string>
#include <vector>

namespace corvane {

/// A scroll bar from 0 to `maximum`.
struct scroll_bar {
  int value = 0;
  int maximum = 0;
  int large_step = 1;
};

/// A slider from `minimum` to `maximum`.
struct slider {
  int value = 0;
  int minimum = 0;
  int maximum = 0;
  bool enabled = true;
};

struct menu_editor_controls {
  int indexer = 0;  ///< number of the edited menu

  std::vector<std::string> List1;   ///< hidden: the button records
  std::vector<std::string> Combo2;  ///< button chooser: "button1", "button2", ...
  int Combo2_index = -1;            ///< its entry, 0-based; -1: no button chosen
  std::string Combo2_text;          ///< its text; empty: no button chosen
  std::string button;               ///< number of the chosen button; empty: none

  scroll_bar HScroll1, VScroll1;    ///< x0 and y0 of the button
  slider Slider1, Slider2;          ///< its width and height
  std::string leftpos, ypos;        ///< the same as number texts: x0, y0,
  std::string widthpos, heightpos;  ///< width, height
  bool sizes_enabled = true;        ///< whether `widthpos` and `heightpos` are, and both sliders

  std::vector<std::string> Combo1_items;    ///< the actions offered; any other can be typed
  std::string Combo1;                       ///< the button's action
  std::string Colorhighlight, ColorSelect;  ///< colour name, or stored path of a bitmap

  /// Bitmap button: `Image1`, `Image2` and `removebmp` are shown. Else the colour lists and
  /// `thickness` with their labels are.
  bool bitmap_mode = false;
  std::string Image1, Image2;  ///< stored paths of the bitmaps to show; empty: none

  slider thickness;              ///< of the frames of all boxes, in pixels
  bool Check1 = false;           ///< "loop menu"
  bool Check2 = false;           ///< "advanced": shows "advanced button control" and the spu fields
  std::string spubegin, spuend;  ///< subpicture times, "00:00:00.0"
};

}  // namespace corvane
