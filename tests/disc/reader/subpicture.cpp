#include "subpicture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace corvane::disc {

namespace {

using bytes = std::vector<std::uint8_t>;

std::optional<std::size_t> number_at(const bytes& unit, std::size_t at) {
  if (at + 2 > unit.size())
    return std::nullopt;
  return std::size_t{unit[at]} << 8 | unit[at + 1];
}

int half_of(std::uint8_t byte, bool high) {
  return high ? byte >> 4 : byte & 15;
}

/// Four halves of bytes, for codes 3 to 0.
std::array<int, 4> by_code(const bytes& unit, std::size_t at) {
  return {half_of(unit[at + 1], false), half_of(unit[at + 1], true), half_of(unit[at], false),
          half_of(unit[at], true)};
}

/// Reads the runs of one field of the picture.
class run_reader {
 public:
  run_reader(const bytes& unit, std::size_t at) : unit_(unit), half_(at * 2) {}

  /// Fills one line. False when the data end before it.
  bool line(std::uint8_t* first, std::size_t width) {
    for (std::size_t x = 0; x < width;) {
      // A run takes one to four halves of bytes; how many, its leading zeros tell.
      unsigned run = next();
      for (unsigned shortest = 0x4; run < shortest && shortest <= 0x40; shortest <<= 2)
        run = run << 4 | next();
      const std::size_t length =
          run >> 2 == 0 ? width - x : std::min<std::size_t>(run >> 2, width - x);
      std::fill_n(first + x, length, static_cast<std::uint8_t>(run & 3));
      x += length;
    }
    half_ += half_ & 1;  // a line begins with a byte
    return half_ <= unit_.size() * 2;
  }

 private:
  unsigned next() {
    const std::size_t at = half_++;
    return at / 2 < unit_.size() ? static_cast<unsigned>(half_of(unit_[at / 2], at % 2 == 0)) : 0;
  }

  const bytes& unit_;
  std::size_t half_;
};

/// What the commands of a unit say.
struct commands {
  subpicture picture;
  std::size_t even_lines = 0, odd_lines = 0;
  bool has_area = false, has_picture = false;
  double now = 0;  ///< time of the list that is obeyed, in seconds
};

/// How many bytes of arguments a command has; nothing for one that is not known.
std::optional<std::size_t> arguments_of(unsigned command) {
  switch (command) {
    case 0:
    case 1:
    case 2:
      return 0;
    case 3:
    case 4:
      return 2;
    case 5:
      return 6;
    case 6:
      return 4;
    default:
      return std::nullopt;
  }
}

void obey(const bytes& unit, std::size_t at, unsigned command, commands& c) {
  const auto at_most_12_bits = [&](std::size_t byte, bool first) {
    return first ? unit[byte] << 4 | unit[byte + 1] >> 4 : (unit[byte] & 15) << 8 | unit[byte + 1];
  };
  if (command == 0 || command == 1) {
    c.picture.forced = c.picture.forced || command == 0;
    c.picture.begins = c.now;
  } else if (command == 2) {
    c.picture.ends = c.now;
  } else if (command == 3) {
    c.picture.at_rest.colour = by_code(unit, at);
  } else if (command == 4) {
    c.picture.at_rest.opacity = by_code(unit, at);
  } else if (command == 5) {
    c.has_area = true;
    c.picture.x0 = at_most_12_bits(at, true);
    c.picture.x1 = at_most_12_bits(at + 1, false);
    c.picture.y0 = at_most_12_bits(at + 3, true);
    c.picture.y1 = at_most_12_bits(at + 4, false);
  } else if (command == 6) {
    c.has_picture = true;
    c.even_lines = *number_at(unit, at);
    c.odd_lines = *number_at(unit, at + 2);
  }
}

/// One list of commands. False when it leads out of the unit or holds one that is not known.
bool obey_list(const bytes& unit, std::size_t at, commands& c) {
  for (; at < unit.size(); ++at) {
    const unsigned command = unit[at];
    if (command == 0xFF)
      return true;
    const auto count = arguments_of(command);
    if (!count || at + *count >= unit.size())
      return false;
    obey(unit, at + 1, command, c);
    at += *count;
  }
  return false;
}

/// All lists: each begins with its time and the place of the next one, the last names itself.
bool obey_lists(const bytes& unit, std::size_t first, commands& c) {
  constexpr double seconds_a_tick = 1024 / 90000.0;
  for (std::size_t at = first;;) {
    const auto time = number_at(unit, at), next = number_at(unit, at + 2);
    c.now = static_cast<double>(time.value_or(0)) * seconds_a_tick;
    if (!next || !obey_list(unit, at + 4, c))
      return false;
    if (*next == at)
      return true;
    if (*next < at)
      return false;
    at = *next;
  }
}

bool read_picture(const bytes& unit, commands& c) {
  subpicture& p = c.picture;
  if (p.x1 < p.x0 || p.y1 < p.y0)
    return false;
  const auto width = static_cast<std::size_t>(p.x1 - p.x0 + 1);
  const auto height = static_cast<std::size_t>(p.y1 - p.y0 + 1);
  p.codes.assign(width * height, 0);
  run_reader even(unit, c.even_lines), odd(unit, c.odd_lines);
  for (std::size_t y = 0; y < height; ++y)
    if (!(y % 2 == 0 ? even : odd).line(p.codes.data() + y * width, width))
      return false;
  return true;
}

}  // namespace

