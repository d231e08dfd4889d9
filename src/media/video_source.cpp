#include "media/video_source.h"

#include "formats/program_stream.h"
#include "formats/video_headers.h"
#include "media/source_file.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace corvane {

namespace {

// Holds several of the largest packets.
constexpr std::size_t block = std::size_t{256} * 1024;
static_assert(block > largest_packet);

constexpr const char* shorter = "the file has become shorter since it was opened";

/// The whole file is the stream.
class elementary_stream : public video_source {
 public:
  explicit elementary_stream(source_file file) : file_(std::move(file)) {}

  result<bool> next(byte_vector& bytes) override {
    if (done_ == file_.size()) {
      bytes.clear();
      return result<bool>::ok(false);
    }
    if (const failure why = file_.read(done_, block, bytes))
      return result<bool>::fail(*why);
    if (bytes.empty())
      return result<bool>::fail(shorter);
    done_ += bytes.size();
    return result<bool>::ok(true);
  }

  result<byte_vector> read(std::uint64_t position, std::size_t count) override {
    byte_vector bytes;
    if (const failure why = file_.read(position, count, bytes))
      return result<byte_vector>::fail(*why);
    return result<byte_vector>::ok(std::move(bytes));
  }

  const std::vector<std::uint64_t>& units() const override { return no_units_; }
  std::uint64_t done() const override { return done_; }
  std::uint64_t total() const override { return file_.size(); }

 private:
  source_file file_;
  std::uint64_t done_ = 0;
  std::vector<std::uint64_t> no_units_;
};

/// The stream is in packets of the file. Where every so many bytes of it stand is remembered, so
/// that a position is found again by reading little.
class packeted_stream : public video_source {
 public:
  explicit packeted_stream(source_file file) : file_(std::move(file)) {}

  result<bool> next(byte_vector& bytes) override;
  result<byte_vector> read(std::uint64_t position, std::size_t count) override;
  const std::vector<std::uint64_t>& units() const override { return units_; }
  std::uint64_t done() const override { return done_; }
  std::uint64_t total() const override { return file_.size(); }

 private:
  // Packets one after the other from a place in the file; `video` is called with the payload of
  // each one of the stream and its place in the file, and says whether to go on; `navigation` for
  // each one that begins a unit.
  template <typename Video, typename Navigation>
  failure walk(std::uint64_t& place, Video video, Navigation navigation);
  bool ours(std::uint8_t stream);

  struct landmark {
    std::uint64_t position;  // in the stream
    std::uint64_t place;     // of the packet in the file
  };

  source_file file_;
  std::uint64_t done_ = 0;
  std::uint64_t position_ = 0;
  std::optional<std::uint8_t> stream_;  // the first video stream that was met
  std::vector<landmark> landmarks_;
  std::vector<std::uint64_t> units_;
  byte_vector block_;
};

bool packeted_stream::ours(std::uint8_t stream) {
  if (!stream_ && stream >= first_video_stream && stream <= last_video_stream)
    stream_ = stream;
  return stream == stream_;
}

// One block of the file; `place` is moved behind the last whole packet in it.
template <typename Video, typename Navigation>
failure packeted_stream::walk(std::uint64_t& place, Video video, Navigation navigation) {
  if (failure why = file_.read(place, block, block_))
    return why;
  if (block_.empty())
    return shorter;
  bool cut = false;
  std::size_t at = 0;
  while (at < block_.size()) {
    const std::uint8_t* const data = block_.data() + at;
    const std::size_t left = block_.size() - at;
    const stream_packet packet = read_packet(data, left);
    if (packet.found == stream_packet::state::none) {
      at += std::max<std::size_t>(1, bytes_to_packet(data, left));
      continue;
    }
    cut = packet.found == stream_packet::state::cut;
    if (cut)
      break;
    if (is_navigation(packet))
      navigation();
    if (ours(packet.stream) &&
        !video(data + packet.payload, packet.size - packet.payload, place + at))
      break;
    at += packet.size;
  }
  // A packet that the end of the block cuts is read again; one cut by the end of the file is lost.
  const bool end = block_.size() < block || place + block_.size() >= file_.size();
  place += cut && end ? block_.size() : at;
  return std::nullopt;
}

result<bool> packeted_stream::next(byte_vector& bytes) {
  constexpr std::uint64_t stride = std::uint64_t{64} * 1024;
  bytes.clear();
  if (done_ >= file_.size())
    return result<bool>::ok(false);
  const auto keep = [&](const std::uint8_t* data, std::size_t size, std::uint64_t place) {
    if (landmarks_.empty() || position_ - landmarks_.back().position >= stride)
      landmarks_.push_back({position_, place});
    bytes.insert(bytes.end(), data, data + size);
    position_ += size;
    return true;
  };
  // A unit without video is none that a picture could begin.
  const auto begin_unit = [&] {
    if (units_.empty() || units_.back() != position_)
      units_.push_back(position_);
  };
  if (const failure why = walk(done_, keep, begin_unit))
    return result<bool>::fail(*why);
  return result<bool>::ok(true);
}

result<byte_vector> packeted_stream::read(std::uint64_t position, std::size_t count) {
  // One call must not read a whole disc because of a hole in the stream.
  constexpr std::uint64_t longest_gap = std::uint64_t{64} * 1024 * 1024;
  byte_vector bytes;
  const auto after = std::upper_bound(
      landmarks_.begin(), landmarks_.end(), position,
      [](std::uint64_t wanted, const landmark& mark) { return wanted < mark.position; });
  if (after == landmarks_.begin())
    return result<byte_vector>::ok(std::move(bytes));
  const landmark& from = *(after - 1);
  std::uint64_t skip = position - from.position;
  const auto take = [&](const std::uint8_t* data, std::size_t size, std::uint64_t /*place*/) {
    const auto skipped = static_cast<std::size_t>(std::min<std::uint64_t>(skip, size));
    skip -= skipped;
    const std::size_t taken = std::min(size - skipped, count - bytes.size());
    bytes.insert(bytes.end(), data + skipped, data + skipped + taken);
    return bytes.size() < count;
  };
  std::uint64_t place = from.place;
  while (bytes.size() < count && place < done_) {
    if (place - from.place > longest_gap)
      return result<byte_vector>::fail("the stream is interrupted there");
    if (const failure why = walk(place, take, [] {}))
      return result<byte_vector>::fail(*why);
  }
  return result<byte_vector>::ok(std::move(bytes));
}

// The start code that a file begins with, perhaps behind zeros; -1 when it begins otherwise. Files
// of other kinds may hold MPEG video further on, but in pieces that make no sense without their own
// headers.
int first_code(const byte_vector& head) {
  const auto one =
      std::find_if(head.begin(), head.end(), [](std::uint8_t byte) { return byte != 0; });
  if (one - head.begin() < 2 || head.end() - one < 2 || *one != 1)
    return -1;
  return *(one + 1);
}

}  // namespace

result<std::unique_ptr<video_source>> open_video_source(const std::string& path) {
  using opened = result<std::unique_ptr<video_source>>;
  auto file = source_file::open(path);
  if (!file)
    return opened::fail(file.error);
  byte_vector head;
  if (const failure why = file->read(0, block, head))
    return opened::fail(*why);
  switch (first_code(head)) {
    case pack_header:
      return opened::ok(std::make_unique<packeted_stream>(std::move(*file)));
    case start_code::sequence_header:
    case start_code::group_of_pictures:
    case start_code::picture:
      return opened::ok(std::make_unique<elementary_stream>(std::move(*file)));
    default:
      return opened::fail("it is neither MPEG video nor an MPEG program stream");
  }
}

}  // namespace corvane
