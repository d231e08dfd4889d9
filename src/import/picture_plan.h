// What becomes of a video: whether a disc takes it as it is, and if not, how its pictures become
// those of a disc.
//
// Rates. What shows its pictures at the disc's rate, or each of them two or more times, stays whole
// pictures. Film becomes NTSC by repeated fields, PAL by speed where that is chosen. All other
// rates become fields: 50 and 60 pictures a second are as smooth as fields show them (halving the
// rate would make every motion jerk), and of rates that fit neither, as 25 for NTSC, each picture
// is then off by half as much as it would be in whole pictures.
//
// Fields. Interlaced pictures keep theirs, in their order, where no line is moved; where the
// picture is scaled, each field becomes a picture first (bwdif), and those become fields again.
#pragma once

#include "formats/source_facts.h"
#include "import/import_choices.h"
#include "import/picture_shape.h"

#include <optional>
#include <string>

namespace corvane {

enum class picture_motion {
  progressive,  ///< whole pictures at the disc's rate
  film,         ///< whole pictures, 24000/1001 or 24 a second, to be finished by pulldown
  kept_fields,  ///< the source's
  made_fields,  ///< of pictures at twice the disc's rate
};

enum class deinterlacing { none, to_pictures, to_fields };

enum class colour_work {
  scale,     ///< the matrix is changed where it is another
  tone_map,  ///< of a high dynamic range (PQ, HLG)
};

/// How an encoder gets its pictures.
struct picture_work {
  picture_geometry geometry{};
  picture_motion motion = picture_motion::progressive;
  source_ratio rate{25, 1};  ///< of coded pictures
  bool top_first = true;     ///< of fields
  deinterlacing deinterlace = deinterlacing::none;
  bool source_top_first = true;  ///< of a source that is deinterlaced
  bool is_dense = false;         ///< the source has more pictures than are shown
  double held = 0;               ///< seconds for which the last picture stays when all were shown
  double shown = 0;              ///< seconds until then, where it does
  source_ratio speed{1, 1};      ///< so many times as fast as the source
  int turned = 0;                ///< degrees clockwise
  bool mirrored = false;         ///< before it is turned
  bool cropped = false;          ///< a part of the source's picture is taken
  bool alpha = false;            ///< shown over black
  colour_work colours = colour_work::scale;
  std::string matrix{};    ///< of the source: "bt709", "smpte170m", "bt470bg", "bt2020nc", "rgb"
  std::string transfer{};  ///< of the source, where it is tone-mapped: "smpte2084"
  bool full_range = false;

  bool has_fields() const {
    return motion == picture_motion::kept_fields || motion == picture_motion::made_fields;
  }
  /// The longest group of pictures: half a second, at most 36 fields (NTSC) or 30 (PAL).
  int group() const;
};

/// Pictures a second of a standard: 30000/1001 or 25.
source_ratio rate_of(video_standard standard);

/// Why a video is not copied, a clause about it ("it is H.264"); nullopt if it is. `demands` must
/// have a standard and proportions.
std::optional<std::string> why_not_copied(const source_stream& video,
                                          const titleset_demands& demands);

/// Whether a video that is copied may be film that states its own rate, and lacks pulldown flags.
bool may_lack_pulldown(const source_stream& video);

/// How it is encoded.
picture_work picture_work_for(const source_stream& video, const titleset_demands& demands,
                              const import_choices& choices);

/// What is done with it, for a person: "scaled to 704x576, 16:9, fields made of 50 pictures a
/// second".
std::string work_text(const source_video& source, const picture_work& work);

}  // namespace corvane
