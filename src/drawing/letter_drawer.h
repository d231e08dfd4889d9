// Letters as pictures: the one thing about a page that only the toolkit can draw, for fonts, shapes
// of letters that depend on their neighbours, and lines that run from right to left.
//
// The toolkit pulls dozens of libraries in. So nothing here sees it: a drawer of letters comes from
// a module (drawing/letter_module.h) that is loaded when the first one is asked for. It needs no
// display.
#pragma once

#include "platform/result.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

struct letter_font {
  std::string family;  ///< one that is installed, or "sans", "serif", "monospace"
  double em = 24;      ///< pixels
  bool bold = false, italic = false;
};

/// How far a font's letters reach from the line on which they stand, pixels.
struct letter_reach {
  double above = 0, below = 0;
};

/// A line of letters, white on black: rows from the top, a byte a pixel, nothing between the rows.
struct letter_picture {
  int width = 0, height = 0;
  int baseline = 0;  ///< the row on which the letters stand: the first one below an "x"
  std::vector<std::uint8_t> grey;
};

/// Belongs to one thread, as all of the toolkit does; in a program with windows to theirs.
class letter_drawer {
 public:
  letter_drawer() = default;
  letter_drawer(const letter_drawer&) = delete;
  letter_drawer& operator=(const letter_drawer&) = delete;
  virtual ~letter_drawer() = default;

  virtual bool has_family(const std::string& family) = 0;

  virtual letter_reach reach(const letter_font& font) = 0;

  /// About how wide a line is, pixels; quick for lines of any length.
  virtual double advance(const std::string& line, const letter_font& font) = 0;

  /// A line (UTF-8, of some hundred characters at most). All of it is in the picture, what hangs
  /// out to the left too. Fails when memory runs out or the font has no letters.
  virtual result<letter_picture> draw(const std::string& line, const letter_font& font) = 0;
};

/// Fails when the module is missing or cannot be loaded, or the program was built without the
/// toolkit.
result<std::unique_ptr<letter_drawer>> make_letter_drawer();

}  // namespace corvane
