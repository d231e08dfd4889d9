#include "media/playback.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr double half_hundredth = 0.005;
constexpr double hair = 1e-6;  // what computing with times may add

double in_hundredths(double seconds) {
  return std::round(seconds * 100) / 100;
}

/// Which of `count` things, beginning with the pictures that `begin` gives, holds a picture.
template <typename Begin>
std::int64_t last_not_behind(std::int64_t number, std::int64_t count, Begin begin) {
  std::int64_t first = 0, after = count;
  while (after - first > 1) {
    const std::int64_t middle = first + (after - first) / 2;
    (begin(middle) <= number ? first : after) = middle;
  }
  return first;
}

}  // namespace

std::int64_t playback::last() const {
  return std::max<std::int64_t>(video_->pictures() - 1, 0);
}

std::int64_t playback::within(std::int64_t number) const {
  return std::clamp<std::int64_t>(number, 0, last());
}

void playback::play(double now) {
  playing_ = true;
  go_to(number_ == last() ? 0 : number_, now);
}

void playback::tick(double now) {
  if (!playing_)
    return;
  const double due = from_ + (now - started_);
  number_ = std::max(number_, within(video_->number_at(due)));
  if (due >= video_->length())
    playing_ = false;
}

void playback::go_to(std::int64_t number, double now) {
  number_ = within(number);
  started_ = now;
  from_ = position();
}

// A rounded time may be up to half a hundredth before its picture; no picture is shown for less
// than a whole one.
void playback::seek(double seconds, double now) {
  go_to(video_->number_at(seconds + half_hundredth), now);
}

void playback::step(std::int64_t pictures) {
  playing_ = false;
  number_ = within(number_ + pictures);
}

void playback::next_gop() {
  playing_ = false;
  const std::int64_t next = gop_of(number_) + 1;
  if (next < video_->gops())
    number_ = within(video_->begin_of_gop(next));
}

void playback::previous_gop() {
  playing_ = false;
  number_ = number_ == 0 ? 0 : within(video_->begin_of_gop(gop_of(number_ - 1)));
}

std::int64_t playback::gop_of(std::int64_t number) const {
  return last_not_behind(number, video_->gops(),
                         [this](std::int64_t gop) { return video_->begin_of_gop(gop); });
}

std::int64_t playback::landing_of(double seconds) const {
  const double wanted = in_hundredths(seconds);
  const auto begin_of = [this](std::int64_t unit) { return video_->begin_of_unit(unit); };
  const std::int64_t unit = last_not_behind(video_->number_at(wanted), video_->units(), begin_of);
  const std::int64_t begin = begin_of(unit);
  if (unit + 1 >= video_->units())
    return begin;
  const std::int64_t next = begin_of(unit + 1);
  const double back = wanted - video_->time_of(begin), on = video_->time_of(next) - wanted;
  return on + hair < back ? next : begin;
}

}  // namespace corvane
