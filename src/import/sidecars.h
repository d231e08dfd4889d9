// Subtitle files that lie beside a film: "film.srt", "film.de.srt" beside "film.mp4".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct sidecar {
  std::string file{};      ///< its name in the folder, or its path
  std::string language{};  ///< two letters, lower case; empty: its name tells none
  bool operator==(const sidecar&) const = default;
};

/// Those of a folder's file names that belong to `film`, a file name too, in the listing's order.
/// Between the film's name and the ending may stand words with points between them, of which one
/// may be a language: "film.forced.pt-BR.ass". Case does not matter.
std::vector<sidecar> sidecars_of(std::string_view film, const std::vector<std::string>& listing);

}  // namespace corvane
