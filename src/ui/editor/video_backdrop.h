// The picture of a video at a time, as what something else is drawn over. Without a video that can
// be read there is none, and that is no failure.
//
// The video is looked through in slices when nothing else is to do, and only as far as it must be;
// until then its first picture serves.
#pragma once

#include "media/video_loader.h"

#include <wx/gdicmn.h>
#include <wx/image.h>

#include <string>

namespace corvane {

class video_backdrop {
 public:
  /// `path` is native. Reads the head of the file only.
  explicit video_backdrop(const std::string& path);

  /// Looks through a slice of the file; false when there was no need: the picture at that time (in
  /// seconds) is known or cannot be.
  bool search(double seconds);

  /// The picture at a time; the first one until it is known; a null image when there is none.
  wxImage at(double seconds);

  /// 16 x 9 or, as the disc shows all other videos, 4 x 3.
  wxSize proportions() const;

 private:
  bool known(double seconds) const;

  video_loader loader_;
  wxImage first_;
};

}  // namespace corvane
