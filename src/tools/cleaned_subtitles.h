// A text subtitle file without what spumux would draw as letters or leave out: markup, entities,
// signs that hide text, the rate line of MicroDVD, characters beyond the Basic Multilingual Plane.
//
// What is wrong is what the examination names (examine/subtitle_text_rules.h), which finds none of
// it in the outcome. Times, order and everything outside of texts stay byte for byte, and no text
// is lost: a sign that cannot stand is replaced by one like it.
#pragma once

#include "disc/subtitle_settings.h"
#include "platform/result.h"
#include "project/subtitle_file.h"

#include <string>
#include <vector>

namespace corvane {

/// A cue whose text is another one now.
struct cleaned_cue {
  int line = 0;               ///< of the file that was read, where its times stand; 1-based
  double begin = 0;           ///< seconds
  std::string before, after;  ///< its lines as they stand in the file, with "\n" between them;
                              ///< `after` is empty where nothing but markup was there
  std::string why;            ///< clauses, with "; " between them
};

struct cleaned_subtitles {
  std::string text;  ///< UTF-8, in the format of the file, with its line ends
  std::vector<cleaned_cue> changes;
  /// Pictures a second, as the rate line says that was left out ("29.97"); empty: there was none.
  std::string rate;
};

/// Cleans a file that spumux reads with these settings. Fails, as the end of a sentence about the
/// file, when it cannot be read so ("it is not a text file"), or its cues are not read by this
/// program.
result<cleaned_subtitles> clean_subtitles(const subtitle_file& file,
                                          const subtitle_settings& settings);

/// A name for the cleaned copy of a file, beside it, under which there is nothing yet:
/// "film.cleaned.srt", "film.cleaned-2.srt" (native paths).
std::string free_name_of_copy(const std::string& native);

}  // namespace corvane
