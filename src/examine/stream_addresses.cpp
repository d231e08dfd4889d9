#include "examine/stream_addresses.h"

#include "formats/program_stream.h"

#include <array>
#include <cstddef>
#include <string>
#include <utility>

namespace corvane {

namespace {

enum kind_of_trouble { sound_address, picture_address };

bool is_sound(std::uint8_t stream) {
  constexpr int last_sound = 0xDF;
  return (stream >= 0x80 && stream <= 0x8F) || (stream >= 0xA0 && stream <= 0xA7) ||
         (stream >= first_sound_stream && stream <= last_sound);
}

bool is_video(std::uint8_t stream) {
  return stream >= first_video_stream && stream <= last_video_stream;
}

class address_checks {
 public:
  address_checks(const disc_vobs& vobs, std::span<const std::uint8_t> packs)
      : vobs_(vobs), packs_(packs) {}

  std::vector<unit_trouble> all() {
    for (const disc_unit& unit : vobs_.units) {
      if (std::exchange(vob_, unit.vob) != unit.vob) {
        streams_ = {};
        reached_ = {};
      }
      if (first_ == nullptr || first_->vob != unit.vob || first_->cell != unit.cell)
        first_ = &unit;
      look_at_sounds(unit);
      look_at_pictures(unit);
    }
    return troubles_.take();
  }

 private:
  void tell(const disc_unit& unit, kind_of_trouble kind, std::string what) {
    if (!troubles_.is_first(unit.vob, unit.cell, kind, unit.sector))
      return;
    unit_trouble trouble;
    trouble.titleset = vobs_.titleset;
    trouble.menus = vobs_.menus;
    trouble.sector = unit.sector;
    trouble.vob = unit.vob;
    trouble.cell = unit.cell;
    trouble.clocks = clocks_since(first_->begins, unit.begins);
    trouble.what = std::move(what);
    troubles_.add(kind, std::move(trouble));
  }

  /// Forward or back from the unit to the pack with which a stream goes on: always one of the same
  /// stream in a VOB.
  void look_at_sounds(const disc_unit& unit) {
    constexpr unsigned none = 0x3FFF, back = 0x8000;
    for (std::size_t i = 0; i < unit.audio.size(); ++i) {
      const unsigned address = unit.audio[i], distance = address & ~back;
      if (address == 0 || (address & none) == none)
        continue;
      const bool there = (address & back) == 0 || distance <= unit.sector;
      const std::uint64_t to = (address & back) == 0 ? std::uint64_t{unit.sector} + distance
                                                     : std::uint64_t{unit.sector} - distance;
      const std::string name = "sound stream " + std::to_string(i + 1) + " is said to go on ";
      if (!there || to >= vobs_.sectors) {
        tell(unit, sound_address, name + "outside the VOBs");
        continue;
      }
      if (to >= packs_.size())
        continue;
      const std::uint8_t stream = packs_[static_cast<std::size_t>(to)];
      if (stream == 0)
        continue;
      const std::string place = name + "at sector " + std::to_string(to);
      if (!is_sound(stream))
        tell(unit, sound_address, place + ", which has no sound");
      else if (!is_its_own(i, stream))
        tell(unit, sound_address, place + ", which has sound of another stream");
      else if (to < reached_[i])
        tell(unit, sound_address, place + ", which an earlier unit is behind already");
      else
        reached_[i] = to;
    }
  }

  /// Whether a sound stream leads to where it led so far, and no other one did.
  bool is_its_own(std::size_t number, std::uint8_t stream) {
    for (std::size_t i = 0; i < streams_.size(); ++i)
      if ((i == number) != (streams_[i] == stream) && streams_[i] != 0)
        return false;
    streams_[number] = stream;
    return true;
  }

  void look_at_pictures(const disc_unit& unit) {
    for (const std::uint32_t end : unit.reference_ends) {
      const std::uint64_t to = std::uint64_t{unit.sector} + end;
      if (end == 0 || to >= packs_.size())
        continue;
      const std::uint8_t stream = packs_[static_cast<std::size_t>(to)];
      if (stream != 0 && !is_video(stream))
        tell(unit, picture_address,
             "a picture is said to end at sector " + std::to_string(to) + ", which has none");
    }
  }

  const disc_vobs& vobs_;
  std::span<const std::uint8_t> packs_;
  int vob_ = 0;
  // Where the sound streams of the VOB led so far.
  std::array<std::uint8_t, 8> streams_{};
  std::array<std::uint64_t, 8> reached_{};
  const disc_unit* first_ = nullptr;  // of its cell
  unit_trouble_list troubles_;
};

}  // namespace

std::vector<unit_trouble> stream_address_troubles(const disc_vobs& vobs,
                                                  std::span<const std::uint8_t> packs) {
  return address_checks(vobs, packs).all();
}

}  // namespace corvane
