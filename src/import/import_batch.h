// Several files that are imported together, and what becomes of them in the project.
//
// The first one decides what the project leaves open, and the next follow it, since all of them are
// titles of one titleset. "Fill the disc" shares what room there is by their lengths.
#pragma once

#include "formats/source_facts.h"
#include "import/import_script.h"
#include "project/document.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace corvane {

/// A file that was looked into.
struct probed_source {
  std::string file;             ///< native path, absolute
  source_facts facts;           ///< of no use with a problem
  std::vector<sidecar> beside;  ///< with their native paths
  std::string problem;          ///< why nothing is known of it, a sentence; or empty
  /// What a person does not want of it: indices of streams, and paths of `beside`.
  std::vector<int> unwanted_streams{};
  std::vector<std::string> unwanted_beside{};

  bool is_wanted(const source_stream& stream) const;
  bool is_wanted(const sidecar& text) const;
};

/// Looks into a file (native path); what does so reads people's files with FFmpeg, and programs
/// hand it in.
using source_prober = std::function<result<source_facts>(const std::string& file)>;

/// What is to be known of a file before it can be planned: its facts and what lies beside it.
probed_source look_into(const std::string& file, const source_prober& probe);

/// What the project asks of titles that are added. The beginnings of its first title's files are
/// read.
titleset_demands demands_of_project(const project& p);

/// Where they go, and what is chosen for all of them.
struct import_place {
  std::string folder;  ///< native, absolute
  import_choices choices;
  video_standard preferred = video_standard::ntsc;  ///< where neither project nor files decide
  std::uint64_t used = 0;                           ///< bytes of the disc that are taken already
  /// Whether something has this name (native path).
  std::function<bool(const std::string&)> is_taken;
};

/// What becomes of one of them.
struct batch_entry {
  std::string problem;      ///< why it is not imported, a sentence without a full stop; or empty
  import_job job;           ///< of no use with a problem
  std::uint64_t bytes = 0;  ///< that its files will have, about
};

struct import_batch {
  std::vector<batch_entry> entries;  ///< of all sources, in their order
  /// Why none of them can be imported as is chosen, and what to do: sentences; or empty.
  std::string problem;
};

import_batch plan_batch(const std::vector<probed_source>& sources, const titleset_demands& demands,
                        const import_place& place);

/// Adds what an import has made: its title, and the language tags that the disc has then.
void add_to_project(document& doc, const import_job& job);

}  // namespace corvane
