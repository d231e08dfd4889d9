// The bitmaps of menu buttons: picking a file and the checks it must pass. The menu editor puts
// what was picked into the button (menus/menu_editor.h).
#pragma once

#include "project/document.h"
#include "project/picture_loader.h"

#include <optional>
#include <string>

namespace corvane {

struct picked_bitmap {
  std::string file;  ///< stored path
  pixel_size size;
};

/// Asks for a highlight bitmap: at most 4 bits a pixel, less than 700 wide and 300 high. Returns
/// nullopt if the user cancelled or the file was refused (a message was shown).
std::optional<picked_bitmap> pick_highlight_bitmap(document& doc, const picture_loader& pictures);

struct picked_select {
  std::optional<std::string> file;  ///< stored path; nullopt if cancelled or refused
  bool of_another_size = false;     ///< why it was refused
};

/// Asks for a select bitmap of the size of `highlight` (stored path) and at most 4 bits a pixel. A
/// refused file is told. A highlight that is no bitmap has no size that the select could share.
picked_select pick_select_bitmap(document& doc, const picture_loader& pictures,
                                 const std::string& highlight);

}  // namespace corvane
