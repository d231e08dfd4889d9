#include "drawing/text_wrap.h"

#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace corvane {
namespace {

constexpr std::string_view ellipsis = "\xE2\x80\xA6";

struct code_range {
  std::uint32_t first, last;
};

template <std::size_t count>
bool is_one_of(const std::array<code_range, count>& ranges, std::uint32_t code) {
  return std::ranges::any_of(ranges, [code](const code_range& range) {
    return code >= range.first && code <= range.last;
  });
}

/// Marks that stand on the letter before them, and joiners.
constexpr auto marks = std::to_array<code_range>(
    {{0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD},   {0x05BF, 0x05C7},  {0x0610, 0x061A},
     {0x064B, 0x065F}, {0x0670, 0x0670}, {0x06D6, 0x06DC},   {0x06DF, 0x06E8},  {0x06EA, 0x06ED},
     {0x0900, 0x0903}, {0x093A, 0x093C}, {0x093E, 0x094F},   {0x0951, 0x0957},  {0x0981, 0x0983},
     {0x09BC, 0x09CD}, {0x0A01, 0x0A03}, {0x0A3C, 0x0A4D},   {0x0B01, 0x0B03},  {0x0B3C, 0x0B4D},
     {0x0BBE, 0x0BCD}, {0x0C3E, 0x0C4D}, {0x0CBE, 0x0CCD},   {0x0D3E, 0x0D4D},  {0x0E31, 0x0E31},
     {0x0E33, 0x0E3A}, {0x0E47, 0x0E4E}, {0x0EB1, 0x0EB1},   {0x0EB3, 0x0EBC},  {0x0EC8, 0x0ECD},
     {0x102B, 0x103E}, {0x1160, 0x11FF}, {0x17B4, 0x17D3},   {0x1AB0, 0x1AFF},  {0x1DC0, 0x1DFF},
     {0x200B, 0x200F}, {0x202A, 0x202E}, {0x2060, 0x2069},   {0x20D0, 0x20F0},  {0x3099, 0x309A},
     {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0x1F3FB, 0x1F3FF}, {0xE0100, 0xE01EF}});

/// Letters between which a line may end: Thai and its neighbours, and what is written in squares.
constexpr auto without_blanks = std::to_array<code_range>({{0x0E01, 0x0EDF},
                                                           {0x1000, 0x109F},
                                                           {0x1780, 0x17DD},
                                                           {0x2E80, 0x312F},
                                                           {0x3130, 0x9FFF},
                                                           {0xAC00, 0xD7A3},
                                                           {0xF900, 0xFAFF},
                                                           {0xFF01, 0xFFDC},
                                                           {0x20000, 0x3FFFF}});

/// What no line of such a script begins with: full stops, closing brackets, small letters.
constexpr auto not_first = std::to_array<std::uint32_t>(
    {'!',    ')',    ',',    '.',    ':',    ';',    '?',    ']',    '}',    0x2019, 0x201D, 0x2026,
     0x3001, 0x3002, 0x3005, 0x3009, 0x300B, 0x300D, 0x300F, 0x3011, 0x3015, 0x3017, 0x3041, 0x3043,
     0x3045, 0x3047, 0x3049, 0x3063, 0x3083, 0x3085, 0x3087, 0x308E, 0x309D, 0x309E, 0x30A1, 0x30A3,
     0x30A5, 0x30A7, 0x30A9, 0x30C3, 0x30E3, 0x30E5, 0x30E7, 0x30EE, 0x30FB, 0x30FC, 0x30FD, 0x30FE,
     0xFF01, 0xFF09, 0xFF0C, 0xFF0E, 0xFF1A, 0xFF1B, 0xFF1F, 0xFF3D, 0xFF5D});

/// And what none ends with: opening brackets.
constexpr auto not_last =
    std::to_array<std::uint32_t>({'(', '[', '{', 0x2018, 0x201C, 0x3008, 0x300A, 0x300C, 0x300E,
                                  0x3010, 0x3014, 0x3016, 0xFF08, 0xFF3B, 0xFF5B});

/// A letter with its marks.
struct letter_cluster {
  std::string_view text;
  std::uint32_t code = 0;  ///< of the letter

