#include "ui/editor/video_backdrop.h"

#include "ui/editor/file_pictures.h"

namespace corvane {
namespace {

// Pictures that are shown earlier can stand later in the file.
constexpr double margin_seconds = 1;

}  // namespace

video_backdrop::video_backdrop(const std::string& path) {
  if (const result<picture> first = loader_.open(path))
    first_ = image_of(*first);
}

bool video_backdrop::known(double seconds) const {
  return !loader_.scanning() || loader_.video()->length() > seconds + margin_seconds;
}

bool video_backdrop::search(double seconds) {
  if (known(seconds))
    return false;
  loader_.scan();
  return true;
}

wxImage video_backdrop::at(double seconds) {
  if (loader_.video() == nullptr || !known(seconds))
    return first_;
  const result<picture> there = loader_.video()->picture_at(seconds);
  return there ? image_of(*there) : first_;
}

wxSize video_backdrop::proportions() const {
  const bool wide = loader_.video() != nullptr && loader_.video()->shape().aspect_width == 16;
  return wide ? wxSize(16, 9) : wxSize(4, 3);
}

}  // namespace corvane
