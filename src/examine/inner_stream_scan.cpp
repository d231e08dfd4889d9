#include "examine/inner_stream_scan.h"

#include <algorithm>

namespace corvane {

namespace {

// Pictures of a stream that does not tell when they are decoded go back so far at most, from one
// that others need to one that is shown before it.
constexpr std::int64_t reordering = stamps_a_second / 2;

constexpr std::size_t lpcm_header = 7;

std::size_t header_of_substream(inner_kind kind) {
  switch (kind) {
    case inner_kind::ac3:
    case inner_kind::dts:
      return 4;
    case inner_kind::lpcm:
      return lpcm_header;
    case inner_kind::subpicture:
    case inner_kind::other_private:
      return 1;
    default:
      return 0;
  }
}

// Behind the number of the substream: frames, first frame (2 bytes), emphasis, then size and rate
// of samples and channels in one byte, dynamic range.
lpcm_format read_lpcm_format(std::span<const std::uint8_t> header) {
  constexpr int rates[] = {48'000, 96'000, 44'100, 32'000};
  constexpr int sizes[] = {16, 20, 24, 0};
  const unsigned all = header[5];
  return {rates[all >> 4 & 3], sizes[all >> 6], static_cast<int>(all & 7) + 1};
}

void take_lpcm_header(inner_stream& facts, std::optional<lpcm_format>& newest,
                      std::span<const std::uint8_t> payload) {
  if (payload.size() < lpcm_header)
    return;
  const lpcm_format format = read_lpcm_format(payload);
  if (!facts.lpcm)
    facts.lpcm = format;
  facts.lpcm_changes += newest && *newest != format ? 1 : 0;
  newest = format;
}

}  // namespace

inner_stream_scan::inner_stream_scan(inner_kind kind, bool examined) : kind_(kind) {
  if (examined && kind == inner_kind::video)
    video_ = std::make_unique<video_scanner>(false);
  if (examined && (kind == inner_kind::mpeg_audio || kind == inner_kind::ac3))
    audio_ = std::make_unique<audio_scanner>();
}

void inner_stream_scan::take(inner_stream& facts, const stream_packet& packet, place at,
                             std::span<const std::uint8_t> payload) {
  if (facts.packets++ == 0)
    facts.first_packet = at.position;
  take_stamps(facts, packet, at);
  if (kind_ == inner_kind::lpcm)
    take_lpcm_header(facts, lpcm_, payload);
  payload = payload.subspan(std::min(payload.size(), header_of_substream(kind_)));
  facts.payload_bytes += payload.size();
  if (payload.empty())
    return;
  if (video_)
    video_->feed(payload.data(), payload.size());
  if (audio_)
    audio_->feed(payload.data(), payload.size());
}

void inner_stream_scan::end(inner_stream& facts, bool at_end) {
  if (video_) {
    if (at_end)
      video_->finish();
    facts.video = video_->facts();
  }
  if (audio_) {
    at_end ? audio_->finish() : audio_->stop();
    facts.audio = audio_->facts();
  }
}

/// What the video should have gone on by since its beginning, at 90 kHz.
stream_time inner_stream_scan::went_on(place at) const {
  if (!video_)
    return at.clock / (clocks_a_second / stamps_a_second);
  const video_facts& video = video_->facts();
  if (!video.shape || video.shape->rate_numerator <= 0)
    return 0;
  const double pictures = static_cast<double>(video.fields) / 2;
  return static_cast<stream_time>(pictures * stamps_a_second * video.shape->rate_denominator /
                                  video.shape->rate_numerator);
}

bool inner_stream_scan::breaks(const stream_packet& packet, stream_time went_on) const {
  if (!decoded_)
    return false;
  const std::int64_t step =
      way_between(*decoded_, packet.decoded ? *packet.decoded : *packet.shown, stamp_turn);
  if (kind_ == inner_kind::subpicture)
    return step < 0;
  if (kind_ != inner_kind::video)
    return step < 0 || step > static_cast<std::int64_t>(inner_stream::longest_gap);
  const bool by_shown = !decoding_told_ && !packet.decoded;
  return step < (by_shown ? -reordering : 0) ||
         step > static_cast<std::int64_t>(went_on - went_on_ + inner_stream::longest_video_gap);
}

void inner_stream_scan::take_stamps(inner_stream& facts, const stream_packet& packet, place at) {
  if (!packet.shown)
    return;
  const stream_time decoded = packet.decoded.value_or(*packet.shown);
  const stream_time went_on = this->went_on(at);
  if (breaks(packet, went_on)) {
    length_before_ += stretch_.length();
    facts.breaks.add({at.position, *decoded_, decoded, length_before_, at.vobs != vobs_});
    stretch_ = time_stretch(stamp_turn);
  }
  decoded_ = decoded;
  decoding_told_ = packet.decoded.has_value();
  went_on_ = went_on;
  vobs_ = at.vobs;
  stretch_.add(*packet.shown);
  ++facts.stamps;
  if (facts.breaks.count == 0)
    facts.first = stretch_.earliest();
  facts.last = stretch_.latest();
  facts.length = length_before_ + stretch_.length();
}

}  // namespace corvane
