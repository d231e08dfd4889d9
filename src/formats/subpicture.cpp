#include "formats/subpicture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr std::size_t code_count = 4;

/// Reads beyond the end are zeros, and remembered.
class unit_bytes {
 public:
  explicit unit_bytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
  unsigned byte(std::size_t at) const {
    overrun_ = overrun_ || at >= bytes_.size();
    return at < bytes_.size() ? bytes_[at] : 0;
  }
  unsigned word(std::size_t at) const { return byte(at) << 8 | byte(at + 1); }
  unsigned nibble(std::size_t at) const {
    return at % 2 == 0 ? byte(at / 2) >> 4 : byte(at / 2) & 15;
  }
  bool overrun() const { return overrun_; }
  std::size_t size() const { return bytes_.size(); }

 private:
  std::span<const std::uint8_t> bytes_;
  mutable bool overrun_ = false;
};

/// What the commands of a unit say.
struct unit_commands {
  subpicture picture;
  std::array<std::size_t, 2> field_at{};  ///< where the first and the second field's lines begin
  bool has_area = false, has_picture = false;
  double now = 0;  ///< the time of the list that is read, in seconds
  subpicture_times times;
};

/// Commands of a list, and how many bytes of arguments they have. What `areas` has to say, looks of
/// parts of the picture, states its length itself.
enum class unit_command : std::uint8_t { force, start, stop, colour, opacity, area, fields, areas };
constexpr std::array<std::size_t, 8> argument_bytes = {0, 0, 0, 2, 2, 6, 4, 2};
constexpr unsigned end_of_list = 0xFF;

void obey(const unit_bytes& unit, std::size_t at, unit_command what, unit_commands& said) {
  subpicture& picture = said.picture;
  const auto by_code = [&](std::array<std::uint8_t, code_count>& set) {
    for (std::size_t code = 0; code < code_count; ++code)
      set[code] = static_cast<std::uint8_t>(unit.nibble(at * 2 + (code_count - 1 - code)));
  };
  switch (what) {
    case unit_command::force:
    case unit_command::start:
      said.times.begins = said.times.begins.value_or(said.now);
      break;
    case unit_command::stop:
      said.times.ends = said.now;
      break;
    case unit_command::colour:
      by_code(picture.at_rest.colour);
      break;
    case unit_command::opacity:
      by_code(picture.at_rest.opacity);
      break;
    case unit_command::area:
      picture.x0 = static_cast<int>(unit.word(at) >> 4);
      picture.x1 = static_cast<int>(unit.word(at + 1) & 0xFFF);
      picture.y0 = static_cast<int>(unit.word(at + 3) >> 4);
      picture.y1 = static_cast<int>(unit.word(at + 4) & 0xFFF);
      said.has_area = true;
      break;
    case unit_command::fields:
      said.field_at = {unit.word(at), unit.word(at + 2)};
      said.has_picture = true;
      break;
    default:
      break;
  }
}

/// One list of commands, which ends before `end`. False when it does not, or holds one that is not
/// known.
bool obey_list(const unit_bytes& unit, std::size_t at, std::size_t end, unit_commands& said) {
  while (at < end) {
    const unsigned number = unit.byte(at++);
    if (number == end_of_list)
      return true;
    if (number >= argument_bytes.size())
      return false;
    const auto what = static_cast<unit_command>(number);
    obey(unit, at, what, said);
    at += what == unit_command::areas ? std::max<std::size_t>(unit.word(at), 2)
                                      : argument_bytes[number];
  }
  return false;
}

/// Each list begins with its time and where the next one is; the last one names itself. They stand
/// one behind the other, so that no byte is read twice.
std::optional<unit_commands> lists_of(const unit_bytes& unit) {
  // Times of lists count so many clocks of 90 kHz.
  constexpr double clocks = 1024;
  unit_commands said;
  for (std::size_t at = unit.word(2);;) {
    said.now = unit.word(at) * clocks / 90'000;
    const std::size_t next = unit.word(at + 2);
    if (next < at || !obey_list(unit, at + 4, next == at ? unit.size() : next, said))
      return std::nullopt;
    if (next == at)
      return unit.overrun() ? std::nullopt : std::optional(std::move(said));
    at = next;
  }
}

