// Stills of pictures that "create m2v still" refuses: of any size and of many forms. The picture is
// turned upright, brought to red, green and blue, and fitted between bars or cropped to the disc's
// picture, in which a circle stays a circle; then it goes the way of every still.
//
// GraphicsMagick reads the picture; which part of it goes where is worked out here
// (import/picture_shape.h), so that a preview is of what will be made. The picture itself is read
// only. The video is made under a temporary name, and gets its own when it is whole.
#pragma once

#include "disc/disc_description.h"
#include "formats/source_facts.h"
#include "import/import_batch.h"
#include "import/picture_shape.h"
#include "import/titleset.h"
#include "platform/files/paths.h"
#include "platform/result.h"
#include "runner/run_listener.h"

#include <functional>
#include <string>
#include <vector>

namespace corvane {

/// A picture of which a still can be made.
struct still_source {
  std::string file;       ///< native path
  std::string form;       ///< as gm calls it: "JPEG"
  shown_picture shown;    ///< as a viewer of pictures shows it
  int turned = 0;         ///< degrees clockwise that it is turned for that: 0, 90, 180, 270
  bool mirrored = false;  ///< left and right changed, before it is turned

  /// 720x480 or 720x576: drawn for a disc, whose whole picture it fills in any proportions.
  bool is_drawn_for_disc() const;
};

/// Whether there is a photo or a drawing in a file, and no film, nor a picture that moves.
bool is_picture_alone(const source_facts& facts);

/// What is in a file (native path), as a picture of which gm makes a still. Fails with a sentence
/// without a full stop. `style`: the gm of the Windows product reads fewer forms.
result<still_source> still_source_of(const std::string& file, const source_facts& facts,
                                     path_style style = native_style());

/// Looks into a file (native path). Fails as `still_source_of` does, where the file cannot be
/// looked into, and where its end is missing.
result<still_source> still_source_at(const std::string& file, const source_prober& probe,
                                     path_style style = native_style());

struct still_choices {
  video_standard standard = video_standard::ntsc;
  disc_aspect aspect = disc_aspect::four_three;
  picture_fit fit = picture_fit::bars;
  int frames = 1;  ///< how many pictures long
};

/// As the first title has them (`demands`), else as the picture is and as the project `prefers`.
still_choices preset_choices(const still_source& source, const titleset_demands& demands,
                             video_standard prefers);

/// Which part of the picture goes where.
picture_geometry geometry_of(const still_source& source, const still_choices& choices);

/// What becomes of it, for a person: "black bars at both sides", "16 % are cut off above and
/// below".
std::string described(const still_source& source, const picture_geometry& geometry);

struct picture_still {
  still_source source;
  still_choices choices;
  std::string m2v;        ///< native path of the video
  bool replaces = false;  ///< the user wants what is there replaced
};

/// "menu.m2v" for "menu.png", beside it; "menu (2).m2v" and so on where `is_taken` says that
/// something has the name.
std::string still_name(const std::string& picture,
                       const std::function<bool(const std::string&)>& is_taken,
                       path_style style = native_style());

/// The lines of a work script, without their ends, that make the video under its temporary name, by
/// way of a picture in the program folder (`app`, native in `style`), which goes again. The
/// picture's name must be one that rows can hold (`why_not_storable`).
std::vector<std::string> picture_still_lines(const std::string& app, const picture_still& still,
                                             path_style style = native_style());

/// Text of the work script, with these lines.
std::string picture_still_script(const std::string& app, const picture_still& still,
                                 path_style style = native_style());

/// When the script has run: the whole video gets its name; of one that is not whole nothing is
/// left. Tells what the user has to know.
run_settled settle_picture_still(const std::string& app, const picture_still& still,
                                 run_outcome outcome);

}  // namespace corvane
