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
  std::int64_t first = 0, after = video_->gops();
  while (after - first > 1) {
    const std::int64_t middle = first + (after - first) / 2;
    (video_->begin_of_gop(middle) <= number ? first : after) = middle;
  }
  return first;
}

std::int64_t playback::landing_of(double seconds) const {
  const double wanted = in_hundredths(seconds);
  const std::int64_t gop = gop_of(video_->number_at(wanted));
  const std::int64_t begin = video_->begin_of_gop(gop);
  if (gop + 1 >= video_->gops())
    return begin;
  const std::int64_t next = video_->begin_of_gop(gop + 1);
  const double back = wanted - video_->time_of(begin), on = video_->time_of(next) - wanted;
  return on + hair < back ? next : begin;
}

}  // namespace corvane
