// Which picture of a video is shown: a slider with the time, below the picture. It can play, with
// sound where that is offered.
//
// The pictures that the slider can reach are found by reading the file, in slices whenever nothing
// else is to do, so that the window stays live; a bar tells how far that is when it takes long.
// Destroying the strip in the middle of it is safe.
#pragma once

#include "media/playback.h"
#include "media/video_loader.h"
#include "platform/result.h"
#include "ui/video/sound_track.h"

#include <wx/image.h>
#include <wx/panel.h>
#include <wx/timer.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

class wxCheckBox;
class wxGauge;
class wxSlider;
class wxStaticText;

namespace corvane {

class video_strip : public wxPanel {
 public:
  /// `show` gets each picture to be shown.
  video_strip(wxWindow* parent, std::function<void(const wxImage&)> show);

  /// Opens a video (native path), shows its first picture and gives the video's size in pixels.
  result<wxSize> open(const std::string& path);

  /// In which proportions a television shows the video: 16 x 9; 0 x 0 when it does not say.
  wxSize proportions() const;

  /// Behind `open`: lets the video be heard with the sound of a file (native path; empty: there is
  /// none), and the user turn that off and on. `turned` is told of it. The file is read as soon as
  /// the video can be played.
  void offer_sound(const std::string& path, bool on, std::function<void(bool)> turned);

  /// Plays by the clock from the picture shown; from the beginning at the end. Does nothing as long
  /// as the video is being looked through.
  void play_or_pause();
  void pause();
  bool playing() const { return playback_ && playback_->playing(); }

  /// Closes the file; the picture stays.
  void release();

 private:
  void arrange();
  void on_idle(wxIdleEvent& event);
  void scan();
  void scanned();
  void show_wanted();
  void show_time();
  void on_timer();
  bool can_play() const;
  void show_sound();

  std::function<void(const wxImage&)> show_;
  video_loader loader_;
  std::optional<playback> playback_;  ///< from the first time that it is played
  sound_track sound_;
  std::string sound_file_;
  wxTimer timer_;
  std::int64_t shown_ = 0;   ///< number of the picture shown, 0-based
  std::int64_t wanted_ = 0;  ///< of the one that the slider stands at
  wxStaticText* label_;
  wxSlider* position_;
  wxStaticText* time_;
  wxCheckBox* hears_;
  wxGauge* progress_;
};

}  // namespace corvane
