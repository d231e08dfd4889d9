#include "ui/video_backdrop.h"

#include "media/video_file.h"
#include "ui/file_pictures.h"

#include <utility>

namespace corvane {
namespace {

constexpr int slice_milliseconds = 12;  // less than a redraw apart

// Pictures that are shown earlier can stand later in the file.
constexpr double margin_seconds = 1;

}  // namespace

video_backdrop::video_backdrop(const std::string& path) {
  if (result<std::unique_ptr<video_file>> opened = video_file::open(path))
    video_ = std::move(*opened);
}

video_backdrop::~video_backdrop() = default;

bool video_backdrop::known(double seconds) const {
  return searched_all_ || video_->length() > seconds + margin_seconds;
}

bool video_backdrop::search(double seconds) {
  if (!video_ || known(seconds))
    return false;
  const result<scan_progress> progress = video_->scan(slice_milliseconds);
  // What was read of a file that cannot be read to its end can still be shown.
  searched_all_ = !progress || progress->finished;
  return !known(seconds);
}

wxImage video_backdrop::at(double seconds) {
  if (!video_)
    return {};
  if (known(seconds))
    if (const result<picture> there = video_->picture_at(seconds))
      return image_of(*there);
  const result<picture> first = video_->first_picture();
  return first ? image_of(*first) : wxImage();
}

wxSize video_backdrop::proportions() const {
  const bool wide = video_ && video_->shape().aspect_width == 16;
  return wide ? wxSize(16, 9) : wxSize(4, 3);
}

}  // namespace corvane
