#include "ui/video/sound_track.h"

#include "media/source_probe.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

namespace corvane {
namespace {

constexpr int poll_sound_milliseconds = 20;

/// In seconds.
double clock_of_sound() {
  using clock = std::chrono::steady_clock;
  return std::chrono::duration<double>(clock::now().time_since_epoch()).count();
}

}  // namespace

sound_track::sound_track(std::function<void()> changed) : changed_(std::move(changed)) {
  poll_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { take(); });
}

sound_track::~sound_track() {
  close();
}

void sound_track::open(const std::string& path) {
  close();
  stop_reading_ = std::stop_source();
  reading_ = std::async(std::launch::async, [path, stop = stop_reading_.get_token()] {
    return source_sound(path, longest_source_sound, stop);
  });
  poll_.Start(poll_sound_milliseconds);
}

// What is being read ends within a piece of the file.
void sound_track::close() {
  stop();
  poll_.Stop();
  stop_reading_.request_stop();
  if (reading_.valid())
    reading_.wait();
  reading_ = {};
  sound_.reset();
  silent_ = false;
  trouble_.reset();
}

void sound_track::take() {
  if (reading_.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
    return;
  poll_.Stop();
  result<pcm_sound> read = reading_.get();
  if (!read) {
    silent_ = true;
    tell(std::move(read.error));
    return;
  }
  sound_ = std::make_shared<const pcm_sound>(std::move(*read));
  join();
}

// To open a device takes its time, for which pictures and sound wait together.
void sound_track::play(double seconds) {
  const bool ready = is_heard() && is_ready();
  begun_ = begun{seconds, clock_of_sound()};
  if (ready)
    begin();
}

void sound_track::stop() {
  begun_.reset();
  if (output_)
    output_->stop();
}

void sound_track::turn(bool on) {
  on_ = on;
  if (on_)
    join();
  else if (output_)
    output_->stop();
}

/// Whether the device is open, which is tried each time anew.
bool sound_track::is_ready() {
  if (!output_) {
    result<std::unique_ptr<sound_output>> made = make_sound_output();
    if (!made) {
      tell(std::move(made.error));
      return false;
    }
    output_ = std::move(*made);
  }
  failure why = output_->open();
  const bool ready = !why;
  if (why != trouble_)
    tell(std::move(why));
  return ready;
}

void sound_track::join() {
  if (begun_ && is_heard() && is_ready())
    begin();
}

void sound_track::begin() {
  const double seconds = begun_->seconds + (clock_of_sound() - begun_->clock);
  output_->play(sound_, static_cast<std::size_t>(std::max(seconds, 0.0) * sound_rate));
}

void sound_track::tell(failure trouble) {
  trouble_ = std::move(trouble);
  changed_();
}

}  // namespace corvane
