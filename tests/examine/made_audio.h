// Frames of sound for tests: real headers, sizes and checksums, and filler for the sound.
#pragma once

#include "examine/audio_facts.h"

#include <string>
#include <string_view>

namespace corvane::examine_test {

struct made_ac3 {
  int rate_code = 0;   // 48, 44.1, 32 kHz
  int size_code = 20;  // 192 kbit/s
  int mode = 2;        // acmod
  bool low_frequency = false;
};

/// Headers of other frames stand in its sound.
std::string ac3_frame(made_ac3 of = {});

/// 32 ms of two channels in up to 256 words of 16 bits; `dependent`: one channel more for the frame
/// before.
std::string eac3_frame(bool dependent = false, int words = 96);

struct made_mpeg {
  int layer = 2;
  bool mpeg2 = false;
  int bit_rate_index = 10;  // layer II: 192 kbit/s
  int rate_code = 1;        // 44.1, 48, 32 kHz
  bool padded = false;
  int mode = 0;
};

/// The same of MPEG audio.
std::string mpeg_frame(made_mpeg of = {});

/// The same text again and again.
std::string times(int count, const std::string& text);

/// Bytes in which no sync word stands.
std::string junk(std::size_t size);

std::string id3v1_tag();
/// `content` and its header.
std::string id3v2_tag(const std::string& content);

/// What the scanner says of the bytes, in slices of this many.
audio_facts audio_facts_of(std::string_view bytes, std::size_t slice = 65536);

}  // namespace corvane::examine_test
