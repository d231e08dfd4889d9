#include "examine/subtitle_text_rules.h"

#include "examine/subtitle_characters.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/subtitle_cues.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "platform/text/charset.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <map>
#include <numeric>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

using severity = finding_severity;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

constexpr std::size_t most_of_a_rule = 20;

// What spumux does with times, in seconds.
constexpr double given_length = 6;      // to a cue without one; also the most of one that is cut
constexpr double shared_overlap = 0.2;  // divided between the two cues

constexpr std::string_view spumux_source = "spumux 0.7.2, its reader of subtitles";
constexpr std::string_view edit_file = "correct the cue in the subtitle file with a text editor";

constexpr std::string_view clean_file =
    "choose \"clean...\" in the findings window, which writes a copy without it; or correct the "
    "cue "
    "in the subtitle file with a text editor";

constexpr std::array subtitle_text_rules_table = {
    rule{
        "subtitle-unreadable", severity::error, "spumux can read each subtitle file",
        "a text file in a subtitle format, in the character set of its settings",
        "nothing: the run fails at this subtitle, or its letters come out wrong",
        "put the file back, or add it again in \"add/edit subtitles\" and choose its character set",
        spumux_source},
    rule{"subtitle-no-cues", severity::error, "A subtitle file has cues",
         "at least one cue with a text", "nothing: the run fails at this subtitle",
         "choose another file in \"add/edit subtitles\"", spumux_source},
    rule{"subtitle-not-examined", severity::note,
         "The cues of a subtitle file are read by this program, too",
         "SubRip, MicroDVD, SubViewer, SSA, SAMI or VPlayer",
         "nothing: spumux reads the file; but neither are its texts and times looked at before a "
         "run, nor held against the finished disc",
         "look at it in the preview of \"add/edit subtitles\", or convert it to SubRip",
         "this program"},
    rule{"subtitle-markup-shown", severity::warning, "Subtitles hold no markup that spumux draws",
         "text without this markup", "the markup as letters in the subtitle", clean_file,
         spumux_source},
    rule{"subtitle-text-lost", severity::warning, "No text of a subtitle stands between < and >",
         "text without \"<\" and \">\"", "the subtitle without this text", clean_file,
         spumux_source},
    rule{
        "subtitle-rate-line", severity::warning,
        "A MicroDVD file does not begin with its rate of pictures",
        "a file whose first cue is a text; the rate is set in \"add/edit subtitles\"",
        "a number at the beginning of the title",
        "choose \"clean...\" in the findings window; or delete the first line of the subtitle file "
        "and set this frame rate in \"add/edit subtitles\"",
        spumux_source},
    rule{"subtitle-wide-character", severity::warning,
         "The characters of subtitles are of the Basic Multilingual Plane",
         "characters up to U+FFFF", "other letters in the place of this character", clean_file,
         "spumux 0.7.2, measured"},
    rule{"subtitle-too-many-lines", severity::warning, "A cue has at most 16 lines",
         "at most 16 lines", "the subtitle without its last lines", edit_file, spumux_source},
    rule{"subtitle-cue-without-length", severity::warning, "A cue ends after it begins",
         "an end after the beginning", "the subtitle for six seconds, or until the next one begins",
         edit_file, spumux_source},
    rule{"subtitle-cue-overlap", severity::warning, "Cues do not stand in each other's time",
         "an end before the next cue begins",
         "the first of the two only until the second begins, and for six seconds at most",
         edit_file, spumux_source},
    rule{"subtitle-cue-cut", severity::warning,
         "A cue that lasts until the next one is not longer than six seconds",
         "an end some hundredths of a second before the next cue begins",
         "the subtitle for six seconds only", edit_file, spumux_source},
    rule{"subtitle-cue-order", severity::note, "Cues stand in the order of their times",
         "cues in the order of their times",
         "nothing: spumux sorts them; but a cue at a wrong time is often a typing error", edit_file,
         spumux_source},
    rule{"subtitle-after-end", severity::warning, "Cues begin before the title ends",
         "a beginning before the end of the title", "never this subtitle",
         "choose the right subtitle file, or delete the cue; if all come too late, check the frame "
         "rate in \"add/edit subtitles\"",
         "this program"},
    rule{"subtitle-font-missing", severity::warning,
         "The font of a subtitle is installed (a note for the font that settings begin with)",
         "a font that is installed on this system",
         "the subtitles in another font, which the system picks",
         "choose an installed font in \"add/edit subtitles\"", "spumux 0.7.2 with fontconfig"},
    rule{"subtitle-character-missing", severity::warning,
         "The font of a subtitle has all of its characters", "characters that the font has",
         "a \"_\" in the place of each of these characters",
         "choose another font in \"add/edit subtitles\", one that has them; or write other "
         "characters in the subtitle file",
         "spumux 0.7.2, measured"},
};

