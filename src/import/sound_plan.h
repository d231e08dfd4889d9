// Which sound streams a title gets, in which order, and what becomes of each.
//
// The titleset's first title says how many there are, of which kind each is, and in which order
// their languages come; where it has more than the file, the file's first one is repeated, since a
// viewer who chose a stream would hear nothing in this title.
//
// Sound begins with the picture: what begins later gets silence before it, what begins earlier
// loses what cannot be heard. Sound that is copied keeps its frames, so how much it is off becomes
// the title's A/V delay, and what is encoded beside it is laid off as much. Where recordings were
// joined, sound and picture of a part hardly ever end together; it is encoded then, and begins with
// the picture in each. When sound goes on
// after the picture, the last picture is held where pictures are encoded; else it ends with them
// (import/import_plan.h).
#pragma once

#include "formats/source_facts.h"
#include "import/import_choices.h"
#include "import/titleset.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

enum class stream_fate { copied, encoded, left_out };

struct sound_work {
  stream_fate fate = stream_fate::encoded;  ///< copied or encoded
  std::optional<int> stream{};              ///< of the source, its index; not set: silence
  std::string reason{};                     ///< why it is encoded, or what it is that is copied
  disc_sound kind = disc_sound::ac3;
  int channels = 2;           ///< of the encoder: 1, 2 or 6
  std::int64_t bit_rate = 0;  ///< bits a second, of what the disc gets
  std::string language{};     ///< two letters, lower case; empty: not known
  double source_seconds = 0;  ///< that the source's stream lasts by its times; 0: not known
  bool is_joined = false;     ///< of parts with clocks of their own
  bool operator==(const sound_work&) const = default;
};

/// Has a stream of so many channels encoded, for the reason.
void encode_instead(sound_work& work, int channels, const std::string& why,
                    int wanted_channels = 0);

struct sound_plan {
  std::string
      problem{};  ///< why there is none, a sentence without a full stop; empty: there is one
  std::vector<sound_work> streams{};  ///< in the disc's order
  std::vector<int> beyond{};          ///< indices of those that the disc's other titles do not have
  /// When the streams begin, in seconds after the picture; negative: before it. Less than a second.
  double begin = 0;
  /// When the last of the source's streams ends, seconds after the picture's beginning; 0: nobody
  /// knows.
  double end = 0;
  /// Of this, what comes after the picture and is left out.
  double left_out = 0;
  /// The title's delay in milliseconds, as its row has it: what the picture is late by.
  int delay() const;
};

/// `speed`: so many times as fast as the source, when sound must be resampled.
sound_plan sound_plan_for(const source_facts& file, const titleset_demands& demands,
                          const import_choices& choices, source_ratio speed);

/// Most streams that a title can have.
inline constexpr std::size_t most_sounds = 8;

}  // namespace corvane
