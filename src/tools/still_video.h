// Still menu video: the command that makes a short MPEG-2 stream out of a JPEG picture with
// jpeg2yuv and mpeg2enc, run as a work script as authoring is.
#pragma once

#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"
#include "platform/settings/settings.h"
#include "project/document.h"
#include "project/picture_loader.h"
#include "runner/shelled.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What one script makes.
struct still_video {
  std::string jpeg;  ///< native path of the picture
  std::string m2v;   ///< native path of the video
  int height = 480;  ///< of the picture: 480 for NTSC, 576 for PAL
  int frames = 1;    ///< how many pictures long
  /// The proportions that the video states (formats/aspect_code.h); not set: mpeg2enc's own.
  std::optional<int> aspect{};
};

/// The line of a work script, without its end, that makes it; `app` is the program folder, native
/// in `style`.
std::string still_line(const std::string& app, const still_video& still,
                       path_style style = native_style());

/// Text of the work script that makes a still by these lines.
std::string still_script_of(const std::vector<std::string>& lines);

/// Text of the work script that makes it by that line alone.
std::string still_script(const std::string& app, const still_video& still,
                         path_style style = native_style());

enum class still_result {
  started,        ///< the runner has the script
  cancelled,      ///< no picture or no output file chosen
  refused,        ///< the picture cannot be used; told with a message
  tool_missing,   ///< jpeg2yuv or mpeg2enc is not installed; told with a message
  folder_in_use,  ///< another run uses the program folder; told with a message
  not_written,    ///< the script could not be written; told with a message
  not_started,    ///< the runner could not start the script; it has told so
};

/// What the command needs of the program around it.
struct still_equipment {
  std::string app;  ///< program folder, native and absolute
  folder_lock& lock;
  shelled& runner;
  const picture_loader& pictures;
  /// Called with a picture (native path) that was refused, which has been told, when it is whole
  /// and a still can be made of it that is right. Empty: nobody makes any.
  std::function<void(const std::string& picture)> make_right{};
};

/// "create m2v still": asks for the picture, the output file and the number of frames, writes the
/// script and starts it. The project is not touched; the number is kept as preference "framecount".
still_result still_command(document& doc, still_equipment& e);

/// Asks with this dialog where a still of a picture (native path) is to be saved. A file that
/// cannot be it is told, one that is there is asked about, and the user is asked again. Empty when
/// the user cancelled.
std::string choose_still_file(document& doc, const file_dialog& dialog, const std::string& picture);

/// The dialog that "create m2v still" asks with.
file_dialog still_file_dialog();

/// Starts a script that makes a still, or tells why it cannot be started. `settle`: as in
/// run_options; it is not called when the script could not be written.
still_result start_still(document& doc, still_equipment& e, const std::string& script,
                         std::function<run_settled(run_outcome)> settle = {});

/// How many pictures long a still can be.
inline constexpr int most_still_frames = 99999;

/// The number that is kept as preference "framecount", limited to what can be; 1 where there is
/// none.
int stored_still_frames(const settings& prefs);
void keep_still_frames(settings& prefs, int frames);

/// "set m2v framecount": asks for the number alone; a box without an answer keeps what is stored.
void framecount_command(document& doc);

}  // namespace corvane
