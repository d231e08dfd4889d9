// What tells the tools whether a disc is NTSC or PAL.
#pragma once

#include "platform/processes/process.h"

#include <string>

namespace corvane {

/// The variable without which spumux and dvdauthor stop; `region` is "NTSC" or "PAL".
inline child_variable video_format(const std::string& region) {
  return {"VIDEO_FORMAT", region};
}

}  // namespace corvane
