// Letters for tests without the toolkit: each one, but a blank, is a block six tenths of an em wide
// and seven tenths high on the baseline, with a tenth of an em of nothing beside it on both sides.
#pragma once

#include "drawing/letter_drawer.h"
#include "platform/text/utf8.h"

#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

namespace corvane::drawing_test {

class block_letters final : public letter_drawer {
 public:
  bool has_family(const std::string& family) override { return family == "blocks"; }
  letter_reach reach(const letter_font& font) override { return {font.em * 0.9, font.em * 0.3}; }

  double advance(const std::string& line, const letter_font& font) override {
    double width = 0;
    for (const char byte : line)
      width += continues_character(byte) ? 0 : font.em * 0.8;
    return width;
  }

  result<letter_picture> draw(const std::string& line, const letter_font& font) override {
    if (!trouble.empty())
      return result<letter_picture>::fail(trouble);
    ++drawn;
    last_family = font.family;
    letter_picture picture;
    picture.width = static_cast<int>(std::ceil(advance(line, font))) + 2;
    picture.height = static_cast<int>(std::ceil(font.em * 1.2)) + 2;
    picture.baseline = 1 + static_cast<int>(std::lround(font.em * 0.9));
    picture.grey.resize(static_cast<std::size_t>(picture.width * picture.height));
    double pen = 1;
    for (const char byte : line) {
      if (continues_character(byte))
        continue;
      if (byte != ' ')
        block(picture, static_cast<int>(std::lround(pen + font.em * 0.1)),
              static_cast<int>(std::lround(font.em * 0.6)),
              static_cast<int>(std::lround(font.em * 0.7)));
      pen += font.em * 0.8;
    }
    return result<letter_picture>::ok(std::move(picture));
  }

  int drawn = 0;
  std::string trouble;  ///< why there are no letters; empty: there are
  std::string last_family;

 private:
  static void block(letter_picture& picture, int left, int width, int height) {
    for (int y = picture.baseline - height; y < picture.baseline; ++y)
      for (int x = left; x < left + width; ++x)
        picture.grey[static_cast<std::size_t>(y * picture.width + x)] = 255;
  }
};

}  // namespace corvane::drawing_test
