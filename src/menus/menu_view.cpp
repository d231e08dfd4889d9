#include "menus/menu_view.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace corvane {
namespace {

constexpr int most_times = 4;
constexpr std::array<std::uint8_t, 3> without_video = {52, 56, 64};

int quotient(double value) {
  return std::max(1, static_cast<int>(std::lround(value)));
}

/// Between which two samples of a line a pixel lies, and how near to the second, of 256.
struct between {
  int first = 0, second = 0, weight = 0;
};

std::vector<between> smooth_places(int from, int to, int begin, int count) {
  std::vector<between> places;
  places.reserve(static_cast<std::size_t>(count));
  for (int i = begin; i < begin + count; ++i) {
    const double at = std::clamp((i + 0.5) * from / to - 0.5, 0.0, from - 1.0);
    const int first = static_cast<int>(at);
    places.push_back(
        {first, std::min(first + 1, from - 1), static_cast<int>(std::lround((at - first) * 256))});
  }
  return places;
}

void lay_video(const video_pixels& video, const view_size& shown, const view_part& part,
               std::vector<std::uint8_t>& out) {
  const std::vector<between> across = smooth_places(video.width, shown.width, part.x, part.width);
  const std::vector<between> down = smooth_places(video.height, shown.height, part.y, part.height);
  std::uint8_t* to = out.data();
  const auto row_bytes = static_cast<std::ptrdiff_t>(video.width) * 3;
  if (video.width == shown.width && video.height == shown.height) {
    const std::ptrdiff_t left = std::ptrdiff_t{part.x} * 3, bytes = std::ptrdiff_t{part.width} * 3;
    for (int y = part.y; y < part.y + part.height; ++y, to += bytes)
      std::copy_n(video.rgb + y * row_bytes + left, bytes, to);
    return;
  }
  for (const between& y : down) {
    const std::uint8_t* const upper = video.rgb + y.first * row_bytes;
    const std::uint8_t* const lower = video.rgb + y.second * row_bytes;
    for (const between& x : across) {
      for (int c = 0; c < 3; ++c) {
        const int left = x.first * 3 + c, right = x.second * 3 + c;
        const int above = upper[left] * (256 - x.weight) + upper[right] * x.weight;
        const int below = lower[left] * (256 - x.weight) + lower[right] * x.weight;
        *to++ =
            static_cast<std::uint8_t>((above * (256 - y.weight) + below * y.weight + 32768) >> 16);
      }
    }
  }
}

/// Which dots a pixel covers, and how much of the first and the last; those between wholly.
struct covered {
  int first = 0, last = 0;
  std::int64_t of_first = 0, of_last = 0;  ///< in parts of a dot: `to` of them are a whole one
};

std::vector<covered> covered_dots(int from, int to, int begin, int count) {
  std::vector<covered> all;
  all.reserve(static_cast<std::size_t>(count));
  for (int i = begin; i < begin + count; ++i) {
    const std::int64_t start = static_cast<std::int64_t>(i) * from, end = start + from;
    covered c;
    c.first = static_cast<int>(start / to);
    c.last = static_cast<int>((end - 1) / to);
    const std::int64_t next = static_cast<std::int64_t>(c.first + 1) * to;
    c.of_first = std::min(next, end) - start;
    c.of_last = end - static_cast<std::int64_t>(c.last) * to;
    all.push_back(c);
  }
  return all;
}

std::int64_t weight_in(const covered& c, int dot, int whole) {
  if (dot == c.first)
    return c.of_first;
  return dot == c.last ? c.of_last : whole;
}

class overlay_layer {
 public:
  overlay_layer(const overlay_picture& overlay, const view_size& shown)
      : overlay_(overlay), shown_(shown) {}

  void lay(const view_part& part, std::vector<std::uint8_t>& out) const {
    const auto across = covered_dots(overlay_.width, shown_.width, part.x, part.width);
    const auto down = covered_dots(overlay_.height, shown_.height, part.y, part.height);
    std::uint8_t* to = out.data();
    for (const covered& y : down) {
      if (!is_seen(y, across)) {
        to += across.size() * 3;
        continue;
      }
      for (const covered& x : across) {
        mix(x, y, to);
        to += 3;
      }
    }
  }

