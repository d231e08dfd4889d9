#include "formats/program_chain.h"

namespace corvane {

namespace {

struct decimal {
  int value = 0;
  bool valid = false;
};

/// Two digits of four bits each.
decimal decimal_of(std::uint32_t byte) {
  const int high = static_cast<int>(byte >> 4 & 15), low = static_cast<int>(byte & 15);
  return {high * 10 + low, high < 10 && low < 10};
}

}  // namespace

double playback_time::total() const {
  const double whole = hours * 3600.0 + minutes * 60.0 + seconds;
  return rate > 0 ? whole + static_cast<double>(frames) / rate : whole;
}

playback_time read_playback_time(std::uint32_t code) {
  const decimal hours = decimal_of(code >> 24 & 0xFF), minutes = decimal_of(code >> 16 & 0xFF),
                seconds = decimal_of(code >> 8 & 0xFF), frames = decimal_of(code & 0x3F);
  playback_time time;
  time.hours = hours.value;
  time.minutes = minutes.value;
  time.seconds = seconds.value;
  time.frames = frames.value;
  const auto rate = code >> 6 & 3;
  time.rate = rate == 1 ? 25 : rate == 3 ? 30 : 0;
  time.valid = hours.valid && minutes.valid && seconds.valid && frames.valid && time.minutes < 60 &&
               time.seconds < 60 && (time.rate > 0 ? time.frames < time.rate : code == 0);
  return time;
}

}  // namespace corvane
