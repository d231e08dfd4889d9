// Which of FFmpeg's demuxers a stranger's file may be given to: files of the module with the
// reader.
#pragma once

extern "C" {
#include <libavformat/avformat.h>
}

#include "platform/result.h"

namespace corvane {

/// Why nothing is read from a file of this kind, as a sentence without a full stop; not set if it
/// is read. Kinds that hold films, sound and pictures are: FFmpeg knows a hundred others, among
/// them those that only list other files, those of games, and texts.
failure why_not_container(const AVInputFormat& format);

/// Whether files of this kind are still pictures, each of them one.
bool holds_one_picture(const AVInputFormat& format);

/// Whether files of this kind hold pictures in a row, or only one.
bool may_hold_one_picture(const AVInputFormat& format);

}  // namespace corvane
