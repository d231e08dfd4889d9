#include "formats/video_finish.h"

#include <utility>

namespace corvane {
namespace {

// Behind their start code: in the fourth byte of a sequence header, proportions and rate.
constexpr std::size_t aspect_and_rate = 3;
constexpr unsigned rate_of_film = 1;        // 24000/1001
constexpr unsigned rate_of_whole_film = 2;  // 24
constexpr unsigned rate_of_video = 4;       // 30000/1001

// In the second byte of a sequence extension.
constexpr unsigned progressive_sequence = 0x08;

// In the third to fifth byte of a picture coding extension.
constexpr unsigned structure_bits = 0x03;
constexpr unsigned whole_frame = 0x03;
constexpr unsigned top_field_first = 0x80;
constexpr unsigned repeat_first_field = 0x02;
constexpr unsigned progressive_frame = 0x80;

std::uint8_t byte_of(unsigned bits) {
  return static_cast<std::uint8_t>(bits);
}

/// How many fields of 60000/1001 a second begin before a picture does.
std::uint64_t fields_before(std::uint64_t picture, unsigned rate) {
  return rate == rate_of_film ? (5 * picture + 1) / 2 : (2500 * picture + 1000) / 1001;
}

}  // namespace

void video_finisher::fail(const char* why) {
  if (!why_not_)
    why_not_ = why;
}

void video_finisher::change(std::uint64_t position, std::uint8_t before, std::uint8_t value) {
  if (before != value)
    changes_.push_back({position, value});
}

void video_finisher::look_at_sequence(std::uint64_t position, const std::uint8_t* bytes) {
  unsigned rate = bytes[aspect_and_rate] & 0x0Fu;
  const unsigned aspect = bytes[aspect_and_rate] >> 4;
  if (what_.pulldown && rate_.value_or(rate) != rate)
    fail("the rate of the pictures changes");
  rate_ = rate;
  if (what_.pulldown && is_film())
    rate = rate_of_video;
  change(position + 4 + aspect_and_rate, bytes[aspect_and_rate], byte_of(aspect << 4 | rate));
}

bool video_finisher::is_film() const {
  return rate_ == rate_of_film || rate_ == rate_of_whole_film;
}

void video_finisher::look_at_extension(std::uint64_t position, const std::uint8_t* bytes) {
  if (!what_.pulldown || !is_film())
    return;
  video_shape shape{.rate_numerator = 1};
  if (read_sequence_extension(bytes, shape)) {
    if (shape.rate_numerator != 1 || shape.rate_denominator != 1)
      fail("the rate of the pictures is neither 23.976 nor 24");
    // In a progressive sequence the same flag repeats whole pictures.
    change(position + 5, bytes[1], byte_of(bytes[1] & ~progressive_sequence));
  } else if (read_picture_extension(bytes)) {
    set_repeated_field(position, bytes);
  }
}

void video_finisher::set_repeated_field(std::uint64_t position, const std::uint8_t* bytes) {
  if ((bytes[2] & structure_bits) != whole_frame || (bytes[4] & progressive_frame) == 0)
    fail("it has pictures whose fields are of different moments");
  // Three fields, two, three, two; of 24 pictures a second now and then two once more. The one
  // behind a picture of three fields begins with the other field: top bottom top, bottom top,
  // bottom top bottom, top bottom.
  const std::uint64_t begin = fields_before(shown_, *rate_);
  const bool three = fields_before(shown_ + 1, *rate_) - begin == 3;
  const bool top = begin % 2 == 0;
  const unsigned others = bytes[3] & ~(top_field_first | repeat_first_field);
  change(position + 4 + 3, bytes[3],
         byte_of(others | (top ? top_field_first : 0) | (three ? repeat_first_field : 0)));
}

void video_finisher::start_code_found(std::uint8_t code, std::uint64_t position,
                                      const std::uint8_t* bytes) {
  last_code_ = code;
  switch (code) {
    case start_code::sequence_header:
      look_at_sequence(position, bytes);
      break;
    case start_code::extension:
      look_at_extension(position, bytes);
      break;
    case start_code::group_of_pictures:
      pictures_ += in_group_;
      in_group_ = 0;
      break;
    case start_code::picture:
      shown_ = pictures_ + (unsigned{bytes[0]} << 2 | bytes[1] >> 6);
      ++in_group_;
      break;
    default:
      break;
  }
}

std::vector<byte_change> video_finisher::take_changes() {
  return std::exchange(changes_, {});
}

std::string video_finisher::ending() const {
  if (!what_.end_code || !last_code_ || *last_code_ == start_code::sequence_end)
    return {};
  return {'\0', '\0', '\1', static_cast<char>(start_code::sequence_end)};
}

failure finish_video(std::string& stream, const video_finish& what) {
  video_finisher finisher(what);
  finisher.feed(reinterpret_cast<const std::uint8_t*>(stream.data()), stream.size());
  finisher.finish();
  if (finisher.why_not())
    return finisher.why_not();
  for (const byte_change& one : finisher.take_changes())
    stream[one.position] = static_cast<char>(one.value);
  stream += finisher.ending();
  return std::nullopt;
}

}  // namespace corvane
