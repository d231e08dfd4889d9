// Kinds of streams as a person knows them.
#pragma once

#include <string>

namespace corvane {

/// "H.264" for FFmpeg's "h264"; a name that is not known here as it stands.
std::string codec_name(const std::string& codec);

}  // namespace corvane
