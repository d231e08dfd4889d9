#include "examine/rate_window.h"

namespace corvane {

void rate_window::begin(int numerator, int denominator) {
  end();
  pictures_.clear();
  bytes_ = fields_ = 0;
  full_ = false;
  numerator_ = static_cast<std::uint64_t>(numerator);
  denominator_ = static_cast<std::uint64_t>(denominator);
}

// Two fields a picture. The numbers are small: some ten thousands by what a second holds.
bool rate_window::lasts_a_second(std::uint64_t fields) const {
  return fields * denominator_ >= 2 * numerator_;
}

void rate_window::add(const picture& one) {
  pictures_.push_back(one);
  bytes_ += one.bytes;
  fields_ += one.fields;
  while (lasts_a_second(fields_ - pictures_.front().fields)) {
    bytes_ -= pictures_.front().bytes;
    fields_ -= pictures_.front().fields;
    pictures_.pop_front();
  }
  if (!lasts_a_second(fields_))
    return;
  full_ = true;
  const double seconds =
      static_cast<double>(fields_ * denominator_) / static_cast<double>(2 * numerator_);
  const double rate = 8 * static_cast<double>(bytes_) / seconds;
  if (rate > highest_.rate)
    highest_ = {rate, pictures_.front().byte, pictures_.front().seconds};
}

void rate_window::end() {
  const double rate = 8 * static_cast<double>(bytes_);
  if (!full_ && !pictures_.empty() && rate > highest_.rate)
    highest_ = {rate, pictures_.front().byte, pictures_.front().seconds};
}

}  // namespace corvane
