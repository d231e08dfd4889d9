#include "import/codec_names.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvane {
namespace {

struct named_codec {
  std::string_view codec, name;
};

constexpr std::array codecs = {
    named_codec{"aac", "AAC"},
    named_codec{"ac3", "AC-3"},
    named_codec{"alac", "Apple Lossless"},
    named_codec{"ass", "SSA subtitles"},
    named_codec{"av1", "AV1"},
    named_codec{"dnxhd", "DNxHD"},
    named_codec{"dts", "DTS"},
    named_codec{"dvb_subtitle", "DVB subtitles"},
    named_codec{"dvd_subtitle", "DVD subtitles"},
    named_codec{"dvvideo", "DV"},
    named_codec{"eac3", "E-AC-3"},
    named_codec{"ffv1", "FFV1"},
    named_codec{"flac", "FLAC"},
    named_codec{"flv1", "Flash video"},
    named_codec{"h263", "H.263"},
    named_codec{"h264", "H.264"},
    named_codec{"hdmv_pgs_subtitle", "Blu-ray subtitles"},
    named_codec{"hevc", "H.265 (HEVC)"},
    named_codec{"mjpeg", "Motion JPEG"},
    named_codec{"mov_text", "MP4 subtitles"},
    named_codec{"mp2", "MPEG audio layer II"},
    named_codec{"mp3", "MP3"},
    named_codec{"mpeg1video", "MPEG-1"},
    named_codec{"mpeg2video", "MPEG-2"},
    named_codec{"mpeg4", "MPEG-4"},
    named_codec{"msmpeg4v3", "MS MPEG-4"},
    named_codec{"opus", "Opus"},
    named_codec{"prores", "ProRes"},
    named_codec{"subrip", "SubRip subtitles"},
    named_codec{"theora", "Theora"},
    named_codec{"truehd", "TrueHD"},
    named_codec{"vc1", "VC-1"},
    named_codec{"vorbis", "Vorbis"},
    named_codec{"vp8", "VP8"},
    named_codec{"vp9", "VP9"},
    named_codec{"webvtt", "WebVTT subtitles"},
    named_codec{"wmav2", "Windows Media audio"},
    named_codec{"wmv3", "Windows Media video"},
};

}  // namespace

std::string codec_name(const std::string& codec) {
  const auto* const found = std::find_if(
      codecs.begin(), codecs.end(), [&](const named_codec& one) { return one.codec == codec; });
  if (found != codecs.end())
    return std::string(found->name);
  if (codec.starts_with("pcm_"))
    return "PCM";
  return codec.empty() ? "of an unknown kind" : codec;
}

}  // namespace corvane
