#include "runner/tools/tool_outcomes.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvane {
namespace {

using severity = finding_severity;

constexpr std::string_view look_at_log = "Look in the log at what was said before";
constexpr std::string_view no_whole_disc = "There is no disc, or a part of it is missing";

constexpr auto outcomes = std::to_array<tool_outcome>({
    {.rule = "mplex-audio-stops",
     .subject = "mplex takes each sound to its end",
     .wanted = "a sound that is read to its end",
     .consequence = "From there on it is silent",
     .remedy = "Encode the sound again, or cut it with a tool that keeps frames whole",
     .source = "mplex 2.1.0, measured: it ends with status 0"},
    {.rule = "mplex-audio-tail",
     .severity = severity::note,
     .subject = "A sound ends with its last frame",
     .wanted = "nothing behind the last frame",
     .consequence = "Nothing: they are left out",
     .remedy = "Nothing need be done",
     .source = "mplex 2.1.0, measured"},
    {.rule = "spumux-font",
     .severity = severity::note,
     .subject = "The font of a text subtitle is installed",
     .wanted = "the font that was chosen",
     .consequence = "The text looks otherwise than was chosen",
     .remedy = "Choose a font that is installed, or the font's own file",
     .source = "spumux 0.7.2, measured: fontconfig gives it another font"},
    {.rule = "spumux-subtitle",
     .subject = "spumux puts all texts of a subtitle on the disc",
     .wanted = "every text of the file, as it is written there",
     .consequence = "Texts of the subtitle are missing",
     .remedy = "Correct the subtitle's file or its settings; the preview shows each text",
     .source = "spumux 0.7.2, measured: it ends with status 0"},
    {.rule = "spumux-buttons",
     .subject = "spumux puts the picture of a menu's buttons into its stream",
     .wanted = "a picture of the buttons before the menu's end",
     .consequence = "The buttons would not be seen",
     .remedy = "Open the menu in the editor and store its buttons again",
     .source = "spumux 0.7.2, measured: it ends with status 0"},
    {.rule = "still-incomplete",
     .subject = "A still video holds the pictures that it was to be made of",
     .wanted = "so many pictures as were asked for, to the last byte",
     .consequence = "A menu made of it would be broken, or the run fail",
     .remedy = "Make the still again; look whether its disk is full",
     .source = "mpeg2enc 2.1.0, measured: it ends with status 0"},
    {.rule = "still-aspect",
     .subject = "A still video states proportions that a DVD knows",
     .wanted = "4:3 or 16:9",
     .consequence = "A menu made of it is taken as 4:3, and may look squeezed in some players",
     .remedy = "See that you may write in the folder of the still, and make it again",
     .source = "mpeg2enc 2.1.0, measured: it writes code 1, square pixels"},
    {.rule = "tool-error",
     .subject = "No tool prints an error",
     .wanted = "a run without error lines",
     .consequence = no_whole_disc,
     .remedy = look_at_log,
     .source = "a line that begins with ERR or **ERROR"},
    {.rule = "tool-warning",
     .severity = severity::warning,
     .subject = "No tool prints a warning of which nothing is known",
     .wanted = "a run without such warnings",
     .consequence = "Perhaps nothing",
     .remedy = "Look in the log at what was said around it, and at this place on the finished disc",
     .source = "a line of mplex, spumux or dvdauthor that begins with WARN or ++ WARN"},
    {.rule = "tool-failed",
     .subject = "Each tool ends well",
     .wanted = "an end with status 0",
     .consequence = no_whole_disc,
     .remedy = look_at_log,
     .source = "the system, which tells how a program ended"},
    {.rule = "step-failed",
     .subject = "Each step of the work script is done",
     .wanted = "folders that can be made, files that can be removed and renamed",
     .consequence = no_whole_disc,
     .remedy = "See that you may write in the output folder, and author the disc again",
     .source = "the work script"},
    {.rule = "run-failed",
     .subject = "A run comes to its end",
     .wanted = "the end of the work script",
     .consequence = no_whole_disc,
     .remedy = look_at_log,
     .source = "the log of the run"},
    {.rule = "run-stopped",
     .severity = severity::note,
     .subject = "A run is not stopped",
     .wanted = "the end of the work script",
     .consequence = "There is no new disc",
     .remedy = "Author the disc again",
     .source = "the log of the run"},
});

}  // namespace

std::span<const tool_outcome> tool_outcomes() {
  return outcomes;
}

finding outcome_finding(std::string_view rule, finding_item item, std::string found) {
  const auto* const kind =
      std::find_if(outcomes.begin(), outcomes.end(),
                   [rule](const tool_outcome& one) { return one.rule == rule; });
  finding f;
  f.rule = rule;
  f.item = item;
  f.found = std::move(found);
  if (kind == outcomes.end())
    return f;
  f.severity = kind->severity;
  f.consequence = kind->consequence;
  f.remedy = kind->remedy;
  return f;
}

}  // namespace corvane
