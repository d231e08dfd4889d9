// Subtitle files that lie beside a film: "film.srt", "film.de.srt" beside "film.mp4".
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct sidecar {
  std::string file{};      ///< its name in the folder, or its path
  std::string language{};  ///< two letters, lower case; empty: its name tells none
  /// What its characters are, as iconv names it ("CP1252"); empty: its bytes say so themselves.
  std::string charset{};
  /// Why it cannot be read, as the end of a sentence ("it is empty"); or empty.
  std::string problem{};
  bool operator==(const sidecar&) const = default;
};

/// Those of a folder's file names that belong to `film`, a file name too, in the listing's order.
/// Between the film's name and the ending may stand words with points between them, of which one
/// may be a language: "film.forced.pt-BR.ass". Case does not matter.
std::vector<sidecar> sidecars_of(std::string_view film, const std::vector<std::string>& listing);

/// Looks into a sidecar, whose `file` is its native path, for `charset` and `problem`. What is not
/// Unicode is taken for the set of its language's usual programs; of an unknown language, for that
/// of Western Europe.
void look_into_text(sidecar& text);

}  // namespace corvane
