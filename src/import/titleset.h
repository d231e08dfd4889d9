// What the titleset of a project asks of a title that is to be added: all titles of a titleset
// share its standard, the size and proportions of pictures, the kinds of sound and the order of
// languages, which the disc's tables state once, as the first title has them.
//
// Nothing is looked up here: what is known of the first title's files is handed in. Where nothing
// is known of a file, it asks for nothing.
#pragma once

#include "disc/disc_description.h"
#include "examine/titleset_rules.h"
#include "formats/source_facts.h"
#include "import/picture_shape.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

enum class disc_sound { ac3, mp2, other };

/// The sound streams of one number, in all titles.
struct titleset_sound {
  disc_sound kind = disc_sound::ac3;
  int channels = 0;        ///< of the first title's; 0: not known
  std::string language{};  ///< two letters, lower case; empty: no tag
  bool operator==(const titleset_sound&) const = default;
};

struct titleset_demands {
  /// Not set: the project has neither titles nor menus, and a file may decide.
  std::optional<video_standard> standard{};
  std::optional<picture_size> size{};  ///< of the pictures as they are coded
  std::optional<disc_aspect> aspect{};
  /// Of stream 1, 2 and so on. Not set: no title asks for any.
  std::optional<std::vector<titleset_sound>> sounds{};
  std::vector<std::string> subtitle_languages{};  ///< likewise; of the tags
  /// Why no title that is encoded fits this titleset, a sentence without a full stop; empty: one
  /// does.
  std::string problem{};

  bool operator==(const titleset_demands&) const = default;
};

/// Of titleset 1 of the disc. `facts` are by native path, as examination has them; beginnings of
/// files are enough.
titleset_demands demands_of(const disc_description& d, const facts_by_path& facts);

/// The standard of a project that has none: by the file's rate. Rates that are both standards' or
/// neither's are left to `preferred`.
video_standard standard_for(const source_facts& file, video_standard preferred);

/// The demands with what is open in standard and proportions decided by the file.
titleset_demands decided_by(const source_facts& file, titleset_demands demands,
                            video_standard preferred);

/// The tags (two letters, lower case, or nothing) of a disc's streams when one more title has
/// streams of `own` languages, stream 1 first. A tag stays where the title's stream does not
/// contradict it; of streams that other titles have, and of which nobody said what they are,
/// nothing is said now.
std::vector<std::string> agreed_tags(std::vector<std::string> tags,
                                     const std::vector<std::string>& own);

/// The video that a title is made of: the first, or the one that the file says is to be shown; null
/// if there is none.
const source_stream* video_of(const source_facts& file);

}  // namespace corvane
