#include "import/picture_shape.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>

namespace corvane {
namespace {

// Products of two parts, of one of them with a size and of that with 16:9 stay below 2^63.
constexpr std::int64_t largest_part = std::int64_t{1} << 30;

bool is_near(source_ratio a, source_ratio b, double tolerance) {
  return std::abs(a.value() / b.value() - 1) <= tolerance;
}

/// `length` times `ratio`, to the nearest even number of 2 to `most`.
int even_part(int length, source_ratio ratio, int most) {
  const std::int64_t halves = (std::int64_t{length} * ratio.over + ratio.under) / (2 * ratio.under);
  return static_cast<int>(std::clamp<std::int64_t>(2 * halves, 2, std::max(2, most)));
}

int even_half(int difference) {
  return difference / 4 * 2;
}

bool is_television(picture_size size) {
  const bool lines = size.height == 480 || size.height == 576;
  return lines && (size.width == 720 || size.width == 704);
}

/// What 704 pixels of a disc's lines are when they are shown in these proportions.
source_ratio pixel_of_704(int height, disc_aspect aspect) {
  return times(ratio_of(aspect), source_ratio{height, 704});
}

/// 720 pixels of which 704 are the picture, as recorders and cameras have them.
bool has_margins(const shown_picture& source, picture_size disc, disc_aspect aspect) {
  return source.size.width == 720 && source.size.height == disc.height &&
         is_near(source.pixel_aspect, pixel_of_704(disc.height, aspect), 0.003);
}

void crop_to_shape(picture_geometry& g, const shown_picture& source, source_ratio wanted) {
  const source_ratio wider = times(source.shape(), inverse(wanted));
  if (wider.over > wider.under)
    g.cropped.width = std::min(source.size.width,
                               even_part(source.size.width, inverse(wider), source.size.width));
  else
    g.cropped.height =
        std::min(source.size.height, even_part(source.size.height, wider, source.size.height));
  g.crop_left = even_half(source.size.width - g.cropped.width);
  g.crop_top = even_half(source.size.height - g.cropped.height);
}

void scale_between_bars(picture_geometry& g, source_ratio shape, source_ratio wanted) {
  const source_ratio wider = times(shape, inverse(wanted));
  g.scaled = g.disc;
  if (wider.over > wider.under)
    g.scaled.height = even_part(g.disc.height, inverse(wider), g.disc.height);
  else
    g.scaled.width = even_part(g.disc.width, wider, g.disc.width);
  g.left = even_half(g.disc.width - g.scaled.width);
  g.top = even_half(g.disc.height - g.scaled.height);
}

}  // namespace

source_ratio ratio_of(disc_aspect aspect) {
  return aspect == disc_aspect::four_three ? source_ratio{4, 3} : source_ratio{16, 9};
}

source_ratio reduced(source_ratio ratio) {
  const std::int64_t common = std::gcd(ratio.over, ratio.under);
  if (common > 1) {
    ratio.over /= common;
    ratio.under /= common;
  }
  while (ratio.over > largest_part || ratio.under > largest_part) {
    ratio.over = std::max<std::int64_t>(1, ratio.over / 2);
    ratio.under = std::max<std::int64_t>(1, ratio.under / 2);
  }
  return ratio;
}

source_ratio times(source_ratio a, source_ratio b) {
  a = reduced(a);
  b = reduced(b);
  return reduced({a.over * b.over, a.under * b.under});
}

source_ratio inverse(source_ratio ratio) {
  return {ratio.under, ratio.over};
}

source_ratio shown_picture::shape() const {
  return times({size.width, size.height}, pixel_aspect);
}

shown_picture shown_picture_of(const source_video& video) {
  shown_picture shown{{std::max(1, video.width), std::max(1, video.height)}, {1, 1}};
  if (video.pixel_aspect && video.pixel_aspect->over > 0 && video.pixel_aspect->under > 0)
    shown.pixel_aspect = reduced(*video.pixel_aspect);
  else if (is_television(shown.size))
    shown.pixel_aspect = times({4, 3}, {shown.size.height, shown.size.width});
  if (video.turned % 180 != 0) {
    std::swap(shown.size.width, shown.size.height);
    shown.pixel_aspect = inverse(shown.pixel_aspect);
  }
  return shown;
}

disc_aspect nearest_aspect(source_ratio shape) {
  // As many times wider than 4:3 as narrower than 16:9: the root of 64/27.
  return 27.0 * shape.value() * shape.value() > 64 ? disc_aspect::sixteen_nine
                                                   : disc_aspect::four_three;
}

picture_size disc_size_for(const shown_picture& source, video_standard standard, disc_aspect aspect,
                           const std::optional<picture_size>& demanded) {
  if (demanded)
    return *demanded;
  const int height = standard == video_standard::pal ? 576 : 480;
  const source_ratio of_720 = times(ratio_of(aspect), {height, 720});
  const bool as_it_is = source.size == picture_size{720, height} && source.pixel_aspect == of_720;
  return {as_it_is ? 720 : 704, height};
}

picture_geometry fit_picture(const shown_picture& source, picture_size disc, disc_aspect aspect,
                             picture_fit fit) {
  picture_geometry g;
  g.cropped = source.size;
  g.scaled = g.disc = disc;
  g.aspect = aspect;
  if (has_margins(source, disc, aspect)) {
    g.crop_left = 8;
    g.cropped.width = 704;
  } else if (fit == picture_fit::cropped) {
    crop_to_shape(g, source, ratio_of(aspect));
  } else {
    scale_between_bars(g, source.shape(), ratio_of(aspect));
  }
  return g;
}

}  // namespace corvane
