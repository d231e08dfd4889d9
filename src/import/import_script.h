// The work script of an import: the lines that conspawn runs, a step for each file.
//
// A pure function of the plan, names and path style. Every file is made under its temporary name;
// finishing it and giving it its own is for whoever ran the script (import/finish_import.h).
#pragma once

#include "import/encode_arguments.h"
#include "import/import_names.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct import_job {
  std::string source;  ///< native path
  import_plan plan;    ///< without a problem
  import_files files;
  video_bits bits{};
  bool even_loudness = false;
};

/// Why a job cannot be written into a script, a clause for a message ("contains a double quote");
/// nullopt if it can.
std::optional<std::string> why_not_in_script(const import_job& job,
                                             path_style style = native_style());

/// Whether ffmpeg goes through the film twice.
bool has_two_passes(const import_job& job);

/// The name of the step in which a file is imported: "importing film.mp4", and before it, where
/// there are two passes, "importing film.mp4, first pass".
std::string import_step(const import_job& job, bool first_pass, path_style style = native_style());

/// The whole text, every line ended by CR LF, with the end marker last. `app`: the program folder,
/// native in `style`, no separator last. No job may have a reason of why_not_in_script.
std::string import_script(const std::vector<import_job>& jobs, const std::string& app,
                          path_style style = native_style());

/// The line of a work script that runs ffmpeg, without its end.
std::string ffmpeg_line(const std::string& app, const argument_list& arguments,
                        path_style style = native_style());

/// The arguments of one run of ffmpeg, without the program.
argument_list import_arguments(const import_job& job, bool first_pass);

}  // namespace corvane
