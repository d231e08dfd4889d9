#include "runner/tools/mplex.h"

#include "formats/numbers.h"
#include "runner/tools/known_messages.h"
#include "runner/tools/spumux_subtitles.h"
#include "runner/tools/tool_outcomes.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view stopped = "Data follows end of last recogniseable MPEG audio frame";

constexpr double largest_file = 1e15;

/// What no header tells: of usual sound, a second.
constexpr double usual_bit_rate = 192000;

finding about_audio(std::string_view rule, finding_item item, const muxed_audio& audio, int number,
                    std::string found) {
  finding f = outcome_finding(rule, part_of(item, finding_item::part_kind::audio, number),
                              std::move(found));
  f.file = audio.file;
  f.byte = audio.bytes;
  return f;
}

/// `left`: how many bytes mplex did not take.
finding audio_that_stops(finding_item item, const muxed_audio& audio, int number, double bit_rate,
                         std::uint64_t left) {
  finding f = about_audio("mplex-audio-stops", item, audio, number,
                          "mplex stopped reading the sound at byte " + std::to_string(audio.bytes) +
                              ", where something stands that is no frame of it; " +
                              std::to_string(left) + " bytes follow");
  f.seconds = static_cast<double>(audio.bytes) * 8 / bit_rate;
  return f;
}

finding audio_with_a_tail(finding_item item, const muxed_audio& audio, int number,
                          std::uint64_t left) {
  return about_audio(
      "mplex-audio-tail", item, audio, number,
      std::to_string(left) + " bytes follow the last frame of the sound, as a tag does");
}

finding unexplained_stop(finding_item item) {
  finding f = outcome_finding("mplex-audio-stops", part_of(item, finding_item::part_kind::audio),
                              "mplex stopped reading a sound before its file's end");
  f.severity = finding_severity::warning;
  f.consequence = "From there on it may be silent";
  return f;
}

}  // namespace

std::vector<muxed_audio> muxed_audio_in(std::string_view printed) {
  std::vector<muxed_audio> streams;
  std::string measured;
  bool in_audio_header = false;
  std::vector<std::string_view> parts;
  while (!printed.empty()) {
    const std::string_view line = take_printed_line(printed);
    if (is_message(line, "INFO: [%] Scanning for header info: ~ stream ~ (~", parts)) {
      in_audio_header = parts[0] == "Audio";
      if (!in_audio_header)
        continue;
      muxed_audio& audio = streams.emplace_back();
      audio.id = parts[1];
      audio.file = parts[2].substr(0, parts[2].rfind(')'));
    } else if (in_audio_header && is_message(line, "INFO: [%] Bit rate ~(~ kbit/sec)", parts)) {
      streams.back().bit_rate = 1000 * leading_number(parts[1]);
    } else if (is_message(line, "INFO: [%] AUDIO_STATISTICS: ~", parts)) {
      measured = parts[0];
    } else if (is_message(line, "INFO: [%] Audio stream length ~ bytes.", parts)) {
      const auto stream = std::find_if(
          streams.begin(), streams.end(),
          [&measured](const muxed_audio& one) { return one.id == measured && one.bytes == 0; });
      if (stream != streams.end())
        stream->bytes =
            static_cast<std::uint64_t>(std::clamp(leading_number(parts[0]), 0.0, largest_file));
    }
  }
  return streams;
}

std::vector<finding> mplex_ways::explain(const tool_call& call, const tool_result& result,
                                         tool_files& files) const {
  if (result.printed.find(stopped) == std::string::npos)
    return {};
  const finding_item item = item_of_call(call.words, call.output);
  std::vector<finding> found;
  int number = 0;
  for (const muxed_audio& audio : muxed_audio_in(result.printed)) {
    ++number;
    const std::uintmax_t size = files.size_of(audio.file).value_or(0);
    if (!audio.id.starts_with('c') || audio.bytes == 0 || size <= audio.bytes)
      continue;
    const std::uint64_t left = size - audio.bytes;
    const double bit_rate = audio.bit_rate > 0 ? audio.bit_rate : usual_bit_rate;
    found.push_back(static_cast<double>(left) * 8 >= bit_rate
                        ? audio_that_stops(item, audio, number, bit_rate, left)
                        : audio_with_a_tail(item, audio, number, left));
  }
  if (found.empty())
    found.push_back(unexplained_stop(item));
  return found;
}

}  // namespace corvane
