#include "media/ffmpeg_source_frames.h"

#include <utility>

namespace corvane {

bool frame_reader::feed() {
  while (source_.read(*packet_)) {
    const bool ours = packet_->stream_index == stream_.index;
    // What is damaged goes by: the next frame may be whole.
    const bool taken = ours && avcodec_send_packet(codec_.get(), packet_.get()) >= 0;
    av_packet_unref(packet_.get());
    if (taken)
      return true;
  }
  if (drained_)
    return false;
  drained_ = true;
  return avcodec_send_packet(codec_.get(), nullptr) >= 0;
}

frame_ptr frame_reader::next() {
  frame_ptr frame(av_frame_alloc());
  while (frame) {
    const int error = avcodec_receive_frame(codec_.get(), frame.get());
    if (error >= 0)
      return frame;
    if (error == AVERROR_EOF || !feed())
      return nullptr;
  }
  return nullptr;
}

frame_ptr frame_reader::attached() {
  frame_ptr frame(av_frame_alloc());
  const bool sent = avcodec_send_packet(codec_.get(), &stream_.attached_pic) >= 0 &&
                    avcodec_send_packet(codec_.get(), nullptr) >= 0;
  return sent && frame && avcodec_receive_frame(codec_.get(), frame.get()) >= 0 ? std::move(frame)
                                                                                : nullptr;
}

}  // namespace corvane
