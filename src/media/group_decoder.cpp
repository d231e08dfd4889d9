#include "media/group_decoder.h"

#include <algorithm>
#include <utility>

namespace corvane {

namespace {

// The pictures of a group of a disc are 12 MB; those of a long group of large ones have no end.
constexpr std::size_t most_kept_bytes = std::size_t{64} * 1024 * 1024;

// A picture of a disc has at most 224 kB. What is longer is damage: bytes without a start code.
constexpr std::uint64_t largest_picture = std::uint64_t{8} * 1024 * 1024;

// Where the headers of a sequence end: at its first group, picture or slice.
std::size_t sequence_header_size(const std::vector<std::uint8_t>& bytes) {
  for (std::size_t at = 4; at + 3 < bytes.size(); ++at)
    if (bytes[at] == 0 && bytes[at + 1] == 0 && bytes[at + 2] == 1 &&
        (bytes[at + 3] <= start_code::last_slice || bytes[at + 3] == start_code::group_of_pictures))
      return at;
  return bytes.size();
}

}  // namespace

result<group_decoder> group_decoder::create(video_source& source, const video_index& index) {
  const bool mpeg2 = index.shape() && index.shape()->mpeg2;
  auto decoder = make_picture_decoder(mpeg2 ? picture_coding::mpeg2 : picture_coding::mpeg1);
  if (!decoder)
    return result<group_decoder>::fail(decoder.error);
  return result<group_decoder>::ok(group_decoder(source, index, std::move(*decoder)));
}

result<picture> group_decoder::decode(std::size_t coded) {
  const decoded_frame* frame = kept(coded);
  if (frame == nullptr) {
    if (const failure why = go_to(coded))
      return result<picture>::fail(*why);
    frame = kept_.empty() ? nullptr : kept_.back().frame.get();
  }
  if (frame == nullptr)
    return result<picture>::fail("the picture cannot be decoded");
  return decoder_->convert(*frame);
}

const decoded_frame* group_decoder::kept(std::size_t coded) const {
  for (const kept_frame& k : kept_)
    if (k.coded == coded)
      return k.frame.get();
  return nullptr;
}

// The picture that decoding must begin with at the latest.
std::size_t group_decoder::begin_of(std::size_t coded) const {
  std::size_t group = index_->group_of(coded);
  if (group > 0 && index_->leading(coded) && !index_->groups()[group].closed)
    --group;
  return index_->groups()[group].first_coded;
}

// No picture needs a B picture. Those of the target's own group are decoded all the same, since
// they are likely to be wanted next, but for leading ones that lack the group before.
bool group_decoder::wanted(std::size_t coded, std::size_t target) const {
  if (coded == target || index_->kind_of(coded) != picture_kind::bidirectional)
    return true;
  return index_->group_of(coded) == index_->group_of(target) && *began_ <= begin_of(coded);
}

failure group_decoder::go_to(std::size_t coded) {
  const std::size_t begin = begin_of(coded);
  const bool goes_on = began_ && *began_ <= begin && begin <= next_ && next_ <= coded;
  if (!goes_on) {
    decoder_->restart();
    kept_.clear();
    kept_bytes_ = 0;
    began_ = next_ = begin;
  }
  while (next_ <= coded) {
    const std::size_t now = next_++;
    if (!wanted(now, coded))
      continue;
    if (failure why = feed(now, now == *began_)) {
      began_.reset();
      return why;
    }
  }
  return std::nullopt;
}

failure group_decoder::feed(std::size_t coded, bool with_sequence) {
  std::vector<std::uint8_t> bytes;
  if (with_sequence) {
    const picture_group& group = index_->groups()[index_->group_of(coded)];
    if (!group.sequence_here)
      if (failure why = append_sequence_header(group.sequence_position, bytes))
        return why;
  }
  if (failure why = append(index_->bytes_of(coded), bytes))
    return why;
  ++decoded_;
  if (std::unique_ptr<decoded_frame> frame = decoder_->decode(bytes))
    keep(coded, std::move(frame));
  return std::nullopt;
}

failure group_decoder::append(byte_range range, std::vector<std::uint8_t>& bytes) {
  const auto count = static_cast<std::size_t>(std::min(range.size, largest_picture));
  const auto read = source_->read(range.position, count);
  if (!read)
    return read.error;
  if (read->size() < count)
    return "the file has become shorter since it was opened";
  bytes.insert(bytes.end(), read->begin(), read->end());
  return std::nullopt;
}

failure group_decoder::append_sequence_header(std::uint64_t position,
                                              std::vector<std::uint8_t>& bytes) {
  constexpr std::size_t longest = 4096;
  auto read = source_->read(position, longest);
  if (!read)
    return read.error;
  read->resize(sequence_header_size(*read));
  bytes.insert(bytes.end(), read->begin(), read->end());
  return std::nullopt;
}

void group_decoder::keep(std::size_t coded, std::unique_ptr<decoded_frame> frame) {
  kept_bytes_ += frame->bytes();
  kept_.push_back({coded, std::move(frame)});
  while (kept_bytes_ > most_kept_bytes && kept_.size() > 1) {
    kept_bytes_ -= kept_.front().frame->bytes();
    kept_.pop_front();
  }
}

}  // namespace corvane
