// What is written down of a run before it changes anything, so that what it leaves can be set in
// order when it dies: what it replaces and makes (kept beside the output folder), and which such
// runs this program folder has begun.
#pragma once

#include "platform/result.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// The disc's parts, by the names under which an earlier one is put aside --------------------------

inline constexpr const char* image_part = "image.iso";
inline constexpr const char* disc_parts[] = {"VIDEO_TS", "AUDIO_TS", image_part};

/// Where a part stands: in the output folder (native path), the image beside it.
std::string home_of_part(const std::string& part, const std::string& out);

// A run -----------------------------------------------------------------------------------------

struct run_record {
  bool image = false;                ///< a disc image is made
  std::vector<std::string> earlier;  ///< the parts of an earlier disc that are put aside
  std::vector<std::string> streams;  ///< names of the files that the script makes and erases again

  bool operator==(const run_record&) const = default;
};

std::string record_text(const run_record& record);

/// Returns nullopt if the text is none of `record_text`, or cut off: it is written before anything
/// else is done. Names that no run has are left out; the text may come from a stranger.
std::optional<run_record> parse_record(std::string_view text);

// The runs of a program folder ------------------------------------------------------------------

struct unfinished_run {
  std::string out;    ///< output folder, native
  std::string place;  ///< the folder that holds the record and what was put aside

  bool operator==(const unfinished_run&) const = default;
};

/// Those that are written down in the program folder `app`; none when the file cannot be read.
std::vector<unfinished_run> unfinished_runs(const std::string& app);

/// Writes one down, or takes it out again (the file goes with the last one).
failure add_unfinished_run(const std::string& app, const unfinished_run& run);
failure drop_unfinished_run(const std::string& app, const unfinished_run& run);

}  // namespace corvane
