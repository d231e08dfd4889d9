#include "formats/file_signature.h"

#include "formats/audio_frames.h"
#include "formats/program_stream.h"
#include "formats/video_headers.h"

#include <algorithm>
#include <array>

namespace corvane {
namespace {

using namespace std::string_view_literals;
using bytes = std::span<const std::uint8_t>;
using signature = std::optional<file_signature>;

bool has(bytes head, std::string_view text, std::size_t at = 0) {
  return head.size() >= at + text.size() &&
         std::equal(text.begin(), text.end(), head.begin() + static_cast<std::ptrdiff_t>(at),
                    [](char wanted, std::uint8_t byte) {
                      return static_cast<std::uint8_t>(wanted) == byte;
                    });
}

struct beginning {
  std::string_view bytes;
  file_signature what;
};

constexpr std::array beginnings = {
    beginning{"\x1A\x45\xDF\xA3"sv, {file_family::film, "a Matroska or WebM film"}},
    beginning{"\x30\x26\xB2\x75\x8E\x66\xCF\x11"sv, {file_family::film, "a Windows Media file"}},
    beginning{"FLV\x01"sv, {file_family::film, "a Flash film"}},
    beginning{".RMF"sv, {file_family::film, "a RealMedia file"}},
    beginning{"\x1F\x07\0"sv, {file_family::film, "a DV film"}},
    beginning{"YUV4MPEG2 "sv, {file_family::film, "an uncompressed film"}},
    beginning{"OggS"sv, {file_family::sound, "an Ogg file"}},
    beginning{"fLaC"sv, {file_family::sound, "a FLAC sound file"}},
    beginning{"ID3"sv, {file_family::sound, "a sound file with an ID3 tag, as MP3 files are"}},
    beginning{"MThd"sv, {file_family::sound, "a MIDI file"}},
    beginning{"\xFF\xD8\xFF"sv, {file_family::jpeg, "a JPEG picture"}},
    beginning{"\x89PNG\r\n\x1A\n"sv, {file_family::picture, "a PNG picture"}},
    beginning{"GIF8"sv, {file_family::picture, "a GIF picture"}},
    beginning{"II*\0"sv, {file_family::picture, "a TIFF picture"}},
    beginning{"MM\0*"sv, {file_family::picture, "a TIFF picture"}},
    beginning{"Corvane "sv, {file_family::project, "a project of Corvane"}},
    beginning{"\xEF\xBB\xBF"
              "Corvane "sv,
              {file_family::project, "a project of Corvane"}},
    beginning{"DVDVIDEO-VMG"sv, {file_family::disc_table, "a table of a DVD"}},
    beginning{"DVDVIDEO-VTS"sv, {file_family::disc_table, "a table of a DVD"}},
    beginning{"PK\x03\x04"sv, {file_family::archive, "a ZIP archive or an office document"}},
    beginning{"7z\xBC\xAF\x27\x1C"sv, {file_family::archive, "a 7z archive"}},
    beginning{"Rar!\x1A\x07"sv, {file_family::archive, "a RAR archive"}},
    beginning{"\x1F\x8B\x08"sv, {file_family::archive, "a gzip archive"}},
    beginning{"%PDF-"sv, {file_family::document, "a PDF document"}},
    beginning{"# VobSub index"sv,
              {file_family::other_subtitles, "the index of subtitles that are pictures (VobSub)"}},
    beginning{"WEBVTT"sv, {file_family::other_subtitles, "a file of WebVTT subtitles"}},
    beginning{"\xEF\xBB\xBF"
              "WEBVTT"sv,
              {file_family::other_subtitles, "a file of WebVTT subtitles"}},
    beginning{"[Script Info]"sv, {file_family::text_subtitles, "a file of SSA subtitles"}},
    beginning{"\xEF\xBB\xBF[Script Info]"sv,
              {file_family::text_subtitles, "a file of SSA subtitles"}},
};

signature by_beginning(bytes head) {
  for (const beginning& each : beginnings)
    if (has(head, each.bytes))
      return each.what;
  return std::nullopt;
}

/// "RIFF" and "FORM" files tell their kind after a length.
signature by_chunk(bytes head) {
  if (has(head, "RIFF") || has(head, "RF64")) {
    if (has(head, "AVI ", 8))
      return file_signature{file_family::film, "an AVI film"};
    if (has(head, "WAVE", 8))
      return file_signature{file_family::sound, "a WAV sound file"};
    if (has(head, "WEBP", 8))
      return file_signature{file_family::picture, "a WebP picture"};
  }
  if (has(head, "FORM") && has(head, "AIF", 8))
    return file_signature{file_family::sound, "an AIFF sound file"};
  return std::nullopt;
}

/// MP4 and QuickTime: a box with its length, its name, and of "ftyp" the brand.
signature by_box(bytes head) {
  if (has(head, "ftyp", 4)) {
    for (const std::string_view brand : {"heic"sv, "heix"sv, "mif1"sv, "avif"sv})
      if (has(head, brand, 8))
        return file_signature{file_family::picture, "a HEIF picture"};
    if (has(head, "M4A ", 8) || has(head, "M4B ", 8))
      return file_signature{file_family::sound, "an MPEG-4 sound file"};
    if (has(head, "qt  ", 8))
      return file_signature{file_family::film, "a QuickTime film"};
    return file_signature{file_family::film, "an MP4 film"};
  }
  for (const std::string_view box : {"moov"sv, "mdat"sv, "wide"sv, "skip"sv})
    if (has(head, box, 4))
      return file_signature{file_family::film, "a QuickTime film"};
  return std::nullopt;
}

/// A sync byte every 188 bytes; cameras put a time of 4 bytes before each packet.
signature by_packets(bytes head) {
  constexpr std::size_t looked_at = 4;
  const auto repeats = [head](std::size_t first, std::size_t distance) {
    for (std::size_t i = 0; i < looked_at; ++i)
      if (first + i * distance >= head.size() || head[first + i * distance] != 0x47)
        return false;
    return true;
  };
  if (repeats(0, 188) || repeats(4, 192))
    return file_signature{file_family::film,
                          "an MPEG transport stream, as cameras and receivers "
                          "write it"};
  return std::nullopt;
}

/// A unit that such a stream begins with: the parameters of a sequence, with a profile, or a
/// delimiter. Slices of MPEG video may have the same code.
bool is_h264_unit(std::uint8_t code, std::uint8_t next) {
  constexpr std::array<std::uint8_t, 7> profiles = {66, 77, 88, 100, 110, 122, 244};
  if (code == 0x27 || code == 0x47 || code == 0x67)
    return std::ranges::find(profiles, next) != profiles.end();
  return code == 9 && (next & 0x1F) == 0x10;
}

/// The first start code, zero bytes before it passed over.
signature by_start_code(bytes head) {
  const auto first = std::ranges::find_if(head, [](std::uint8_t byte) { return byte != 0; });
  const auto zeros = static_cast<std::size_t>(first - head.begin());
  if (zeros < 2 || zeros + 1 >= head.size() || *first != 1)
    return std::nullopt;
  const std::uint8_t code = head[zeros + 1];
  if (code == start_code::sequence_header)
    return file_signature{file_family::dvd_video, "an MPEG video stream"};
  if (code == pack_header)
    return file_signature{file_family::program_stream, "a program stream of MPEG packets"};
  if (code == 0xB0)  // visual object sequence
    return file_signature{file_family::film, "an MPEG-4 video stream"};
  const std::uint8_t next = zeros + 2 < head.size() ? head[zeros + 2] : 0;
  if (is_h264_unit(code, next))
    return file_signature{file_family::film, "an H.264 video stream"};
  if ((code == 0x40 || code == 0x46) && next == 1)  // parameters of a video, delimiter
    return file_signature{file_family::film, "an H.265 video stream"};
  return std::nullopt;
}

/// A frame, and another where it ends, or nothing: the mark at the beginning of a UTF-16 text is
/// the beginning of a frame, too.
signature by_frames(bytes head) {
  const auto frame = read_audio_frame(head);
  const bool ends = frame && frame->size == head.size();
  const bool goes_on =
      frame && frame->size < head.size() && read_audio_frame(head.subspan(frame->size));
  if (frame && !ends && !goes_on)
    return std::nullopt;
  switch (frame ? frame->kind : kind_of_first_bytes(head)) {
    case audio_kind::ac3:
      return file_signature{file_family::dvd_sound, "AC-3 sound"};
    case audio_kind::mpeg_layer_1:
    case audio_kind::mpeg_layer_2:
      return file_signature{file_family::dvd_sound, "MPEG sound"};
    case audio_kind::dts:
      return file_signature{file_family::dvd_sound, "DTS sound"};
    case audio_kind::mpeg_layer_3:
      return file_signature{file_family::sound, "an MP3 file"};
    case audio_kind::eac3:
      return file_signature{file_family::sound, "E-AC-3 sound"};
    case audio_kind::aac:
      return file_signature{file_family::sound, "AAC sound"};
    default:
      return std::nullopt;
  }
}

signature by_bitmap_header(bytes head) {
  // Its header has one of these sizes.
  constexpr std::array<std::uint8_t, 5> sizes = {12, 40, 64, 108, 124};
  if (has(head, "BM") && head.size() > 17 && std::ranges::find(sizes, head[14]) != sizes.end() &&
      head[15] == 0)
    return file_signature{file_family::bitmap, "a Windows bitmap"};
  return std::nullopt;
}

/// "1", a line end, and a line of times.
signature by_first_cue(bytes head) {
  constexpr std::size_t far = 64;
  const std::string_view text(reinterpret_cast<const char*>(head.data()),
                              std::min(head.size(), far));
  const std::size_t arrow = text.find(" --> ");
  const std::size_t digits = text.find_first_of("0123456789");
  if (arrow != std::string_view::npos && digits < arrow &&
      text.find_first_not_of("0123456789:,. \r\n\xEF\xBB\xBF") == arrow + 1)
    return file_signature{file_family::text_subtitles, "a file of SubRip subtitles"};
  return std::nullopt;
}

signature by_volume(bytes head) {
  constexpr std::size_t descriptors = std::size_t{16} * 2048;
  if (has(head, "CD001", descriptors + 1) || has(head, "BEA01", descriptors + 1))
    return file_signature{file_family::disc_image, "the image of a disc"};
  return std::nullopt;
}

}  // namespace

std::optional<file_signature> signature_of(bytes head) {
  // The surest first: a stream of sound could begin with any bytes.
  for (const auto known : {by_chunk, by_box, by_packets, by_start_code, by_bitmap_header,
                           by_beginning, by_frames, by_first_cue, by_volume})
    if (const signature found = known(head))
      return found;
  return std::nullopt;
}

}  // namespace corvane
