#include "runner/tools/mplex.h"

#include "formats/numbers.h"
#include "runner/tools/known_messages.h"
#include "runner/tools/spumux_subtitles.h"

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

finding about_audio(finding_item item, const muxed_audio& audio, int number) {
  finding f;
  f.item = item;
  f.item.part = finding_item::part_kind::audio;
  f.item.part_number = number;
  f.file = audio.file;
  f.byte = audio.bytes;
  return f;
}

/// `left`: how many bytes mplex did not take.
finding audio_that_stops(finding f, double bit_rate, std::uint64_t left) {
  f.rule = "mplex-audio-stops";
  f.severity = finding_severity::error;
  f.seconds = static_cast<double>(*f.byte) * 8 / bit_rate;
  f.found = "mplex stopped reading the sound at byte " + std::to_string(*f.byte) +
            ", where something stands that is no frame of it; " + std::to_string(left) +
            " bytes follow";
  f.consequence = "From there on it is silent";
  f.remedy = "Encode the sound again, or cut it with a tool that keeps frames whole";
  return f;
}

finding audio_with_a_tail(finding f, std::uint64_t left) {
  f.rule = "mplex-audio-tail";
  f.severity = finding_severity::note;
  f.found = std::to_string(left) + " bytes follow the last frame of the sound, as a tag does";
  f.consequence = "Nothing: they are left out";
  f.remedy = "Nothing need be done";
  return f;
}

finding unexplained_stop(finding_item item) {
  finding f;
  f.rule = "mplex-audio-stops";
  f.severity = finding_severity::warning;
  f.item = item;
  f.item.part = finding_item::part_kind::audio;
  f.found = "mplex stopped reading a sound before its file's end";
  f.consequence = "From there on it may be silent";
  f.remedy = "Encode the sound again, or cut it with a tool that keeps frames whole";
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
    finding f = about_audio(item, audio, number);
    found.push_back(static_cast<double>(left) * 8 >= bit_rate
                        ? audio_that_stops(std::move(f), bit_rate, left)
                        : audio_with_a_tail(std::move(f), left));
  }
  if (found.empty())
    found.push_back(unexplained_stop(item));
  return found;
}

}  // namespace corvane
