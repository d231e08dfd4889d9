// Facts of streams that a disc takes, for tests that spoil one of them.
#pragma once

#include "disc/disc_description.h"
#include "examine/file_facts.h"

#include <memory>
#include <string>

namespace corvane::examine_test {

/// 24 s of NTSC video, 720x480, 4:3, in groups of 30 fields.
inline video_facts ntsc_video() {
  video_facts v;
  v.kind = video_kind::elementary;
  v.whole = true;
  v.shape = video_shape{720, 480, 30000, 1001, 2, 4, 3, true, false};
  v.standard = video_standard::ntsc;
  v.profile_and_level = 0x48;
  v.bit_rate = 8'000'000;
  v.vbv_bytes = 229'376;
  v.pictures = 720;
  v.fields = 1440;
  v.seconds = 24.024;
  v.groups = 48;
  v.groups_by_fields[30] = 48;
  v.longest_group = video_group{{}, 15, 30};
  v.peak_rate = 8e6;
  v.end_code = true;
  return v;
}

inline video_facts pal_video() {
  video_facts v = ntsc_video();
  v.shape = video_shape{720, 576, 25, 1, 2, 4, 3, true, false};
  v.standard = video_standard::pal;
  v.seconds = 28.8;
  return v;
}

/// 24 s of sound.
inline audio_facts sound(audio_kind kind) {
  audio_facts a;
  a.kind = kind;
  audio_frame frame;
  frame.kind = kind;
  frame.sample_rate = 48'000;
  frame.bit_rate = 192'000;
  frame.channels = 2;
  frame.samples = kind == audio_kind::ac3 ? 1536 : 1152;
  frame.size = kind == audio_kind::ac3 ? 768 : 576;
  a.first = frame;
  a.highest_bit_rate = frame.bit_rate;
  a.length = 24 * audio_clock;
  a.frames = static_cast<std::uint64_t>(24 * 48'000 / frame.samples);
  a.samples = a.frames * static_cast<std::uint64_t>(frame.samples);
  a.bytes = a.frame_bytes = a.frames * frame.size;
  return a;
}

inline std::shared_ptr<const file_facts> file_of(const video_facts& video) {
  file_facts f;
  f.kind = file_kind::video;
  f.size = 1000;
  f.whole = video.whole;
  f.video = video;
  return std::make_shared<const file_facts>(f);
}

inline std::shared_ptr<const file_facts> file_of(const audio_facts& audio) {
  file_facts f;
  f.kind = file_kind::audio;
  f.size = audio.bytes;
  f.whole = true;
  f.audio = audio;
  return std::make_shared<const file_facts>(f);
}

}  // namespace corvane::examine_test
