// Text subtitles: spumux control files and script lines.
#pragma once

#include "authoring/run_paths.h"
#include "project/project.h"

#include <string>

namespace corvane {

/// Number of subtitle files of title `title` (1-based); 0 for "<none>".
int subtitle_count(const project& p, int title);

/// Text of <app>/sub<t>-<s>.xml (project/subtitle_control.h). With fewer settings rows than files
/// the last row serves.
std::string subtitle_xml(const project& p, const run_paths& where, int title, int subtitle);

/// The four script lines of one subtitle, each ended by CR LF.
std::string subtitle_commands(const run_paths& where, int title, int subtitle);

}  // namespace corvane
