// What is in a file that somebody has, of whatever kind: its streams, chapters and length. Types
// only; they are filled by media/source_probe.h and read where it is decided what becomes of them.
//
// Numbers are as the file states them. What it does not state is not set; nothing is guessed here.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// A fraction as files state them; `under` is not 0.
struct source_ratio {
  std::int64_t over = 1;
  std::int64_t under = 1;

  double value() const { return static_cast<double>(over) / static_cast<double>(under); }
  bool operator==(const source_ratio&) const = default;
};

enum class source_kind {
  video,
  picture,  ///< one picture: a still, or a cover that lies in a sound file
  audio,
  text,         ///< subtitles that are text
  bitmap_text,  ///< subtitles that are pictures
  other,        ///< data, attachments, what no decoder is known for
};

/// How the two fields of a picture stand to each other.
enum class source_fields { unknown, progressive, top_first, bottom_first };

/// How colours are coded. The names are those of the standards: "bt709", "smpte170m", "bt2020nc",
/// "smpte2084" (PQ), "arib-std-b67" (HLG); empty where the file does not say.
struct source_colours {
  std::string primaries{};
  std::string transfer{};
  std::string matrix{};
  bool full_range = false;
};

struct source_video {
  int width = 0;  ///< pixels, as coded: before rotation and without the shape of a pixel; 0 where
                  ///< it could not be told
  int height = 0;
  std::optional<source_ratio> pixel_aspect{};  ///< width over height of a pixel
  int turned = 0;              ///< degrees clockwise that a player turns it: 0, 90, 180 or 270
  bool mirrored = false;       ///< left and right changed, before it is turned
  source_ratio rate{0, 1};     ///< pictures a second, on average; 0/1 where there is none
  bool variable_rate = false;  ///< the times of pictures are not those of `rate`
  source_fields fields = source_fields::unknown;
  std::string pixels{};  ///< FFmpeg's name of the format: "yuv420p10le"
  int bits = 8;          ///< of a component
  bool alpha = false;
  source_colours colours{};
};

struct source_audio {
  int channels = 0;
  int sample_rate = 0;   ///< samples a second
  std::string layout{};  ///< "stereo", "5.1(side)"; empty where the file does not say
};

struct source_stream {
  int index = 0;  ///< among the file's streams, from 0: as ffmpeg's "0:INDEX" counts
  source_kind kind = source_kind::other;
  std::string codec{};     ///< FFmpeg's name: "h264", "mpeg2video", "ac3", "subrip"
  std::string profile{};   ///< as FFmpeg names it, such as "Main"; may be empty
  bool decodes = false;    ///< the module has a decoder for it
  std::string language{};  ///< as the file has it ("deu", "de", "pt-BR"); empty: none, or "und"
  std::string title{};     ///< its name in the file
  bool is_default = false;
  bool is_forced = false;
  std::optional<double> start{};           ///< seconds, on the file's clock; may be negative
  std::optional<double> length{};          ///< seconds; to the file's end where it states none
  bool length_is_files = false;            ///< `length` goes to the file's end, for want of its own
  std::optional<std::int64_t> bit_rate{};  ///< bits a second
  source_video video{};                    ///< of `video` and `picture`
  source_audio audio{};                    ///< of `audio`
};

struct source_chapter {
  double start = 0;  ///< seconds from the beginning of the file, not on its clock
  double end = 0;
  std::string title{};
};

struct source_facts {
  std::string container{};         ///< FFmpeg's name: "matroska,webm", "mpeg", "mpegts"
  std::optional<double> start{};   ///< seconds, on the file's clock: its earliest stream's
  std::optional<double> length{};  ///< seconds, from `start`; start and length are not set for
                                   ///< stills
  std::int64_t bytes = 0;
  bool cut_short = false;  ///< it ends before what its head promises; so lengths may be too long
  bool joined = false;     ///< its clock jumps, as where recordings were joined; lengths are then
                           ///< those without jumps
  std::vector<source_stream> streams{};
  std::vector<source_chapter> chapters{};
};

}  // namespace corvane
