// A preview of text subtitles: one cue as spumux itself draws it with the settings given, so that
// what is seen is what the disc will have.
//
// spumux runs through conspawn on a control file like that of a run, in a folder of its own, and
// what it writes is read while it works: the first cue is there at once, a late one of a long file
// after some seconds (a cue takes about 5 milliseconds). Nothing here waits.
#pragma once

#include "project/font_list.h"
#include "project/subtitle_rows.h"
#include "tools/drawn_cue.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>

namespace corvane {

struct preview_request {
  std::string file;            ///< the subtitle file, native path
  subtitle_settings settings;  ///< how its text is drawn
  std::string region;          ///< "NTSC" or "PAL": the frame is 720 x 480 or 720 x 576
  int cue = 1;                 ///< which cue, 1-based
  /// Instead of that one the cue at this time, in seconds, or the first one after it; the last one
  /// if there is none.
  std::optional<double> at{};
};

class subtitle_preview {
 public:
  /// `app` is the program folder, whose bin has spumux and conspawn. A spumux that has drawn no cue
  /// for as long as `patience` is ended.
  subtitle_preview(std::string app, font_list fonts,
                   std::chrono::milliseconds patience = std::chrono::seconds(15));

  /// Ends a spumux that is running and removes the temporary files.
  ~subtitle_preview();
  subtitle_preview(const subtitle_preview&) = delete;
  subtitle_preview& operator=(const subtitle_preview&) = delete;

  /// Starts to draw, in place of what was being drawn. Another cue of the same file with the same
  /// settings is taken from what has been drawn already, if it is among it. spumux is
  /// told the region in its environment.
  void want(const preview_request& r);

  enum class state {
    idle,     ///< nothing was wanted
    drawing,  ///< call poll() again, in 50 milliseconds or so
    ready,    ///< cue() is what was wanted
    failed    ///< reason() tells why not
  };

  /// Looks at what spumux has done. To be called every 50 milliseconds or so while it is drawing,
  /// and once after each want(); further calls do no harm.
  state poll();

  /// When ready.
  const drawn_cue& cue() const;

  /// When ready: what the disc will lack of the texts drawn until now ("letters of its text are
  /// missing, ..."); empty when nothing. May come a moment after the cue.
  std::string missing() const;

  /// When failed: a sentence for the user that names the file and the reason.
  const std::string& reason() const;

 private:
  struct work;
  std::unique_ptr<work> w_;
};

}  // namespace corvane
