#include "examine/read_ahead.h"

#include <algorithm>

namespace corvane {
namespace {

constexpr double pack_bits = 2048 * 8;
constexpr double bits_of_all = 10'080'000;  // a second

/// `enough`: what a buffer holds.
void note(missing_bits& most, double missing, double enough, const read_ahead::picture& one) {
  if (missing <= most.bits)
    return;
  if (most.bits <= enough) {
    most.byte = one.byte;
    most.seconds = one.seconds;
  }
  most.bits = missing;
}

}  // namespace

void read_ahead::begin(bool mpeg2) {
  level_ = {};
  levels_in_packs_.assign(steps_, {});
  if (!in_packs_.empty())
    return;
  buffer_ = mpeg2 ? buffer : mpeg1_buffer;
  of_video_.rate = mpeg2 ? mpeg2_rate : mpeg1_rate;
  for (std::size_t i = 0; i < steps_; ++i)
    in_packs_.push_back({rate_in_packs - step * static_cast<double>(i), {}, {}});
}

void read_ahead::add(const picture& one) {
  const double bits = 8 * static_cast<double>(one.bytes);
  const auto take = [&](level& missing, buffer_need& need, double holds, double lasts) {
    missing.of_full += bits;
    missing.of_empty += bits;
    note(need.of_full, missing.of_full, holds, one);
    note(need.of_empty, missing.of_empty, rate_in_packs * lead, one);
    missing.of_full = std::max(0.0, missing.of_full - need.rate * lasts);
    missing.of_empty -= need.rate * lasts;
  };
  take(level_, of_video_, buffer_, one.lasts);
  const double lasts = one.lasts - (one.begins_unit ? pack_bits / bits_of_all : 0);
  for (std::size_t i = 0; i < levels_in_packs_.size(); ++i)
    take(levels_in_packs_[i], in_packs_[i], buffer, lasts);
}

const buffer_need* need_at(const std::vector<buffer_need>& needs, double rate) {
  const auto lower =
      std::ranges::find_if(needs, [rate](const buffer_need& one) { return one.rate < rate; });
  return lower == needs.begin() ? nullptr : &*(lower - 1);
}

}  // namespace corvane