code_looks code_looks::of(std::uint32_t bits) {
  code_looks looks;
  for (std::size_t code = 0; code < 4; ++code) {
    looks.colour[code] = static_cast<int>(bits >> (16 + 4 * code) & 15);
    looks.opacity[code] = static_cast<int>(bits >> (4 * code) & 15);
  }
  return looks;
}

int subpicture::code_at(int x, int y) const {
  if (x < x0 || x > x1 || y < y0 || y > y1)
    return -1;
  const auto width = static_cast<std::size_t>(x1 - x0 + 1);
  return codes[static_cast<std::size_t>(y - y0) * width + static_cast<std::size_t>(x - x0)];
}

std::optional<area> seen_at_rest(const subpicture& picture) {
  std::optional<area> seen;
  for (int y = picture.y0; y <= picture.y1; ++y)
    for (int x = picture.x0; x <= picture.x1; ++x) {
      const auto code = static_cast<std::size_t>(picture.code_at(x, y));
      if (picture.at_rest.opacity[code] == 0)
        continue;
      if (!seen)
        seen = area{x, y, x, y};
      seen->x0 = std::min(seen->x0, x);
      seen->x1 = std::max(seen->x1, x);
      seen->y1 = y;
    }
  return seen;
}

result<subpicture> decode_subpicture(const std::vector<std::uint8_t>& unit) {
  const auto size = number_at(unit, 0), lists = number_at(unit, 2);
  if (!size || !lists || *size > unit.size())
    return result<subpicture>::fail("the subpicture is cut off");
  const bytes whole(unit.begin(), unit.begin() + static_cast<std::ptrdiff_t>(*size));
  commands c;
  if (!obey_lists(whole, *lists, c) || !c.has_area || !c.has_picture)
    return result<subpicture>::fail("the subpicture's commands cannot be read");
  if (!read_picture(whole, c))
    return result<subpicture>::fail("the subpicture's picture leads out of it");
  return result<subpicture>::ok(std::move(c.picture));
}

dot colour_of(std::uint32_t entry) {
  const double y = 1.164 * (static_cast<double>(entry >> 16 & 255) - 16);
  const double cr = static_cast<double>(entry >> 8 & 255) - 128;
  const double cb = static_cast<double>(entry & 255) - 128;
  const auto whole = [](double value) {
    return static_cast<int>(std::lround(std::clamp(value, 0.0, 255.0)));
  };
  return {whole(y + 1.596 * cr), whole(y - 0.813 * cr - 0.391 * cb), whole(y + 2.018 * cb), 15};
}

}  // namespace corvane::disc
