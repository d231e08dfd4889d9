// Where a player stands in a video: playing by the clock, pausing, stepping, seeking, and where a
// chapter put there begins on a disc.
//
// It has no clock of its own: `now` is any clock in seconds that goes forward. A position is always
// that of a picture, so that going back to a position that was noted shows the same picture. While
// it plays, the picture is computed from the clock and never counted on: a picture that comes late
// is left out, and nothing drifts. The video must live as long, and be looked through.
#pragma once

#include "media/picture_times.h"

#include <cstdint>

namespace corvane {

class playback {
 public:
  explicit playback(const picture_times& video) : video_(&video) {}

  /// The picture shown, 0-based, and when it comes up, in seconds.
  std::int64_t number() const { return number_; }
  double position() const { return video_->time_of(number_); }
  bool playing() const { return playing_; }

  /// From the picture shown; from the beginning when that is the last one.
  void play(double now);
  void pause() { playing_ = false; }

  /// Moves on to the picture that is due; stops behind the last one.
  void tick(double now);

  /// Goes to a picture, the nearest one there is, and goes on from there when it plays.
  void go_to(std::int64_t number, double now);

  /// Goes to the picture on the screen at a time that may have been rounded to hundredths.
  void seek(double seconds, double now);

  // Each pauses, and does nothing at the end of the video that it leads to.

  /// So many pictures forward; back when negative.
  void step(std::int64_t pictures);
  void next_gop();
  /// To the beginning of the group, or of the one before when that is shown.
  void previous_gop();

  /// The group that holds a picture.
  std::int64_t gop_of(std::int64_t number) const;

  /// The picture with which a chapter at this position begins on the disc. A chapter cannot begin
  /// anywhere but with a unit (VOBU); the authoring tool takes the one whose beginning is nearest
  /// to the chapter's time, which has been rounded to hundredths.
  std::int64_t landing() const { return landing_of(position()); }
  std::int64_t landing_of(double seconds) const;

 private:
  std::int64_t last() const;
  std::int64_t within(std::int64_t number) const;

  const picture_times* video_;
  std::int64_t number_ = 0;
  bool playing_ = false;
  double started_ = 0;  ///< of the clock, when position `from_` was due
  double from_ = 0;
};

}  // namespace corvane
