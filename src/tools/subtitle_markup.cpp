#include "tools/subtitle_markup.h"

#include "examine/subtitle_characters.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace corvane {
namespace {

// Signs that look like those that cannot stand. Fonts have them where they have the letters of
// Western Europe.
constexpr std::string_view like_less = "\xE2\x80\xB9", like_greater = "\xE2\x80\xBA";
constexpr std::string_view like_bar = "\xC2\xA6";
constexpr std::string_view like_wide = "\xE2\x96\xA1";  // an empty square

constexpr std::size_t longest_tag = 32;    // of which its name is looked for
constexpr std::size_t longest_entity = 8;  // behind its "&", with its ";"
constexpr std::uint32_t last_character = 0x10FFFF;

bool drops_tags(subtitle_format format) {
  return format == subtitle_format::subrip || format == subtitle_format::sami;
}

bool is_letter_of_code(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// Whether "{y:i}" without its braces is a code of MicroDVD, and not somebody's text.
bool is_code_of_microdvd(std::string_view inner) {
  const std::string letter = lower(inner.substr(0, 1));
  const std::string_view value = inner.substr(2);
  const auto only = [value](std::string_view all) {
    return value.find_first_not_of(all) == std::string_view::npos;
  };
  switch (letter[0]) {
    case 'y':
      return only("ibusIBUS,");
    case 'c':
      return only("$0123456789abcdefABCDEF");
    case 's':
    case 'o':
    case 'p':
      return only("0123456789,");
    case 'f':
    case 'h':
      return true;
    default:
      return false;
  }
}

/// What an entity stands for (its name without "&" and ";"), by characters that can stand in a
/// subtitle; nullopt for a number that is no character.
std::optional<std::string> meaning_of(std::string_view name) {
  struct named {
    std::string_view name;
    std::uint32_t code;
  };
  constexpr std::array names = {named{"amp", '&'},  named{"lt", '<'},    named{"gt", '>'},
                                named{"quot", '"'}, named{"apos", '\''}, named{"nbsp", ' '}};
  std::uint32_t code = 0;
  const auto* const known =
      std::find_if(names.begin(), names.end(), [name](const named& n) { return n.name == name; });
  if (known != names.end()) {
    code = known->code;
  } else {
    std::string_view digits = name.substr(1);
    const bool hex = digits.starts_with('x') || digits.starts_with('X');
    if (hex)
      digits.remove_prefix(1);
    const std::string_view allowed = hex ? "0123456789abcdefABCDEF" : "0123456789";
    if (digits.empty() || digits.find_first_not_of(allowed) != std::string_view::npos)
      return std::nullopt;
    for (const char digit : lower(digits))
      code = code * (hex ? 16 : 10) +
             static_cast<std::uint32_t>(digit <= '9' ? digit - '0' : digit - 'a' + 10);
  }
  constexpr std::uint32_t first_surrogate = 0xD800, last_surrogate = 0xDFFF;
  if (code == 0 || code > last_character || (code >= first_surrogate && code <= last_surrogate))
    return std::nullopt;
  switch (code) {
    case '<':
      return std::string(like_less);
    case '>':
      return std::string(like_greater);
    case '{':
      return "(";
    case '}':
      return ")";
    case '\\':
      return "/";
    case '|':
      return std::string(like_bar);
    default:
      return code <= ' ' || code == 0x7F || code == 0xA0 ? " " : utf8_text(code);
  }
}

/// The name of the entity that stands behind a "&", as the examination knows them; empty for none.
std::string_view entity_behind(std::string_view rest) {
  constexpr std::array names = {"amp", "lt", "gt", "quot", "apos", "nbsp"};
  const std::string_view inner = rest.substr(0, longest_entity);
  const std::string_view name = inner.substr(0, inner.find(';'));
  const bool is_number =
      name.size() > 1 && name[0] == '#' &&
      name.substr(1).find_first_not_of("0123456789xXabcdefABCDEF") == std::string_view::npos;
  const bool is_entity = name.size() < inner.size() &&
                         (is_number || std::find(names.begin(), names.end(), name) != names.end());
  return is_entity ? name : std::string_view();
}

/// What stands for a character beyond the Basic Multilingual Plane.
std::string narrow_text(std::uint32_t code) {
  struct range {
    std::uint32_t first, last;
    std::string_view text;
  };
  constexpr std::array ranges = {
      range{0x1F3B5, 0x1F3B5, "\xE2\x99\xAA"},  // a note
      range{0x1F3B6, 0x1F3B6, "\xE2\x99\xAB"},  // notes
      range{0x1F3FB, 0x1F3FF, ""},              // the colour of a skin, of the character before
      range{0x1F493, 0x1F49F, "\xE2\x99\xA5"},  // hearts
      range{0x1F600, 0x1F60F, "\xE2\x98\xBA"},  // faces that smile
      range{0x1F642, 0x1F642, "\xE2\x98\xBA"},
      range{0xE0000, 0xE0FFF, ""},  // signs that are not seen
  };
  for (const range& one : ranges)
    if (code >= one.first && code <= one.last)
      return std::string(one.text);
  return std::string(like_wide);
}

void add_once(std::vector<std::string>& all, std::string one) {
  if (std::find(all.begin(), all.end(), one) == all.end())
    all.push_back(std::move(one));
}

/// Where a sign stands next in a line that is gone through once, however often it is asked.
class next_sign {
 public:
  next_sign(std::string_view line, char sign) : line_(line), sign_(sign) {}

  /// At or behind a place, which never goes back; npos if there is none.
  std::size_t from(std::size_t place) {
    if (!is_known_ || (next_ != std::string_view::npos && next_ < place))
      next_ = line_.find(sign_, place);
    is_known_ = true;
    return next_;
  }

 private:
  std::string_view line_;
  char sign_;
  std::size_t next_ = 0;
  bool is_known_ = false;
};

/// One pass over a line. What it leaves can be markup once more ("{{y:i}y:i}").
class line_cleaner {
 public:
  line_cleaner(std::string_view line, subtitle_format format)
      : line_(line), format_(format), brace_end_(line, '}'), tag_end_(line, '>') {}

  void run() {
    lines_.emplace_back();
    while (at_ < line_.size())
      step();
  }

  cleaned_line take() { return {std::move(lines_), std::move(drawn_), std::move(reasons_)}; }

 private:
  void step() {
    switch (line_[at_]) {
      case '{':
        brace();
        break;
      case '&':
        entity();
        break;
      case '\\':
        escape();
        break;
      case '<':
        tag();
        break;
      default:
        letter();
        break;
    }
  }

  std::string_view rest() const { return line_.substr(at_); }

  void put(std::string_view text) { lines_.back() += text; }

  /// Puts so many bytes as they stand.
  void copy(std::size_t count) {
    put(line_.substr(at_, count));
    at_ += count;
  }

  void give_reason(std::string reason) { add_once(reasons_, std::move(reason)); }

  void is_drawn(std::string_view markup) {
    constexpr std::size_t most = 30;
    add_once(drawn_, "\"" + sanitized_short(markup, most) + "\"");
  }

  void would_hide() { give_reason("\"<\" and \">\" would hide what is between them"); }

  void brace() {
    const std::string_view inner = rest().substr(1);
    const bool is_override = inner.starts_with('\\');
    const bool is_code =
        is_override || (inner.size() > 1 && is_letter_of_code(inner[0]) && inner[1] == ':');
    const std::size_t end = is_code ? brace_end_.from(at_) : std::string_view::npos;
    if (end == std::string_view::npos)
      return copy(1);
    const std::string_view whole = line_.substr(at_, end + 1 - at_);
    if (is_override && format_ == subtitle_format::ssa)
      return copy(whole.size());
    is_drawn(whole);
    const std::string_view content = whole.substr(1, whole.size() - 2);
    const bool holds_other = content.find('{') != std::string_view::npos;
    if (!holds_other && (is_override || is_code_of_microdvd(content))) {
      at_ += whole.size();
      return;
    }
    put("(");
    ++at_;
    if (!holds_other)
      round_end_ = end;
  }

  void entity() {
    // "&amp;amp;" stands for "&" in the end.
    std::size_t from = at_ + 1;
    std::string_view name = entity_behind(line_.substr(from));
    if (name.empty() || (format_ == subtitle_format::sami && name == "nbsp"))
      return copy(1);
    is_drawn(line_.substr(at_, name.size() + 2));
    while (name == "amp") {
      from += name.size() + 1;
      name = entity_behind(line_.substr(from));
    }
    if (name.empty()) {
      put("&");
      at_ = from;
    } else if (const std::optional<std::string> meaning = meaning_of(name)) {
      put(*meaning);
      at_ = from + name.size() + 1;
    } else {
      put("& ");
      at_ = from;
    }
  }

  void escape() {
    const bool blank = rest().starts_with("\\h"), breaks = rest().starts_with("\\N");
    if (!blank && !breaks)
      return copy(1);
    is_drawn(rest().substr(0, 2));
    at_ += 2;
    if (blank)
      put(" ");
    else
      lines_.emplace_back();
  }

  void tag() {
    if (drops_tags(format_))
      return dropped_tag();
    constexpr std::array tags = {"<i>", "<b>", "<u>", "</i>", "</b>", "</u>", "<font ", "</font>"};
    const std::string small = lower(rest().substr(0, longest_tag));
    const bool is_tag = std::any_of(tags.begin(), tags.end(),
                                    [&](const char* const one) { return small.starts_with(one); });
    if (!is_tag)
      return copy(1);
    const std::size_t end = tag_end_.from(at_);
    if (end == std::string_view::npos) {
      is_drawn(rest().substr(0, longest_tag));
      put(like_less);
      ++at_;
      return;
    }
    is_drawn(line_.substr(at_, end + 1 - at_));
    at_ = end + 1;
  }

  void dropped_tag() {
    const std::size_t end = tag_end_.from(at_);
    if (end != std::string_view::npos) {
      const std::size_t size = end + 1 - at_;
      const std::string_view inner = line_.substr(at_ + 1, std::min(size - 2, longest_tag));
      if (is_usual_tag(replace_all(replace_all(inner, "\r", ""), "\n", "")))
        return copy(size);
      if (std::string tidied = on_one_line(inner); is_usual_tag(tidied)) {
        // SAMI may break the line there; spumux does not see that and takes "<font", "color" as
        // one.
        would_hide();
        put("<" + on_one_line(line_.substr(at_ + 1, size - 2)) + ">");
        at_ += size;
        return;
      }
    }
    would_hide();
    put(like_less);
    ++at_;
  }

  static std::string on_one_line(std::string_view text) {
    return replace_all(replace_all(text, "\r", ""), "\n", " ");
  }

  void letter() {
    const char c = line_[at_];
    const utf8_character character = first_character(rest());
    if (c == '>' && drops_tags(format_)) {
      would_hide();
      put(like_greater);
      ++at_;
    } else if (c == '}' && at_ == round_end_) {
      put(")");
      ++at_;
    } else if (character.length > 0 && character.code > last_of_basic_plane) {
      wide(character);
    } else {
      copy(std::max<std::size_t>(character.length, 1));
    }
  }

  /// With the signs behind it that say how it is to look or join it to another one.
  void wide(const utf8_character& character) {
    give_reason(code_text(character.code) + " would become other letters");
    put(narrow_text(character.code));
    at_ += character.length;
    constexpr std::uint32_t joiner = 0x200D, as_picture = 0xFE0F;
    for (;;) {
      const utf8_character next = first_character(rest());
      if (next.length == 0 || (next.code != joiner && next.code != as_picture))
        return;
      at_ += next.length;
    }
  }

  std::string_view line_;
  subtitle_format format_;
  std::size_t at_ = 0;
  std::size_t round_end_ = std::string_view::npos;  ///< a "}" whose "{" became "("
  next_sign brace_end_, tag_end_;
  std::vector<std::string> lines_, drawn_, reasons_;
};

/// Signs that could make markup, once more than a few passes have found some: a line made for that.
std::string without_signs(std::string_view line) {
  std::string plain;
  for (const char c : line) {
    if (c == '{' || c == '}')
      plain += c == '{' ? '(' : ')';
    else if (c == '\\')
      plain += '/';
    else if (c == '&')
      plain += "+";
    else if (c == '<' || c == '>')
      plain += c == '<' ? like_less : like_greater;
    else
      plain += c;
  }
  return plain;
}

cleaned_line one_pass(std::string_view line, subtitle_format format) {
  line_cleaner cleaner(line, format);
  cleaner.run();
  return cleaner.take();
}

void add_reasons(cleaned_line& all, const cleaned_line& more) {
  for (const std::string& markup : more.drawn)
    add_once(all.drawn, markup);
  for (const std::string& reason : more.reasons)
    add_once(all.reasons, reason);
}

/// Passes until nothing more is found; at least in the line as it is drawn. `line` holds no "\N".
std::string settled(std::string line, subtitle_format format, cleaned_line& all) {
  constexpr int most_passes = 8;
  for (int pass = 0; pass < most_passes; ++pass) {
    cleaned_line found = one_pass(line, format);
    if (!found.is_changed()) {
      // Markup can stand around a tag that is left out: "{<i>y:i}".
      const std::string shown = shown_line(line, format);
      if (shown == line)
        return line;
      found = one_pass(shown, format);
      if (!found.is_changed())
        return line;
    }
    add_reasons(all, found);
    line = join(found.lines, " ");
  }
  return without_signs(line);
}

}  // namespace

std::string shown_line(std::string_view line, subtitle_format format) {
  if (format == subtitle_format::ssa)
    return without_blocks(line);
  if (!drops_tags(format))
    return std::string(line);
  std::string lost;
  const std::string whole = format == subtitle_format::sami
                                ? replace_all(replace_all(line, "\r", ""), "\n", "")
                                : std::string(line);
  return without_tags(whole, lost);
}

cleaned_line clean_line(std::string_view line, subtitle_format format) {
  cleaned_line cleaned = one_pass(line, format);
  for (std::string& one : cleaned.lines)
    one = settled(std::move(one), format, cleaned);
  return cleaned;
}

}  // namespace corvane