// Markup ------------------------------------------------------------------------------------------

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// "{\an8}", or "{y:i}" and its like.
std::string in_braces(std::string_view line) {
  for (auto at = line.find('{'); at != std::string_view::npos; at = line.find('{', at + 1)) {
    const std::string_view inner = line.substr(at + 1);
    const bool is_code =
        inner.starts_with('\\') || (inner.size() > 1 && is_letter(inner[0]) && inner[1] == ':');
    if (!is_code)
      continue;
    const auto end = line.find('}', at);
    return end == std::string_view::npos ? std::string()
                                         : std::string(line.substr(at, end + 1 - at));
  }
  return {};
}

/// "&amp;", "&#39;".
std::string entity_in(std::string_view line) {
  constexpr std::array names = {"amp", "lt", "gt", "quot", "apos", "nbsp"};
  constexpr std::size_t longest = 8;
  for (auto at = line.find('&'); at != std::string_view::npos; at = line.find('&', at + 1)) {
    const std::string_view inner = line.substr(at + 1, longest);
    const std::string_view name = inner.substr(0, inner.find(';'));
    const bool is_number =
        name.size() > 1 && name[0] == '#' &&
        name.substr(1).find_first_not_of("0123456789xXabcdefABCDEF") == std::string_view::npos;
    if (name.size() < inner.size() &&
        (is_number || std::find(names.begin(), names.end(), name) != names.end()))
      return std::string(line.substr(at, name.size() + 2));
  }
  return {};
}

/// "\h", and "\N" where it is not the format's own line break.
std::string escape_in(std::string_view line) {
  for (const char* const escape : {"\\h", "\\N"})
    if (line.find(escape) != std::string_view::npos)
      return escape;
  return {};
}

/// "<i>" where spumux does not leave it out.
std::string tag_in(std::string_view line) {
  constexpr std::array tags = {"<i>", "<b>", "<u>", "</i>", "</b>", "</u>", "<font ", "</font>"};
  const std::string small = lower(line);
  for (const std::string_view tag : tags)
    if (const auto at = small.find(tag); at != std::string::npos)
      return std::string(line.substr(at, line.find('>', at) == std::string_view::npos
                                             ? std::string_view::npos
                                             : line.find('>', at) + 1 - at));
  return {};
}

/// The first markup in a line that spumux draws as it stands.
std::string markup_in(std::string_view line) {
  for (const auto& find : {in_braces, entity_in, escape_in, tag_in})
    if (std::string found = find(line); !found.empty())
      return found;
  return {};
}

/// The first character beyond the Basic Multilingual Plane, as "U+1F600".
std::string wide_character_in(std::string_view line) {
  std::string wide;
  for_each_character(line, [&wide](std::uint32_t code) {
    if (code > last_of_basic_plane && wide.empty())
      wide = code_text(code);
  });
  return wide;
}

// Text --------------------------------------------------------------------------------------------

/// UTF-16 with its mark as UTF-8; what is none is U+FFFD.
std::string utf8_of_utf16(std::string_view bytes) {
  const bool little = bytes.starts_with("\xFF\xFE");
  const auto unit_at = [&](std::size_t at) -> std::uint32_t {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return little ? first | static_cast<std::uint32_t>(second) << 8
                  : second | static_cast<std::uint32_t>(first) << 8;
  };
  std::string text;
  for (std::size_t at = 2; at + 1 < bytes.size(); at += 2) {
    const std::uint32_t unit = unit_at(at);
    const bool is_high = unit >= 0xD800 && unit < 0xDC00;
    const std::uint32_t low = is_high && at + 3 < bytes.size() ? unit_at(at + 2) : 0;
    if (low >= 0xDC00 && low < 0xE000) {
      text += utf8_text(0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00));
      at += 2;
    } else if (unit == 0 || (unit >= 0xD800 && unit < 0xE000)) {
      text += utf8_text(0xFFFD);
    } else {
      text += utf8_text(unit);
    }
  }
  return text;
}

subtitle_cues cues_in(std::string_view text, const subtitle_settings& settings) {
  const double rate = leading_number(settings[subtitle_field::frame_rate]);
  return read_subtitle_cues(text, rate > 0 ? rate : 25);
}

std::string shortened(const text_cue& cue) {
  return "\"" + sanitized_short(trim(join(cue.text, " ")), 50) + "\"";
}

class cue_examiner {
 public:
  cue_examiner(const subtitle_cues& all, finding_item item, const std::string& path)
      : all_(all), item_(item), path_(path) {}

  /// `name`: the font's, for the user.
  void look_at_characters(const font_characters& font, const std::string& name) {
    for (const text_cue& cue : all_.cues)
      if (const auto lacked = characters_lacked(font, cue); !lacked.empty())
        add("subtitle-character-missing", cue,
            "for the cue " + shortened(cue) + " the font " + sanitized_quoted(name) + " has no " +
                list_of_characters(lacked));
  }