 private:
  const std::uint8_t* dot(int x, int y) const {
    return overlay_.rgba.data() +
           (static_cast<std::size_t>(y) * static_cast<std::size_t>(overlay_.width) +
            static_cast<std::size_t>(x)) *
               4;
  }
  bool is_seen(const covered& y, const std::vector<covered>& across) const {
    for (int line = y.first; line <= y.last; ++line)
      for (int x = across.front().first; x <= across.back().last; ++x)
        if (dot(x, line)[3] != 0)
          return true;
    return false;
  }
  void mix(const covered& x, const covered& y, std::uint8_t* to) const {
    std::array<std::int64_t, 3> sum{};
    std::int64_t seen = 0;
    for (int line = y.first; line <= y.last; ++line)
      for (int column = x.first; column <= x.last; ++column) {
        const std::uint8_t* const d = dot(column, line);
        if (d[3] == 0)
          continue;
        const std::int64_t weight =
            weight_in(x, column, shown_.width) * weight_in(y, line, shown_.height);
        seen += weight;
        for (std::size_t c = 0; c < 3; ++c)
          sum[c] += weight * d[c];
      }
    if (seen == 0)
      return;
    const std::int64_t all = static_cast<std::int64_t>(overlay_.width) * overlay_.height;
    for (std::size_t c = 0; c < 3; ++c)
      to[c] = static_cast<std::uint8_t>((sum[c] + to[c] * (all - seen) + all / 2) / all);
  }

  const overlay_picture& overlay_;
  view_size shown_;
};

}  // namespace

view_size full_view(int lines) {
  return {overlay_width, lines};
}

view_size full_view(int lines, int aspect_width, int aspect_height) {
  if (lines <= 0 || aspect_width <= 0 || aspect_height <= 0)
    return full_view(lines);
  const double width = static_cast<double>(lines) * aspect_width / aspect_height;
  if (width >= overlay_width)
    return {quotient(width), lines};
  return {overlay_width,
          quotient(static_cast<double>(overlay_width) * aspect_height / aspect_width)};
}

view_size fitted_view(const view_size& full, const view_size& room) {
  if (full.width <= 0 || full.height <= 0 || room.width <= 0 || room.height <= 0)
    return {};
  const double scale =
      std::min({static_cast<double>(most_times), static_cast<double>(room.width) / full.width,
                static_cast<double>(room.height) / full.height});
  return {std::max(1, static_cast<int>(full.width * scale)),
          std::max(1, static_cast<int>(full.height * scale))};
}

view_size zoomed_view(const view_size& full, int times) {
  return {full.width * times, full.height * times};
}

int scrolled_to_show(const seen_span& seen, int from, int to, bool end) {
  if (to - from > seen.room)
    (end ? from : to) = end ? to - seen.room : from + seen.room;
  if (from < seen.origin)
    return from;
  return std::max(seen.origin, to - seen.room);
}

int scroll_of_drag(const seen_span& seen, int at, int near, int most) {
  const int before = at - (seen.origin + near), behind = at - (seen.origin + seen.room - near);
  if (before < 0)
    return std::max(before, -most);
  return std::clamp(behind, 0, most);
}

std::vector<std::uint8_t> view_of(const video_pixels& video, const overlay_picture& overlay,
                                  const view_size& shown, const view_part& part) {
  std::vector<std::uint8_t> out(static_cast<std::size_t>(std::max(part.width, 0)) *
                                static_cast<std::size_t>(std::max(part.height, 0)) * 3);
  if (out.empty())
    return out;
  if (video.rgb != nullptr && video.width > 0 && video.height > 0)
    lay_video(video, shown, part, out);
  else
    for (std::size_t i = 0; i < out.size(); ++i)
      out[i] = without_video[i % 3];
  if (!overlay.rgba.empty())
    overlay_layer(overlay, shown).lay(part, out);
  return out;
}

}  // namespace corvane
