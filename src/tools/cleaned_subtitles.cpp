#include "tools/cleaned_subtitles.h"

#include "examine/subtitle_text_rules.h"
#include "formats/subtitle_cues.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "tools/subtitle_markup.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view utf8_mark = "\xEF\xBB\xBF";

/// What parts the lines of a cue that stand in one line of the file; the first one is written where
/// a line is parted anew. SubRip and SubViewer 2 have none: each line is one of the file.
std::vector<std::string> separators_of(subtitle_format format) {
  switch (format) {
    case subtitle_format::microdvd:
    case subtitle_format::vplayer:
      return {"|"};
    case subtitle_format::subviewer:
      return {"|", "[br]"};
    case subtitle_format::ssa:
      return {"\\N", "\\n"};
    case subtitle_format::sami:
      return {"<br>", "<BR>", "<Br>", "<br/>", "<br />", "<BR/>"};
    default:
      return {};
  }
}

/// A line of a cue, and the sign behind it.
struct parted_line {
  std::string_view text, separator;
};

/// Takes a text apart at separators; in SSA not within "{\...}".
class line_parter {
 public:
  line_parter(std::string_view text, subtitle_format format)
      : text_(text), separators_(separators_of(format)), blocks_(format == subtitle_format::ssa) {}

  std::vector<parted_line> lines() {
    std::size_t from = 0, at = 0;
    while (at < text_.size()) {
      const std::string_view sign = separator_at(at);
      if (!sign.empty()) {
        lines_.push_back({text_.substr(from, at - from), sign});
        at = from = at + sign.size();
      } else {
        at = behind_block(at);
      }
    }
    lines_.push_back({text_.substr(from), {}});
    return std::move(lines_);
  }

 private:
  std::string_view separator_at(std::size_t at) const {
    for (const std::string& one : separators_)
      if (text_.substr(at, one.size()) == one)
        return text_.substr(at, one.size());
    return {};
  }

  std::size_t behind_block(std::size_t at) {
    if (!blocks_ || text_.substr(at, 2) != "{\\" || no_more_ends_)
      return at + 1;
    const auto end = text_.find('}', at);
    no_more_ends_ = end == std::string_view::npos;
    return no_more_ends_ ? at + 1 : end + 1;
  }

  std::string_view text_;
  std::vector<std::string> separators_;
  bool blocks_;
  bool no_more_ends_ = false;
  std::vector<parted_line> lines_;
};

bool is_blank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

/// The lines of one cue, before and after.
struct cue_lines {
  std::vector<std::string> before, after;
  std::vector<std::string> drawn, reasons;

  bool are_changed() const { return !drawn.empty() || !reasons.empty(); }
};

/// `"{\an8}" and "&amp;" would be shown as letters; ...`
std::string why_text(const cue_lines& lines) {
  std::vector<std::string> clauses = lines.reasons;
  std::string drawn;
  for (std::size_t i = 0; i < lines.drawn.size(); ++i)
    drawn += (i == 0 ? "" : i + 1 == lines.drawn.size() ? " and " : ", ") + lines.drawn[i];
  if (!drawn.empty())
    clauses.insert(clauses.begin(), drawn + " would be shown as letters");
  return join(clauses, "; ");
}

class file_cleaner {
 public:
  file_cleaner(std::string_view text, const subtitle_cues& all) : text_(text), all_(all) {}

  cleaned_subtitles run() {
    bool first = true;
    for (const text_cue& cue : all_.cues) {
      first = first && is_rate_line(all_.format, cue);
      if (first && &cue != &all_.cues.back())
        leave_out_rate(cue);
      else
        clean(cue);
    }
    out_.text += text_.substr(copied_);
    return std::move(out_);
  }

 private:
  void copy_to(std::size_t place) {
    out_.text += text_.substr(copied_, place - copied_);
    copied_ = place;
  }

  void leave_out_rate(const text_cue& cue) {
    const std::size_t at = cue.places[0].at;
    const auto before = text_.rfind('\n', at);
    const auto end = std::min(text_.find('\n', at), text_.size() - 1);
    const std::size_t begin = before == std::string_view::npos ? 0 : before + 1;
    copy_to(begin);
    copied_ = end + 1;
    out_.rate = std::string(trim(cue.text[0]));
    out_.changes.push_back(
        {cue.line, cue.begin, cue.text[0], "", "the rate of pictures belongs in the settings"});
  }

