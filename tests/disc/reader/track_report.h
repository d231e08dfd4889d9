// The rows of the report that are about a title's chapters and subtitles.
#pragma once

#include "report.h"

#include <vector>

namespace corvane::disc {

/// How many chapters, and for each where it begins and with which unit of video. As asked is a
/// chapter that begins with the unit nearest to its time.
std::vector<report_row> chapter_rows(const title& found, const asked_title* asked);

/// For each stream its language, and the time and place of its first subtitle. The time must be
/// right within a picture, the place that of its alignment: a third of the picture each way.
std::vector<report_row> subtitle_rows(const title& found, const asked_title* asked,
                                      const asked_disc* disc);

}  // namespace corvane::disc
