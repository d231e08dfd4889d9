#include "media/picture_decoder.h"

extern "C" {
#include <libavutil/log.h>
}

#include <utility>

namespace corvane {

namespace {

picture picture_of(const AVFrame& rgb) {
  picture p{rgb.width, rgb.height, {}};
  const std::ptrdiff_t row = std::ptrdiff_t{3} * rgb.width;
  p.rgb.reserve(static_cast<std::size_t>(row) * static_cast<std::size_t>(rgb.height));
  for (int y = 0; y < rgb.height; ++y) {
    const std::uint8_t* const from = rgb.data[0] + std::ptrdiff_t{y} * rgb.linesize[0];
    p.rgb.insert(p.rgb.end(), from, from + row);
  }
  return p;
}

}  // namespace

result<picture_decoder> picture_decoder::create(AVCodecID id) {
  using created = result<picture_decoder>;
  av_log_set_level(AV_LOG_QUIET);
  const AVCodec* const codec = avcodec_find_decoder(id);
  picture_decoder decoder;
  decoder.codec_.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
  decoder.packet_.reset(av_packet_alloc());
  if (!decoder.codec_ || !decoder.packet_)
    return created::fail("there is no decoder for it");
  AVCodecContext& context = *decoder.codec_;
  context.max_pixels = most_pixels;
  context.thread_count = 1;
  // Each picture comes out as soon as it is in; the index knows the order.
  context.flags |= AV_CODEC_FLAG_LOW_DELAY;
  if (avcodec_open2(&context, codec, nullptr) < 0)
    return created::fail("there is no decoder for it");
  return created::ok(std::move(decoder));
}

frame_ptr picture_decoder::decode(const std::vector<std::uint8_t>& bytes) {
  padded_.assign(bytes.begin(), bytes.end());
  padded_.resize(bytes.size() + AV_INPUT_BUFFER_PADDING_SIZE);
  packet_->data = padded_.data();
  packet_->size = static_cast<int>(bytes.size());
  const int sent = bytes.empty() ? -1 : avcodec_send_packet(codec_.get(), packet_.get());
  av_packet_unref(packet_.get());
  frame_ptr frame(av_frame_alloc());
  frame_ptr got;
  // What a damaged packet leaves behind must not be taken for the next picture.
  while (sent >= 0 && frame && avcodec_receive_frame(codec_.get(), frame.get()) >= 0) {
    got = std::move(frame);
    frame.reset(av_frame_alloc());
  }
  return got;
}

void picture_decoder::restart() {
  avcodec_flush_buffers(codec_.get());
}

// Sets the scaler up for frames of this kind: the colours of standard definition unless the stream
// names others.
bool picture_converter::prepare(const AVFrame& frame) {
  scaler_.reset(sws_getCachedContext(
      scaler_.release(), frame.width, frame.height, static_cast<AVPixelFormat>(frame.format),
      frame.width, frame.height, AV_PIX_FMT_RGB24, SWS_BICUBIC, nullptr, nullptr, nullptr));
  if (!scaler_)
    return false;
  int *from = nullptr, *to = nullptr;
  int from_range = 0, to_range = 0, brightness = 0, contrast = 0, saturation = 0;
  sws_getColorspaceDetails(scaler_.get(), &from, &from_range, &to, &to_range, &brightness,
                           &contrast, &saturation);
  // Fails where the frame is in red, green and blue already, which is right.
  sws_setColorspaceDetails(scaler_.get(), sws_getCoefficients(frame.colorspace),
                           frame.color_range == AVCOL_RANGE_JPEG ? 1 : 0, to, to_range, brightness,
                           contrast, saturation);
  return true;
}

result<picture> picture_converter::convert(const AVFrame& frame) {
  using converted = result<picture>;
  if (frame.width <= 0 || frame.height <= 0 || frame.width > largest_side ||
      frame.height > largest_side || std::int64_t{frame.width} * frame.height > most_pixels)
    return converted::fail("the picture is too large");
  // The scaler writes some pixels at a time: into rows with room behind them.
  const frame_ptr rgb(av_frame_alloc());
  if (!rgb || !prepare(frame))
    return converted::fail("the picture cannot be converted");
  rgb->format = AV_PIX_FMT_RGB24;
  rgb->width = frame.width;
  rgb->height = frame.height;
  if (av_frame_get_buffer(rgb.get(), 0) < 0 ||
      sws_scale(scaler_.get(), frame.data, frame.linesize, 0, frame.height, rgb->data,
                rgb->linesize) <= 0)
    return converted::fail("the picture cannot be converted");
  return converted::ok(picture_of(*rgb));
}

std::size_t frame_bytes(const AVFrame& frame) {
  std::size_t bytes = 0;
  for (const AVBufferRef* buffer : frame.buf)
    bytes += buffer == nullptr ? 0 : static_cast<std::size_t>(buffer->size);
  return bytes;
}

}  // namespace corvane