  void look_at_texts() {
    for (const text_cue& cue : all_.cues) {
      if (&cue == all_.cues.data() && is_rate_line(all_.format, cue)) {
        add("subtitle-rate-line", cue, "the first cue is the number " + shortened(cue));
        continue;
      }
      look_at_text(cue);
    }
  }

  void look_at_times(std::optional<double> seconds) {
    const bool has_rate = !all_.cues.empty() && is_rate_line(all_.format, all_.cues.front());
    double latest = 0;
    for (const text_cue& cue : all_.cues) {
      if (cue.begin < latest)
        add("subtitle-cue-order", cue,
            "the cue " + shortened(cue) + " comes after one that begins at " + time_text(latest));
      latest = std::max(latest, cue.begin);
      const bool is_first_rate = has_rate && &cue == all_.cues.data();
      if (cue.end && *cue.end <= cue.begin && !is_first_rate)
        add("subtitle-cue-without-length", cue,
            "the cue " + shortened(cue) + " begins at " + time_text(cue.begin) + " and ends at " +
                time_text(*cue.end));
      if (seconds && cue.begin >= *seconds)
        add("subtitle-after-end", cue,
            "the cue " + shortened(cue) + " begins at " + time_text(cue.begin) +
                ", but the title ends at " + time_text(*seconds));
    }
    // spumux lays cues of SSA that overlap one above the other.
    if (all_.format != subtitle_format::ssa)
      look_at_neighbours();
  }

  std::vector<finding> findings() {
    for (const auto& [rule, count] : counts_)
      if (count > most_of_a_rule)
        findings_[last_[rule]].found += "; " + std::to_string(count - most_of_a_rule) +
                                        " more of the file's cues are like this";
    std::stable_sort(findings_.begin(), findings_.end(), [](const finding& a, const finding& b) {
      return a.seconds.value_or(0) < b.seconds.value_or(0);
    });
    return std::move(findings_);
  }

 private:
  void add(std::string_view rule, const text_cue& cue, std::string found) {
    if (++counts_[rule] > most_of_a_rule)
      return;
    last_[rule] = findings_.size();
    finding f = finding_of(subtitle_text_rules_table, rule, item_, std::move(found));
    f.file = path_;
    f.seconds = cue.begin;
    findings_.push_back(std::move(f));
  }

  void look_at_text(const text_cue& cue) {
    if (!cue.lost.empty())
      add("subtitle-text-lost", cue,
          "of the cue " + shortened(cue) + " the piece \"" + sanitized_short(cue.lost, 50) +
              "\" is left out");
    if (cue.text.size() > most_cue_lines)
      add("subtitle-too-many-lines", cue,
          "the cue " + shortened(cue) + " has more than " + std::to_string(most_cue_lines) +
              " lines");
    for (const std::string& line : cue.text)
      if (const std::string markup = markup_in(line); !markup.empty()) {
        add("subtitle-markup-shown", cue,
            "the cue " + shortened(cue) + " shows \"" + sanitized_short(markup, 30) +
                "\" as letters");
        break;
      }
    for (const std::string& line : cue.text)
      if (const std::string wide = wide_character_in(line); !wide.empty()) {
        add("subtitle-wide-character", cue, "the cue " + shortened(cue) + " holds " + wide);
        break;
      }
  }

  void look_at_neighbours() {
    std::vector<std::size_t> order(all_.cues.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(), [this](std::size_t a, std::size_t b) {
      return all_.cues[a].begin < all_.cues[b].begin;
    });
    for (std::size_t i = 0; i + 1 < order.size(); ++i)
      look_at_pair(all_.cues[order[i]], all_.cues[order[i + 1]]);
  }

  void look_at_pair(const text_cue& cue, const text_cue& next) {
    constexpr double half_a_hundredth = 0.005;
    if (!cue.end || *cue.end <= cue.begin)
      return;
    const double overlap = *cue.end - next.begin;
    if (overlap > shared_overlap + half_a_hundredth)
      add("subtitle-cue-overlap", cue,
          "the cue " + shortened(cue) + " ends at " + time_text(*cue.end) + ", but the next one, " +
              shortened(next) + ", begins at " + time_text(next.begin));
    else if (std::abs(overlap) < half_a_hundredth &&
             *cue.end - cue.begin > given_length + half_a_hundredth)
      add("subtitle-cue-cut", cue,
          "the cue " + shortened(cue) + " lasts " +
              trimmed(static_cast<int>(*cue.end - cue.begin)) +
              " seconds, until the next one begins");
  }

  const subtitle_cues& all_;
  finding_item item_;
  const std::string& path_;
  std::vector<finding> findings_;
  std::map<std::string_view, std::size_t> counts_, last_;
};

