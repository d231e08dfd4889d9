#include "drawing/page_pictures.h"

#include "media/source_probe.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

constexpr std::size_t most_kept_picture_bytes = std::size_t{64} << 20;

/// 704 of 720 pixels of a line, and 352 of 360, are 4:3 or 16:9, as pages have it; what else a
/// stream may have is what it says of the whole picture.
double pixel_aspect_of(const video_shape& shape, const picture& shown) {
  if (shape.aspect_width == 0 || shape.aspect_height == 0 || shown.width == 0)
    return 1;
  const double whole = static_cast<double>(shape.aspect_width) / shape.aspect_height;
  const int width = shown.width == 720 ? 704 : shown.width;
  return whole * shown.height / width;
}

}  // namespace

result<shaped_picture> page_pictures::in_film(double seconds) {
  using read = result<shaped_picture>;
  constexpr int slice = 100;
  // A picture behind the one asked for tells that it is known; some are stored in another order.
  constexpr double beyond = 2;
  while (!is_scanned_ && open_->length() < seconds + beyond) {
    const auto progress = open_->scan(slice);
    if (!progress && open_->pictures() == 0)
      return read::fail(progress.error);
    is_scanned_ = !progress || progress->finished;
  }
  auto shown = open_->picture_at(seconds);
  if (!shown)
    return read::fail(shown.error);
  const double pixel_aspect = pixel_aspect_of(open_->shape(), *shown);
  return read::ok({std::move(*shown), pixel_aspect});
}

result<shaped_picture> page_pictures::read(const std::string& file, double seconds) {
  using read = result<shaped_picture>;
  constexpr int most = 2048;
  if (file != open_file_ || !open_) {
    auto opened = video_file::open(file);
    open_ = opened ? std::move(*opened) : nullptr;
    open_file_ = file;
    is_scanned_ = false;
  }
  if (open_)
    return in_film(seconds);
  auto shown = source_picture(file, seconds, most, most);
  return shown ? read::ok({std::move(*shown), 1}) : read::fail(shown.error);
}

result<std::shared_ptr<const shaped_picture>> page_pictures::at(const std::string& file,
                                                                double seconds) {
  using had = result<std::shared_ptr<const shaped_picture>>;
  const double from = std::isfinite(seconds) ? std::max(0.0, seconds) : 0;
  const auto known = std::ranges::find_if(kept_, [&](const kept_picture& picture) {
    return picture.seconds == from && picture.file == file;
  });
  if (known != kept_.end()) {
    kept_.splice(kept_.begin(), kept_, known);
    return had::ok(known->shown);
  }
  auto shown = read(file, from);
  if (!shown)
    return had::fail(shown.error);
  auto shared = std::make_shared<const shaped_picture>(std::move(*shown));
  keep({file, from, shared});
  return had::ok(std::move(shared));
}

void page_pictures::keep(kept_picture picture) {
  kept_bytes_ += picture.shown->pixels.rgb.size();
  kept_.push_front(std::move(picture));
  while (kept_bytes_ > most_kept_picture_bytes && kept_.size() > 1) {
    kept_bytes_ -= kept_.back().shown->pixels.rgb.size();
    kept_.pop_back();
  }
}

result<fitted_picture> thumbnail(page_pictures& pictures, const std::string& file, double seconds,
                                 int width, int height, double pixel_aspect, page_fit fit) {
  const auto shown = pictures.at(file, seconds);
  if (!shown)
    return result<fitted_picture>::fail(shown.error);
  return result<fitted_picture>::ok(fitted(**shown, width, height, pixel_aspect, fit));
}

}  // namespace corvane
