#include "examine/last_pictures.h"

#include "examine/inner_stream_scan.h"
#include "examine/program_stream_facts.h"
#include "examine/time_course.h"
#include "formats/video_headers.h"

#include <algorithm>
#include <array>
#include <vector>

namespace corvane {
namespace {

/// A picture, or one field of it.
struct timed_picture {
  picture_kind kind = picture_kind::other;
  int fields = 2;
  std::optional<stream_time> shown;
};

/// The first video stream, and where in it packets with a stamp begin.
struct stamped_video {
  struct stamp {
    std::size_t at = 0;
    stream_time shown = 0;
  };
  std::vector<std::uint8_t> bytes;
  std::vector<stamp> stamps;
};

stamped_video video_in(std::span<const std::uint8_t> packs) {
  stamped_video video;
  for (; packs.size() >= disc_pack_size; packs = packs.subspan(disc_pack_size))
    each_packet_in_pack(packs.first(disc_pack_size),
                        [&](const stream_packet& packet, std::span<const std::uint8_t> payload) {
                          if (packet.stream != first_video_stream)
                            return;
                          if (packet.shown)
                            video.stamps.push_back({video.bytes.size(), *packet.shown});
                          video.bytes.insert(video.bytes.end(), payload.begin(), payload.end());
                        });
  return video;
}

/// Takes the headers of a video stream, whatever stands between them.
class picture_list {
 public:
  explicit picture_list(const stamped_video& video) : video_(video) {
    const std::vector<std::uint8_t>& bytes = video.bytes;
    for (std::size_t at = 0; at + 3 < bytes.size(); ++at)
      if (bytes[at] == 0 && bytes[at + 1] == 0 && bytes[at + 2] == 1)
        take(at, bytes[at + 3]);
  }

  std::optional<stream_time> end() const {
    if (!shape_ || shape_->rate_numerator <= 0)
      return std::nullopt;
    std::optional<stream_time> last;
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
      if (!pictures_[i].shown)
        continue;
      const stream_time end = (*pictures_[i].shown + clocks_from(i)) % stamp_turn;
      if (!last || way_between(*last, end, stamp_turn) > 0)
        last = end;
    }
    return last;
  }

 private:
  /// `at`: of the start code.
  void take(std::size_t at, std::uint8_t code) {
    std::array<std::uint8_t, header_bytes> header{};
    const std::size_t behind = at + 4;
    const std::size_t there = std::min(header.size(), video_.bytes.size() - behind);
    std::copy_n(video_.bytes.begin() + static_cast<std::ptrdiff_t>(behind), there, header.begin());
    if (code == start_code::sequence_header) {
      if (const auto shape = read_sequence_header(header.data()))
        shape_ = shape;
    } else if (code == start_code::picture) {
      pictures_.push_back({read_picture_kind(header.data()), 2, stamp_at(at)});
    } else if (code == start_code::extension) {
      take_extension(header.data());
    }
  }

  void take_extension(const std::uint8_t* header) {
    if (shape_ && read_sequence_extension(header, *shape_))
      return;
    if (const auto extension = read_picture_extension(header);
        extension && shape_ && !pictures_.empty())
      pictures_.back().fields =
          extension->structure == picture_extension::frame ? shown_fields(*shape_, *extension) : 1;
  }

  /// A stamp is that of the first picture that begins in its packet.
  std::optional<stream_time> stamp_at(std::size_t at) {
    std::optional<stream_time> shown;
    for (; next_ < video_.stamps.size() && video_.stamps[next_].at <= at; ++next_)
      shown = video_.stamps[next_].shown;
    return shown;
  }

  /// From a picture with a stamp up to the next one that has one. Pictures (B) that come right
  /// behind one that they need are shown before it.
  stream_time clocks_from(std::size_t first) const {
    bool shown_before = pictures_[first].kind != picture_kind::bidirectional;
    std::uint64_t fields = static_cast<std::uint64_t>(pictures_[first].fields);
    for (std::size_t i = first + 1; i < pictures_.size() && !pictures_[i].shown; ++i) {
      shown_before = shown_before && pictures_[i].kind == picture_kind::bidirectional;
      fields += shown_before ? 0 : static_cast<std::uint64_t>(pictures_[i].fields);
    }
    return fields * stamps_a_second * static_cast<std::uint64_t>(shape_->rate_denominator) /
           (2 * static_cast<std::uint64_t>(shape_->rate_numerator));
  }

  const stamped_video& video_;
  std::optional<video_shape> shape_;
  std::vector<timed_picture> pictures_;
  std::size_t next_ = 0;  // stamp
};

}  // namespace

std::optional<stream_time> end_of_pictures(std::span<const std::uint8_t> packs) {
  const stamped_video video = video_in(packs);
  return picture_list(video).end();
}

}  // namespace corvane
