// The buttons of a menu as a run draws them over its video: the same dots, for the picture of the
// editor.
//
// Each button is drawn over those before it, and what it clears of them is cleared. Dots of the
// overlay are those of the disc's picture, 720 to a line.
#pragma once

#include "examine/button_shapes.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

inline constexpr int overlay_width = 720;

/// Decoded: three bytes a dot, line by line from the top.
struct button_bitmap {
  int width = 0, height = 0;
  std::vector<std::uint8_t> rgb;
};

/// The bitmaps of buttons.
class bitmap_reader {
 public:
  virtual ~bitmap_reader() = default;
  /// By its stored path; nullptr when it cannot be read. Valid until the next call.
  virtual const button_bitmap* read(const std::string& stored) = 0;
};

enum class button_state { highlighted, selected };

/// A button in one of its states.
struct overlay_button {
  button_box box;
  std::string look;        ///< a colour's name, or the stored path of a bitmap
  bool is_bitmap = false;  ///< then its size is not the box's
  bool operator==(const overlay_button&) const = default;
};

/// Of a record (project/menu_rows.h).
overlay_button overlay_button_of(std::string_view record, button_state state);

/// Four bytes a dot: red, green, blue, and 255 where there is anything, else 0.
struct overlay_picture {
  int width = 0, height = 0;
  std::vector<std::uint8_t> rgba;
};

/// A picture of so many lines with all buttons. A colour that is not offered and a bitmap that
/// cannot be read draw nothing. `thickness`: of the frames.
overlay_picture overlay_of(const std::vector<overlay_button>& buttons, int thickness, int height,
                           bitmap_reader& bitmaps);

/// The dots that the button may change: of a bitmap, as large as that is.
button_box extent_of(const overlay_button& b, bitmap_reader& bitmaps);

}  // namespace corvane
