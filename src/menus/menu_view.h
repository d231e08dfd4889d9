// What the editor's picture shows of a menu at any size: the video's picture with the dots of the
// overlay, without a toolkit.
#pragma once

#include "menus/menu_overlay.h"

#include <cstdint>
#include <vector>

namespace corvane {

struct view_size {
  int width = 0, height = 0;
  bool operator==(const view_size&) const = default;
};

/// A menu's picture of so many lines at 100 %: each dot a square, or, with an aspect (16 and 9, 4
/// and 3), in the proportions in which a television shows it, no smaller than the dots either way.
view_size full_view(int lines);
view_size full_view(int lines, int aspect_width, int aspect_height);

/// The largest size of these proportions within the room, at most four times as large.
view_size fitted_view(const view_size& full, const view_size& room);

/// That size, so many times as large.
view_size zoomed_view(const view_size& full, int times);

/// What of a length is seen: `room` of it, from `origin` on.
struct seen_span {
  int origin = 0, room = 0;
};

/// Where what is seen begins after it was scrolled as little as can be so that the span from `from`
/// to `to` is in sight. Of one that is longer than the room its end is, or its begin.
int scrolled_to_show(const seen_span& seen, int from, int to, bool end);

/// How far a picture is scrolled at a time while what is dragged is held at `at`, so near to an end
/// of what is seen or beyond it: the further out, the faster, up to `most`. 0: not at all.
int scroll_of_drag(const seen_span& seen, int at, int near, int most);

/// A rectangle of what is shown, in pixels.
struct view_part {
  int x = 0, y = 0, width = 0, height = 0;
};

/// The picture of a video; without one (no bytes) it is grey.
struct video_pixels {
  int width = 0, height = 0;
  const std::uint8_t* rgb = nullptr;
};

/// A part of the picture as it looks when all of it is `shown` large, three bytes a pixel. The
/// video is smoothed; each dot of the overlay keeps its edges at whole multiples of its size, and
/// at others gives its colour to a pixel by the part of it that it covers. The part must lie
/// within.
std::vector<std::uint8_t> view_of(const video_pixels& video, const overlay_picture& overlay,
                                  const view_size& shown, const view_part& part);

}  // namespace corvane
