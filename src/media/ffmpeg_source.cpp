// FFmpeg as the reader of people's files: what the module with the reader gives, and the facts.
#include "media/ffmpeg_containers.h"
#include "media/ffmpeg_source_file.h"
#include "media/ffmpeg_source_picture.h"
#include "media/ffmpeg_source_sound.h"
#include "media/ffmpeg_source_walk.h"
#include "media/source_module.h"

extern "C" {
#include <libavcodec/codec_desc.h>
#include <libavutil/channel_layout.h>
#include <libavutil/log.h>
#include <libavutil/pixdesc.h>
}

#include <algorithm>
#include <array>
#include <cstdlib>
#include <new>
#include <string>
#include <string_view>
#include <utility>

namespace corvane {

namespace {

class ffmpeg_source_reader : public source_reader {
 public:
  result<source_facts> facts(source_bytes& bytes, const source_limits& limits) override;
  result<picture> picture_at(source_bytes& bytes, const source_limits& limits, double seconds,
                             int most_width, int most_height) override;
  result<pcm_sound> sound(source_bytes& bytes, const source_limits& limits,
                          double most_seconds) override;
};

std::string text_from(const char* text) {
  return text == nullptr ? std::string() : std::string(text);
}

std::string tag_of(const AVDictionary* tags, const char* name) {
  const AVDictionaryEntry* const entry = av_dict_get(tags, name, nullptr, 0);
  return entry == nullptr ? std::string() : text_from(entry->value);
}

std::optional<source_ratio> ratio_of(AVRational ratio) {
  if (ratio.num <= 0 || ratio.den <= 0)
    return std::nullopt;
  return source_ratio{ratio.num, ratio.den};
}

bool is_attached(const AVStream& stream) {
  return (stream.disposition & AV_DISPOSITION_ATTACHED_PIC) != 0;
}

source_kind kind_of(const AVStream& stream, const AVInputFormat& container,
                    const walked_stream& seen) {
  const AVCodecParameters& codec = *stream.codecpar;
  const AVCodecDescriptor* const known = avcodec_descriptor_get(codec.codec_id);
  const int traits = known == nullptr ? 0 : known->props;
  switch (codec.codec_type) {
    case AVMEDIA_TYPE_VIDEO:
      if (known == nullptr)
        return source_kind::other;
      return is_attached(stream) || holds_one_picture(container) ||
                     (may_hold_one_picture(container) && seen.packets == 1)
                 ? source_kind::picture
                 : source_kind::video;
    case AVMEDIA_TYPE_AUDIO:
      return known == nullptr ? source_kind::other : source_kind::audio;
    case AVMEDIA_TYPE_SUBTITLE:
      return (traits & AV_CODEC_PROP_TEXT_SUB) != 0     ? source_kind::text
             : (traits & AV_CODEC_PROP_BITMAP_SUB) != 0 ? source_kind::bitmap_text
                                                        : source_kind::other;
    default:
      return source_kind::other;
  }
}

// FFmpeg names what is coded first and what is shown first; the latter counts.
source_fields stated_fields(int order) {
  switch (order) {
    case AV_FIELD_PROGRESSIVE:
      return source_fields::progressive;
    case AV_FIELD_TT:
    case AV_FIELD_BT:
      return source_fields::top_first;
    case AV_FIELD_BB:
    case AV_FIELD_TB:
      return source_fields::bottom_first;
    default:
      return source_fields::unknown;
  }
}

// What the pictures themselves say goes before what the file says of them.
source_fields fields_of(const AVCodecParameters& codec, const walked_stream& seen) {
  if (seen.interlaced > 0)
    return 2 * seen.top_first >= seen.interlaced ? source_fields::top_first
                                                 : source_fields::bottom_first;
  const source_fields stated = stated_fields(number_of(codec.field_order));
  const bool told = tells_interlacing(codec.codec_id) && seen.pictures > 0;
  if (stated != source_fields::unknown && !(told && codec.codec_id == AV_CODEC_ID_MPEG2VIDEO))
    return stated;
  const AVCodecDescriptor* const known = avcodec_descriptor_get(codec.codec_id);
  // Coded without a thought of fields, not only picture by picture as tapes and captures are.
  const bool never = known != nullptr && (known->props & AV_CODEC_PROP_INTRA_ONLY) == 0 &&
                     !tells_interlacing(codec.codec_id);
  return told || never ? source_fields::progressive : source_fields::unknown;
}

template <typename Value>
std::string colour_name(const Value& value, Value unknown, Value end, const char* (*name)(Value)) {
  const int number = number_of(value);
  const bool stated = number >= 0 && number < number_of(end) && number != number_of(unknown);
  const std::string found = stated ? text_from(name(value)) : std::string();
  return found == "reserved" ? std::string() : found;
}

source_colours colours_of(const AVCodecParameters& codec) {
  source_colours colours;
  colours.primaries = colour_name(codec.color_primaries, AVCOL_PRI_UNSPECIFIED, AVCOL_PRI_NB,
                                  av_color_primaries_name);
  colours.transfer =
      colour_name(codec.color_trc, AVCOL_TRC_UNSPECIFIED, AVCOL_TRC_NB, av_color_transfer_name);
  colours.matrix =
      colour_name(codec.color_space, AVCOL_SPC_UNSPECIFIED, AVCOL_SPC_NB, av_color_space_name);
  colours.full_range = number_of(codec.color_range) == AVCOL_RANGE_JPEG;
  return colours;
}

void add_pixels(const AVStream& stream, source_video& video) {
  const AVCodecParameters& codec = *stream.codecpar;
  const AVPixFmtDescriptor* const pixels =
      av_pix_fmt_desc_get(static_cast<AVPixelFormat>(codec.format));
  if (pixels != nullptr) {
    video.pixels = text_from(pixels->name);
    video.bits = pixels->comp[0].depth;
    // A JPEG picture's fourth component is black ink.
    video.alpha =
        (pixels->flags & AV_PIX_FMT_FLAG_ALPHA) != 0 && codec.codec_id != AV_CODEC_ID_MJPEG;
  } else if (codec.bits_per_raw_sample > 0) {
    video.bits = codec.bits_per_raw_sample;
  }
  // VP8 and VP9 have it in pictures of their own.
  video.alpha = video.alpha || tag_of(stream.metadata, "alpha_mode") == "1";
}

void add_rate(const AVStream& stream, const walked_stream& seen, source_video& video) {
  const auto average = ratio_of(stream.avg_frame_rate);
  const auto stated = average ? average : ratio_of(stream.r_frame_rate);
  video.rate = stated.value_or(source_ratio{0, 1});
  video.variable_rate = has_variable_rate(stream, seen);
}

source_video video_of(AVFormatContext& format, AVStream& stream, const walked_stream& seen) {
  const AVCodecParameters& codec = *stream.codecpar;
  source_video video;
  video.width = codec.width;
  video.height = codec.height;
  video.pixel_aspect = ratio_of(av_guess_sample_aspect_ratio(&format, &stream, nullptr));
  const picture_turn turn = turn_of(stream);
  video.turned = turn.degrees;
  video.mirrored = turn.mirrored;
  video.fields = fields_of(codec, seen);
  video.colours = colours_of(codec);
  add_pixels(stream, video);
  return video;
}

source_audio audio_of(const AVCodecParameters& codec) {
  source_audio audio{codec.ch_layout.nb_channels, codec.sample_rate, {}};
  std::array<char, 128> layout{};
  if (codec.ch_layout.order != AV_CHANNEL_ORDER_UNSPEC &&
      av_channel_layout_describe(&codec.ch_layout, layout.data(), layout.size()) > 0)
    audio.layout = layout.data();
  return audio;
}

// Tags that programs write into Matroska files are of this one stream.
std::optional<std::int64_t> bit_rate_of(const AVStream& stream) {
  constexpr std::int64_t not_stated = 0x3FFFF * std::int64_t{400};  // as MPEG-1 says it
  if (stream.codecpar->bit_rate > 0 && stream.codecpar->bit_rate != not_stated)
    return stream.codecpar->bit_rate;
  for (const char* const tag : {"BPS", "BPS-eng"}) {
    const std::int64_t rate = std::strtoll(tag_of(stream.metadata, tag).c_str(), nullptr, 10);
    if (rate > 0 && rate < INT64_MAX)
      return rate;
  }
  return std::nullopt;
}

source_stream stream_of(AVFormatContext& format, AVStream& stream, const walked_stream& seen) {
  const AVCodecParameters& codec = *stream.codecpar;
  source_stream told;
  told.index = stream.index;
  told.kind = kind_of(stream, *format.iformat, seen);
  told.codec = codec.codec_id == AV_CODEC_ID_NONE ? "" : avcodec_get_name(codec.codec_id);
  told.profile = text_from(avcodec_profile_name(codec.codec_id, codec.profile));
  told.decodes = avcodec_find_decoder(codec.codec_id) != nullptr;
  told.language = tag_of(stream.metadata, "language");
  if (told.language == "und")
    told.language.clear();
  told.title = tag_of(stream.metadata, "title");
  told.is_default = (stream.disposition & AV_DISPOSITION_DEFAULT) != 0;
  told.is_forced = (stream.disposition & AV_DISPOSITION_FORCED) != 0;
  if (told.kind == source_kind::video || told.kind == source_kind::picture)
    told.video = video_of(format, stream, seen);
  if (told.kind == source_kind::audio)
    told.audio = audio_of(codec);
  if (told.kind == source_kind::picture)
    return told;  // FFmpeg gives pictures the times of a film of one
  if (told.kind == source_kind::video)
    add_rate(stream, seen, told.video);
  const std::int64_t first = seen.begin.value_or(AV_NOPTS_VALUE);
  told.start =
      seconds_of(stream.start_time == AV_NOPTS_VALUE ? first : stream.start_time, stream.time_base);
  told.length = seconds_of(stream.duration, stream.time_base);
  told.bit_rate = bit_rate_of(stream);
  return told;
}

// When a stream ends by its packets, on the file's clock; not set where they do not tell.
std::optional<double> measured_end(const source_stream& stream, const walked_stream& seen,
                                   AVRational unit) {
  if (seen.end)
    return seconds_of(*seen.end, unit);
  // A stream without a container has no times, only pictures.
  const double rate = stream.video.rate.value();
  if (stream.kind == source_kind::video && rate > 0 && !seen.begin)
    return stream.start.value_or(0) + static_cast<double>(seen.packets) / rate;
  return std::nullopt;
}

// What the last packets tell of lengths goes before what headers tell.
void measure_lengths(const source_demuxer& source, const std::vector<walked_stream>& seen,
                     source_facts& facts) {
  std::optional<double> last;
  for (source_stream& stream : facts.streams) {
    const auto i = static_cast<std::size_t>(stream.index);
    if (stream.kind == source_kind::picture || i >= seen.size())
      continue;
    const auto end = measured_end(stream, seen[i], source.format().streams[i]->time_base);
    if (!end || *end <= stream.start.value_or(0))
      continue;
    stream.length = *end - stream.start.value_or(0);
    last = std::max(last.value_or(*end), *end);
  }
  if (last)
    facts.length = *last - facts.start.value_or(0);
}

// When the first packet would be shown that an index names behind the file's end, as that of a copy
// does which was broken off; not set where all are there.
std::optional<double> end_of_what_is_there(AVStream& stream, std::int64_t bytes) {
  const int count = avformat_index_get_entries_count(&stream);
  for (int i = 0; i < count; ++i) {
    const AVIndexEntry* const entry = avformat_index_get_entry(&stream, i);
    if (entry != nullptr && entry->pos > bytes - entry->size)
      return seconds_of(entry->timestamp, stream.time_base);
  }
  return std::nullopt;
}

void shorten_to_what_is_there(const AVFormatContext& format, source_facts& facts) {
  std::optional<double> last;
  for (source_stream& stream : facts.streams) {
    const double begin = stream.start.value_or(0);
    const auto end = end_of_what_is_there(*format.streams[stream.index], facts.bytes);
    if (end && *end > begin && stream.length && *stream.length > *end - begin) {
      stream.length = *end - begin;
      last = std::max(last.value_or(*end), *end);
    }
  }
  if (last && facts.length)
    facts.length = std::min(*facts.length, *last - facts.start.value_or(0));
}

// Video and sound without a length of their own last to the end of the file.
void fill_lengths(source_facts& facts) {
  for (const source_stream& stream : facts.streams)
    if (!facts.length && stream.length)
      facts.length = *stream.length + stream.start.value_or(0) - facts.start.value_or(0);
  for (source_stream& stream : facts.streams) {
    const bool lasts = stream.kind == source_kind::video || stream.kind == source_kind::audio;
    const double late = stream.start.value_or(0) - facts.start.value_or(0);
    if (lasts && !stream.length && facts.length && *facts.length > late) {
      stream.length = *facts.length - late;
      stream.length_is_files = true;
    }
  }
}

void add_chapters(const source_demuxer& source, source_facts& facts) {
  const AVFormatContext& format = source.format();
  const double begin = facts.start.value_or(0);
  for (unsigned i = 0; i < format.nb_chapters; ++i) {
    const AVChapter& chapter = *format.chapters[i];
    const double start = seconds_of(chapter.start, chapter.time_base).value_or(begin) - begin;
    const double end = seconds_of(chapter.end, chapter.time_base).value_or(begin) - begin;
    facts.chapters.push_back(
        {std::max(start, 0.0), std::max({end, start, 0.0}), tag_of(chapter.metadata, "title")});
  }
}

bool is_picture_file(const source_facts& facts) {
  return std::none_of(facts.streams.begin(), facts.streams.end(), [](const source_stream& s) {
    return s.kind == source_kind::video || s.kind == source_kind::audio;
  });
}

// Photographs say in their own head how they are to be turned.
void turn_pictures(source_demuxer& source, source_facts& facts) {
  for (source_stream& stream : facts.streams) {
    if (stream.kind != source_kind::picture || stream.codec != "mjpeg")
      continue;
    const frame_ptr frame = only_picture(source, *source.format().streams[stream.index]);
    if (!frame)
      continue;
    const picture_turn turn = turn_of(*frame);
    stream.video.turned = turn.degrees;
    stream.video.mirrored = turn.mirrored;
  }
}

/// Whether there is something in it that a disc can show or play; a stream of which nothing more
/// than its kind was found is damage, or was never one.
bool is_usable(const source_stream& stream) {
  switch (stream.kind) {
    case source_kind::video:
    case source_kind::picture:
      return stream.video.width > 0 && stream.video.height > 0;
    case source_kind::audio:
      return stream.audio.channels > 0 && stream.audio.sample_rate > 0;
    default:
      return false;
  }
}

// Lengths are estimates where a multiplex has no table of contents; in Matroska they count from 0,
// whenever the first packet comes, and are those of the whole file alone; of AVI's sound there is
// none.
bool has_doubtful_length(const AVFormatContext& format) {
  const std::string_view name(format.iformat->name);
  return format.duration_estimation_method == AVFMT_DURATION_FROM_PTS ||
         name.starts_with("matroska") || name == "avi";
}

walk_span span_for(const AVFormatContext& format, std::int64_t bytes) {
  constexpr std::int64_t small = std::int64_t{16} << 20;
  const bool is_large = bytes > small;
  const bool has_no_length = format.duration == AV_NOPTS_VALUE ||
                             format.duration_estimation_method == AVFMT_DURATION_FROM_BITRATE;
  // Where the clock of a multiplex has jumped back, nothing tells a length but its parts.
  if (has_no_length && is_large && is_multiplex(*format.iformat))
    return walk_span::both_ends;
  if (has_no_length || may_hold_one_picture(*format.iformat))
    return walk_span::whole;
  if (has_doubtful_length(format))
    return is_large ? walk_span::both_ends : walk_span::whole;
  return walk_span::beginning;
}

void add_times(const source_demuxer& source, const packets_seen& seen, bool measure,
               source_facts& facts) {
  const AVFormatContext& format = source.format();
  facts.start = seconds_of(format.start_time, unit_of_file);
  for (const source_stream& stream : facts.streams)
    if (format.start_time == AV_NOPTS_VALUE && stream.start)
      facts.start = std::min(facts.start.value_or(*stream.start), *stream.start);
  facts.length = seconds_of(format.duration, unit_of_file);
  facts.joined = seen.joined;
  // What FFmpeg makes of the ends' times is of no use then.
  if (seen.joined) {
    facts.length.reset();
    for (source_stream& stream : facts.streams)
      stream.length.reset();
  }
  if (measure && seen.ended)
    measure_lengths(source, seen.streams, facts);
  shorten_to_what_is_there(format, facts);
  fill_lengths(facts);
}

result<source_facts> facts_of(source_demuxer& source, std::int64_t bytes) {
  using told = result<source_facts>;
  AVFormatContext& format = source.format();
  const walk_span span = span_for(format, bytes);
  packets_seen seen;
  if (!holds_one_picture(*format.iformat))
    seen = walk_packets(source, span);
  source_facts facts;
  facts.container = text_from(format.iformat->name);
  facts.bytes = bytes;
  seen.streams.resize(format.nb_streams);
  for (unsigned i = 0; i < format.nb_streams; ++i)
    facts.streams.push_back(stream_of(format, *format.streams[i], seen.streams[i]));
  if (std::none_of(facts.streams.begin(), facts.streams.end(), is_usable))
    return told::fail(
        "nothing in it can be shown or played: it is damaged, or there is neither video "
        "nor sound in it");
  if (is_picture_file(facts)) {
    turn_pictures(source, facts);
    return told::ok(std::move(facts));
  }
  add_times(source, seen, span != walk_span::beginning, facts);
  add_chapters(source, facts);
  return told::ok(std::move(facts));
}

result<source_facts> ffmpeg_source_reader::facts(source_bytes& bytes, const source_limits& limits) {
  const auto source = source_demuxer::open(bytes, limits, source_purpose::facts);
  return source ? facts_of(**source, bytes.size()) : result<source_facts>::fail(source.error);
}

result<picture> ffmpeg_source_reader::picture_at(source_bytes& bytes, const source_limits& limits,
                                                 double seconds, int most_width, int most_height) {
  for (const double time : {seconds, 0.0}) {
    const auto source = source_demuxer::open(bytes, limits, source_purpose::picture);
    if (!source)
      return result<picture>::fail(source.error);
    auto shown = picture_from(**source, time, most_width, most_height);
    // A stream without a container may not be entered anywhere but at its beginning.
    if (shown || !(time > 0))
      return shown;
  }
  return result<picture>::fail(damaged_source);
}

result<pcm_sound> ffmpeg_source_reader::sound(source_bytes& bytes, const source_limits& limits,
                                              double most_seconds) {
  const auto source = source_demuxer::open(bytes, limits, source_purpose::facts);
  return source ? sound_from(**source, most_seconds) : result<pcm_sound>::fail(source.error);
}

}  // namespace

}  // namespace corvane

corvane::source_reader* corvane_make_source_reader() {
  av_log_set_level(AV_LOG_QUIET);
  return new (std::nothrow) corvane::ffmpeg_source_reader;
}
