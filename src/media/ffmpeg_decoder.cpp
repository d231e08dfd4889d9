// FFmpeg's decoders: a file of the module.
#include "formats/still_header.h"
#include "media/decoder_module.h"
#include "media/ffmpeg_handles.h"

extern "C" {
#include <libavutil/log.h>
}

#include <utility>

namespace corvane {

namespace {

class ffmpeg_frame : public decoded_frame {
 public:
  explicit ffmpeg_frame(frame_ptr frame) : frame_(std::move(frame)) {}

  const AVFrame& frame() const { return *frame_; }
  std::size_t bytes() const override;

 private:
  frame_ptr frame_;
};

class ffmpeg_decoder : public picture_decoder {
 public:
  /// Whether there is that decoder; the first call of all.
  bool open(AVCodecID id);

  std::unique_ptr<decoded_frame> decode(const std::vector<std::uint8_t>& bytes) override;
  void restart() override;
  result<picture> convert(const decoded_frame& of) override;

 private:
  bool prepare_scaler(const AVFrame& frame);

  codec_ptr codec_;
  packet_ptr packet_;
  std::vector<std::uint8_t> padded_;
  scaler_ptr scaler_;  // of the last frame; used again for the same kind
};

AVCodecID id_of(picture_coding coding) {
  switch (coding) {
    case picture_coding::mpeg1:
      return AV_CODEC_ID_MPEG1VIDEO;
    case picture_coding::mpeg2:
      return AV_CODEC_ID_MPEG2VIDEO;
    case picture_coding::bitmap:
      return AV_CODEC_ID_BMP;
    case picture_coding::jpeg:
      return AV_CODEC_ID_MJPEG;
  }
  return AV_CODEC_ID_NONE;
}

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

std::size_t ffmpeg_frame::bytes() const {
  std::size_t bytes = 0;
  for (const AVBufferRef* buffer : frame_->buf)
    bytes += buffer == nullptr ? 0 : static_cast<std::size_t>(buffer->size);
  return bytes;
}

bool ffmpeg_decoder::open(AVCodecID id) {
  av_log_set_level(AV_LOG_QUIET);
  const AVCodec* const codec = avcodec_find_decoder(id);
  codec_.reset(codec == nullptr ? nullptr : avcodec_alloc_context3(codec));
  packet_.reset(av_packet_alloc());
  if (!codec_ || !packet_)
    return false;
  codec_->max_pixels = most_pixels;
  codec_->thread_count = 1;
  // Each picture comes out as soon as it is in; the index knows the order.
  codec_->flags |= AV_CODEC_FLAG_LOW_DELAY;
  return avcodec_open2(codec_.get(), codec, nullptr) >= 0;
}

std::unique_ptr<decoded_frame> ffmpeg_decoder::decode(const std::vector<std::uint8_t>& bytes) {
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
  return got ? std::make_unique<ffmpeg_frame>(std::move(got)) : nullptr;
}

void ffmpeg_decoder::restart() {
  avcodec_flush_buffers(codec_.get());
}

// Sets the scaler up for frames of this kind: the colours of standard definition unless the stream
// names others.
bool ffmpeg_decoder::prepare_scaler(const AVFrame& frame) {
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

result<picture> ffmpeg_decoder::convert(const decoded_frame& of) {
  using converted = result<picture>;
  const AVFrame& frame = static_cast<const ffmpeg_frame&>(of).frame();
  if (frame.width <= 0 || frame.height <= 0 || frame.width > largest_side ||
      frame.height > largest_side || std::int64_t{frame.width} * frame.height > most_pixels)
    return converted::fail("the picture is too large");
  // The scaler writes some pixels at a time: into rows with room behind them.
  const frame_ptr rgb(av_frame_alloc());
  if (!rgb || !prepare_scaler(frame))
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

}  // namespace

}  // namespace corvane

corvane::picture_decoder* corvane_make_decoder(corvane::picture_coding coding) {
  auto decoder = std::make_unique<corvane::ffmpeg_decoder>();
  return decoder->open(corvane::id_of(coding)) ? decoder.release() : nullptr;
}
