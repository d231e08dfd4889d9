// What the tests of made menus share: titles, and a measure of texts that needs no fonts.
#pragma once

#include "disc/disc_description.h"
#include "formats/drawn_page.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::testing_support {

/// Letters of Asia are an em wide, marks nothing, others 0.55 em.
inline double letter_ems(std::uint32_t code) {
  if (code >= 0x2E80 && code < 0xFB00)
    return 1.0;
  return code >= 0x0300 && code <= 0x036F ? 0.0 : 0.55;
}

inline int width_of_line(std::string_view line, const text_style& style, double pixel_aspect) {
  double ems = 0;
  for (std::size_t at = 0; at < line.size();) {
    const utf8_character c = first_character(line.substr(at));
    ems += letter_ems(c.code);
    at += std::max<std::size_t>(c.length, 1);
  }
  const double lines = ems * style.size + 2 * style.outline + style.shadow;
  return static_cast<int>(std::ceil(lines / pixel_aspect));
}

/// Wraps at blanks, and within what is too wide alone.
inline text_extent measured_text(std::string_view text, const text_style& style, int box_width,
                                 double pixel_aspect) {
  const auto fits = [&](const std::string& line) {
    return box_width == 0 || width_of_line(line, style, pixel_aspect) <= box_width;
  };
  text_extent extent;
  for (const std::string& paragraph : split(text, '\n')) {
    std::string line;
    for (std::string word : split(paragraph, ' ')) {
      const std::string longer = line.empty() ? word : line + " " + word;
      if (fits(longer)) {
        line = longer;
        continue;
      }
      if (!line.empty())
        extent.lines.push_back(line);
      line.clear();
      while (!fits(word)) {
        std::size_t end = 0;
        for (;;) {
          const std::size_t next =
              end + std::max<std::size_t>(first_character(word.substr(end)).length, 1);
          if (end > 0 && !fits(word.substr(0, next)))
            break;
          end = next;
          if (end >= word.size())
            break;
        }
        extent.lines.push_back(word.substr(0, end));
        word = word.substr(end);
        if (word.empty())
          break;
      }
      line = word;
    }
    extent.lines.push_back(line);
  }
  for (const std::string& line : extent.lines)
    extent.width = std::max(extent.width, width_of_line(line, style, pixel_aspect));
  extent.height = static_cast<int>(extent.lines.size()) * ((style.size * 12 + 9) / 10) +
                  2 * style.outline + style.shadow;
  return extent;
}

/// A title of so many chapters, ten seconds each, whose video is called so.
inline disc_title title_named(const std::string& name, int chapters) {
  disc_title title;
  title.streams = {"\\films\\" + name + ".m2v", "\\films\\a.ac3"};
  title.is_multiplexed_here = true;
  for (int i = 0; i < chapters; ++i)
    title.chapters.push_back(time_of(trimmed(std::int64_t{i} * 10)));
  return title;
}

/// Names as people have them: short, very long, of Asia, from right to left, with accents.
inline const std::vector<std::string>& odd_names() {
  static const char* const of_asia =
      "\xE5\xA4\x8F\xE4\xBC\x91\xE3\x81\xBF\xE3\x81\xAE\xE6\x80\x9D\xE3\x81\x84\xE5\x87\xBA\xE3"
      "\x80\x81\xE6\xB5\xB7\xE3\x81\xA8\xE5\xB1\xB1\xE3\x81\xA8\xE7\xA5\xAD\xE3\x82\x8A\xE3\x81"
      "\xAE\xE5\xA4\x9C\xE3\x81\xAE\xE8\xA8\x98\xE9\x8C\xB2";
  static const char* const arabic =
      "\xD8\xB1\xD8\xAD\xD9\x84\xD8\xAA\xD9\x86\xD8\xA7 \xD8\xA5\xD9\x84\xD9\x89 "
      "\xD8\xA7\xD9\x84\xD8\xA8\xD8\xAD\xD8\xB1";
  static const std::vector<std::string> names = {
      "a",
      "the whole of our journey through the mountains and back home again by the slow train",
      std::string(200, 'W'),
      of_asia,
      "\xD7\xA9\xD7\x9C\xD7\x95\xD7\x9D \xD7\xA2\xD7\x95\xD7\x9C\xD7\x9D",
      arabic,
      "e\xCC\x81t\x65\xCC\x81",
  };
  return names;
}

inline disc_description disc_of_titles(int titles, int chapters,
                                       video_standard standard = video_standard::ntsc) {
  disc_description d;
  d.standard = standard;
  for (int t = 0; t < titles; ++t) {
    const std::string& name = odd_names()[static_cast<std::size_t>(t) % odd_names().size()];
    d.titles.push_back(title_named(name + "_" + trimmed(t + 1), chapters));
  }
  return d;
}

}  // namespace corvane::testing_support
