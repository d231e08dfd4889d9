// Any bytes as a file that somebody has: it is looked into in bounded time, with facts that can be
// reckoned with or a reason, and a picture of it fits where it is to go.
#include "media/cut_short.h"
#include "media/source_reader.h"
#include "must.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>

namespace {

class given_bytes : public corvane::source_bytes {
 public:
  given_bytes(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}

  std::int64_t size() const override { return static_cast<std::int64_t>(size_); }
  std::optional<std::size_t> read(std::int64_t position, std::uint8_t* to,
                                  std::size_t count) override {
    must(position >= 0, "nothing is read before the beginning");
    const std::size_t at = std::min(static_cast<std::size_t>(position), size_);
    const std::size_t left = std::min(count, size_ - at);
    if (left > 0)
      std::memcpy(to, data_ + at, left);
    return left;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

bool is_number(const std::optional<double>& seconds) {
  return !seconds || std::isfinite(*seconds);
}

void check_stream(const corvane::source_stream& stream) {
  must(is_number(stream.start) && is_number(stream.length), "times are numbers");
  must(stream.video.rate.under != 0, "a rate can be divided");
  must(!stream.video.pixel_aspect ||
           (stream.video.pixel_aspect->over > 0 && stream.video.pixel_aspect->under > 0),
       "pixels have a shape");
  must(stream.video.turned % 90 == 0 && stream.video.turned >= 0 && stream.video.turned < 360,
       "a picture is turned by quarters");
  must(stream.audio.channels >= 0 && stream.audio.sample_rate >= 0, "sound is counted up");
}

void check_facts(const corvane::source_facts& facts) {
  must(is_number(facts.start) && is_number(facts.length), "times are numbers");
  must(!facts.streams.empty(), "there is something in it");
  for (const corvane::source_stream& stream : facts.streams)
    check_stream(stream);
  for (const corvane::source_chapter& chapter : facts.chapters)
    must(chapter.start >= 0 && chapter.end >= chapter.start, "chapters go forward");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr int most_width = 40, most_height = 30;
  const corvane::source_limits limits{std::int64_t{4} << 20, std::chrono::seconds(3)};
  given_bytes bytes(data, size);
  const auto reader = corvane::make_source_reader();
  must(static_cast<bool>(reader), "there is a reader");
  const auto facts = (*reader)->facts(bytes, limits);
  must(facts.value.has_value() == facts.error.empty(), "there are facts, or a reason");
  if (facts)
    check_facts(*facts);
  const auto picture = (*reader)->picture_at(bytes, limits, 0.2, most_width, most_height);
  must(!picture || (picture->width >= 1 && picture->width <= most_width && picture->height >= 1 &&
                    picture->height <= most_height),
       "a picture fits");
  corvane::is_cut_short(bytes);
  return 0;
}
