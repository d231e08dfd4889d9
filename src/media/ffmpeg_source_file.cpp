#include "media/ffmpeg_source_file.h"

#include "media/ffmpeg_containers.h"

extern "C" {
#include <libavutil/dict.h>
#include <libavutil/error.h>
#include <libavutil/mem.h>
}

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

namespace {

constexpr int buffer_size = 64 * 1024;

/// Looked through for streams that begin late, and for what their headers do not say. Multiplexes
/// are always looked through so far.
constexpr std::int64_t most_for_streams = std::int64_t{8} << 20;
constexpr std::int64_t longest_for_streams = 5 * std::int64_t{AV_TIME_BASE};

/// The same where only the stream that is shown is wanted.
constexpr std::int64_t most_for_a_picture = std::int64_t{2} << 20;
constexpr std::int64_t longest_for_a_picture = 1 * std::int64_t{AV_TIME_BASE};

int open_nothing(AVFormatContext*, AVIOContext**, const char*, int, AVDictionary**) {
  return AVERROR(EPERM);
}

// Options for the decoders with which FFmpeg finds out what headers do not say.
class decoder_options {
 public:
  explicit decoder_options(unsigned streams) : each_(streams) {
    for (AVDictionary*& options : each_)
      av_dict_set_int(&options, "max_pixels", most_source_pixels, 0);
  }
  decoder_options(const decoder_options&) = delete;
  decoder_options& operator=(const decoder_options&) = delete;
  ~decoder_options() {
    for (AVDictionary*& options : each_)
      av_dict_free(&options);
  }

  AVDictionary** get() { return each_.empty() ? nullptr : each_.data(); }

 private:
  std::vector<AVDictionary*> each_;
};

}  // namespace

std::optional<double> seconds_of(std::int64_t count, AVRational unit) {
  if (count == AV_NOPTS_VALUE)
    return std::nullopt;
  return static_cast<double>(count) * unit.num / unit.den;
}

codec_ptr decoder_of(const AVStream& stream) {
  const AVCodec* const decoder = avcodec_find_decoder(stream.codecpar->codec_id);
  codec_ptr codec(decoder == nullptr ? nullptr : avcodec_alloc_context3(decoder));
  if (!codec || avcodec_parameters_to_context(codec.get(), stream.codecpar) < 0)
    return nullptr;
  codec->pkt_timebase = stream.time_base;
  codec->max_pixels = most_source_pixels;
  codec->thread_count = 1;
  return avcodec_open2(codec.get(), decoder, nullptr) < 0 ? nullptr : std::move(codec);
}

result<std::unique_ptr<source_demuxer>> source_demuxer::open(source_bytes& bytes,
                                                             const source_limits& limits,
                                                             source_purpose purpose) {
  using opened = result<std::unique_ptr<source_demuxer>>;
  std::unique_ptr<source_demuxer> source(new source_demuxer(bytes, limits, purpose));
  for (const auto step : {&source_demuxer::make_context, &source_demuxer::find_container,
                          &source_demuxer::open_container})
    if (const failure why = ((*source).*step)())
      return opened::fail(*why);
  return opened::ok(std::move(source));
}

source_demuxer::~source_demuxer() {
  avformat_close_input(&format_);
  if (io_ != nullptr)
    av_freep(static_cast<void*>(&io_->buffer));
  avio_context_free(&io_);
}

failure source_demuxer::make_context() {
  auto* const buffer = static_cast<unsigned char*>(av_malloc(buffer_size));
  io_ = buffer == nullptr
            ? nullptr
            : avio_alloc_context(buffer, buffer_size, 0, this, read_bytes, nullptr, seek_bytes);
  if (io_ == nullptr)
    av_free(buffer);
  format_ = io_ == nullptr ? nullptr : avformat_alloc_context();
  if (format_ == nullptr)
    return "there is not enough memory";
  format_->pb = io_;
  format_->flags |= AVFMT_FLAG_CUSTOM_IO;
  format_->interrupt_callback = {is_interrupted, this};
  format_->io_open = open_nothing;
  // No protocol has this name: a demuxer that asks for one itself gets none either.
  format_->protocol_whitelist = av_strdup("none");
  const bool thorough = purpose_ == source_purpose::facts;
  format_->probesize = thorough ? most_for_streams : most_for_a_picture;
  format_->max_analyze_duration = thorough ? longest_for_streams : longest_for_a_picture;
  return std::nullopt;
}

