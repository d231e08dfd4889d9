// The look at a finished disc: all of it is read, held against what a disc must be by itself and,
// where that is known, against what was foreseen.
//
// Polled like a run: `step` works for a moment and returns.
#pragma once

#include "disc/finding.h"
#include "examine/disc_traits.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Where a disc is; native paths. One of the two may be empty; both: the image is of the folder,
/// and must hold the same.
struct disc_place {
  std::string folder;  ///< holds VIDEO_TS
  std::string image;
};

/// The place of what stands at a path: a folder, or an image.
disc_place place_of_disc(const std::string& path);

/// Likewise; with the image "film.iso" beside the folder "film" (or "film/VIDEO_TS") if it is
/// there: the run may have been told to make none.
disc_place place_with_image(const std::string& path);

class verification {
 public:
  /// `foreseen` is null for a disc of which nothing is known before; its folder and image are not
  /// looked at.
  verification(disc_place where, std::shared_ptr<const foreseen_run> foreseen);
  ~verification();
  verification(const verification&) = delete;
  verification& operator=(const verification&) = delete;

  /// Works for about `milliseconds`; false when everything is done.
  bool step(int milliseconds);
  std::uint64_t bytes_to_read() const;
  std::uint64_t bytes_read() const;
  /// The file being read, "VIDEO_TS/VTS_01_1.VOB"; empty at the end.
  const std::string& current_file() const;

  // At the end -----------------------------------------------------------------------------------

  /// Errors first, then warnings, then notes.
  const std::vector<finding>& findings() const;
  /// What the disc is. Nothing if there is none.
  const disc_traits& found() const;
  /// What was foreseen, with where chapters must be on this disc. Nothing without `foreseen`.
  const disc_traits& foreseen() const;

 private:
  struct state;
  std::unique_ptr<state> state_;
};

/// What was found beside what was foreseen, if anything was, as a table for a person: columns
/// aligned, a heading for each title and menu.
std::string disc_table(const disc_traits& found, const disc_traits& foreseen);

/// The same as a JSON array: of each trait its item, name and values, as the table shows them.
std::string disc_table_json(const disc_traits& found, const disc_traits& foreseen);

}  // namespace corvane
