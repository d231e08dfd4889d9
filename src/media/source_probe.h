// What is in a file that somebody has, and a picture of it. Nothing but that one file is opened,
// whatever it names; nothing is written, not even to standard error.
//
// What reads the file is FFmpeg's, in a module that is loaded with the first call
// (source_module.h). A call takes some milliseconds as a rule and ends within twenty seconds on any
// file, unless the file's own disk hangs. Calls may be made from any thread.
#pragma once

#include "formats/source_facts.h"
#include "media/picture.h"
#include "platform/result.h"

#include <string>

namespace corvane {

/// Looks into a file by its native path. Fails with a sentence for a person where there is no such
/// file, where it is empty, holds neither video, picture nor sound, lists other files instead of
/// holding any, ends before what is needed to read it, or is damaged beyond that.
result<source_facts> probe_source(const std::string& path);

/// What a viewer would see of a file's video (or still, or cover) so many seconds from its
/// beginning; the last picture when that is behind the end. Pixels are square, it is turned as it
/// is to be shown, what can be seen through stands on black. It is as large as fits into
/// `most_width` x `most_height`, at least 1 x 1, and never larger than the picture itself. Fails as
/// `probe_source` does, and when no picture can be decoded.
result<picture> source_picture(const std::string& path, double seconds, int most_width,
                               int most_height);

}  // namespace corvane
