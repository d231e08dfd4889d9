#include "media/ffmpeg_source_picture.h"

#include "media/ffmpeg_source_frames.h"

extern "C" {
#include <libavutil/display.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace corvane {

namespace {

/// A picture of a long group takes as long to come as all before it in the group. After so much
/// time the last one that was decoded is near enough.
constexpr std::chrono::milliseconds long_enough{2'000};

// dx = a * x + c * y, dy = b * x + d * y; y goes down.
picture_turn turn_of_matrix(const std::int32_t* matrix) {
  double a = matrix[0], b = matrix[1];
  const double c = matrix[3], d = matrix[4];
  picture_turn turn;
  turn.mirrored = a * d - b * c < 0;
  if (turn.mirrored) {
    a = -a;
    b = -b;
  }
  const double pi = std::acos(-1.0);
  const int quarters = static_cast<int>(std::lround(std::atan2(b, a) / (pi / 2)));
  turn.degrees = (quarters + 4) % 4 * 90;
  return turn;
}

// The matrix comes in bytes that need not lie as numbers do.
picture_turn turn_of_bytes(const std::uint8_t* bytes, std::size_t count) {
  std::array<std::int32_t, 9> matrix{};
  if (bytes == nullptr || count < sizeof matrix)
    return {};
  std::memcpy(matrix.data(), bytes, sizeof matrix);
  return turn_of_matrix(matrix.data());
}

// Numbers of the orientation in a photograph's head.
picture_turn turn_of_orientation(int orientation) {
  switch (orientation) {
    case 2:
      return {0, true};
    case 3:
      return {180, false};
    case 4:
      return {180, true};
    case 5:
      return {270, true};
    case 6:
      return {90, false};
    case 7:
      return {90, true};
    case 8:
      return {270, false};
    default:
      return {};
  }
}

bool has_cover(const AVStream& stream) {
  return (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
}

// The stream that a player would show: film before cover.
AVStream* shown_stream(AVFormatContext& format) {
  const int best = av_find_best_stream(&format, AVMEDIA_TYPE_VIDEO, -1, -1, nullptr, 0);
  AVStream* shown = best < 0 ? nullptr : format.streams[best];
  for (unsigned i = 0; i < format.nb_streams; ++i) {
    AVStream* const other = format.streams[i];
    if (shown != nullptr && has_cover(*shown) && !has_cover(*other) &&
        other->codecpar->codec_type == AVMEDIA_TYPE_VIDEO)
      shown = other;
  }
  return shown;
}

// The picture on the screen at this time of the stream, or the nearest one that can be had.
frame_ptr frame_at(source_demuxer& source, const AVStream& stream, std::int64_t time) {
  frame_reader reader(source, stream);
  if (!reader.works())
    return nullptr;
  const auto began = source.time_spent();
  frame_ptr shown;
  while (frame_ptr frame = reader.next()) {
    const std::int64_t begins = frame->best_effort_timestamp;
    const bool later = begins != AV_NOPTS_VALUE && begins > time;
    if (later && shown)
      break;
    shown = std::move(frame);
    if (later || time <= 0 || begins == AV_NOPTS_VALUE || source.time_spent() - began > long_enough)
      break;
  }
  return shown;
}

frame_ptr seek_frame(source_demuxer& source, const AVStream& stream, double seconds) {
  AVFormatContext& format = source.format();
  constexpr double longest = 1e9;
  const double from_start = std::isfinite(seconds) ? std::clamp(seconds, 0.0, longest) : 0;
  const std::int64_t begin = av_rescale_q(source.start(), unit_of_file, stream.time_base);
  const std::int64_t time =
      begin + static_cast<std::int64_t>(from_start / av_q2d(stream.time_base));
  if (from_start > 0)
    av_seek_frame(&format, stream.index, time, AVSEEK_FLAG_BACKWARD);
  return frame_at(source, stream, from_start > 0 ? time : INT64_MIN);
}

struct size_in_pixels {
  int width;
  int height;
};

// The largest size in the box with this shape, but no larger than the picture is.
size_in_pixels fitted(double width, double height, int most_width, int most_height) {
  const double scale =
      std::min({1.0, std::max(most_width, 1) / width, std::max(most_height, 1) / height});
  const auto side = [scale](double length, int most) {
    return std::clamp(static_cast<int>(std::lround(length * scale)), 1, std::max(most, 1));
  };
  return {side(width, most_width), side(height, most_height)};
}

// Where a file does not say how its colours are coded, players go by its size.
int matrix_of(const AVFrame& frame) {
  const int stated = number_of(frame.colorspace);
  if (stated != AVCOL_SPC_UNSPECIFIED)
    return stated;
  return frame.height >= 720 ? AVCOL_SPC_BT709 : AVCOL_SPC_SMPTE170M;
}

frame_ptr scaled(const AVFrame& frame, size_in_pixels to, AVPixelFormat pixels) {
  const auto from = static_cast<AVPixelFormat>(frame.format);
  scaler_ptr scaler;
  // Very large steps are more than the good ways can do.
  for (const int way : {SWS_BICUBIC, SWS_FAST_BILINEAR, SWS_POINT})
    if (!scaler)
      scaler.reset(sws_getContext(frame.width, frame.height, from, to.width, to.height, pixels, way,
                                  nullptr, nullptr, nullptr));
  frame_ptr made(av_frame_alloc());
  if (!scaler || !made)
    return nullptr;
  int *source = nullptr, *target = nullptr;
  int full = 0, target_full = 0, brightness = 0, contrast = 0, saturation = 0;
  sws_getColorspaceDetails(scaler.get(), &source, &full, &target, &target_full, &brightness,
                           &contrast, &saturation);
  // Fails where the frame is in red, green and blue already, which is right.
  sws_setColorspaceDetails(scaler.get(), sws_getCoefficients(matrix_of(frame)),
                           full != 0 || number_of(frame.color_range) == AVCOL_RANGE_JPEG ? 1 : 0,
                           target, target_full, brightness, contrast, saturation);
  made->format = pixels;
  made->width = to.width;
  made->height = to.height;
  if (av_frame_get_buffer(made.get(), 0) < 0 ||
      sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, made->data,
                made->linesize) <= 0)
    return nullptr;
  return made;
}

// Red, green and blue at a place of a picture with alpha, on black.
std::array<std::uint8_t, 3> colour_at(const AVFrame& frame, int x, int y) {
  const std::uint8_t* const at =
      frame.data[0] + std::ptrdiff_t{y} * frame.linesize[0] + std::ptrdiff_t{4} * x;
  std::array<std::uint8_t, 3> colour{};
  for (std::size_t i = 0; i < colour.size(); ++i)
    colour[i] = static_cast<std::uint8_t>((at[i] * at[3] + 127) / 255);
  return colour;
}

picture turned(const AVFrame& frame, picture_turn turn) {
  const bool sideways = turn.degrees % 180 != 0;
  picture made{sideways ? frame.height : frame.width, sideways ? frame.width : frame.height, {}};
  made.rgb.reserve(std::size_t{3} * static_cast<std::size_t>(made.width) *
                   static_cast<std::size_t>(made.height));
  const int right = frame.width - 1, bottom = frame.height - 1;
  for (int y = 0; y < made.height; ++y) {
    for (int x = 0; x < made.width; ++x) {
      const int across = turn.degrees == 0     ? x
                         : turn.degrees == 90  ? y
                         : turn.degrees == 180 ? right - x
                                               : right - y;
      const int down = turn.degrees == 0     ? y
                       : turn.degrees == 90  ? bottom - x
                       : turn.degrees == 180 ? bottom - y
                                             : x;
      const auto colour = colour_at(frame, turn.mirrored ? right - across : across, down);
      made.rgb.insert(made.rgb.end(), colour.begin(), colour.end());
    }
  }
  return made;
}

result<picture> shown_picture(const AVFrame& frame, AVRational pixel_aspect, picture_turn turn,
                              int most_width, int most_height) {
  using shown = result<picture>;
  if (frame.width <= 0 || frame.height <= 0 ||
      std::int64_t{frame.width} * frame.height > most_source_pixels)
    return shown::fail("its pictures are too large");
  double width = frame.width, height = frame.height;
  // Pixels are made square by more of them, never by fewer.
  const double aspect = pixel_aspect.num > 0 && pixel_aspect.den > 0 ? av_q2d(pixel_aspect) : 1.0;
  (aspect > 1 ? width : height) *= aspect > 1 ? aspect : 1 / aspect;
  const bool sideways = turn.degrees % 180 != 0;
  const size_in_pixels size = sideways ? fitted(width, height, most_height, most_width)
                                       : fitted(width, height, most_width, most_height);
  const frame_ptr small = scaled(frame, size, AV_PIX_FMT_RGBA);
  return small ? shown::ok(turned(*small, turn)) : shown::fail("its picture cannot be shown");
}

}  // namespace

picture_turn turn_of(const AVStream& stream) {
  std::size_t count = 0;
  const std::uint8_t* const matrix =
      av_stream_get_side_data(&stream, AV_PKT_DATA_DISPLAYMATRIX, &count);
  return turn_of_bytes(matrix, count);
}

picture_turn turn_of(const AVFrame& frame) {
  const AVFrameSideData* const matrix = av_frame_get_side_data(&frame, AV_FRAME_DATA_DISPLAYMATRIX);
  if (matrix != nullptr)
    return turn_of_bytes(matrix->data, matrix->size);
  const AVDictionaryEntry* const entry = av_dict_get(frame.metadata, "Orientation", nullptr, 0);
  return entry == nullptr ? picture_turn() : turn_of_orientation(std::atoi(entry->value));
}

frame_ptr only_picture(source_demuxer& source, const AVStream& stream) {
  frame_reader reader(source, stream);
  if (!reader.works())
    return nullptr;
  return has_cover(stream) ? reader.attached() : reader.next();
}

result<picture> picture_from(source_demuxer& source, double seconds, int most_width,
                             int most_height) {
  using shown = result<picture>;
  AVStream* const stream = shown_stream(source.format());
  if (stream == nullptr)
    return shown::fail("it has no picture");
  const bool alone = has_cover(*stream) || stream->codecpar->codec_id == AV_CODEC_ID_MJPEG;
  frame_ptr frame =
      has_cover(*stream) ? only_picture(source, *stream) : seek_frame(source, *stream, seconds);
  if (!frame)
    return shown::fail("no picture of it can be decoded");
  picture_turn turn = turn_of(*stream);
  if (alone && turn.degrees == 0 && !turn.mirrored)
    turn = turn_of(*frame);
  const AVRational aspect = av_guess_sample_aspect_ratio(&source.format(), stream, frame.get());
  return shown_picture(*frame, aspect, turn, most_width, most_height);
}

}  // namespace corvane
