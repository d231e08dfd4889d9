#include "import/encoder_complaints.h"

#include "formats/text.h"

#include <algorithm>
#include <array>

namespace corvane {
namespace {

/// How such lines begin, behind the name of the part that prints them ("[ac3 @ 0x55cb] ").
constexpr std::array<std::string_view, 6> complaints = {"av_interleaved_write_frame(): ",
                                                        "Error writing trailer",
                                                        "Error closing file",
                                                        "Error muxing a packet",
                                                        "Error submitting a packet to the muxer",
                                                        "Error writing to output"};

std::string_view without_speaker(std::string_view line) {
  line = trim(line);
  if (line.starts_with('['))
    if (const std::size_t end = line.find("] "); end != std::string_view::npos)
      line.remove_prefix(end + 2);
  return line;
}

/// The system's words stand last.
std::string reason_of(std::string_view line) {
  constexpr std::string_view full = "No space left on device";
  if (line.ends_with(full))
    return "the disk is full";
  const std::size_t colon = line.rfind(": ");
  if (colon == std::string_view::npos)
    return "ffmpeg could not write all of it";
  return "ffmpeg could not write all of it: " + std::string(trim(line.substr(colon + 2)));
}

}  // namespace

std::string writing_trouble_in(std::string_view output) {
  while (!output.empty()) {
    const std::size_t end = std::min(output.find_first_of("\r\n"), output.size());
    const std::string_view line = without_speaker(output.substr(0, end));
    if (std::ranges::any_of(complaints,
                            [line](std::string_view one) { return line.starts_with(one); }))
      return reason_of(line);
    output.remove_prefix(std::min(end + 1, output.size()));
  }
  return {};
}

}  // namespace corvane
