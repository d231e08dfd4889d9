// What is wrong with a disc, or worth knowing about it: found in the material before a run, on the
// finished disc, or said by a tool. One type for all three, so that windows, console, log and JSON
// print the same.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

enum class finding_severity {
  note,     ///< worth knowing; the disc is right
  warning,  ///< some players have trouble, or the disc is probably not what was meant
  error,    ///< the run fails, or the disc is wrong
};

/// What of a disc a finding is about: title 2, audio 1.
struct finding_item {
  enum class whole_kind { disc, title, menu, disc_menu };  ///< the last: of the whole disc (VMGM)
  enum class part_kind { whole, video, audio, subtitle, chapter, button, command };

  whole_kind whole = whole_kind::disc;
  int number = 0;  ///< of the title or menu among its kind, 1-based
  part_kind part = part_kind::whole;
  int part_number = 0;  ///< of the audio, subtitle, chapter or button, 1-based; 0: there is one

  bool operator==(const finding_item&) const = default;
};

/// The part of that kind of the same title or menu.
inline finding_item part_of(finding_item item, finding_item::part_kind what, int number = 0) {
  item.part = what;
  item.part_number = number;
  return item;
}

struct finding {
  std::string rule;  ///< identifier that stays from version to version: "audio-sample-rate"
  finding_severity severity = finding_severity::error;
  finding_item item;
  std::string file;                   ///< native path of the file it was found in; may be empty
  std::optional<double> seconds;      ///< where in the stream or title
  std::optional<std::uint64_t> byte;  ///< where in the file, 0-based
  // Sentences without their full stop.
  std::string found;
  std::string wanted;       ///< what it must be
  std::string consequence;  ///< what a viewer would see
  std::string remedy;       ///< what to do

  bool operator==(const finding&) const = default;
};

/// In the order of their enumerations.
inline constexpr std::array<std::string_view, 3> severity_names = {"note", "warning", "error"};
inline constexpr std::array<std::string_view, 4> whole_names = {"disc", "title", "menu",
                                                                "disc menu"};
inline constexpr std::array<std::string_view, 7> part_names = {
    "", "video", "audio", "subtitle", "chapter", "button", "command"};

/// "error", "warning", "note".
const char* name_of(finding_severity severity);

constexpr std::string_view name_of(finding_item::whole_kind whole) {
  return whole_names[static_cast<std::size_t>(whole)];
}
/// Empty for the whole.
constexpr std::string_view name_of(finding_item::part_kind part) {
  return part_names[static_cast<std::size_t>(part)];
}

/// How many of them are of this severity.
std::size_t count_of(const std::vector<finding>& findings, finding_severity severity);

/// "title 2, audio 1, 00:01:05"; "disc" for the whole. Times are cut to seconds.
std::string place_text(const finding& f);

/// "error: title 2, audio 1, 00:01:05: the sound stops for 0.4 s." All in one line, whatever its
/// texts hold.
std::string line_of(const finding& f);

/// The line, then file, what it must be, consequence, remedy and rule, a line each, indented.
std::string text_of(const finding& f);

/// A JSON array of objects with all fields; of what is not set there is no member. UTF-8; what is
/// not stands as U+FFFD.
std::string json_of(const std::vector<finding>& findings);

}  // namespace corvane
