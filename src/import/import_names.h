// The files that an import makes, named after the source.
#pragma once

#include "import/import_plan.h"
#include "platform/files/paths.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// Native paths. Each file is made under its temporary name first.
struct import_files {
  std::string video;
  std::vector<std::string> sounds;  ///< in the order of the plan
  std::vector<std::string> texts;   ///< likewise
  std::string notes;                ///< what the first of two passes leaves; ffmpeg adds "-0.log"

  /// Those that stay, in their order.
  std::vector<std::string> all() const;
};

/// The name of a file while it is being made: "film.m2v.part".
std::string temporary_name(const std::string& file);

/// What ffmpeg writes for the second of two passes.
std::string notes_file(const import_files& files);

/// All that may stand there while files are being made.
std::vector<std::string> temporary_files(const import_files& files);

/// "film.m2v", "film.ac3" ("film.de.ac3" or "film.2.ac3" where there are several), "film.de.srt" in
/// the folder for "film.mp4". Where `is_taken` says of the video's or a sound's path that something
/// has its name, or its temporary one's, all are called "film (2)", and so on. A text whose name is
/// taken gets another by itself, "film (2).de.srt": subtitles often lie beside the film that they
/// are made of. Characters that no project can hold become "_".
import_files import_names(std::string_view folder, std::string_view source, const import_plan& plan,
                          const std::function<bool(const std::string&)>& is_taken,
                          path_style style = native_style());

}  // namespace corvane
