// What a run has left: for the line that stays in the main window when it has ended.
#pragma once

#include "runner/run_listener.h"

#include <optional>
#include <string>

namespace corvane {

struct last_disc {
  std::string folder;     ///< native path: the output folder; it holds VIDEO_TS
  std::string image;      ///< native path; empty: none
  std::string text;       ///< "Ready: /home/u/dvd, 1.23 GB, image /home/u/dvd.iso"
  bool is_there = false;  ///< there is something to play

  const std::string& to_play() const { return image.empty() ? folder : image; }
};

/// Of a run that has ended with this outcome in the folder (native path). `asks_for_image`: the
/// project does.
last_disc look_at_last_disc(const std::string& folder, bool asks_for_image, run_outcome outcome);

}  // namespace corvane
