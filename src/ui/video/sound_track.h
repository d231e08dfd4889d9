// The sound of a video: read beside the window, and heard along with the pictures.
//
// What plays it is asked for when it is first heard, and the device is open only as long as
// something plays. Without one the pictures play on in silence; then there is a word about it.
#pragma once

#include "media/pcm_sound.h"
#include "media/sound_output.h"
#include "platform/result.h"

#include <wx/timer.h>

#include <functional>
#include <future>
#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace corvane {

class sound_track {
 public:
  /// `changed`: what `trouble` and `is_silent` tell is another.
  explicit sound_track(std::function<void()> changed);
  /// Ends what is being read.
  ~sound_track();
  sound_track(const sound_track&) = delete;
  sound_track& operator=(const sound_track&) = delete;

  /// Begins to read a file's sound (native path), of which only the first minutes are heard
  /// (`longest_source_sound`).
  void open(const std::string& path);

  /// Stops, and forgets the sound.
  void close();

  /// From now on it is heard, from so many seconds of it on; as soon as it is read, from where it
  /// is then.
  void play(double seconds);
  void stop();

  /// Whether it is heard while it plays.
  void turn(bool on);
  bool is_on() const { return on_; }

  /// Why nothing is heard, a sentence without a full stop; nothing as long as nothing went wrong.
  const failure& trouble() const { return trouble_; }

  /// Whether the file has no sound that could be heard.
  bool is_silent() const { return silent_; }

 private:
  /// What plays: from which second of it, when.
  struct begun {
    double seconds = 0;
    double clock = 0;
  };

  bool is_heard() const { return sound_ && on_; }
  bool is_ready();
  void join();
  void begin();
  void take();
  void tell(failure trouble);

  std::function<void()> changed_;
  std::future<result<pcm_sound>> reading_;
  std::stop_source stop_reading_;
  wxTimer poll_;
  std::shared_ptr<const pcm_sound> sound_;  ///< once it is read
  std::unique_ptr<sound_output> output_;    ///< from the first time that it is heard
  std::optional<begun> begun_;
  failure trouble_;
  bool silent_ = false;
  bool on_ = true;
};

}  // namespace corvane
