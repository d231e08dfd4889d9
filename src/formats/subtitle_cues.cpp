#include "formats/subtitle_cues.h"

#include "formats/line_reader.h"
#include "formats/numbers.h"
#include "formats/text.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvane {
namespace {

/// spumux looks for a format in this many lines.
constexpr int lines_with_a_format = 100;

/// What begins a cue of SAMI, in small letters.
constexpr std::string_view start_mark = "start=";

bool is_white(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Takes a line apart from its beginning, as the C library's scanf does: white space before a
/// number is passed over. After the first piece that is not there all others are missing too.
class line_scanner {
 public:
  explicit line_scanner(std::string_view line) : rest_(line) {}

  bool is_good() const { return good_; }
  std::string_view rest() const { return rest_; }

  double number() {
    blanks();
    const bool negative = rest_.starts_with('-');
    if (negative || rest_.starts_with('+'))
      rest_.remove_prefix(1);
    if (rest_.empty() || !is_digit(rest_[0]))
      good_ = false;
    double value = 0;
    for (; good_ && !rest_.empty() && is_digit(rest_[0]); rest_.remove_prefix(1))
      value = std::min(value * 10 + (rest_[0] - '0'), 1e9);
    return negative ? -value : value;
  }

  line_scanner& text(std::string_view wanted) {
    good_ = good_ && rest_.starts_with(wanted);
    if (good_)
      rest_.remove_prefix(wanted.size());
    return *this;
  }

  line_scanner& blanks() {
    while (!rest_.empty() && is_white(rest_[0]))
      rest_.remove_prefix(1);
    return *this;
  }

  /// One or more of these characters.
  line_scanner& any_of(std::string_view all) {
    const auto end = std::min(rest_.find_first_not_of(all), rest_.size());
    good_ = good_ && end > 0;
    if (good_)
      rest_.remove_prefix(end);
    return *this;
  }

  /// "01:02:03" in seconds.
  double clock() {
    const double hours = number();
    text(":");
    const double minutes = number();
    text(":");
    return hours * 3600 + minutes * 60 + number();
  }

 private:
  std::string_view rest_;
  bool good_ = true;
};

struct span_of_time {
  double begin = 0;
  std::optional<double> end;
  std::string_view rest;  ///< of the line
};

using times = std::optional<span_of_time>;

// Times, a function for each format; nullopt for a line that holds none
// -------------------------------

/// Thousandths, of which spumux keeps the hundredths.
double hundredths_of(double thousandths) {
  return static_cast<double>(static_cast<long long>(thousandths / 10)) / 100;
}

times subrip_times(std::string_view line) {
  line_scanner s(line);
  span_of_time t;
  t.begin = s.clock();
  s.any_of(",.:");
  t.begin += hundredths_of(s.number());
  s.blanks().text("-->");
  double end = s.clock();
  s.any_of(",.:");
  end += hundredths_of(s.number());
  t.end = end;
  return s.is_good() ? times(t) : std::nullopt;
}

times subviewer_times(std::string_view line) {
  line_scanner s(line);
  span_of_time t;
  t.begin = s.clock();
  s.text(".");
  t.begin += s.number() / 100;
  s.text(",");
  double end = s.clock();
  s.text(".");
  end += s.number() / 100;
  t.end = end;
  return s.is_good() ? times(t) : std::nullopt;
}

times subviewer2_times(std::string_view line) {
  line_scanner s(line);
  s.text("{T");
  span_of_time t;
  t.begin = s.clock();
  s.text(":");
  t.begin += hundredths_of(s.number());
  return s.is_good() ? times(t) : std::nullopt;
}

times vplayer_times(std::string_view line) {
  line_scanner s(line);
  span_of_time t;
  t.begin = s.clock();
  if (!s.is_good() || s.rest().empty())
    return std::nullopt;
  t.rest = s.rest().substr(1);
  return t;
}

/// In pictures.
times microdvd_times(std::string_view line) {
  line_scanner s(line);
  s.text("{");
  span_of_time t;
  t.begin = s.number();
  s.text("}{");
  if (s.is_good() && !s.rest().starts_with('}'))
    t.end = s.number();
  s.text("}");
  t.rest = s.rest();
  return s.is_good() ? times(t) : std::nullopt;
}

times ssa_times(std::string_view line) {
  line_scanner s(line);
  s.text("Dialogue:").blanks();
  if (s.rest().starts_with("Marked="))
    s.text("Marked=");
  s.number();
  s.text(",");
  span_of_time t;
  t.begin = s.clock();
  s.text(".");
  t.begin += s.number() / 100;
  s.text(",");
  double end = s.clock();
  s.text(".");
  end += s.number() / 100;
  t.end = end;
  s.text(",");
  t.rest = s.rest();
  return s.is_good() ? times(t) : std::nullopt;
}

bool is_of_another_format(std::string_view line) {
  const auto begins = [line](auto&& scan) {
    line_scanner s(line);
    scan(s);
    return s.is_good();
  };
  const bool jacosub = begins([](line_scanner& s) {
                         s.clock();
                         s.text(".");
                         s.number();
                         s.clock();
                         s.text(".");
                         s.number();
                       }) ||
                       begins([](line_scanner& s) {
                         s.text("@");
                         s.number();
                         s.blanks().text("@");
                         s.number();
                       });
  const bool pjs = begins([](line_scanner& s) {
    s.number();
    s.text(",");
    s.number();
    s.text(",\"");
  });
  const bool subrip09 = begins([](line_scanner& s) {
    s.text("[");
    s.clock();
  });
  return jacosub || pjs || subrip09 || line.starts_with('<') || line.starts_with("FORMAT=") ||
         line.find("-->>") != std::string_view::npos;
}

/// The format that a line tells; `unknown` if it tells none.
subtitle_format format_told_by(std::string_view line) {
  if (microdvd_times(line))
    return subtitle_format::microdvd;
  if (subviewer_times(line))
    return subtitle_format::subviewer;
  if (subrip_times(line))
    return subtitle_format::subrip;
  if (line.starts_with("{T"))
    return subtitle_format::subviewer2;
  if (line.find("<SAMI>") != std::string_view::npos)
    return subtitle_format::sami;
  if (line.starts_with("Dialogue: "))
    return subtitle_format::ssa;
  if (is_of_another_format(line))
    return subtitle_format::other;
  line_scanner vplayer(line);
  vplayer.clock();
  return vplayer.is_good() ? subtitle_format::vplayer : subtitle_format::unknown;
}

subtitle_format format_of(std::string_view text) {
  line_reader lines(text);
  for (int i = 0; i < lines_with_a_format; ++i) {
    const auto line = lines.next();
    if (!line)
      break;
    const subtitle_format format = format_told_by(*line);
    if (format != subtitle_format::unknown)
      return format;
  }
  return subtitle_format::unknown;
}

// Texts -----------------------------------------------------------------------------------------

/// At the signs that stand for a new line.
std::vector<std::string> split_at(std::string_view text, const std::vector<std::string>& signs) {
  std::string rest(text);
  for (std::size_t i = 1; i < signs.size(); ++i)
    rest = replace_all(rest, signs[i], signs[0]);
  return split(rest, std::string_view(signs[0]));
}

/// Text behind the nine fields of a line of SSA or ASS.
std::string_view behind_ssa_fields(std::string_view behind_times) {
  constexpr int fields = 6;  // style, name, three margins, effect
  std::string_view text = behind_times;
  for (int i = 0; i < fields && text.find(',') != std::string_view::npos; ++i)
    text.remove_prefix(text.find(',') + 1);
  return text;
}

class cue_reader {
 public:
  cue_reader(std::string_view text, double rate) : text_(text), lines_(text), rate_(rate) {}

  subtitle_cues read() {
    all_.format = format_of(text_);
    if (all_.format == subtitle_format::sami)
      read_sami();
    else if (all_.format != subtitle_format::unknown && all_.format != subtitle_format::other)
      while (const auto line = is_full() ? std::nullopt : lines_.next())
        read_line(*line);
    return std::move(all_);
  }

 private:
  bool is_full() const { return all_.cues.size() >= most_cues; }

  void read_line(std::string_view line) {
    switch (all_.format) {
      case subtitle_format::subrip:
        if (const times t = subrip_times(line))
          add_following_lines(*t, "");
        break;
      case subtitle_format::subviewer2:
        if (const times t = subviewer2_times(line))
          add_following_lines(*t, "}");
        break;
      case subtitle_format::subviewer:
        if (const times t = subviewer_times(line))
          add_next_line(*t);
        break;
      case subtitle_format::microdvd:
        if (const times t = microdvd_times(line); t && !t->rest.empty())
          add_pictures(*t);
        break;
      case subtitle_format::vplayer:
        if (const times t = vplayer_times(line); t && t->begin > 0)
          add(*t, lines_.number(), split(t->rest, '|'), {}, {place_of(t->rest)});
        break;
      case subtitle_format::ssa:
        if (const times t = ssa_times(line)) {
          const std::string_view text = behind_ssa_fields(t->rest);
          add(*t, lines_.number(), split_at(without_blocks(text), {"\\N", "\\n"}), {},
              {place_of(text)});
        }
        break;
      default:
        break;
    }
  }

  /// Up to an empty line or one that begins with `last`.
  void add_following_lines(const span_of_time& t, std::string_view last) {
    const int number = lines_.number();
    std::vector<std::string> text;
    std::vector<text_place> places;
    std::string lost;
    while (const auto line = lines_.next()) {
      if (line->empty() || (!last.empty() && line->starts_with(last)))
        break;
      places.push_back(place_of(*line));
      if (text.size() <= most_cue_lines)
        text.push_back(all_.format == subtitle_format::subrip ? without_tags(*line, lost)
                                                              : std::string(*line));
    }
    add(t, number, std::move(text), std::move(lost), std::move(places));
  }

  void add_next_line(const span_of_time& t) {
    const int number = lines_.number();
    if (const auto line = lines_.next())
      add(t, number, split_at(*line, {"|", "[br]"}), {}, {place_of(*line)});
  }

  void add_pictures(span_of_time t) {
    t.begin /= rate_;
    if (t.end)
      *t.end /= rate_;
    add(t, lines_.number(), split(t.rest, '|'), {}, {place_of(t.rest)});
  }

  void add(const span_of_time& t, int line, std::vector<std::string> text, std::string lost,
           std::vector<text_place> places) {
    if (!text.empty())
      all_.cues.push_back(
          {t.begin, t.end, line, std::move(text), std::move(lost), std::move(places)});
  }

  /// `part`: of the file's text.
  text_place place_of(std::string_view part) const {
    return {static_cast<std::size_t>(part.data() - text_.data()), part.size()};
  }

  // SAMI ------------------------------------------------------------------------------------------

  void read_sami() {
    const std::string small = lower(text_);
    std::size_t at = small.find(start_mark);
    std::size_t counted = 0;
    int line = 1;
    while (at != std::string::npos && !is_full()) {
      const std::size_t next = small.find(start_mark, at + start_mark.size());
      line += static_cast<int>(std::count(text_.begin() + static_cast<std::ptrdiff_t>(counted),
                                          text_.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
      counted = at;
      add_sami(at + start_mark.size(), next, line);
      at = next;
    }
  }

  void add_sami(std::size_t from, std::size_t to, int line) {
    const std::string_view part = text_.substr(from, to == std::string_view::npos ? to : to - from);
    span_of_time t;
    t.begin = milliseconds_in(part);
    // The last one stays for minutes.
    if (to != std::string_view::npos)
      t.end = milliseconds_in(text_.substr(to + start_mark.size())) - 0.01;
    std::string lost;
    const std::string_view body = sami_body(part);
    std::vector<std::string> text = sami_lines(body, lost);
    add(t, line, std::move(text), std::move(lost), {place_of(body)});
  }

  static double milliseconds_in(std::string_view text) {
    line_scanner s(text);
    const double number = s.number();
    return s.is_good() ? number / 1000 : 0;
  }

  /// From the first "<P...>" on.
  static std::string_view sami_body(std::string_view part) {
    const auto paragraph = std::min(part.find("<P"), part.find("<p"));
    const auto begin = paragraph == std::string_view::npos ? paragraph : part.find('>', paragraph);
    if (begin == std::string_view::npos)
      return part.substr(part.size());
    std::string_view body = part.substr(begin + 1);
    // The last "<" belongs to the "<SYNC" before the next "Start=".
    const auto last = body.rfind('<');
    if (last != std::string_view::npos && body.find('>', last) == std::string_view::npos)
      body = body.substr(0, last);
    return body;
  }

  static std::vector<std::string> sami_lines(std::string_view body, std::string& lost) {
    std::string text = replace_all(replace_all(body, "\r", ""), "\n", "");
    text = replace_all(replace_all(text, "&nbsp;", " "), "\t", " ");
    std::vector<std::string> lines;
    for (const std::string& line :
         split_at(text, {"<br>", "<BR>", "<Br>", "<br/>", "<br />", "<BR/>"})) {
      std::string shown(trim(without_tags(line, lost)));
      if (!shown.empty())
        lines.push_back(std::move(shown));
    }
    return lines;
  }

  std::string_view text_;
  line_reader lines_;
  double rate_;
  subtitle_cues all_;
};

}  // namespace

bool is_usual_tag(std::string_view inner) {
  constexpr std::array tags = {"i",    "b",  "u",    "s",    "em",  "strong", "font",
                               "span", "br", "p",    "c",    "v",   "div",    "center",
                               "ruby", "rt", "sync", "body", "sami"};
  if (inner.starts_with('/'))
    inner.remove_prefix(1);
  const std::string name = lower(inner.substr(0, inner.find_first_of(" \t./=:")));
  return inner.starts_with('!') || std::find(tags.begin(), tags.end(), name) != tags.end();
}

std::string without_tags(std::string_view line, std::string& lost) {
  std::string shown;
  while (!line.empty()) {
    const auto sign = std::min(line.find_first_of("<>"), line.size());
    shown += line.substr(0, sign);
    line.remove_prefix(sign);
    if (line.starts_with('<')) {
      const auto end = std::min(line.find('>'), line.size());
      if (lost.empty() && !is_usual_tag(line.substr(1, end - 1)))
        lost = line.substr(0, end + 1);
      line.remove_prefix(end);
    }
    if (!line.empty())
      line.remove_prefix(1);  // the ">", which is not shown either
  }
  return shown;
}

std::string without_blocks(std::string_view text) {
  std::string shown;
  while (!text.empty()) {
    const auto begin = std::min(text.find("{\\"), text.size());
    shown += text.substr(0, begin);
    text.remove_prefix(begin);
    const auto end = text.find('}');
    if (end == std::string_view::npos) {
      shown += text;
      break;
    }
    text.remove_prefix(end + 1);
  }
  return shown;
}

subtitle_cues read_subtitle_cues(std::string_view text, double rate) {
  return cue_reader(text, rate).read();
}

}  // namespace corvane
