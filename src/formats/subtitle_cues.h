// The cues of a text subtitle file as spumux reads them: when each is shown, and what of its text.
//
// Formats are told apart as spumux does, by the first hundred lines. The usual ones are read; of
// the rest (RealText, PJS, MPSub, AQTitle, JACOsub, SubRip 0.9) only the name is known. A file may
// hold anything: the time taken grows with its length alone.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

enum class subtitle_format {
  unknown,     ///< none that spumux reads
  subrip,      ///< "00:00:01,000 --> 00:00:02,000"
  microdvd,    ///< "{25}{50}text", in pictures
  subviewer,   ///< "00:00:01.00,00:00:02.00"
  subviewer2,  ///< "{T 00:00:01:00"
  ssa,         ///< "Dialogue: ..."
  sami,        ///< "<SAMI>"
  vplayer,     ///< "00:00:01:text"
  other,       ///< one whose cues are not read here
};

/// Where a stretch of a cue's text stands in the file, in bytes.
struct text_place {
  std::size_t at = 0, size = 0;
};

struct text_cue {
  double begin = 0;           ///< seconds
  std::optional<double> end;  ///< seconds, not after `begin` where the file says so; not set: none
  int line = 0;               ///< of the file, where its times stand; 1-based
  std::vector<std::string> text;  ///< its lines as spumux draws them
  std::string lost;  ///< what stood between "<" and ">" and was left out, but for the usual tags;
                     ///< the first such piece
  /// The text as it stands in the file, in its order: of SubRip and SubViewer 2 each line, of the
  /// others all of it with the signs that part its lines.
  std::vector<text_place> places{};
};

struct subtitle_cues {
  subtitle_format format = subtitle_format::unknown;
  std::vector<text_cue> cues;  ///< in the order of the file; those without a text are left out
};

/// Lines that spumux can draw of a cue; it drops the rest.
inline constexpr std::size_t most_cue_lines = 16;

/// Cues that are read of a file; a long film has two thousand.
inline constexpr std::size_t most_cues = 100'000;

/// Whether what stands between "<" and ">" is a tag that players know: leaving it out loses no
/// text.
bool is_usual_tag(std::string_view inner);

/// A line as spumux draws it in SubRip and SAMI: without what stands between "<" and ">", or behind
/// a "<" that has no end. The first such piece that is no usual tag goes into `lost`, if that is
/// empty.
std::string without_tags(std::string_view line, std::string& lost);

/// A text as spumux draws it in SSA: without its "{\...}".
std::string without_blocks(std::string_view text);

/// `text`: the file's, in a set in which ASCII stands for itself. `rate`: pictures a second, for
/// times that are counted in pictures; above 0.
subtitle_cues read_subtitle_cues(std::string_view text, double rate);

}  // namespace corvane
