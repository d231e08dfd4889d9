// The sound of a file that somebody has, as a listener would hear it. A file of the module with the
// reader.
#pragma once

#include "media/ffmpeg_source_file.h"
#include "media/pcm_sound.h"

namespace corvane {

/// As source_sound.
result<pcm_sound> sound_from(source_demuxer& source, double most_seconds);

}  // namespace corvane
