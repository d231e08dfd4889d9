// Which of the files dropped together make a title.
#pragma once

#include <string>
#include <vector>

namespace corvane {

struct dropped_title {
  std::string video;
  std::vector<std::string> audio;  ///< those that go with it, the plainly named one first
  bool muxed = false;              ///< a program stream
};

/// Files sorted by what can be done with them (native paths, in the order in which they came).
struct dropped_set {
  std::string project;  ///< the first project file; empty: none
  std::vector<dropped_title> titles;
  std::vector<std::string> audio;     ///< goes with no video
  std::vector<std::string> unusable;  ///< folders, other kinds, project files after the first
};

/// Audio goes with the video of the same folder whose stem (its name without the extension),
/// followed by ".", begins the audio's name; the longest stem wins, then the first video. With one
/// video alone all audio is its own.
dropped_set sort_dropped(const std::vector<std::string>& native_paths);

}  // namespace corvane
