// The preview of text subtitles: one cue over the picture of the video that is on the screen when
// it comes up. spumux draws the cue (tools/subtitle_preview.h), so it looks as on the disc.
//
// It draws when nothing has changed for a moment, shows in the picture's place why there is none,
// and tells below it when text will be missing on the disc. The window stays live meanwhile, and
// closing it ends the drawing.
#pragma once

#include "tools/subtitle_preview.h"
#include "ui/editor/video_backdrop.h"

#include <wx/panel.h>
#include <wx/stopwatch.h>
#include <wx/timer.h>

#include <memory>
#include <optional>
#include <string>

class wxSpinCtrl;
class wxSizer;
class wxStaticText;

namespace corvane {

class video_picture;

class cue_preview : public wxPanel {
 public:
  /// `app` is the program folder, `video` the native path of what is seen behind the text.
  cue_preview(wxWindow* parent, const std::string& app, const font_list& fonts,
              const std::string& video);

  ~cue_preview() override;

  /// What is to be seen: a subtitle file (native path; none: the video alone), drawn with these
  /// settings on the frame of a region. The number of the cue is the user's choice.
  void show(const std::optional<std::string>& file, const subtitle_settings& settings,
            const std::string& region);

  /// Goes to the cue at a time (seconds) of the file that is shown.
  void go_to(double seconds);

  /// Ends what is being drawn; nothing happens any more.
  void release();

 private:
  wxSizer* make_choice(wxWindow* inside);
  void draw_soon(int milliseconds);
  void draw();
  void look();
  void show_picture();
  void show_missing(const std::string& what);
  void on_idle(wxIdleEvent& event);
  double time() const { return cue_ ? cue_->begin : 0; }

  std::unique_ptr<subtitle_preview> engine_;
  std::unique_ptr<video_backdrop> video_;
  std::optional<preview_request> request_;  ///< nothing: there is no file
  std::string region_;
  std::optional<drawn_cue> cue_;  ///< that is shown
  std::optional<double> at_;      ///< where to go, until its cue is there
  wxTimer draw_timer_, look_timer_;
  wxStopWatch drawing_for_;
  bool shown_once_ = false;
  bool waiting_ = false;    ///< for the engine
  bool searching_ = false;  ///< for the picture of the video
  bool searched_ = false;   ///< which was not known when the cue was shown
  video_picture* picture_ = nullptr;
  wxSpinCtrl* number_ = nullptr;
  wxStaticText* note_ = nullptr;
  wxStaticText* missing_ = nullptr;  ///< there only when it says something
  std::string missing_text_;
};

}  // namespace corvane
