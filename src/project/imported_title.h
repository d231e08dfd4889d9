// A title whose streams were made or taken out of other files, added to the project as one.
#pragma once

#include "disc/disc_description.h"
#include "project/document.h"

#include <string>
#include <vector>

namespace corvane {

struct imported_title {
  std::vector<std::string> streams;    ///< stored paths: the video, then its audio streams
  std::vector<double> chapters;        ///< seconds, rising; the beginning is one in any case
  int delay = 0;                       ///< A/V delay in milliseconds
  std::vector<std::string> subtitles;  ///< stored paths of files in UTF-8
};

/// Adds a title at the end and selects it; the commands after other titles stay. The project's
/// standard becomes `standard` when it has neither titles nor menus yet; the preference stays.
void add_imported_title(document& doc, const imported_title& title, video_standard standard);

/// Replaces all language tags of one kind. `languages`: as rows hold them ("ENGLISH EN"), that of
/// stream 1 first.
void set_language_tags(document& doc, disc_language::stream_kind kind,
                       const std::vector<std::string>& languages);

}  // namespace corvane
