// A player for one video: the picture, its controls, and where a chapter begins on the disc.
//
// It shows every picture exactly, plays by the clock, and steps by picture and by group of
// pictures. While the video is being looked through it shows the first picture and how far that is.
// A video that cannot be opened leaves a reason in the picture's place and all controls disabled.
// It has no sound.
#pragma once

#include "media/playback.h"
#include "media/video_loader.h"

#include <wx/panel.h>
#include <wx/timer.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

class wxButton;
class wxGauge;
class wxSizer;
class wxStaticText;
class wxTextCtrl;

namespace corvane {

class time_line;
class video_picture;

class video_player : public wxPanel {
 public:
  /// `ready` is called when the video can be played.
  video_player(wxWindow* parent, std::function<void()> ready);
  ~video_player() override;

  /// Opens a video by its native path and shows its first picture.
  void open(const std::string& path);

  /// Stops and closes the file; the picture stays.
  void release();

  /// Nothing as long as there is nothing to play.
  std::optional<double> position() const;

  /// Both in seconds.
  void seek(double seconds);
  void set_marks(const std::vector<double>& chapters);

  /// What the key does in every window that holds a player: Space, the arrows, Page Up and Down,
  /// Home, End. False: nothing.
  bool use_key(const wxKeyEvent& event);

  /// The size that the picture asks for.
  wxSize picture_size() const;

  bool playing() const { return playback_ && playback_->playing(); }

  /// Shows a text below the controls until the user does the next thing.
  void note(const wxString& text);

  /// From now on the picture may become smaller than it asks for.
  void let_shrink();

  /// Where a person's keys go first.
  void focus();

 private:
  void make_controls();
  wxSizer* make_transport();
  wxSizer* make_landing();
  wxButton* make_step(const char* name, const char* icon, const wxString& tip,
                      const std::function<void(playback&)>& step);
  void arrange(wxSizer* transport, wxSizer* landing);
  void on_idle(wxIdleEvent& event);
  void scan();
  void scanned();
  void toggle();
  void on_timer();
  void jump_to_typed();
  void forget_typed();
  void act(const std::function<void(playback&)>& action);
  void show_state();
  void show_time(const wxString& now);
  void show_play_label();
  void show_picture();

  std::function<void()> ready_;
  video_loader loader_;
  std::optional<playback> playback_;  ///< once the video has been looked through
  wxTimer timer_;
  std::int64_t shown_ = 0;  ///< number of the picture shown, 0-based
  bool typing_ = false;     ///< the time field holds what the user types
  video_picture* MediaPlayer1_ = nullptr;
  time_line* line_ = nullptr;
  wxGauge* progress_ = nullptr;
  wxButton* play_ = nullptr;
  wxTextCtrl* time_ = nullptr;
  wxStaticText* length_ = nullptr;
  wxStaticText* landing_ = nullptr;
  wxStaticText* note_ = nullptr;
  std::vector<wxWindow*> controls_;  ///< those that need something to play
};

}  // namespace corvane