std::optional<unit_commands> commands_of(const unit_bytes& unit) {
  auto said = lists_of(unit);
  if (!said)
    return std::nullopt;
  const subpicture& p = said->picture;
  const bool drawable = said->has_area && said->has_picture && p.x0 <= p.x1 && p.y0 <= p.y1;
  return drawable ? std::move(said) : std::nullopt;
}

struct coded_run {
  unsigned dots;  ///< 0: to the end of the line
  unsigned code;
};

/// A run takes one to four nibbles; how many, its leading zeros tell.
coded_run next_run(const unit_bytes& unit, std::size_t& nibble) {
  unsigned bits = unit.nibble(nibble++);
  for (unsigned least = 0x4; bits < least && least <= 0x40; least <<= 2)
    bits = bits << 4 | unit.nibble(nibble++);
  return {bits >> 2, bits & 3};
}

void read_line(const unit_bytes& unit, std::size_t& nibble, int y, subpicture& picture) {
  for (int x = picture.x0; x <= picture.x1 && !unit.overrun();) {
    const coded_run run = next_run(unit, nibble);
    const int left = picture.x1 + 1 - x;
    const int dots = run.dots == 0 ? left : std::min(static_cast<int>(run.dots), left);
    picture.runs.push_back({y, x, x + dots - 1, static_cast<std::uint8_t>(run.code)});
    x += dots;
  }
  nibble += nibble % 2;  // a line begins with a whole byte
}

}  // namespace

code_looks code_looks_of(std::uint32_t bits) {
  code_looks looks;
  for (std::size_t code = 0; code < code_count; ++code) {
    looks.colour[code] = static_cast<std::uint8_t>(bits >> (16 + 4 * code) & 15);
    looks.opacity[code] = static_cast<std::uint8_t>(bits >> (4 * code) & 15);
  }
  return looks;
}

result<subpicture> read_subpicture(std::span<const std::uint8_t> bytes, int frame_width,
                                   int frame_height) {
  const unit_bytes unit(bytes);
  auto said = commands_of(unit);
  if (!said)
    return result<subpicture>::fail("cannot be read");
  subpicture& picture = said->picture;
  if (picture.x1 >= frame_width || picture.y1 >= frame_height)
    return result<subpicture>::fail("does not fit into the picture");
  std::array<std::size_t, 2> nibble = {said->field_at[0] * 2, said->field_at[1] * 2};
  for (int y = picture.y0; y <= picture.y1 && !unit.overrun(); ++y)
    read_line(unit, nibble[static_cast<std::size_t>(y - picture.y0) % 2], y, picture);
  if (unit.overrun())
    return result<subpicture>::fail("is cut off");
  return result<subpicture>::ok(std::move(picture));
}

std::optional<subpicture_times> read_subpicture_times(std::span<const std::uint8_t> bytes) {
  const auto said = lists_of(unit_bytes(bytes));
  return said ? std::optional(said->times) : std::nullopt;
}

std::size_t stated_unit_size(std::span<const std::uint8_t> unit) {
  return unit.size() < 2 ? 0 : std::size_t{unit[0]} << 8 | unit[1];
}

rgb_colour colour_of_entry(std::uint32_t entry) {
  const double y = 1.164 * (static_cast<double>(entry >> 16 & 255) - 16);
  const double cr = static_cast<double>(entry >> 8 & 255) - 128;
  const double cb = static_cast<double>(entry & 255) - 128;
  const auto whole = [](double value) {
    return static_cast<std::uint8_t>(std::lround(std::clamp(value, 0.0, 255.0)));
  };
  return {whole(y + 1.596 * cr), whole(y - 0.813 * cr - 0.391 * cb), whole(y + 2.018 * cb)};
}

}  // namespace corvane
