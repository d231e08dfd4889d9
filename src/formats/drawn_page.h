// What the picture of a menu looks like: a background, and shapes upon it in their order. Made by
// the layout of menus, drawn by whoever can draw; neither knows of the other.
//
// Places and lengths are in pixels of the disc's picture (720x480 or 720x576), from its upper left
// corner, and sizes of text in its lines. Its pixels are not square: whoever draws text, round
// corners or pictures makes what is as wide as high on a screen `pixel_aspect` times as narrow in
// pixels. Lines, borders, outlines and corner radii are as thick in lines as stated, and
// 1 / `pixel_aspect` times that in pixels across.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace corvane {

struct page_colour {
  std::uint8_t red = 0, green = 0, blue = 0;
  std::uint8_t alpha = 255;  ///< 0: nothing is seen of it
  bool operator==(const page_colour&) const = default;
};

struct page_box {
  int left = 0, top = 0, width = 0, height = 0;
  int right() const { return left + width; }  ///< the first column beside it
  int bottom() const { return top + height; }
  bool operator==(const page_box&) const = default;
};

/// How a picture fills a box of another shape; it is not distorted.
enum class page_fit {
  fill,  ///< what sticks out is cut off, as much on both sides
  fit,   ///< the whole picture, in the middle; what it leaves is as it was
};

/// A video shows where the page has nothing: the page is drawn on transparency.
struct video_background {
  bool operator==(const video_background&) const = default;
};

/// Of one colour: `from` and `to` the same.
struct colour_background {
  enum class direction { down, right, down_right, up_right, outward };
  page_colour from, to;  ///< of the corner, edge or middle where it begins, and where it ends
  direction towards = direction::down;
  bool operator==(const colour_background&) const = default;
};

struct picture_background {
  std::string file;  ///< native path; any size and form, shown as its EXIF rotation says
  page_fit fit = page_fit::fill;
  page_colour around;             ///< beside a picture that does not fill the page
  page_colour shade{0, 0, 0, 0};  ///< over the picture, with its alpha; so that texts can be read
  bool operator==(const picture_background&) const = default;
};

using page_background = std::variant<colour_background, picture_background, video_background>;

struct page_rectangle {
  page_box box;
  int radius = 0;  ///< of its corners, in lines; at most half its height and shown width count
  page_colour colour;
  int border = 0;  ///< lines; within the box
  page_colour border_colour;
  bool operator==(const page_rectangle&) const = default;
};

struct text_style {
  std::vector<std::string> families;  ///< the first one that is installed is taken; "sans",
                                      ///< "serif" and "monospace" always are
  int size = 24;                      ///< lines that an em is high
  bool bold = false, italic = false;
  page_colour colour{255, 255, 255, 255};
  int outline = 0;  ///< lines around the letters; 0: none
  page_colour outline_colour;
  int shadow = 0;  ///< lines to the right and down; 0: none
  page_colour shadow_colour;
  bool operator==(const text_style&) const = default;
};

enum class page_align { begin, middle, end };

/// Text, broken at its "\n", and wrapped where a line is wider than the box. `begin` is left for
/// texts of any direction; letters of right-to-left texts run as such within their line.
///
/// The layout has made the text fit by `text_measure`. If it does not nonetheless, it is drawn
/// smaller, down to `least_size`; what then does not fit is left out, with "…" in its place, and is
/// cut off at the box where even that does not fit.
struct page_text {
  std::string text;  ///< UTF-8
  page_box box;
  page_align across = page_align::begin, down = page_align::middle;
  text_style style;
  int most_lines = 1;
  int least_size = 0;  ///< lines that an em is high; 0: as the style has it
  bool operator==(const page_text&) const = default;
};

/// A picture of a film. It fills the box and is cut; where it cannot be had, the box is `without`.
struct page_thumbnail {
  std::string file;    ///< native path of a video or picture
  double seconds = 0;  ///< from its beginning
  int title = 0;       ///< whose picture it is, 1-based; 0: of none
  int chapter = 0;     ///< of the title, 1-based; 0: of the whole title
  page_box box;
  page_fit fit = page_fit::fill;
  int border = 0;  ///< lines; within the box
  page_colour border_colour;
  page_colour without{40, 40, 40, 255};
  bool operator==(const page_thumbnail&) const = default;
};

using page_shape = std::variant<page_rectangle, page_text, page_thumbnail>;

struct drawn_page {
  int width = 720, height = 480;      ///< of the picture, pixels
  bool is_wide = false;               ///< the picture is shown as 16:9, else as 4:3
  double pixel_aspect = 10.0 / 11.0;  ///< width over height of a pixel, as it is shown
  page_background background = colour_background{};
  std::vector<page_shape> shapes;  ///< the first one lowest
  bool operator==(const drawn_page&) const = default;
};

/// What a pixel of a disc's picture measures: 10/11 and 40/33 of 480 lines, 12/11 and 16/11 of 576.
/// 704 pixels of a line come to 4:3 or 16:9, as with films (import/picture_shape.h).
inline double page_pixel_aspect(int height, bool is_wide) {
  return (height > 480 ? 12.0 : 10.0) / 11.0 * (is_wide ? 4.0 / 3.0 : 1.0);
}

/// What a text takes when it is drawn.
struct text_extent {
  int width = 0;   ///< of its widest line, pixels, with outline and shadow, rounded up
  int height = 0;  ///< of all its lines with the gaps between them, outline and shadow, lines
  std::vector<std::string> lines;  ///< how it is wrapped, in the order of the text
  bool operator==(const text_extent&) const = default;
};

/// Whoever draws texts says so. `box_width`: pixels at which a line is wrapped, at blanks, between
/// letters of scripts without blanks, and within a word that is wider alone; 0: only at "\n".
using text_measure = std::function<text_extent(std::string_view text, const text_style& style,
                                               int box_width, double pixel_aspect)>;

}  // namespace corvane
