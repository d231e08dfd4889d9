#include "drawing/drawn_text.h"

#include "drawing/text_wrap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

/// Letters are drawn so many times as large, across and down.
constexpr int finer = 4;
/// Wider lines are not drawn: no page is so wide.
constexpr int widest = 4000;
constexpr std::size_t most_kept_bytes = std::size_t{16} << 20;

/// What a style adds around its letters, in pixels of the page.
struct text_surround {
  int aside = 0, outline = 0;             ///< the outline across and down
  int shadow_right = 0, shadow_down = 0;  ///< the shadow's place

  text_surround(const text_style& style, double pixel_aspect)
      : aside(static_cast<int>(std::ceil(std::max(0, style.outline) / pixel_aspect))),
        outline(std::max(0, style.outline)),
        shadow_right(static_cast<int>(std::lround(std::max(0, style.shadow) / pixel_aspect))),
        shadow_down(std::max(0, style.shadow)) {}

  int wide() const { return 2 * aside + shadow_right; }
  int high() const { return 2 * outline + shadow_down; }
};

/// The part of the letters' picture that has any.
page_box inked_part(const letter_picture& drawn) {
  int left = drawn.width, right = 0, top = drawn.height, bottom = 0;
  for (int y = 0; y < drawn.height; ++y)
    for (int x = 0; x < drawn.width; ++x)
      if (drawn.grey[static_cast<std::size_t>(y) * static_cast<std::size_t>(drawn.width) +
                     static_cast<std::size_t>(x)] != 0) {
        left = std::min(left, x);
        right = std::max(right, x + 1);
        top = std::min(top, y);
        bottom = y + 1;
      }
  return left < right ? page_box{left, top, right - left, bottom - top} : page_box{};
}

int floored(int value) {
  return value >= 0 ? value / finer : -((finer - 1 - value) / finer);
}

/// How much of which columns of the page a column of the larger picture is.
struct column_parts {
  int first = 0;
  float in_first = 1, in_next = 0;
};

std::vector<column_parts> parts_of(int columns, double step) {
  std::vector<column_parts> parts(static_cast<std::size_t>(columns));
  for (int x = 0; x < columns; ++x) {
    column_parts& part = parts[static_cast<std::size_t>(x)];
    part.first = static_cast<int>(x / step);
    const double next = (part.first + 1) * step;
    part.in_first = static_cast<float>(std::min(1.0, next - x));
    part.in_next = 1 - part.in_first;
  }
  return parts;
}

/// Means of what was drawn larger: rows from the baseline, columns from the first one with letters.
page_mask gathered(const letter_picture& drawn, double pixel_aspect) {
  const page_box ink = inked_part(drawn);
  page_mask mask;
  if (ink.width == 0)
    return mask;
  const double step = finer * pixel_aspect;
  mask.top = floored(ink.top - drawn.baseline);
  mask.width = static_cast<int>(std::ceil(ink.width / step - 1e-6));
  mask.height = floored(ink.bottom() - 1 - drawn.baseline) + 1 - mask.top;
  const auto line = static_cast<std::size_t>(mask.width) + 1;
  std::vector<float> sums(line * static_cast<std::size_t>(mask.height));
  const auto parts = parts_of(ink.width, step);
  for (int y = ink.top; y < ink.bottom(); ++y) {
    float* const row =
        &sums[static_cast<std::size_t>(floored(y - drawn.baseline) - mask.top) * line];
    const std::uint8_t* const grey =
        &drawn.grey[static_cast<std::size_t>(y) * static_cast<std::size_t>(drawn.width) +
                    static_cast<std::size_t>(ink.left)];
    for (std::size_t x = 0; x < parts.size(); ++x) {
      const auto light = static_cast<float>(grey[x]);
      row[parts[x].first] += light * parts[x].in_first;
      row[parts[x].first + 1] += light * parts[x].in_next;
    }
  }
  const double whole = finer * step;
  mask.covered.reserve(sums.size());
  for (std::size_t i = 0; i < sums.size(); ++i)
    if (i % line != line - 1)
      mask.covered.push_back(
          static_cast<std::uint8_t>(std::min(255L, std::lround(sums[i] / whole))));
  return mask;
}

/// A pixel of the outline's brush, and how much of it the brush covers.
struct brush_pixel {
  int x = 0, y = 0;
  int covered = 0;
};

