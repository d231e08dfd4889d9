#include "drawing/fitted_picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {
namespace {

/// What of a line of the source goes into one pixel.
struct pixel_share {
  int first = 0;
  std::vector<float> weights;  ///< their sum is 1
};

/// For `count` pixels, of the part of a line of `source` pixels from `begin` to `end`. Smaller
/// pictures get means of what they cover, larger ones run straight from pixel to pixel.
std::vector<pixel_share> shares_of(int source, double begin, double end, int count) {
  const double step = (end - begin) / count, reach = std::max(1.0, step);
  std::vector<pixel_share> shares(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const double middle = begin + (i + 0.5) * step;
    const int first = std::clamp(static_cast<int>(std::ceil(middle - reach - 0.5)), 0, source - 1);
    const int last =
        std::clamp(static_cast<int>(std::floor(middle + reach - 0.5)), first, source - 1);
    pixel_share& share = shares[static_cast<std::size_t>(i)];
    share.first = first;
    double sum = 0;
    for (int at = first; at <= last; ++at) {
      const double weight = std::max(1e-6, 1 - std::abs(at + 0.5 - middle) / reach);
      share.weights.push_back(static_cast<float>(weight));
      sum += weight;
    }
    for (float& weight : share.weights)
      weight = static_cast<float>(weight / sum);
  }
  return shares;
}

constexpr std::size_t colours = 3;

/// One line of pixels, of `values` at `stride` from one another.
void add_share(const pixel_share& share, const float* values, std::size_t stride, float* into) {
  float sums[colours] = {};
  const float* from = values + static_cast<std::size_t>(share.first) * stride;
  for (const float weight : share.weights) {
    for (std::size_t c = 0; c < colours; ++c)
      sums[c] += weight * from[c];
    from += stride;
  }
  std::copy_n(sums, colours, into);
}

struct taken_part {
  double left, top, right, bottom;
};

picture scaled(const picture& source, const taken_part& part, int width, int height) {
  const auto across = shares_of(source.width, part.left, part.right, width);
  const auto down = shares_of(source.height, part.top, part.bottom, height);
  const std::size_t line = static_cast<std::size_t>(width) * colours;
  const int first_row = down.front().first;
  const int rows = down.back().first + static_cast<int>(down.back().weights.size()) - first_row;
  std::vector<float> narrowed(line * static_cast<std::size_t>(rows));
  std::vector<float> whole(static_cast<std::size_t>(source.width) * colours);
  for (int row = 0; row < rows; ++row) {
    std::copy_n(source.rgb.begin() + static_cast<std::ptrdiff_t>(
                                         static_cast<std::size_t>(first_row + row) * whole.size()),
                whole.size(), whole.begin());
    float* into = &narrowed[static_cast<std::size_t>(row) * line];
    for (const pixel_share& share : across) {
      add_share(share, whole.data(), colours, into);
      into += colours;
    }
  }
  picture made{width, height, {}};
  made.rgb.reserve(line * static_cast<std::size_t>(height));
  for (pixel_share share : down) {
    share.first -= first_row;
    for (int x = 0; x < width; ++x) {
      float pixel[colours];
      add_share(share, &narrowed[static_cast<std::size_t>(x) * colours], line, pixel);
      for (const float value : pixel)
        made.rgb.push_back(static_cast<std::uint8_t>(std::clamp(std::lround(value), 0L, 255L)));
    }
  }
  return made;
}

}  // namespace

fitted_picture fitted(const shaped_picture& source, int width, int height, double pixel_aspect,
                      page_fit fit) {
  const picture& from = source.pixels;
  if (from.width <= 0 || from.height <= 0 || width <= 0 || height <= 0)
    return {};
  const double shape = from.width * source.pixel_aspect / from.height;
  const double wanted = width * pixel_aspect / height;
  taken_part part{0, 0, static_cast<double>(from.width), static_cast<double>(from.height)};
  int wide = width, high = height;
  if (fit == page_fit::fit) {
    if (shape > wanted)
      high = std::clamp(static_cast<int>(std::lround(width * pixel_aspect / shape)), 1, height);
    else
      wide = std::clamp(static_cast<int>(std::lround(height * shape / pixel_aspect)), 1, width);
  } else if (shape > wanted) {
    const double half = from.width * wanted / shape / 2;
    part.left = from.width / 2.0 - half;
    part.right = from.width / 2.0 + half;
  } else {
    const double half = from.height * shape / wanted / 2;
    part.top = from.height / 2.0 - half;
    part.bottom = from.height / 2.0 + half;
  }
  return {scaled(from, part, wide, high), (width - wide) / 2, (height - high) / 2};
}

}  // namespace corvane
