// What becomes of a file that is imported: of each of its streams whether it is copied, encoded or
// left out, and why, in words for a person. The script is built from it (import/import_script.h).
//
// Deciding looks at facts alone: nothing is opened here, and the same facts give the same plan.
#pragma once

#include "formats/source_facts.h"
#include "import/import_choices.h"
#include "import/picture_plan.h"
#include "import/sidecars.h"
#include "import/sound_plan.h"
#include "import/titleset.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct video_plan {
  int stream = 0;  ///< its index in the source
  stream_fate fate = stream_fate::encoded;
  std::string codec{};             ///< of the source, FFmpeg's name
  picture_size size{};             ///< likewise, as it is coded
  picture_work work{};             ///< of encoding; of a copy, how it would be encoded
  bool may_need_pulldown = false;  ///< of a copy: film that may not have it yet
};

/// Subtitles that are text; they become SubRip in UTF-8.
struct text_plan {
  std::optional<int> stream{};  ///< its index in the source; not set: `file`
  sidecar file{};
  std::string language{};  ///< two letters, lower case; empty: not known
};

/// What happens to a stream of the source.
struct planned_stream {
  int stream = 0;  ///< its index
  stream_fate fate = stream_fate::left_out;
  std::string reason{};  ///< a clause: "it is AAC"; of what is encoded also what it becomes
};

struct import_plan {
  /// Why the file cannot be imported, a sentence without a full stop. All else is then of no use.
  std::string problem{};
  titleset_demands demands{};  ///< with standard and proportions, which the file may have decided
  double begin = 0;            ///< of the picture, seconds after the beginning of the file
  double seconds = 0;          ///< that the title lasts, with a picture that is held; 0: not known
  /// The file does not say how long its picture lasts: `seconds` go to the end of the file.
  bool may_end_earlier = false;
  std::int64_t source_bytes = 0;  ///< of the whole file
  bool joined = false;            ///< of parts with clocks of their own
  std::string container{};        ///< of the file, a name that FFmpeg has for it; may be empty
  video_plan video{};
  sound_plan sound{};
  std::vector<text_plan> texts{};
  /// All of the source, in its order; those that were left out by choice stand last.
  std::vector<planned_stream> streams{};
  std::vector<double> chapters{};  ///< seconds of the title, rising; 99 at most
  /// What the disc's streams are to be tagged with from now on, stream 1 first: two letters, lower
  /// case, or nothing where titles have different languages.
  std::vector<std::string> sound_tags{};
  std::vector<std::string> subtitle_tags{};
};

/// The tags of a disc's streams when a title of this plan comes to what `demands` tell of it: of
/// its sound, and of subtitles in these languages.
std::vector<std::string> sound_tags_beside(const titleset_demands& demands,
                                           const import_plan& plan);
std::vector<std::string> subtitle_tags_beside(const titleset_demands& demands,
                                              const std::vector<std::string>& languages);

/// Has the last picture held for what was left out of the sound: its video, which was to be copied,
/// is encoded after all.
void hold_for_what_is_left_out(import_plan& plan);

/// What is done where sound goes on after the picture, a clause for a person: "the picture ends 12
/// s before the sound: its last picture is held"; empty where they end together.
std::string end_text(const import_plan& plan);

/// `beside`: subtitle files that belong to the file. `preferred`: the standard where neither
/// project nor file decides.
import_plan import_plan_for(const source_facts& file, const std::vector<sidecar>& beside,
                            const titleset_demands& demands, const import_choices& choices,
                            video_standard preferred);

}  // namespace corvane