  void clean(const text_cue& cue) {
    cue_lines lines;
    for (const text_place& place : cue.places) {
      copy_to(place.at);
      const std::string_view old = text_.substr(place.at, place.size);
      if (separators_of(all_.format).empty())
        clean_line_of_file(old, lines);
      else
        clean_parted(old, lines);
    }
    if (lines.are_changed())
      out_.changes.push_back({cue.line, cue.begin, join(lines.before, "\n"),
                              join(lines.after, "\n"), why_text(lines)});
  }

  static void note(const cleaned_line& line, cue_lines& lines) {
    const auto add = [](std::vector<std::string>& all, const std::vector<std::string>& more) {
      for (const std::string& one : more)
        if (std::find(all.begin(), all.end(), one) == all.end())
          all.push_back(one);
    };
    add(lines.drawn, line.drawn);
    add(lines.reasons, line.reasons);
  }

  /// Lines that are drawn empty, and were not before, go: in SubRip they would end the cue.
  std::vector<std::string> kept_lines(const cleaned_line& line) const {
    std::vector<std::string> kept;
    for (const std::string& one : line.lines)
      if (!is_blank(shown_line(one, all_.format)))
        kept.push_back(one);
    return kept;
  }

  void clean_line_of_file(std::string_view old, cue_lines& lines) {
    const cleaned_line line = clean_line(old, all_.format);
    lines.before.emplace_back(old);
    copied_ += old.size();
    if (!line.is_changed()) {
      out_.text += old;
      lines.after.emplace_back(old);
      return;
    }
    note(line, lines);
    const bool has_cr = text_.substr(copied_, 1) == "\r";
    std::vector<std::string> kept = kept_lines(line);
    // Such a line ends a cue of SubViewer 2.
    for (std::string& one : kept)
      if (all_.format == subtitle_format::subviewer2 && one.starts_with('}'))
        one[0] = ')';
    out_.text += join(kept, has_cr ? "\r\n" : "\n");
    if (kept.empty())
      copied_ += text_.substr(copied_, 2) == "\r\n" ? 2 : text_.substr(copied_, 1) == "\n" ? 1 : 0;
    lines.after.insert(lines.after.end(), kept.begin(), kept.end());
  }

  void clean_parted(std::string_view old, cue_lines& lines) {
    const std::string sign = separators_of(all_.format)[0];
    std::string whole;
    std::string_view behind;  // the sign that stood behind the last line that was kept
    bool is_first = true;
    for (const parted_line& part : line_parter(old, all_.format).lines()) {
      const cleaned_line line = clean_line(part.text, all_.format);
      lines.before.emplace_back(part.text);
      note(line, lines);
      const std::vector<std::string> kept =
          line.is_changed() ? kept_lines(line) : std::vector{std::string(part.text)};
      if (kept.empty())
        continue;
      if (!is_first)
        whole += behind;
      is_first = false;
      whole += join(kept, sign);
      behind = part.separator.empty() ? std::string_view(sign) : part.separator;
      lines.after.insert(lines.after.end(), kept.begin(), kept.end());
    }
    copied_ += old.size();
    out_.text += lines.are_changed() ? whole : std::string(old);
  }

  std::string_view text_;
  const subtitle_cues& all_;
  std::size_t copied_ = 0;  ///< of `text_`
  cleaned_subtitles out_;
};

}  // namespace

result<cleaned_subtitles> clean_subtitles(const subtitle_file& file,
                                          const subtitle_settings& settings) {
  using cleaned = result<cleaned_subtitles>;
  if (const refusal why = file.why_not(settings[subtitle_field::character_set]))
    return cleaned::fail(*why);
  const std::optional<std::string> whole = utf8_of(file, settings);
  if (!whole)
    return cleaned::fail("the characters of its character set are not known here");
  std::string_view text = *whole;
  if (text.starts_with(utf8_mark))
    text.remove_prefix(utf8_mark.size());
  const subtitle_cues all = cues_of(subtitle_file("utf-8.utf8", std::string(text)), settings);
  if (all.format == subtitle_format::unknown)
    return cleaned::fail("it is in none of the subtitle formats that spumux reads");
  if (all.format == subtitle_format::other)
    return cleaned::fail("it is in a format whose cues this program does not read");
  return cleaned::ok(file_cleaner(text, all).run());
}

std::string free_name_of_copy(const std::string& native) {
  const std::string name = native_file_name(native);
  const auto dot = name.rfind('.');
  const std::string ending = dot == std::string::npos || dot == 0 ? "" : name.substr(dot);
  const std::string path = native.substr(0, native.size() - ending.size());
  std::string copy = path + ".cleaned" + ending;
  for (int i = 2; entry_exists(copy); ++i)
    copy = path + ".cleaned-" + std::to_string(i) + ending;
  return copy;
}

}  // namespace corvane