/// A disc of so many lines, as it is on the page.
std::vector<brush_pixel> brush_of(const text_surround& around, double radius, double pixel_aspect) {
  constexpr int steps = 4, whole = 255;
  std::vector<brush_pixel> brush;
  for (int y = -around.outline; y <= around.outline; ++y)
    for (int x = -around.aside; x <= around.aside; ++x) {
      int inside = 0;
      for (int row = 0; row < steps; ++row)
        for (int column = 0; column < steps; ++column) {
          const double right = (x + (column + 0.5) / steps - 0.5) * pixel_aspect;
          const double down = y + (row + 0.5) / steps - 0.5;
          inside += right * right + down * down <= (radius + 0.25) * (radius + 0.25) ? 1 : 0;
        }
      if (inside != 0)
        brush.push_back({x, y, whole * inside / (steps * steps)});
    }
  return brush;
}

/// The letters made thicker all around.
page_mask thickened(const page_mask& letters, const text_surround& around,
                    const std::vector<brush_pixel>& brush) {
  constexpr int whole = 255;
  page_mask thick{letters.left - around.aside,
                  letters.top - around.outline,
                  letters.width + 2 * around.aside,
                  letters.height + 2 * around.outline,
                  {}};
  thick.covered.resize(static_cast<std::size_t>(thick.width) *
                       static_cast<std::size_t>(thick.height));
  for (int y = 0; y < letters.height; ++y)
    for (int x = 0; x < letters.width; ++x) {
      const int covered = letters.at(x, y);
      if (covered == 0)
        continue;
      for (const brush_pixel& pixel : brush) {
        std::uint8_t& there = thick.covered[static_cast<std::size_t>(y + around.outline + pixel.y) *
                                                static_cast<std::size_t>(thick.width) +
                                            static_cast<std::size_t>(x + around.aside + pixel.x)];
        there = std::max(there, static_cast<std::uint8_t>(covered * pixel.covered / whole));
      }
    }
  return thick;
}

page_mask moved(page_mask mask, int right, int down) {
  mask.left += right;
  mask.top += down;
  return mask;
}

int aligned(page_align align, int room, int taken) {
  return align == page_align::begin ? 0
         : align == page_align::end ? room - taken
                                    : (room - taken) / 2;
}

}  // namespace

/// Lines with the place that they take.
struct text_drawer::text_block {
  text_extent extent;
  int above = 0, pitch = 0;
  std::vector<const line_shape*> shapes{};
};

letter_font text_drawer::font_of(const styled& how) {
  letter_font font{"sans", static_cast<double>(std::max(1, how.size)) * finer, how.style.bold,
                   how.style.italic};
  for (const std::string& family : how.style.families) {
    const auto [known, is_new] = families_.try_emplace(family, false);
    if (is_new)
      known->second = letters_->has_family(family);
    if (known->second) {
      font.family = family;
      break;
    }
  }
  return font;
}

text_drawer::line_shape text_drawer::drawn_shape(const std::string& line, const letter_font& font,
                                                 const styled& how) {
  line_shape shape;
  const letter_reach reach = letters_->reach(font);
  shape.above = static_cast<int>(std::ceil(reach.above / finer));
  shape.below = static_cast<int>(std::ceil(reach.below / finer));
  if (line.empty())
    return shape;
  const double advance = letters_->advance(line, font) / finer / how.pixel_aspect;
  if (advance > widest) {
    shape.letters.width = static_cast<int>(std::min(1e6, std::ceil(advance)));
    return shape;
  }
  const auto drawn = letters_->draw(line, font);
  if (!drawn) {
    shape.trouble = drawn.error;
    return shape;
  }
  shape.letters = gathered(*drawn, how.pixel_aspect);
  shape.above = std::max(shape.above, -shape.letters.top);
  shape.below = std::max(shape.below, shape.letters.top + shape.letters.height);
  return shape;
}

const text_drawer::line_shape& text_drawer::shape_of(const std::string& line, const styled& how) {
  const letter_font font = font_of(how);
  const std::string key = font.family + '\n' + std::to_string(how.size) + (font.bold ? "b" : "") +
                          (font.italic ? "i" : "") + ' ' + std::to_string(how.pixel_aspect) + '\n' +
                          line;
  const auto [known, is_new] = kept_.try_emplace(key);
  if (is_new) {
    known->second = drawn_shape(line, font, how);
    kept_bytes_ += known->second.letters.covered.size() + 2 * key.size();
  }
  return known->second;
}

int text_drawer::width_of(const std::string& line, const styled& how) {
  const int letters = shape_of(line, how).letters.width;
  return letters == 0 ? 0 : letters + text_surround(how.style, how.pixel_aspect).wide();
}

