// When the pictures of a video come up, and in which groups (GOPs) they stand: what playing and
// stepping need to know of it.
//
// Pictures and groups are numbered from 0; times are seconds from the first picture.
#pragma once

#include <cstdint>

namespace corvane {

class picture_times {
 public:
  virtual ~picture_times() = default;

  virtual std::int64_t pictures() const = 0;
  virtual double length() const = 0;

  /// When a picture comes up.
  virtual double time_of(std::int64_t number) const = 0;
  /// The picture on the screen at a time; the first or last one outside of the video.
  virtual std::int64_t number_at(double seconds) const = 0;

  virtual std::int64_t gops() const = 0;
  /// The picture that a group shows first.
  virtual std::int64_t begin_of_gop(std::int64_t gop) const = 0;

  /// Units (VOBUs), with which chapters can begin: groups, unless the stream tells others.
  virtual std::int64_t units() const { return gops(); }
  /// The picture that a unit shows first.
  virtual std::int64_t begin_of_unit(std::int64_t unit) const { return begin_of_gop(unit); }

 protected:
  picture_times() = default;
  picture_times(const picture_times&) = default;
  picture_times& operator=(const picture_times&) = default;
};

}  // namespace corvane
