// Owners of what FFmpeg allocates. Only this room's files that decode include it.
#pragma once

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavutil/frame.h>
#include <libswscale/swscale.h>
}

#include <memory>

namespace corvane {

struct free_codec {
  void operator()(AVCodecContext* codec) const { avcodec_free_context(&codec); }
};
struct free_frame {
  void operator()(AVFrame* frame) const { av_frame_free(&frame); }
};
struct free_packet {
  void operator()(AVPacket* packet) const { av_packet_free(&packet); }
};
struct free_scaler {
  void operator()(SwsContext* scaler) const { sws_freeContext(scaler); }
};

using codec_ptr = std::unique_ptr<AVCodecContext, free_codec>;
using frame_ptr = std::unique_ptr<AVFrame, free_frame>;
using packet_ptr = std::unique_ptr<AVPacket, free_packet>;
using scaler_ptr = std::unique_ptr<SwsContext, free_scaler>;

}  // namespace corvane
