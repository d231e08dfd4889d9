// The rules that material and discs are held against: what is looked at, how bad it is, what a
// viewer would see, what to do. docs/rules.md is written from this table.
//
// Each family of rules stands, with its part of the table, in a file of its own (stream_rules.cpp,
// ...); a rule's identifier never changes and is never used for another rule.
#pragma once

#include "disc/finding.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct rule {
  std::string_view id;  ///< small letters and "-"
  finding_severity severity = finding_severity::error;
  // Sentences without their full stop; `wanted` continues "It must be" or stands alone.
  std::string_view subject;      ///< what it looks at
  std::string_view wanted;       ///< what must be; a finding can say it more exactly
  std::string_view consequence;  ///< what a viewer would see
  std::string_view remedy;       ///< what to do
  std::string_view source;       ///< where the limit comes from
};

// Sources of more than one family.
inline constexpr std::string_view dvd_video_pictures =
    "DVD Forum, book of the DVD-Video format: video streams";
inline constexpr std::string_view dvd_video_sound =
    "DVD Forum, book of the DVD-Video format: audio streams";
inline constexpr std::string_view dvd_video_tables =
    "DVD Forum, book of the DVD-Video format: tables of titles and chapters, "
    "stream attributes";
inline constexpr std::string_view mpeg_video = "ISO/IEC 13818-2 and 11172-2 (MPEG video)";
inline constexpr std::string_view main_profile_main_level =
    "ISO/IEC 13818-2, main profile at main level; DVD Forum, book of the DVD-Video format: video "
    "streams";
inline constexpr std::string_view sound_frames =
    "ETSI TS 102 366 (AC-3) and ISO/IEC 11172-3 (MPEG audio): frames";
inline constexpr std::string_view asked_and_streams =
    "what the project asks for, and the facts of its streams";
inline constexpr std::string_view mplex_measured = "mplex 2.1.0, measured";

struct rule_family {
  std::string_view name;
  std::span<const rule> rules;
};

/// All rules, in the order of docs/rules.md.
std::vector<rule_family> rule_families();

/// A finding under a rule of `rules`, which must hold `id`. An empty `wanted` stands for the
/// rule's own.
finding finding_of(std::span<const rule> rules, std::string_view id, finding_item item,
                   std::string found, std::string wanted = {});

/// The text of docs/rules.md.
std::string rules_document();

}  // namespace corvane
