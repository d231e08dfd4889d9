// An MPEG video file as pictures with times: an elementary stream (.m2v, .m1v, .mpv) or the first
// video stream of a program stream (.vob, .mpg).
//
// Such streams carry no usable times of their own. So an index of all pictures is made by reading
// the whole file once, in slices that the caller asks for, to keep a window alive; picture n is
// then exactly the n-th that a player shows, counted from 0, and stands on the screen from
// n / frame rate (later, where the stream has fields shown twice, as films for NTSC do).
//
// Belongs to one thread. Every failure is a reason to be shown ("the file is empty"); none of them
// makes the object unusable.
#pragma once

#include "formats/video_headers.h"
#include "media/picture.h"
#include "media/picture_times.h"
#include "platform/result.h"

#include <cstdint>
#include <memory>
#include <string>

namespace corvane {

/// How far the index is, in bytes of the file.
struct scan_progress {
  std::uint64_t done = 0;
  std::uint64_t total = 0;
  bool finished = false;
};

class video_file final : public picture_times {
 public:
  /// Opens a file (native path). Reads its head only: quick for any size. Fails on anything that
  /// does not begin with MPEG-1 or MPEG-2 video that can be decoded.
  static result<std::unique_ptr<video_file>> open(const std::string& path);
  ~video_file() override;
  video_file(const video_file&) = delete;
  video_file& operator=(const video_file&) = delete;

  /// As the head tells; a later picture may be of another size.
  const video_shape& shape() const;
  /// Pictures a second.
  double frame_rate() const;

  /// The first picture on the screen; needs no index.
  result<picture> first_picture();

  /// Goes on with the index for about so many milliseconds, at least one piece of the file.
  /// Once finished it does nothing more. Fails when the file cannot be read to its end; what was
  /// read until then stays usable, and the next call tries again.
  result<scan_progress> scan(int milliseconds);

  // The following know the pictures that have been scanned: all of them once that has finished.

  std::int64_t pictures() const override;
  double length() const override;
  /// Fails when there is no such picture (0-based) or it cannot be decoded or read.
  result<picture> picture_number(std::int64_t number);
  /// The picture on the screen at a time in seconds; the first or last one outside of the video.
  result<picture> picture_at(double seconds);
  std::int64_t number_at(double seconds) const override;
  double time_of(std::int64_t number) const override;

  /// Groups of pictures: how many, which one (0-based) a picture belongs to, and which picture one
  /// begins with: its I picture, which is what a player shows when it jumps there.
  std::int64_t gops() const override;
  std::int64_t gop_of(std::int64_t number) const;
  std::int64_t first_of_gop(std::int64_t gop) const;
  /// The picture that a group shows first: in an open group a B picture, before its I picture.
  std::int64_t begin_of_gop(std::int64_t gop) const override;

  /// In a stream that is ready for a disc, the groups behind a navigation packet; in any other
  /// one, which is still to be multiplexed, all of them.
  std::int64_t units() const override;
  std::int64_t begin_of_unit(std::int64_t unit) const override;

  /// How many pictures have been decoded so far: what all of the above has cost.
  std::uint64_t decoded() const;

 private:
  struct state;
  explicit video_file(std::unique_ptr<state> s);

  std::unique_ptr<state> state_;
};

}  // namespace corvane
