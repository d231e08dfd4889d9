#include "media/ffmpeg_source_sound.h"

#include "media/ffmpeg_source_frames.h"

extern "C" {
#include <libavutil/channel_layout.h>
#include <libswresample/swresample.h>
}

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

/// Of what is no sound the converter would be too large.
constexpr int least_rate = 1'000, largest_rate = 768'000;

struct free_resampler {
  void operator()(SwrContext* resampler) const { swr_free(&resampler); }
};
using resampler_ptr = std::unique_ptr<SwrContext, free_resampler>;

/// Brings pieces of sound into one kind and puts them together, up to a length.
class sound_collector {
 public:
  sound_collector(std::size_t most_frames, std::size_t expected_frames) : most_(most_frames) {
    sound_.samples.reserve(std::min(most_frames, expected_frames) * sound_channels);
  }

  /// The next piece. What cannot be converted is left out.
  void add(const AVFrame& piece);

  /// Frames of silence; a negative number: as many of what comes are left out.
  void shift(std::int64_t frames);

  /// There was more than it holds.
  bool is_cut() const { return sound_.cut; }

  pcm_sound take();

 private:
  bool suits(const AVFrame& piece) const;
  void convert(const std::uint8_t** from, int count);
  void drain();
  void append(const std::int16_t* samples, std::size_t frames);

  std::size_t most_;
  std::size_t left_out_ = 0;
  pcm_sound sound_;
  resampler_ptr resampler_;
  frame_ptr kind_;  // one that the resampler is for
};

bool sound_collector::suits(const AVFrame& piece) const {
  return resampler_ && kind_ && kind_->format == piece.format &&
         kind_->sample_rate == piece.sample_rate &&
         av_channel_layout_compare(&kind_->ch_layout, &piece.ch_layout) == 0;
}

resampler_ptr resampler_for(const AVFrame& piece) {
  AVChannelLayout from{}, to{};
  if (piece.ch_layout.order == AV_CHANNEL_ORDER_UNSPEC)
    av_channel_layout_default(&from, piece.ch_layout.nb_channels);
  else
    av_channel_layout_copy(&from, &piece.ch_layout);
  av_channel_layout_default(&to, sound_channels);
  SwrContext* made = nullptr;
  swr_alloc_set_opts2(&made, &to, AV_SAMPLE_FMT_S16, sound_rate, &from,
                      static_cast<AVSampleFormat>(piece.format), piece.sample_rate, 0, nullptr);
  resampler_ptr resampler(made);
  av_channel_layout_uninit(&from);
  return resampler && swr_init(resampler.get()) >= 0 ? std::move(resampler) : nullptr;
}

void sound_collector::add(const AVFrame& piece) {
  if (piece.nb_samples <= 0 || piece.ch_layout.nb_channels <= 0 || piece.sample_rate < least_rate ||
      piece.sample_rate > largest_rate)
    return;
  if (!suits(piece)) {
    drain();
    resampler_ = resampler_for(piece);
    kind_.reset(av_frame_clone(&piece));
  }
  if (resampler_)
    convert(const_cast<const std::uint8_t**>(piece.extended_data), piece.nb_samples);
}

// Without bytes it gives what it holds back: the end.
void sound_collector::convert(const std::uint8_t** from, int count) {
  constexpr int at_once = 4096;
  std::array<std::int16_t, std::size_t{at_once} * sound_channels> made{};
  while (!is_cut()) {
    auto* to = reinterpret_cast<std::uint8_t*>(made.data());
    const int got = swr_convert(resampler_.get(), &to, at_once, from, count);
    if (got <= 0)
      return;
    append(made.data(), static_cast<std::size_t>(got));
    count = 0;
  }
}

void sound_collector::drain() {
  if (resampler_)
    convert(nullptr, 0);
  resampler_.reset();
}

void sound_collector::append(const std::int16_t* samples, std::size_t frames) {
  const std::size_t skipped = std::min(left_out_, frames);
  left_out_ -= skipped;
  const std::size_t wanted = frames - skipped;
  const std::size_t taken = std::min(wanted, most_ - sound_.frames());
  const std::int16_t* const from = samples + skipped * sound_channels;
  sound_.samples.insert(sound_.samples.end(), from, from + taken * sound_channels);
  sound_.cut = sound_.cut || taken < wanted;
}

void sound_collector::shift(std::int64_t frames) {
  if (frames < 0) {
    left_out_ = static_cast<std::size_t>(-frames);
    return;
  }
  sound_.samples.resize(std::min(static_cast<std::size_t>(frames), most_) * sound_channels);
}

pcm_sound sound_collector::take() {
  drain();
  return std::move(sound_);
}

std::size_t frames_of(double seconds) {
  return static_cast<std::size_t>(std::max(seconds, 0.0) * sound_rate);
}

/// The stream's number on a disc, where it has one. Others go by their order.
int number_of_stream(const AVFormatContext& format, const AVStream& stream) {
  const bool is_for_discs = std::string_view(format.iformat->name) == "mpeg";
  return is_for_discs ? stream.id & 7 : 0;
}

const AVStream* heard_stream(const AVFormatContext& format) {
  const AVStream* heard = nullptr;
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    const AVStream& stream = *format.streams[i];
    if (stream.codecpar->codec_type == AVMEDIA_TYPE_AUDIO &&
        (heard == nullptr || number_of_stream(format, stream) < number_of_stream(format, *heard)))
      heard = &stream;
  }
  return heard;
}

/// When the file's video begins, in seconds of its clock; not set where there is none.
std::optional<double> beginning_of_video(const AVFormatContext& format) {
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    const AVStream& stream = *format.streams[i];
    if (stream.codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
        (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) == 0)
      return seconds_of(stream.start_time, stream.time_base);
  }
  return std::nullopt;
}

/// By how many frames the sound begins later than the video.
std::int64_t delay_of(const AVFormatContext& format, const AVStream& stream, const AVFrame& first) {
  constexpr double longest = 3600;
  const auto video = beginning_of_video(format);
  const auto sound = seconds_of(first.best_effort_timestamp, stream.time_base);
  const double late = video && sound ? std::clamp(*sound - *video, -longest, longest) : 0;
  return std::llround(late * sound_rate);
}

}  // namespace

result<pcm_sound> sound_from(source_demuxer& source, double most_seconds) {
  using heard = result<pcm_sound>;
  const AVStream* const stream = heard_stream(source.format());
  if (stream == nullptr)
    return heard::fail("it has no sound");
  frame_reader reader(source, *stream);
  if (!reader.works())
    return heard::fail("there is no decoder for its sound");
  const double expected = seconds_of(source.format().duration, unit_of_file).value_or(0) + 1;
  sound_collector collector(frames_of(most_seconds), frames_of(std::min(expected, most_seconds)));
  bool any = false;
  while (const frame_ptr piece = collector.is_cut() ? nullptr : reader.next()) {
    if (!any)
      collector.shift(delay_of(source.format(), *stream, *piece));
    any = true;
    collector.add(*piece);
  }
  pcm_sound sound = collector.take();
  if (!any || sound.samples.empty())
    return heard::fail("no sound of it can be decoded");
  sound.cut = sound.cut || !source.at_end();
  return heard::ok(std::move(sound));
}

}  // namespace corvane
