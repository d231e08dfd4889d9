#include "media/ffmpeg_source_walk.h"

#include "media/ffmpeg_source_clock.h"

extern "C" {
#include <libavutil/mathematics.h>
}

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <utility>

namespace corvane {

namespace {

using std::chrono::milliseconds;

constexpr std::size_t pictures_timed = 300;
constexpr int pictures_decoded = 10;

constexpr source_limits for_beginning{std::int64_t{48} << 20, milliseconds{1'500}};
constexpr source_limits for_end{std::int64_t{48} << 20, milliseconds{1'500}};
constexpr source_limits for_jumps{std::int64_t{48} << 20, milliseconds{1'500}};
constexpr source_limits for_all{std::int64_t{128} << 20, milliseconds{2'500}};

/// What counts as the end of a file, and of a multiplex, which has nothing to be found by but its
/// bytes: at the highest rates that is a second. Of a stream that ends before it is not known when.
constexpr std::int64_t length_of_end = 5 * std::int64_t{AV_TIME_BASE};
constexpr std::int64_t bytes_of_end = std::int64_t{6} << 20;
constexpr milliseconds longest_decoding{1'000};

bool is_moving(const AVStream& stream) {
  return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
         (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0;
}

// When a packet's content is shown: multiplexes do not say it of each.
std::int64_t shown_at(const AVPacket& packet, const AVStream& of) {
  constexpr std::int64_t doubtful = INT64_MAX / 2;
  if (packet.duration < 0 || packet.duration > doubtful / 32 || packet.dts > doubtful)
    return AV_NOPTS_VALUE;
  if (packet.pts != AV_NOPTS_VALUE || packet.dts == AV_NOPTS_VALUE)
    return packet.pts;
  return packet.dts + std::clamp(of.codecpar->video_delay, 0, 16) * packet.duration;
}

class packet_walk {
 public:
  explicit packet_walk(source_demuxer& source)
      : source_(source),
        clock_(source.format()),
        packet_(av_packet_alloc()),
        frame_(av_frame_alloc()) {}

  void run(walk_span span);
  packets_seen take() { return {std::move(streams_), source_.at_end(), clock_.has_jumped()}; }

 private:
  AVStream& stream(std::size_t index) { return *source_.format().streams[index]; }
  void go_through(bool whole);
  void go_to_end();
  void add_new_streams();
  bool is_beginning_over();
  void look(const AVPacket& packet);
  void note_times(const AVPacket& packet, const AVStream& of, walked_stream& seen);
  void decode(const AVPacket& packet, std::size_t index);

  source_demuxer& source_;
  source_clock clock_;
  packet_ptr packet_;
  frame_ptr frame_;
  milliseconds decoding_ends_{0};
  bool in_one_piece_ = true;
  std::vector<walked_stream> streams_;
  std::vector<codec_ptr> decoders_;
};

void packet_walk::run(walk_span span) {
  if (!packet_ || !frame_)
    return;
  const bool whole = span == walk_span::whole;
  source_.allow(whole ? for_all : for_beginning);
  decoding_ends_ = source_.time_spent() + longest_decoding;
  add_new_streams();
  go_through(whole);
  if (span != walk_span::both_ends || source_.at_end())
    return;
  if (is_multiplex(*source_.format().iformat)) {
    source_.allow(for_jumps);
    find_jumps(source_, clock_);
  }
  source_.allow(for_end);
  go_to_end();
  go_through(true);
}

void packet_walk::go_through(bool whole) {
  while ((whole || !is_beginning_over()) && source_.read(*packet_)) {
    add_new_streams();
    clock_.follow(*packet_);
    look(*packet_);
    av_packet_unref(packet_.get());
  }
}

void packet_walk::go_to_end() {
  in_one_piece_ = false;
  for (walked_stream& stream : streams_)
    stream.end.reset();
  AVFormatContext& format = source_.format();
  const bool by_bytes = is_multiplex(*format.iformat);
  clock_.leap();
  const std::int64_t to =
      by_bytes ? avio_size(format.pb) - bytes_of_end : format.duration - length_of_end;
  avformat_seek_file(&format, -1, INT64_MIN, std::max<std::int64_t>(to, 0), INT64_MAX,
                     by_bytes ? AVSEEK_FLAG_BYTE : 0);
}

// Some containers name streams only where these begin.
void packet_walk::add_new_streams() {
  for (std::size_t i = streams_.size(); i < source_.format().nb_streams; ++i) {
    streams_.emplace_back();
    const AVStream& found = stream(i);
    decoders_.push_back(is_moving(found) && tells_interlacing(found.codecpar->codec_id)
                            ? decoder_of(found)
                            : nullptr);
  }
}

bool packet_walk::is_beginning_over() {
  for (std::size_t i = 0; i < streams_.size(); ++i) {
    const AVStream& found = stream(i);
    const bool is_sound = found.codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
    if (is_moving(found) && streams_[i].decoded.size() < pictures_timed)
      return false;
    if (is_sound && found.start_time == AV_NOPTS_VALUE && streams_[i].packets == 0)
      return false;
  }
  return true;
}

void packet_walk::look(const AVPacket& packet) {
  const auto index = static_cast<std::size_t>(packet.stream_index);
  if (index >= streams_.size())
    return;
  note_times(packet, stream(index), streams_[index]);
  if (in_one_piece_ && decoders_[index] && streams_[index].pictures < pictures_decoded &&
      source_.time_spent() < decoding_ends_)
    decode(packet, index);
}

void packet_walk::note_times(const AVPacket& packet, const AVStream& of, walked_stream& seen) {
  ++seen.packets;
  if (in_one_piece_ && is_moving(of) && seen.decoded.size() < pictures_timed) {
    seen.shown.push_back(packet.pts);
    seen.decoded.push_back(packet.dts);
  }
  const std::int64_t begin = shown_at(packet, of);
  if (begin == AV_NOPTS_VALUE || begin > INT64_MAX - packet.duration)
    return;
  const std::int64_t end = begin + packet.duration;
  seen.begin = std::min(seen.begin.value_or(begin), begin);
  seen.end = std::max(seen.end.value_or(end), end);
}

void packet_walk::decode(const AVPacket& packet, std::size_t index) {
  walked_stream& seen = streams_[index];
  AVCodecContext* const decoder = decoders_[index].get();
  if (avcodec_send_packet(decoder, &packet) < 0)
    return;
  while (avcodec_receive_frame(decoder, frame_.get()) >= 0) {
    ++seen.pictures;
    seen.interlaced += frame_->interlaced_frame != 0 ? 1 : 0;
    seen.top_first += frame_->interlaced_frame != 0 && frame_->top_field_first != 0 ? 1 : 0;
    av_frame_unref(frame_.get());
  }
}

// Whether each of these comes up within half a picture of where a constant rate puts it.
bool are_even(const std::vector<std::int64_t>& times) {
  if (times.size() < 3)
    return true;
  const double period =
      static_cast<double>(times.back() - times.front()) / static_cast<double>(times.size() - 1);
  for (std::size_t i = 0; i < times.size(); ++i) {
    const double off =
        static_cast<double>(times[i] - times.front()) - period * static_cast<double>(i);
    if (std::abs(off) > std::max(period / 2, 1.5))
      return false;
  }
  return true;
}

// The times of pictures in order: when they are shown, or where some do not say, are decoded.
// Empty if neither is known of all.
std::vector<std::int64_t> ordered_times(const walked_stream& seen) {
  for (std::vector<std::int64_t> times : {seen.shown, seen.decoded}) {
    if (std::find(times.begin(), times.end(), AV_NOPTS_VALUE) != times.end())
      continue;
    std::sort(times.begin(), times.end());
    return times;
  }
  return {};
}

// Pictures that are shown later than some that are still to come are not yet whole in number.
void cut_unsettled(std::vector<std::int64_t>& times) {
  constexpr std::size_t longest_reordering = 16;
  if (times.size() > 4 * longest_reordering)
    times.resize(times.size() - longest_reordering);
}

// The times of decoding that the container's index has of the whole stream; empty where it lists
// fewer than all pictures.
std::vector<std::int64_t> indexed_times(const AVStream& stream) {
  auto* const asked = const_cast<AVStream*>(&stream);  // FFmpeg's function changes nothing
  const int count = avformat_index_get_entries_count(asked);
  std::vector<std::int64_t> times;
  if (stream.nb_frames < 3 || count < stream.nb_frames)
    return times;
  times.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i)
    times.push_back(avformat_index_get_entry(asked, i)->timestamp);
  std::sort(times.begin(), times.end());
  return times;
}

// Whether the rate that the stream states is that of these pictures.
bool agrees(AVRational rate, AVRational unit, const std::vector<std::int64_t>& times) {
  if (times.size() < 3 || times.back() == times.front() || rate.num <= 0 || rate.den <= 0)
    return true;
  const double seconds = static_cast<double>(times.back() - times.front()) * av_q2d(unit);
  const double measured = static_cast<double>(times.size() - 1) / seconds;
  // Coarse units of time make the two differ by as much as a unit at both ends.
  const double doubt = 0.02 + 2 * av_q2d(unit) / seconds;
  return std::abs(measured / av_q2d(rate) - 1) < doubt;
}

}  // namespace

packets_seen walk_packets(source_demuxer& source, walk_span span) {
  packet_walk walk(source);
  walk.run(span);
  return walk.take();
}

bool has_variable_rate(const AVStream& stream, const walked_stream& seen) {
  std::vector<std::int64_t> times = ordered_times(seen);
  if (seen.packets > static_cast<std::int64_t>(seen.decoded.size()))
    cut_unsettled(times);
  return !are_even(times) || !agrees(stream.avg_frame_rate, stream.time_base, times) ||
         !are_even(indexed_times(stream));
}

bool is_multiplex(const AVInputFormat& container) {
  return (container.flags & AVFMT_TS_DISCONT) != 0;
}

bool tells_interlacing(AVCodecID codec) {
  switch (codec) {
    case AV_CODEC_ID_MPEG2VIDEO:
    case AV_CODEC_ID_MPEG4:
    case AV_CODEC_ID_H264:
    case AV_CODEC_ID_HEVC:
    case AV_CODEC_ID_VC1:
    case AV_CODEC_ID_WMV3:
    case AV_CODEC_ID_CAVS:
    case AV_CODEC_ID_DVVIDEO:
    case AV_CODEC_ID_DNXHD:
    case AV_CODEC_ID_PRORES:
    case AV_CODEC_ID_MJPEG:
      return true;
    default:
      return false;
  }
}

}  // namespace corvane
