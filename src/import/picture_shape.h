// The shape in which a picture is shown, and the picture of a disc that it becomes: which part of
// it is taken, to which size it is scaled, where it stands between bars. A circle stays a circle.
//
// A disc's stream states the proportions of its whole picture, 4:3 or 16:9. Players on computers
// take this for all pixels that are coded; players at a television show 704 of 720 pixels of a line
// in these proportions, so that 720 pixels show a picture a fiftieth too wide. Pictures of 704
// pixels are the same to both: their pixels are 10:11 and 40:33 (NTSC), 12:11 and 16:11 (PAL),
// which is what 704 to 4:3 and 16:9 comes to. So pictures are made 704 pixels wide, unless the
// titleset asks for another width or the source has 720 pixels of just the shape that the stream
// will state, so that nothing need be scaled. (ITU-R BT.601 makes PAL's pixels 59:54 rather than
// 12:11, a difference of one pixel in 640; what is recorded with them is taken as it is.)
#pragma once

#include "disc/disc_description.h"
#include "formats/source_facts.h"

#include <optional>

namespace corvane {

enum class disc_aspect { four_three, sixteen_nine };

struct picture_size {
  int width = 0, height = 0;  ///< pixels
  bool operator==(const picture_size&) const = default;
};

/// 4/3 or 16/9.
source_ratio ratio_of(disc_aspect aspect);

/// In lowest terms; of very large parts, about as large a fraction.
source_ratio reduced(source_ratio ratio);
source_ratio times(source_ratio a, source_ratio b);
source_ratio inverse(source_ratio ratio);

/// A picture of a source as a player shows it.
struct shown_picture {
  picture_size size;          ///< pixels, after it is turned
  source_ratio pixel_aspect;  ///< width over height of a pixel, after it is turned

  /// Width over height of the whole picture.
  source_ratio shape() const;
};

/// Where the file does not say how wide its pixels are, they are square; but pictures of a disc's
/// or a recorder's size (720x576, 704x480) are television's, 4:3. A width or height that is none is
/// taken for 1.
shown_picture shown_picture_of(const source_video& video);

/// The one of a disc's proportions to which a shape is nearer. Upright pictures: 4:3.
disc_aspect nearest_aspect(source_ratio shape);

enum class picture_fit { bars, cropped };

struct picture_geometry {
  /// What is taken of the source, after it is turned; at most the whole picture.
  int crop_left = 0, crop_top = 0;
  picture_size cropped;
  picture_size scaled;
  int left = 0, top = 0;  ///< where it stands in the disc's picture, the bars around it black
  picture_size disc;
  disc_aspect aspect = disc_aspect::four_three;

  bool is_cropped(const shown_picture& source) const { return cropped != source.size; }
  bool is_scaled() const { return scaled != cropped; }
  bool has_bars() const { return scaled != disc; }
  /// Whether lines stay what they are, so that fields do.
  bool keeps_lines() const {
    return crop_top == 0 && top == 0 && cropped.height == disc.height &&
           scaled.height == disc.height;
  }
  bool operator==(const picture_geometry&) const = default;
};

/// The size of a disc's picture for a source; `demanded`: the titleset's, if it has one.
picture_size disc_size_for(const shown_picture& source, video_standard standard, disc_aspect aspect,
                           const std::optional<picture_size>& demanded);

/// Sizes and places are even, since colours stand in squares of two by two pixels.
picture_geometry fit_picture(const shown_picture& source, picture_size disc, disc_aspect aspect,
                             picture_fit fit);

}  // namespace corvane
