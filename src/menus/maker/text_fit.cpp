#include "menus/maker/text_fit.h"

#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace corvane {
namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6";

// Longer texts are cut before they are measured: no box of a menu holds as much.
constexpr std::size_t most_characters = 500;

std::string as_fit(std::string_view text) {
  std::string plain = repaired_utf8(text);
  for (char& c : plain)
    if (is_control_character(c) && c != '\n')
      c = ' ';
  return std::string(trim(plain));
}

/// Marks that belong to the letter before them: accents, vowel signs, joiners, kinds of a letter.
bool belongs_to_letter_before(std::uint32_t code) {
  struct range {
    std::uint32_t first, last;
  };
  constexpr range marks[] = {{0x0300, 0x036F}, {0x0591, 0x05C7}, {0x064B, 0x065F},
                             {0x0900, 0x0903}, {0x093A, 0x094F}, {0x0E31, 0x0E3A},
                             {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF}, {0x200C, 0x200D},
                             {0x20D0, 0x20FF}, {0xFE00, 0xFE0F}, {0x1F3FB, 0x1F3FF}};
  return std::ranges::any_of(marks,
                             [code](const range& r) { return r.first <= code && code <= r.last; });
}

/// Where the text can be cut: behind each letter with all its marks.
std::vector<std::size_t> letter_ends(std::string_view text) {
  std::vector<std::size_t> ends;
  bool is_joined = false;
  for (std::size_t at = 0; at < text.size();) {
    const utf8_character c = first_character(text.substr(at));
    at += std::max<std::size_t>(c.length, 1);
    if ((is_joined || belongs_to_letter_before(c.code)) && !ends.empty())
      ends.back() = at;
    else
      ends.push_back(at);
    is_joined = c.code == 0x200D;
  }
  return ends;
}

/// Scripts that are written without blanks, whose lines may end between any letters.
bool has_no_blanks(std::uint32_t code) {
  return (code >= 0x0E01 && code < 0x0EE0) || (code >= 0x1000 && code < 0x10A0) ||
         (code >= 0x1780 && code < 0x17DE) || (code >= 0x2E80 && code < 0xA000) ||
         (code >= 0xAC00 && code < 0xD7A4) || (code >= 0xF900 && code < 0xFB00) ||
         (code >= 0xFF01 && code < 0xFFDD) || (code >= 0x20000 && code < 0x40000);
}

/// The letter that a text ends with, without looking for its marks.
std::uint32_t last_character(std::string_view text) {
  std::size_t at = text.size();
  while (at > 0 && (static_cast<unsigned char>(text[--at]) & 0xC0U) == 0x80U) {
  }
  return first_character(text.substr(at)).code;
}

/// Whether one of the lines that a text was wrapped into ends within a word.
bool has_broken_word(std::string_view text, const std::vector<std::string>& lines) {
  std::size_t at = 0;
  for (const std::string& line : lines) {
    at = text.find(line, at);
    if (at == std::string_view::npos)
      return false;
    at += line.size();
    if (line.empty() || at >= text.size())
      continue;
    const std::uint32_t before = last_character(line);
    const std::uint32_t next = first_character(text.substr(at)).code;
    const bool may_end = before == '-' || next == ' ' || next == '\n' || has_no_blanks(before) ||
                         has_no_blanks(next);
    if (!may_end)
      return true;
  }
  return false;
}

class fitter {
 public:
  fitter(const design_text& how, const page_box& box, double pixel_aspect,
         const text_measure& measure)
      : how_(how), style_(how.style), box_(box), aspect_(pixel_aspect), measure_(measure) {}

  fitted_text fit(const std::string& text) {
    if (text.empty())
      return {{}, how_.style.size, false};
    const bool is_cut = letter_ends(text).size() > most_characters;
    if (!is_cut)
      for (const way& one : ways())
        for (int size = how_.style.size;; --size) {
          if (auto fitted = at_size(text, size, one))
            return {*fitted, size, false};
          if (size <= one.least_size)
            break;
        }
    return shortened(text);
  }

 private:
  /// Of fitting a text that is not shortened.
  struct way {
    int lines = 1, least_size = 0;
    bool breaks_words = true;
  };

  /// A line that is a little smaller looks better than two, and two better than one that is much
  /// smaller. Words are only broken where nothing else helps.
  std::vector<way> ways() const {
    const int least = std::min(how_.least_size, how_.style.size);
    if (how_.most_lines == 1)
      return {{1, least}};
    return {{1, std::max(least, (3 * how_.style.size + 3) / 4)},
            {how_.most_lines, least, false},
            {how_.most_lines, least}};
  }

  /// The text in lines, if it fits so.
  std::optional<std::string> at_size(const std::string& text, int size, const way& one) {
    style_.size = size;
    const text_extent extent = measure_(text, style_, one.lines == 1 ? 0 : box_.width, aspect_);
    const bool fits = extent.width <= box_.width && extent.height <= box_.height &&
                      extent.lines.size() <= static_cast<std::size_t>(one.lines) &&
                      (one.breaks_words || !has_broken_word(text, extent.lines));
    return fits ? std::optional(join(extent.lines, "\n")) : std::nullopt;
  }

  std::optional<std::string> cut_at(const std::string& text, std::size_t end, int size) {
    const std::string kept(trim_right(std::string_view(text).substr(0, end)));
    return at_size(kept + std::string(ellipsis), size, {how_.most_lines, size});
  }

  /// As much of the text as fits at the least size, or if nothing does, at smaller ones.
  fitted_text shortened(const std::string& text) {
    std::vector<std::size_t> ends = letter_ends(text);
    if (ends.size() > most_characters)
      ends.resize(most_characters);
    constexpr int smallest = 6;
    for (int size = how_.least_size; size >= smallest; --size)
      for (std::size_t letters = most_that_fit(text, ends, size); letters > 0; --letters)
        if (auto fitted = cut_at(text, ends[letters - 1], size))
          return {*fitted, size, true};
    return {{}, how_.least_size, true};
  }

  std::size_t most_that_fit(const std::string& text, const std::vector<std::size_t>& ends,
                            int size) {
    std::size_t fits = 0, not_any_more = ends.size() + 1;
    while (not_any_more - fits > 1) {
      const std::size_t middle = (fits + not_any_more) / 2;
      (cut_at(text, ends[middle - 1], size) ? fits : not_any_more) = middle;
    }
    return fits;
  }

  const design_text& how_;
  text_style style_;
  page_box box_;
  double aspect_;
  const text_measure& measure_;
};

}  // namespace

fitted_text fit_text(std::string_view text, const design_text& how, const page_box& box,
                     double pixel_aspect, const text_measure& measure) {
  return fitter(how, box, pixel_aspect, measure).fit(as_fit(text));
}

}  // namespace corvane
