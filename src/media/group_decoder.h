// Single pictures of a stream, decoded from the beginning of their group.
#pragma once

#include "formats/video_index.h"
#include "media/picture_decoder.h"
#include "media/video_source.h"
#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace corvane {

/// A picture costs at most the decoding of its group up to it, plus the I and P pictures of the
/// group before when it is a leading B picture of an open group. Going on from the last one costs
/// one picture: nothing is decoded again as long as the wanted picture is not behind, and what was
/// decoded last stays, for the way back.
class group_decoder {
 public:
  /// Source and index must outlive it.
  static result<group_decoder> create(video_source& source, const video_index& index);

  /// The picture at this place in the stream, which the index must know. Where the stream is
  /// damaged, the last picture before it that could be decoded; fails when there is none.
  result<picture> decode(std::size_t coded);

  /// How many pictures went through the decoder so far.
  std::uint64_t decoded() const { return decoded_; }

 private:
  group_decoder(video_source& source, const video_index& index,
                std::unique_ptr<picture_decoder> decoder)
      : source_(&source), index_(&index), decoder_(std::move(decoder)) {}

  struct kept_frame {
    std::size_t coded;
    std::unique_ptr<decoded_frame> frame;
  };

  const decoded_frame* kept(std::size_t coded) const;
  std::size_t begin_of(std::size_t coded) const;
  bool wanted(std::size_t coded, std::size_t target) const;
  failure go_to(std::size_t coded);
  failure feed(std::size_t coded, bool with_sequence);
  failure append(byte_range range, std::vector<std::uint8_t>& bytes);
  failure append_sequence_header(std::uint64_t position, std::vector<std::uint8_t>& bytes);
  void keep(std::size_t coded, std::unique_ptr<decoded_frame> frame);

  video_source* source_;
  const video_index* index_;
  std::unique_ptr<picture_decoder> decoder_;
  std::optional<std::size_t> began_;  // the picture that the decoder was started with
  std::size_t next_ = 0;              // the first one it has not been given
  std::deque<kept_frame> kept_;
  std::size_t kept_bytes_ = 0;
  std::uint64_t decoded_ = 0;
};

}  // namespace corvane
