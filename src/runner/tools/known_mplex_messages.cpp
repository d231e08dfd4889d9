#include "runner/tools/message_tables.h"

#include <array>

namespace corvane {
namespace {

using severity = finding_severity;
using part = finding_item::part_kind;

constexpr std::string_view stutters = "Players would stop or stutter there";
constexpr std::string_view lower_rate =
    "Encode the video with a lower peak bit rate: video and all audio together may have 9.8 Mb/s; "
    "an A/V delay of a second or more does the same harm";
constexpr std::string_view nothing_made = "There is no disc";
constexpr std::string_view encode_again =
    "Encode it again, or cut it with a tool that keeps frames whole";

// In the brackets stands the name by which it was called: "mplex.exe".
constexpr auto mplex_table = std::to_array<known_message>({
    {.rule = "mplex-underrun",
     .pattern = "**ERROR: [%] MUX STATUS: Frame data under-runs detected",
     .severity = severity::error,
     .found = "its streams need more data at once than a DVD can be read",
     .consequence = stutters,
     .remedy = lower_rate},
    {.rule = "mplex-underrun",
     .pattern = "**ERROR: [%] Too many frame drops",
     .severity = severity::error,
     .found = "its streams need more data at once than a DVD can be read, in so many places that "
              "mplex gave up",
     .consequence = stutters,
     .remedy = lower_rate},
    {.rule = "mplex-late-data",
     .pattern = "++ WARN: [%] Stream ~: data will arrive too late",
     .severity = severity::warning,
     .found = "data of stream {1} comes too late",
     .consequence = stutters,
     .remedy = lower_rate},
    {.rule = "mplex-rate-too-high",
     .pattern = "++ WARN: [%] Target data rate lower than computed requirement",
     .severity = severity::warning,
     .found = "the bit rates that its streams name are together higher than a DVD's 10.08 Mb/s",
     .consequence = "Nothing, as long as no place really needs so much",
     .remedy = "When mplex tells of under-runs too, encode the video with a lower peak bit rate"},
    {.rule = "mplex-unknown-file",
     .pattern = "**ERROR: [%] File ~ unrecogniseable!",
     .severity = severity::error,
     .found = "{1} is no stream that mplex knows",
     .consequence = nothing_made,
     .remedy = "Use MPEG video and AC-3, MPEG layer 2 or DTS audio, each as an elementary stream"},
    {.rule = "mplex-cannot-open",
     .pattern = "**ERROR: [%] Unable to open file ~ for reading.",
     .severity = severity::error,
     .found = "{1} cannot be opened",
     .consequence = nothing_made,
     .remedy = "See whether the file is still there and may be read"},
    {.rule = "mplex-cannot-read",
     .pattern = "**ERROR: [%] Unable to read from ~",
     .severity = severity::error,
     .found = "there is nothing to read in {1}",
     .consequence = nothing_made,
     .remedy = "Replace the file: it is empty, or its disk has a fault"},
    {.rule = "mplex-cannot-write",
     .pattern = "**ERROR: [%] Could not open for writing: ~",
     .severity = severity::error,
     .found = "{1} cannot be written",
     .consequence = nothing_made,
     .remedy = "Choose an output folder in which you may write"},
    {.rule = "mplex-disk-full",
     .pattern = "**ERROR: [%] Failed write: ~",
     .severity = severity::error,
     .found = "{1} could not be written whole",
     .consequence = nothing_made,
     .remedy = "Make room on the disk of the output folder"},
    {.rule = "mplex-sequence-end",
     .pattern = "**ERROR: [%] Need to split output",
     .severity = severity::error,
     .found = "its video has a sequence end code before its end",
     .consequence = "What follows the code would be missing",
     .remedy = "Join its pieces with a tool that removes the end codes, or encode it in one piece",
     .part = part::video},
    {.rule = "mplex-sequence-end",
     .pattern = "++ WARN: [%] Sequence end marker found in video stream",
     .severity = severity::warning,
     .found = "its video has a sequence end code before its end",
     .consequence = "Some players stop there",
     .remedy = "Join its pieces with a tool that removes the end codes, or encode it in one piece",
     .part = part::video},
    {.rule = "mplex-no-sequence-header",
     .pattern = "++ WARN: [%] No seq. header starting new sequence after seq. end!",
     .severity = severity::warning,
     .found = "its video goes on after a sequence end code without a sequence header",
     .consequence = "Some players stop there",
     .remedy = "Encode it in one piece",
     .part = part::video},
    {.rule = "mplex-no-sequence-header",
     .pattern = "++ WARN: [%] Sequence end without following I-frame!",
     .severity = severity::warning,
     .found = "its video goes on after a sequence end code without an I picture",
     .consequence = "Players show broken pictures there",
     .remedy = "Encode it in one piece",
     .part = part::video},
    {.rule = "mplex-damaged-video",
     .pattern = "**ERROR: [%] Illegal MPEG stream at offset",
     .severity = severity::error,
     .found = "its video is damaged",
     .consequence = nothing_made,
     .remedy = "Encode it again",
     .part = part::video},
    {.rule = "mplex-damaged-audio",
     .pattern = "**ERROR: [%] Can't find next ~ frame: @ ~ we have",
     .severity = severity::error,
     .found = "its {1} sound is damaged at byte {2}",
     .consequence = nothing_made,
     .remedy = encode_again,
     .part = part::audio,
     .byte_from = 2},
    {.rule = "mplex-bad-header",
     .pattern = "**ERROR: [%] Invalid ~ stream header.",
     .severity = severity::error,
     .found = "the {1} does not begin as such a stream does",
     .consequence = nothing_made,
     .remedy = "Encode it again"},
    {.rule = "mplex-last-frame",
     .pattern = "++ WARN: [%] Discarding incomplete final frame",
     .severity = severity::note,
     .found = "the last frame of its sound is not whole and is left out",
     .consequence = "The sound ends a few hundredths of a second early",
     .remedy = "Nothing need be done",
     .part = part::audio},
    {.rule = "mplex-gave-up",
     .pattern = "**ERROR: [%] INTERNAL ERROR: ~",
     .severity = severity::error,
     .found = "mplex gave up: {1}",
     .consequence = nothing_made,
     .remedy = "Most often a stream is damaged: encode it again"},
});

}  // namespace

std::span<const known_message> mplex_messages() {
  return mplex_table;
}

}  // namespace corvane
