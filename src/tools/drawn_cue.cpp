#include "tools/drawn_cue.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>

namespace corvane {
namespace {

constexpr std::size_t codes = 4;
using pixel = std::array<std::uint8_t, 4>;

/// Reads beyond the end are zeros, and remembered.
class unit_bytes {
 public:
  explicit unit_bytes(std::string_view bytes) : bytes_(bytes) {}
  unsigned byte(std::size_t at) const {
    overrun_ = overrun_ || at >= bytes_.size();
    return at < bytes_.size() ? static_cast<unsigned char>(bytes_[at]) : 0;
  }
  unsigned word(std::size_t at) const { return byte(at) << 8 | byte(at + 1); }
  unsigned nibble(std::size_t at) const {
    return at % 2 == 0 ? byte(at / 2) >> 4 : byte(at / 2) & 15;
  }
  bool overrun() const { return overrun_; }
  std::size_t size() const { return bytes_.size(); }

 private:
  std::string_view bytes_;
  mutable bool overrun_ = false;
};

/// What a unit's commands set. Both arrays are by code.
struct unit_look {
  std::array<unsigned, codes> colour{}, opacity{};
  unsigned x0 = 0, x1 = 0, y0 = 0, y1 = 0;
  std::array<std::size_t, 2> field_at{};  ///< where the even and the odd lines begin
  bool has_area = false, has_picture = false;
};

/// Commands of a display control sequence, and how many bytes of arguments they have.
enum class command : std::uint8_t { force, start, stop, colour, opacity, area, fields };
constexpr std::array<std::size_t, 7> argument_bytes = {0, 0, 0, 2, 2, 6, 4};
constexpr unsigned end_of_sequence = 0xFF;

void obey(const unit_bytes& unit, std::size_t at, command what, unit_look& look) {
  const auto by_code = [&](std::array<unsigned, codes>& set) {
    for (std::size_t code = 0; code < codes; ++code)
      set[code] = unit.nibble(at * 2 + (codes - 1 - code));
  };
  switch (what) {
    case command::colour:
      by_code(look.colour);
      break;
    case command::opacity:
      by_code(look.opacity);
      break;
    case command::area:
      look.x0 = unit.word(at) >> 4;
      look.x1 = unit.word(at + 1) & 0xFFF;
      look.y0 = unit.word(at + 3) >> 4;
      look.y1 = unit.word(at + 4) & 0xFFF;
      look.has_area = true;
      break;
    case command::fields:
      look.field_at = {unit.word(at), unit.word(at + 2)};
      look.has_picture = true;
      break;
    default:
      break;
  }
}

/// One sequence of commands. False when it holds one that is not known.
bool obey_sequence(const unit_bytes& unit, std::size_t at, unit_look& look) {
  while (at < unit.size()) {
    const unsigned number = unit.byte(at++);
    if (number == end_of_sequence)
      return true;
    if (number >= argument_bytes.size())
      return false;
    obey(unit, at, static_cast<command>(number), look);
    at += argument_bytes[number];
  }
  return false;
}

/// Each sequence begins with its time and where the next one is; the last one names itself.
std::optional<unit_look> look_of(const unit_bytes& unit) {
  unit_look look;
  for (std::size_t at = unit.word(2);;) {
    const std::size_t next = unit.word(at + 2);
    if (!obey_sequence(unit, at + 4, look) || next < at)
      return std::nullopt;
    if (next == at)
      break;
    at = next;
  }
  const bool drawable = look.has_area && look.has_picture && look.x0 <= look.x1 &&
                        look.y0 <= look.y1 && !unit.overrun();
  return drawable ? std::optional(look) : std::nullopt;
}

pixel pixel_of(const disc_colour& c, unsigned opacity) {
  const double y = 1.164 * (c[0] - 16.0), cr = c[1] - 128.0, cb = c[2] - 128.0;
  const auto whole = [](double value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
  };
  return {whole(y + 1.596 * cr), whole(y - 0.813 * cr - 0.391 * cb), whole(y + 2.018 * cb),
          static_cast<std::uint8_t>(opacity * 17)};
}

struct run {
  unsigned length;  ///< 0: to the end of the line
  unsigned code;
};

/// A run takes one to four nibbles; how many, its leading zeros tell.
run next_run(const unit_bytes& unit, std::size_t& nibble) {
  unsigned bits = unit.nibble(nibble++);
  for (unsigned least = 0x4; bits < least && least <= 0x40; least <<= 2)
    bits = bits << 4 | unit.nibble(nibble++);
  return {bits >> 2, bits & 3};
}

class painter {
 public:
  painter(const unit_bytes& unit, const unit_look& look, drawn_cue& cue)
      : unit_(unit), look_(look), cue_(cue) {}

  void set_code(std::size_t code, const pixel& p) { pixels_[code] = p; }

  /// False when the data end before the picture.
  bool paint() {
    std::array<std::size_t, 2> nibble = {look_.field_at[0] * 2, look_.field_at[1] * 2};
    for (unsigned y = look_.y0; y <= look_.y1 && !unit_.overrun(); ++y)
      line(y, nibble[(y - look_.y0) % 2]);
    return !unit_.overrun();
  }

 private:
  void line(unsigned y, std::size_t& nibble) {
    for (unsigned x = look_.x0; x <= look_.x1 && !unit_.overrun();) {
      const run r = next_run(unit_, nibble);
      const unsigned rest = look_.x1 + 1 - x;
      const unsigned length = r.length == 0 ? rest : std::min(r.length, rest);
      const std::size_t first = (std::size_t{y} * static_cast<unsigned>(cue_.width) + x) * 4;
      for (std::size_t i = 0; i < length; ++i)
        std::copy(pixels_[r.code].begin(), pixels_[r.code].end(),
                  cue_.rgba.begin() + static_cast<std::ptrdiff_t>(first + i * 4));
      x += length;
    }
    nibble += nibble % 2;  // a line begins with a whole byte
  }

  const unit_bytes& unit_;
  const unit_look& look_;
  drawn_cue& cue_;
  std::array<pixel, codes> pixels_{};
};

}  // namespace

failure paint_unit(std::string_view bytes, const std::vector<disc_colour>& palette,
                   drawn_cue& cue) {
  const unit_bytes unit(bytes);
  const auto look = look_of(unit);
  if (!look)
    return "its subpicture cannot be read";
  if (look->x1 >= static_cast<unsigned>(cue.width) || look->y1 >= static_cast<unsigned>(cue.height))
    return "its subpicture does not fit into the picture";
  cue.rgba.assign(
      static_cast<std::size_t>(cue.width) * static_cast<unsigned>(cue.height) * sizeof(pixel), 0);
  painter painting(unit, *look, cue);
  for (std::size_t code = 0; code < codes; ++code)
    if (look->opacity[code] > 0 && look->colour[code] < palette.size())
      painting.set_code(code, pixel_of(palette[look->colour[code]], look->opacity[code]));
  if (!painting.paint())
    return "its subpicture is cut off";
  return std::nullopt;
}

}  // namespace corvane
