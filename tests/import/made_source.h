// Facts of files as a prober would give them, made by hand.
#pragma once

#include "formats/source_facts.h"

#include <string>
#include <utility>

namespace corvane::import_test {

inline source_stream made_video(int width, int height, source_ratio rate,
                                std::optional<source_ratio> pixel_aspect = source_ratio{1, 1}) {
  source_stream stream;
  stream.kind = source_kind::video;
  stream.codec = "h264";
  stream.decodes = true;
  stream.start = 0;
  stream.length = 60;
  stream.video.width = width;
  stream.video.height = height;
  stream.video.pixel_aspect = pixel_aspect;
  stream.video.rate = rate;
  stream.video.fields = source_fields::progressive;
  stream.video.pixels = "yuv420p";
  return stream;
}

/// MPEG-2 as a disc has it, 720 pixels wide and 4:3.
inline source_stream made_disc_video(bool pal = false) {
  source_stream stream = pal ? made_video(720, 576, {25, 1}, source_ratio{16, 15})
                             : made_video(720, 480, {30000, 1001}, source_ratio{8, 9});
  stream.codec = "mpeg2video";
  stream.profile = "Main";
  stream.bit_rate = 6'000'000;
  return stream;
}

inline source_stream made_sound(std::string codec, int channels = 2, std::string language = {},
                                int sample_rate = 48000) {
  source_stream stream;
  stream.kind = source_kind::audio;
  stream.codec = std::move(codec);
  stream.decodes = true;
  stream.language = std::move(language);
  stream.start = 0;
  stream.length = 60;
  stream.bit_rate = 192'000;
  stream.audio.channels = channels;
  stream.audio.sample_rate = sample_rate;
  return stream;
}

inline source_stream made_text(std::string codec, std::string language = {}) {
  source_stream stream;
  stream.kind = source_kind::text;
  stream.codec = std::move(codec);
  stream.decodes = true;
  stream.language = std::move(language);
  return stream;
}

/// The streams in one file; they are numbered here.
template <typename... Streams>
source_facts made_source(Streams... streams) {
  source_facts facts;
  facts.container = "matroska,webm";
  facts.start = 0;
  facts.length = 60;
  (facts.streams.push_back(std::move(streams)), ...);
  for (std::size_t i = 0; i < facts.streams.size(); ++i)
    facts.streams[i].index = static_cast<int>(i);
  return facts;
}

}  // namespace corvane::import_test
