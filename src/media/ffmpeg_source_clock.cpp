#include "media/ffmpeg_source_clock.h"

extern "C" {
#include <libavutil/mathematics.h>
}

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace corvane {

namespace {

// As in the ffmpeg program: smaller steps forwards are gaps, smaller ones back are uneven times.
constexpr std::int64_t most_forwards = 10 * std::int64_t{AV_TIME_BASE};
constexpr std::int64_t most_back = AV_TIME_BASE / 10;

bool has_times(const AVStream& stream) {
  return stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO ||
         stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
}

/// Looks for jumps by the times of one stream.
class jump_search {
 public:
  jump_search(source_demuxer& source, source_clock& clock)
      : source_(source), clock_(clock), packet_(av_packet_alloc()) {}

  void run() {
    AVFormatContext& format = source_.format();
    stream_ = av_find_best_stream(&format, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
    if (!packet_ || stream_ < 0)
      return;
    const std::int64_t size = avio_size(format.pb);
    std::vector<place> places;
    for (int i = 0; i <= parts; ++i)
      if (const auto found = place_at(std::min(size / parts * i, size - from_the_end)))
        places.push_back(*found);
    const std::vector<std::int64_t> steps = steps_between(places);
    if (steps.empty())
      return;
    std::vector<std::int64_t> sorted = steps;
    std::nth_element(sorted.begin(), sorted.begin() + std::ptrdiff_t(sorted.size() / 2),
                     sorted.end());
    const std::int64_t usual = sorted[sorted.size() / 2];
    int looked_at = 0;
    for (std::size_t i = 0; i < steps.size() && looked_at < most_looked_at; ++i)
      if (steps[i] < 0 || steps[i] > usual + usual / 2 + most_forwards / 2) {
        ++looked_at;
        go_through(narrowed(places[i], places[i + 1]));
      }
  }

 private:
  struct place {
    std::int64_t position, time;  ///< of the first packet behind it
  };
  struct stretch {
    place begin, end;
  };

  static constexpr int parts = 24, most_looked_at = 12;
  static constexpr std::int64_t small = std::int64_t{1} << 20;
  static constexpr std::int64_t from_the_end = std::int64_t{4} << 20;

  static std::vector<std::int64_t> steps_between(const std::vector<place>& places) {
    std::vector<std::int64_t> steps;
    for (std::size_t i = 1; i < places.size(); ++i)
      steps.push_back(places[i].time - places[i - 1].time);
    return steps;
  }

  bool seek(std::int64_t position) {
    return avformat_seek_file(&source_.format(), -1, INT64_MIN, position, INT64_MAX,
                              AVSEEK_FLAG_BYTE) >= 0;
  }

  std::optional<std::int64_t> time_of_packet() const {
    if (packet_->stream_index != stream_ || packet_->dts == AV_NOPTS_VALUE)
      return std::nullopt;
    return av_rescale_q(packet_->dts, source_.format().streams[stream_]->time_base, unit_of_file);
  }

  std::optional<place> place_at(std::int64_t position) {
    if (!seek(position))
      return std::nullopt;
    while (source_.read(*packet_)) {
      const auto time = time_of_packet();
      av_packet_unref(packet_.get());
      if (time)
        return place{position, *time};
    }
    return std::nullopt;
  }

  /// The half in which the clock goes back, or on by more.
  stretch narrowed(place begin, place end) {
    while (end.position - begin.position > small) {
      const auto middle = place_at(begin.position + (end.position - begin.position) / 2);
      if (!middle)
        break;
      const std::int64_t first = middle->time - begin.time, second = end.time - middle->time;
      const bool in_first = first < 0 || (second >= 0 && first > second);
      (in_first ? end : begin) = *middle;
    }
    return {begin, end};
  }

  void go_through(const stretch& jump) {
    if (!seek(jump.begin.position))
      return;
    clock_.leap();
    bool is_behind = false;
    while (!is_behind && source_.read(*packet_)) {
      is_behind = time_of_packet() == jump.end.time ||
                  avio_tell(source_.format().pb) > jump.end.position + from_the_end;
      clock_.follow(*packet_);
      av_packet_unref(packet_.get());
    }
  }

  source_demuxer& source_;
  source_clock& clock_;
  packet_ptr packet_;
  int stream_ = -1;
};

}  // namespace

source_clock::source_clock(const AVFormatContext& format)
    : format_(format), may_jump_((format.iformat->flags & AVFMT_TS_DISCONT) != 0) {}

void source_clock::leap() {
  streams_.clear();
  last_.reset();
}

void source_clock::correct(std::int64_t by) {
  offset_ += by;
  jumped_ = true;
}

void source_clock::follow(AVPacket& packet) {
  const AVStream& stream = *format_.streams[packet.stream_index];
  if (!may_jump_)
    return;
  if (has_times(stream) && packet.dts != AV_NOPTS_VALUE) {
    std::int64_t time = av_rescale_q(packet.dts, stream.time_base, unit_of_file) + offset_;
    const auto before = streams_.find(packet.stream_index);
    const bool is_known = before != streams_.end();
    const auto expected = is_known ? std::optional(before->second.next) : last_;
    const bool is_back = is_known && time + most_back < before->second.last;
    if (expected && (is_back || std::abs(time - *expected) > most_forwards)) {
      correct(*expected - time);
      time = *expected;
    }
    // At a join a packet may have the times of both sides.
    if (packet.pts != AV_NOPTS_VALUE &&
        av_compare_ts(std::abs(packet.pts - packet.dts), stream.time_base, most_forwards,
                      unit_of_file) > 0)
      packet.pts = AV_NOPTS_VALUE;
    const std::int64_t lasts = av_rescale_q(packet.duration, stream.time_base, unit_of_file);
    streams_[packet.stream_index] = {time, time + lasts};
    last_ = time;
  }
  const std::int64_t moved = av_rescale_q(offset_, unit_of_file, stream.time_base);
  for (std::int64_t* const time : {&packet.pts, &packet.dts})
    if (*time != AV_NOPTS_VALUE)
      *time += moved;
}

void find_jumps(source_demuxer& source, source_clock& clock) {
  jump_search(source, clock).run();
}

}  // namespace corvane
