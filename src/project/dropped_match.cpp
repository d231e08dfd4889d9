#include "project/dropped_match.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvane {
namespace {

enum class kind { elementary_video, program_stream, audio, project, other };

kind kind_of(const std::string& native) {
  const std::string extension = lower_extension_of(file_name_of(stored_from_native(native)));
  const auto is_one_of = [&extension](std::array<std::string_view, 3> extensions) {
    return std::find(extensions.begin(), extensions.end(), extension) != extensions.end();
  };
  if (!file_exists(native))
    return kind::other;
  if (extension == "cvp")
    return kind::project;
  if (is_one_of({"m2v", "m1v", "mpv"}))
    return kind::elementary_video;
  if (is_one_of({"vob", "mpg", "mpeg"}))
    return kind::program_stream;
  return is_one_of({"ac3", "mp2", "mpa"}) ? kind::audio : kind::other;
}

/// A path as it is compared: letter case counts where the system's file names have it.
std::string folded(const std::string& native) {
  return native_style() == path_style::windows ? lower(native) : native;
}

/// The path without its extension, with the "." that stood before it.
std::string stem_of(const std::string& native) {
  return folded(native).substr(0, native.rfind('.') + 1);
}

/// Whether audio goes with a video: the rest of its name has no folder in it.
bool goes_with(const std::string& audio, const std::string& stem) {
  const std::string name = folded(audio);
  return name.starts_with(stem) &&
         name.find(separator(native_style()), stem.size()) == std::string::npos;
}

dropped_title* video_for(const std::string& audio, std::vector<dropped_title>& titles) {
  dropped_title* best = nullptr;
  std::size_t best_length = 0;
  for (dropped_title& title : titles) {
    const std::string stem = stem_of(title.video);
    if (stem.size() > best_length && goes_with(audio, stem)) {
      best = &title;
      best_length = stem.size();
    }
  }
  return best;
}

void give_audio_to_videos(dropped_set& set) {
  std::vector<std::string> left;
  for (std::string& audio : set.audio) {
    if (dropped_title* const title = video_for(audio, set.titles))
      title->audio.push_back(std::move(audio));
    else
      left.push_back(std::move(audio));
  }
  for (dropped_title& title : set.titles) {
    const std::string stem = stem_of(title.video);
    std::stable_partition(title.audio.begin(), title.audio.end(),
                          [&stem](const std::string& audio) { return stem_of(audio) == stem; });
  }
  if (set.titles.size() == 1) {
    auto& own = set.titles.front().audio;
    own.insert(own.end(), left.begin(), left.end());
    left.clear();
  }
  set.audio = std::move(left);
}

}  // namespace

dropped_set sort_dropped(const std::vector<std::string>& native_paths) {
  dropped_set set;
  for (const std::string& path : native_paths) {
    switch (kind_of(path)) {
      case kind::elementary_video:
        set.titles.push_back({path, {}, false});
        break;
      case kind::program_stream:
        set.titles.push_back({path, {}, true});
        break;
      case kind::audio:
        set.audio.push_back(path);
        break;
      case kind::project:
        (set.project.empty() ? set.project : set.unusable.emplace_back()) = path;
        break;
      case kind::other:
        set.unusable.push_back(path);
        break;
    }
  }
  give_audio_to_videos(set);
  return set;
}

}  // namespace corvane
