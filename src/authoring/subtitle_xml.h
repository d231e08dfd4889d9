// Text subtitles: spumux control files and script lines.
#pragma once

#include "authoring/run_paths.h"
#include "disc/disc_description.h"

#include <string>

namespace corvane {

/// Text of <app>/sub<t>-<s>.xml (project/subtitle_control.h).
std::string subtitle_xml(const disc_subtitle& subtitle, const run_paths& where);

/// The four script lines of one subtitle, each ended by CR LF.
std::string subtitle_commands(const run_paths& where, int title, int subtitle);

}  // namespace corvane
