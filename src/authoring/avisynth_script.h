// The AviSynth script: a sketch of a motion menu's background with a thumbnail and a caption for
// each title, and the command that writes it for the user to go on with.
#pragma once

#include "disc/disc_description.h"
#include "platform/files/paths.h"
#include "platform/processes/desktop.h"
#include "project/document.h"

#include <string>

namespace corvane {

/// The script, each line ended by CR LF, with native paths in `style`. Captions are the names of
/// the titles' video files without extension; a double quote in one, which would end it, becomes
/// an apostrophe. Pixels are those of the project's video standard, PAL unless it is NTSC.
std::string avisynth_script(const disc_description& d, path_style style = native_style());

enum class avisynth_result {
  written,      ///< and opened in the editor, if the user wanted that
  no_title,     ///< nothing to make it of; a message was shown
  refused,      ///< a video's path cannot stand in a script; a message was shown
  cancelled,    ///< no file chosen
  not_written,  ///< a message was shown
};

/// "create motion menu script": asks for the file, writes the script, offers to edit it. The
/// project is not touched.
avisynth_result avisynth_command(document& doc, desktop& user_desktop);

}  // namespace corvane