// A tag at the beginning of a sound file may hold a large cover; what the file is shows behind it.
std::int64_t source_demuxer::length_of_tag() {
  std::array<std::uint8_t, 10> head{};
  const auto count = bytes_->read(0, head.data(), head.size());
  if (!count || *count < head.size() || head[0] != 'I' || head[1] != 'D' || head[2] != '3')
    return 0;
  std::int64_t length = 0;
  for (std::size_t i = 6; i < head.size(); ++i)
    length = length << 7 | (head[i] & 0x7F);
  length += static_cast<std::int64_t>(head.size());
  return length < bytes_->size() ? length : 0;
}

// FFmpeg's own function for this takes the beginning alone.
failure source_demuxer::find_container() {
  constexpr std::size_t most = std::size_t{1} << 20;
  position_ = length_of_tag();
  std::vector<std::uint8_t> bytes(AVPROBE_PADDING_SIZE);
  std::size_t filled = 0;
  bool more = true;
  for (std::size_t wanted = 4096; more && kind_ == nullptr && wanted <= most; wanted *= 2) {
    bytes.resize(wanted + AVPROBE_PADDING_SIZE);
    int count = 1;
    for (; filled < wanted && count > 0; filled += static_cast<std::size_t>(std::max(count, 0)))
      count = read_bytes(this, bytes.data() + filled, static_cast<int>(wanted - filled));
    more = count > 0;
    std::fill(bytes.begin() + static_cast<std::ptrdiff_t>(filled), bytes.end(), std::uint8_t{0});
    const AVProbeData probed{"", bytes.data(), static_cast<int>(filled), nullptr};
    int score = 0;
    const AVInputFormat* const found = av_probe_input_format3(&probed, 1, &score);
    if (score > (more && wanted < most ? AVPROBE_SCORE_RETRY : 0))
      kind_ = found;
  }
  position_ = 0;
  if (unreadable_ || spent())
    return why_not_read(0);
  return kind_ == nullptr ? "it is not a file with video or sound" : why_not_container(*kind_);
}

failure source_demuxer::open_container() {
  int error = avformat_open_input(&format_, "", kind_, nullptr);
  if (error < 0)
    return why_not_read(error);
  decoder_options options(format_->nb_streams);
  error = avformat_find_stream_info(format_, options.get());
  if (error < 0)
    return why_not_read(error);
  return std::nullopt;
}

std::string source_demuxer::why_not_read(int error) const {
  if (unreadable_)
    return "the file cannot be read";
  if (error == AVERROR(ENOMEM))
    return "there is not enough memory to read it";
  if (spent())
    return "it could not be looked through in the time that there is for it";
  return damaged_source;
}

std::int64_t source_demuxer::start() const {
  return format_->start_time == AV_NOPTS_VALUE ? 0 : format_->start_time;
}

bool source_demuxer::read(AVPacket& packet) {
  const int error = spent() ? AVERROR_EXIT : av_read_frame(format_, &packet);
  at_end_ = error == AVERROR_EOF;
  return error >= 0;
}

std::chrono::milliseconds source_demuxer::time_spent() const {
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                               began_);
}

void source_demuxer::allow(const source_limits& more) {
  allowed_.bytes = std::min(limits_.bytes, read_ + more.bytes);
  allowed_.time = std::min(limits_.time, time_spent() + more.time);
}

bool source_demuxer::spent() const {
  return read_ > allowed_.bytes || time_spent() > allowed_.time;
}

int source_demuxer::read_bytes(void* of, std::uint8_t* to, int count) {
  auto& self = *static_cast<source_demuxer*>(of);
  if (self.spent())
    return AVERROR_EXIT;
  const auto got = self.bytes_->read(self.position_, to, static_cast<std::size_t>(count));
  self.unreadable_ = !got;
  if (!got)
    return AVERROR(EIO);
  self.position_ += static_cast<std::int64_t>(*got);
  self.read_ += static_cast<std::int64_t>(*got);
  return *got == 0 ? AVERROR_EOF : static_cast<int>(*got);
}

std::int64_t source_demuxer::seek_bytes(void* of, std::int64_t offset, int whence) {
  auto& self = *static_cast<source_demuxer*>(of);
  std::int64_t from = 0;
  switch (whence & ~AVSEEK_FORCE) {
    case AVSEEK_SIZE:
      return self.bytes_->size();
    case SEEK_SET:
      break;
    case SEEK_CUR:
      from = self.position_;
      break;
    case SEEK_END:
      from = self.bytes_->size();
      break;
    default:
      return AVERROR(EINVAL);
  }
  // As with files, a place behind the end is one, where nothing is read.
  if (offset < -from || offset > INT64_MAX - from)
    return AVERROR(EINVAL);
  self.position_ = from + offset;
  return self.position_;
}

int source_demuxer::is_interrupted(void* of) {
  return static_cast<const source_demuxer*>(of)->spent() ? 1 : 0;
}

}  // namespace corvane
