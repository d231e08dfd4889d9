// The bitmaps of menu buttons: picking a file and the checks it must pass. The menu editor puts
// what was picked into the button (menus/menu_editor.h).
#pragma once

#include "platform/result.h"
#include "project/workbench.h"

#include <optional>
#include <string>

namespace corvane {

/// Width and height of a picture, in pixels.
struct pixel_size {
  int width = 0, height = 0;
  bool operator==(const pixel_size&) const = default;
};

/// Decodes pictures; the windows have one over the media library, tests have their own.
class picture_loader {
 public:
  virtual ~picture_loader() = default;

  /// Decodes a picture file (native path) and gives its size. The reason of a failure stands in a
  /// message to the user.
  virtual result<pixel_size> size_of(const std::string& file) const = 0;
};

struct picked_bitmap {
  std::string file;  ///< stored path
  pixel_size size;
};

/// Asks for a highlight bitmap: at most 4 bits a pixel, less than 700 wide and 300 high. Nothing
/// when the user cancelled or the file was refused, which is told.
std::optional<picked_bitmap> pick_highlight_bitmap(workbench& w, const picture_loader& pictures);

struct picked_select {
  std::optional<std::string> file;  ///< stored path; nothing when cancelled or refused
  bool of_another_size = false;     ///< why it was refused
};

/// Asks for a select bitmap of the size of `highlight` (stored path) and at most 4 bits a pixel. A
/// refused file is told. A highlight that is no bitmap has no size that the select could share.
picked_select pick_select_bitmap(workbench& w, const picture_loader& pictures,
                                 const std::string& highlight);

}  // namespace corvane
