#include "media/ffmpeg_containers.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace corvane {

namespace {

// FFmpeg's names, the first where a demuxer has several. The Windows product has no others
// (packaging/windows/recipes/ffmpeg.sh).
constexpr auto read_containers = std::to_array<std::string_view>(
    {"mov",  "matroska", "avi",    "mpegts", "mpeg", "mpegvideo", "m4v",          "h264", "hevc",
     "vc1",  "dv",       "flv",    "asf",    "ogg",  "rm",        "mxf",          "gxf",  "wtv",
     "nut",  "ivf",      "obu",    "swf",    "dhav", "mjpeg",     "yuv4mpegpipe", "wav",  "w64",
     "aiff", "caf",      "au",     "voc",    "mp3",  "aac",       "loas",         "ac3",  "eac3",
     "dts",  "dtshd",    "truehd", "mlp",    "flac", "ape",       "tta",          "wv",   "mpc",
     "mpc8", "tak",      "amr",    "oma",    "gif",  "apng"});

constexpr auto picture_containers = std::to_array<std::string_view>(
    {"png_pipe", "jpeg_pipe", "jpegls_pipe", "j2k_pipe", "bmp_pipe", "tiff_pipe", "webp_pipe",
     "ppm_pipe", "pgm_pipe", "pbm_pipe", "pam_pipe", "pcx_pipe", "psd_pipe", "qoi_pipe"});

template <std::size_t Count>
bool is_one_of(const std::array<std::string_view, Count>& names, const AVInputFormat& format) {
  const std::string_view name = format.name;
  return std::find(names.begin(), names.end(), name.substr(0, name.find(','))) != names.end();
}

}  // namespace

failure why_not_container(const AVInputFormat& format) {
  if (is_one_of(read_containers, format) || holds_one_picture(format))
    return std::nullopt;
  return "it is not a file with video or sound";
}

bool holds_one_picture(const AVInputFormat& format) {
  return is_one_of(picture_containers, format);
}

bool may_hold_one_picture(const AVInputFormat& format) {
  const std::string_view name = format.name;
  return holds_one_picture(format) || name == "gif" || name == "apng";
}

}  // namespace corvane
