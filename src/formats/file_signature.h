// What a file is by its first bytes: the streams that a disc is made of, and what people have
// instead or take for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace corvane {

enum class file_family : std::uint8_t {
  dvd_video,       ///< an MPEG-1 or MPEG-2 video stream
  dvd_sound,       ///< AC-3, MPEG audio layer I or II, DTS
  program_stream,  ///< packets with video and sound inside: *.vob, *.mpg
  film,            ///< pictures and sound in a form that no disc takes: MP4, Matroska, H.264
  sound,           ///< sound in a form that no disc takes: MP3, WAV
  jpeg,
  bitmap,  ///< a Windows bitmap
  picture,
  text_subtitles,
  other_subtitles,  ///< those that cannot be read as texts
  project,
  disc_table,  ///< VIDEO_TS.IFO and its like
  disc_image,
  archive,
  document,
};

struct file_signature {
  file_family family;
  std::string_view name;  ///< as it is called in a sentence: "an MP4 film"

  bool operator==(const file_signature&) const = default;
};

/// From as many bytes everything is known that can be; fewer serve for all but images of discs.
inline constexpr std::size_t signature_bytes = 36 * 1024;

/// Returns nullopt if the bytes tell of nothing that is known here, as those of most texts.
std::optional<file_signature> signature_of(std::span<const std::uint8_t> head);

}  // namespace corvane