  /// A blank that bears a mark shows it.
  bool is_blank() const { return text == " " || text == "\u3000"; }
};

bool may_break_between(const letter_cluster& before, const letter_cluster& after) {
  if (before.is_blank() || after.is_blank())
    return true;
  if (std::ranges::find(not_last, before.code) != not_last.end() ||
      std::ranges::find(not_first, after.code) != not_first.end())
    return false;
  return before.code == '-' || is_one_of(without_blanks, before.code) ||
         is_one_of(without_blanks, after.code);
}

/// Of well-formed text.
std::vector<letter_cluster> clusters_of(std::string_view text) {
  constexpr std::uint32_t joiner = 0x200D;
  std::vector<letter_cluster> clusters;
  std::uint32_t last = 0;
  for (std::size_t at = 0; at < text.size();) {
    const utf8_character next = first_character(text.substr(at));
    const std::size_t length = std::max<std::size_t>(1, next.length);
    if (!clusters.empty() && (is_one_of(marks, next.code) || last == joiner)) {
      const std::string_view before = clusters.back().text;
      clusters.back().text = {before.data(), before.size() + length};
    } else {
      clusters.push_back({text.substr(at, length), next.code});
    }
    last = next.code;
    at += length;
  }
  return clusters;
}

/// A row of clusters as a line: without the blanks at its ends.
std::string line_of(const std::vector<letter_cluster>& clusters, std::size_t begin,
                    std::size_t end) {
  while (begin < end && clusters[begin].is_blank())
    ++begin;
  while (begin < end && clusters[end - 1].is_blank())
    --end;
  std::string line;
  for (; begin < end; ++begin)
    line += clusters[begin].text;
  return line;
}

/// The last of these ends (there is one at least, in order) with which a line fits; the first where
/// none does.
std::size_t last_fitting(const std::vector<letter_cluster>& clusters, std::size_t begin,
                         const std::vector<std::size_t>& ends, const line_fits& fits) {
  std::size_t good = 0, bad = ends.size();
  while (bad - good > 1) {
    const std::size_t middle = (good + bad) / 2;
    (fits(line_of(clusters, begin, ends[middle])) ? good : bad) = middle;
  }
  return ends[good];
}

/// Behind as many clusters as are sure to hold the line, so that the rest of a long text is not
/// looked at for each.
std::size_t far_enough(const std::vector<letter_cluster>& clusters, std::size_t begin,
                       const line_fits& fits) {
  const std::size_t all = clusters.size() - begin;
  std::size_t count = 64;
  while (count < all && fits(line_of(clusters, begin, begin + count)))
    count *= 2;
  return begin + std::min(count, all);
}

std::size_t end_of_line(const std::vector<letter_cluster>& clusters, std::size_t begin,
                        const line_fits& fits) {
  const std::size_t size = far_enough(clusters, begin, fits);
  if (size == clusters.size() && fits(line_of(clusters, begin, size)))
    return size;
  std::vector<std::size_t> ends;
  for (std::size_t at = begin + 1; at < size; ++at)
    if (may_break_between(clusters[at - 1], clusters[at]))
      ends.push_back(at);
  ends.push_back(size);
  const std::size_t end = last_fitting(clusters, begin, ends, fits);
  if (end != ends.front() || fits(line_of(clusters, begin, end)))
    return end;
  std::vector<std::size_t> within;
  for (std::size_t at = begin + 1; at <= end; ++at)
    within.push_back(at);
  return last_fitting(clusters, begin, within, fits);
}

void append_wrapped(std::string_view paragraph, const line_fits& fits,
                    std::vector<std::string>& lines) {
  const auto clusters = clusters_of(paragraph);
  std::size_t begin = 0;
  do {
    while (begin < clusters.size() && clusters[begin].is_blank())
      ++begin;
    const std::size_t end = begin == clusters.size() ? begin : end_of_line(clusters, begin, fits);
    lines.push_back(line_of(clusters, begin, end));
    begin = end;
    while (begin < clusters.size() && clusters[begin].is_blank())
      ++begin;
  } while (begin < clusters.size());
}

}  // namespace

std::vector<std::string> wrapped_lines(std::string_view text, const line_fits& fits) {
  std::string whole = repaired_utf8(text);
  for (char& byte : whole)
    if (is_control_character(byte) && byte != '\n')
      byte = ' ';
  std::vector<std::string> lines;
  for (std::string_view rest = whole;;) {
    const std::size_t end = rest.find('\n');
    append_wrapped(rest.substr(0, end), fits, lines);
    if (end == std::string_view::npos)
      return lines;
    rest.remove_prefix(end + 1);
  }
}

std::string shortened_line(const std::string& line, bool must_end, const line_fits& fits) {
  if (!must_end && fits(line))
    return line;
  const auto clusters = clusters_of(line);
  const auto cut_behind = [&](std::size_t count) {
    return line_of(clusters, 0, count) + std::string(ellipsis);
  };
  std::size_t good = 0, bad = clusters.size() + 1;
  while (bad - good > 1) {
    const std::size_t middle = (good + bad) / 2;
    (fits(cut_behind(middle)) ? good : bad) = middle;
  }
  return cut_behind(good);
}

}  // namespace corvane