bool text_drawer::is_narrow(const std::string& line, const styled& how, int box_width) {
  return width_of(line, how) <= box_width;
}

text_drawer::text_block text_drawer::block_of(std::vector<std::string> lines, const styled& how) {
  text_block block;
  int below = 0;
  for (const std::string& line : lines) {
    const line_shape& shape = shape_of(line, how);
    block.above = std::max(block.above, shape.above);
    below = std::max(below, shape.below);
    block.extent.width = std::max(block.extent.width, width_of(line, how));
    block.shapes.push_back(&shape);
  }
  block.pitch = block.above + below;
  block.extent.height = block.pitch * static_cast<int>(lines.size()) +
                        text_surround(how.style, how.pixel_aspect).high();
  block.extent.lines = std::move(lines);
  return block;
}

text_drawer::text_block text_drawer::block_of(std::string_view text, const styled& how,
                                              int box_width) {
  return block_of(wrapped_lines(text,
                                [&](const std::string& line) {
                                  return box_width <= 0 || is_narrow(line, how, box_width);
                                }),
                  how);
}

text_extent text_drawer::measure(std::string_view text, const text_style& style, int box_width,
                                 double pixel_aspect) {
  if (kept_bytes_ > most_kept_bytes) {
    kept_.clear();
    kept_bytes_ = 0;
  }
  return block_of(text, {style, style.size, pixel_aspect}, box_width).extent;
}

/// As many lines as there is room for; what does not fit at the end of the last one is left out.
text_drawer::text_block text_drawer::shortened_block(const page_text& text, const styled& how) {
  const auto fits = [&](const std::string& line) { return is_narrow(line, how, text.box.width); };
  text_block block = block_of(text.text, how, text.box.width);
  const int room = text.box.height - text_surround(how.style, how.pixel_aspect).high();
  const int most = std::max(1, std::min(text.most_lines, room / std::max(1, block.pitch)));
  std::vector<std::string> lines = std::move(block.extent.lines);
  const bool is_cut = lines.size() > static_cast<std::size_t>(most);
  if (is_cut)
    lines.resize(static_cast<std::size_t>(most));
  for (std::string& line : lines)
    line = shortened_line(line, is_cut && &line == &lines.back(), fits);
  return block_of(std::move(lines), how);
}

text_drawer::text_block text_drawer::fitted_block(const page_text& text, styled& how) {
  const int least = text.least_size > 0 ? std::min(text.least_size, how.size) : how.size;
  for (;; --how.size) {
    text_block block = block_of(text.text, how, text.box.width);
    if (block.extent.width <= text.box.width && block.extent.height <= text.box.height &&
        block.extent.lines.size() <= static_cast<std::size_t>(std::max(1, text.most_lines)))
      return block;
    if (how.size <= least)
      return shortened_block(text, how);
  }
}

failure text_drawer::draw(page_canvas& canvas, const page_text& text, double pixel_aspect) {
  if (kept_bytes_ > most_kept_bytes) {
    kept_.clear();
    kept_bytes_ = 0;
  }
  styled how{text.style, text.style.size, pixel_aspect};
  const text_block block = fitted_block(text, how);
  const text_surround around(text.style, pixel_aspect);
  const auto brush = brush_of(around, around.outline, pixel_aspect);
  const page_box& box = text.box;
  std::vector<page_mask> letters, outlines;
  failure trouble;
  int baseline =
      box.top + aligned(text.down, box.height, block.extent.height) + around.outline + block.above;
  for (const line_shape* const shape : block.shapes) {
    if (shape->trouble)
      trouble = shape->trouble;
    if (!shape->letters.covered.empty()) {
      const int left = box.left + around.aside +
                       aligned(text.across, box.width, shape->letters.width + around.wide());
      letters.push_back(moved(shape->letters, left, baseline));
      outlines.push_back(around.outline > 0 ? thickened(letters.back(), around, brush)
                                            : letters.back());
    }
    baseline += block.pitch;
  }
  if (text.style.shadow > 0)
    for (const page_mask& outline : outlines)
      put_mask(canvas, moved(outline, around.shadow_right, around.shadow_down),
               text.style.shadow_colour, box);
  if (around.outline > 0)
    for (const page_mask& outline : outlines)
      put_mask(canvas, outline, text.style.outline_colour, box);
  for (const page_mask& mask : letters)
    put_mask(canvas, mask, text.style.colour, box);
  return trouble;
}

}  // namespace corvane
