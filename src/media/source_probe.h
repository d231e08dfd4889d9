// What is in a file that somebody has, a picture of it, and its sound. Nothing but that one file is
// opened, whatever it names; nothing is written, not even to standard error.
//
// What reads the file is FFmpeg's, in a module that is loaded with the first call
// (source_module.h). A call takes some milliseconds as a rule and ends within twenty seconds on any
// file, unless the file's own disk hangs. Calls may be made from any thread.
#pragma once

#include "formats/source_facts.h"
#include "media/pcm_sound.h"
#include "media/picture.h"
#include "platform/result.h"

#include <stop_token>
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

/// So much of a sound is 58 megabytes.
inline constexpr double longest_source_sound = 300;  // seconds

/// What a listener would hear of a file's sound, from where its video begins (or, without one,
/// itself): more channels are mixed into two, other rates are converted. Of several streams the
/// first one, by its number where the file is a multiplex for discs. Longer sound is cut after
/// `most_seconds`, at most `longest_source_sound`, and so is one that cannot be read to its end; a
/// decoder takes some milliseconds for a minute. Fails as `probe_source` does, when there is no
/// sound or none can be decoded, and soon after it is asked to stop.
result<pcm_sound> source_sound(const std::string& path, double most_seconds = longest_source_sound,
                               const std::stop_token& stop = {});

}  // namespace corvane