finding about_file(std::string_view rule, finding_item item, const std::string& path,
                   std::string found) {
  finding f = finding_of(subtitle_text_rules_table, rule, item, std::move(found));
  f.file = path;
  return f;
}

}  // namespace

std::span<const rule> subtitle_text_rules() {
  return subtitle_text_rules_table;
}

std::optional<std::string> utf8_of(const subtitle_file& file, const subtitle_settings& settings) {
  if (file.unicode() == "UTF-16")
    return utf8_of_utf16(file.bytes());
  const std::string charset = file.set_read(settings[subtitle_field::character_set]);
  if (charset == "UTF-8" || charset.empty())
    return file.bytes();
  return in_utf8(file.bytes(), charset);
}

bool is_rate_line(subtitle_format format, const text_cue& cue) {
  return format == subtitle_format::microdvd && cue.begin < 1 &&
         cue.end.value_or(cue.begin) <= cue.begin && cue.text.size() == 1 &&
         is_plain_number(trim(cue.text[0]));
}

subtitle_cues cues_of(const subtitle_file& file, const subtitle_settings& settings) {
  return cues_in(utf8_of(file, settings).value_or(file.bytes()), settings);
}

std::vector<finding> subtitle_text_findings(const subtitle_file& file,
                                            const subtitle_settings& settings, finding_item item,
                                            const std::string& path, std::optional<double> seconds,
                                            const font_characters* font) {
  if (const refusal why = file.why_not(settings[subtitle_field::character_set]))
    return {
        about_file("subtitle-unreadable", item, path, "the file cannot be used, since " + *why)};
  const std::optional<std::string> text = utf8_of(file, settings);
  const subtitle_cues all = cues_in(text ? *text : file.bytes(), settings);
  if (all.format == subtitle_format::unknown)
    return {about_file("subtitle-unreadable", item, path,
                       "the file is in none of the subtitle formats that spumux reads")};
  if (all.format == subtitle_format::other)
    return {about_file("subtitle-not-examined", item, path,
                       "the file is in a format whose cues are not looked at")};
  if (all.cues.empty())
    return {about_file("subtitle-no-cues", item, path, "the file holds no cue with a text")};
  cue_examiner examiner(all, item, path);
  if (text)
    examiner.look_at_texts();
  if (text && font != nullptr)
    examiner.look_at_characters(*font, settings[subtitle_field::font_file]);
  examiner.look_at_times(seconds);
  return examiner.findings();
}

std::vector<finding> subtitle_font_findings(const disc_description& d, const font_list& installed) {
  std::vector<finding> findings;
  const std::string of_new_ones =
      default_subtitle_settings(d.standard_text)[subtitle_field::font_file];
  for (int title = 1; title <= d.title_count(); ++title) {
    const std::vector<disc_subtitle>& subtitles = d.title(title).subtitles;
    for (std::size_t i = 0; i < std::min(subtitles.size(), most_subpictures); ++i) {
      const std::string& font = (*subtitles[i].settings)[subtitle_field::font_file];
      if (installed.path_of_file(font))
        continue;
      findings.push_back(finding_of(subtitle_text_rules_table, "subtitle-font-missing",
                                    {whole::title, title, part::subtitle, static_cast<int>(i) + 1},
                                    "the font " + sanitized_quoted(font) + " is not installed"));
      if (font == of_new_ones)
        findings.back().severity = severity::note;
    }
  }
  return findings;
}

std::vector<finding> subtitle_findings(const disc_description& d, path_style style,
                                       std::span<const std::optional<double>> title_seconds,
                                       const font_list* installed) {
  std::vector<finding> findings;
  font_shelf fonts;
  for (int title = 1; title <= d.title_count(); ++title) {
    const auto t = static_cast<std::size_t>(title) - 1;
    const std::optional<double> seconds =
        t < title_seconds.size() ? title_seconds[t] : std::nullopt;
    const std::vector<disc_subtitle>& subtitles = d.title(title).subtitles;
    for (std::size_t i = 0; i < std::min(subtitles.size(), most_subpictures); ++i) {
      const finding_item item{whole::title, title, part::subtitle, static_cast<int>(i) + 1};
      const std::string path = native_from_stored(subtitles[i].file, style);
      const result<subtitle_file> file = subtitle_file::read(path);
      const subtitle_settings& settings = *subtitles[i].settings;
      const font_characters* const font =
          installed == nullptr ? nullptr
                               : fonts.find(settings[subtitle_field::font_file], *installed);
      std::vector<finding> found;
      if (file)
        found = subtitle_text_findings(*file, settings, item, path, seconds, font);
      else
        found = {about_file("subtitle-unreadable", item, path,
                            "the file cannot be used, since " + file.error)};
      findings.insert(findings.end(), found.begin(), found.end());
    }
  }
  return findings;
}

}  // namespace corvane
