#include "runner/tools/known_messages.h"

#include "formats/sanitized.h"
#include "formats/text.h"
#include "runner/output_lines.h"
#include "runner/run_files.h"
#include "runner/tools/message_tables.h"
#include "runner/tools/tool_outcomes.h"
#include "runner/tools/tool_ways.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <optional>

namespace corvane {
namespace {

/// More would only be more of the same.
constexpr std::size_t most_found = 50;

/// Patterns of what stands in ordinary runs, or goes on with what the line before said.
constexpr std::array<std::string_view, 11> harmless_warnings = {
    "WARN: Previous sector:",
    "WARN: Current sector:",
    "WARN: Using SCR instead.",
    "WARN: (button #1=",
    "WARN:Selected font is fixed-width.",
    "WARN:spacewidth set to default.",
    "++ WARN: [%] N.b. a 20% or so discrepancy",
    "++ WARN: [%] streams is common and harmless",
    "++ WARN: [%] Video ~: buf=",
    "++ WARN: [%] Audio ~: buf=",
    "++ WARN: [%] Other ~: buf="};

/// From its mark on, which begins it or follows a report of progress; empty where it says nothing
/// that should be known.
std::string_view warning_in(std::string_view line) {
  constexpr std::string_view mark = "WARN:", starred = "++ WARN:", progress = "STAT:";
  line = trim_left(line);
  if (line.starts_with(progress))
    line.remove_prefix(std::min(line.find(mark), line.size()));
  const std::string_view own = line.starts_with(starred) ? starred : mark;
  std::vector<std::string_view> parts;
  if (!line.starts_with(own) || trim(line.substr(own.size())).empty() ||
      std::ranges::any_of(harmless_warnings,
                          [&](std::string_view one) { return is_message(line, one, parts); }))
    return {};
  return line;
}

std::string without_digits(std::string text) {
  std::erase_if(text, [](char c) { return c >= '0' && c <= '9'; });
  return text;
}

template <class Number>
std::optional<Number> number_in(std::string_view text) {
  text = trim(text);
  const bool hexadecimal = text.starts_with("0x");
  text.remove_prefix(hexadecimal ? 2 : 0);
  Number number = 0;
  const auto read =
      std::from_chars(text.data(), text.data() + text.size(), number, hexadecimal ? 16 : 10);
  if (read.ec != std::errc())
    return std::nullopt;
  return number;
}

/// Small enough that nothing overflows.
std::optional<int> small_number(std::string_view text) {
  const std::optional<int> number = number_in<int>(text);
  return number && *number >= 0 && *number < 10000 ? number : std::nullopt;
}

std::string seconds_of_ticks(std::string_view ticks) {
  const std::optional<std::int64_t> number = number_in<std::int64_t>(ticks);
  if (!number)
    return std::string(ticks);
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "%.3f", static_cast<double>(*number) / 90000);
  return text.data();
}

/// The value of "1", "1+", "1s" or "1^".
std::string value_of(std::string_view name, const std::vector<std::string_view>& parts) {
  const auto index = static_cast<std::size_t>(name.front() - '1');
  if (index >= parts.size())
    return {};
  const std::string_view part = parts[index];
  if (name.ends_with('s'))
    return seconds_of_ticks(part);
  if (name.ends_with('^'))
    return upper(part);
  if (const std::optional<int> number = small_number(part); number && name.ends_with('+'))
    return std::to_string(*number + 1);
  return std::string(part);
}

/// Without a full stop that a part brings with it.
std::string filled(std::string_view text, const std::vector<std::string_view>& parts) {
  std::string result;
  for (;;) {
    const std::size_t begin = text.find('{');
    const std::size_t end = begin == std::string_view::npos ? begin : text.find('}', begin);
    if (end == std::string_view::npos || end < begin + 2) {
      result += text;
      if (result.ends_with('.'))
        result.pop_back();
      return result;
    }
    result += text.substr(0, begin);
    result += value_of(text.substr(begin + 1, end - begin - 1), parts);
    text.remove_prefix(end + 1);
  }
}

int part_number(const known_message& message, const std::vector<std::string_view>& parts) {
  const auto index = static_cast<std::size_t>(message.part_from);
  if (index == 0 || index > parts.size())
    return 0;
  const std::optional<int> number = small_number(parts[index - 1]);
  return number ? *number + 1 : 0;
}

std::optional<finding_item> item_of_file(const std::string& path) {
  const std::string name = name_in_path(path);
  using whole = finding_item::whole_kind;
  if (const auto title = run_file::title_of_stream(name))
    if (const auto number = small_number(*title))
      return finding_item{whole::title, *number};
  for (const auto& menu : {run_file::menu_of_stream(name), run_file::menu_of_picture(name)})
    if (const auto number = menu ? small_number(*menu) : std::nullopt)
      return finding_item{whole::menu, *number};
  return std::nullopt;
}

void add_sentence(std::string& text, const std::string& sentence) {
  if (!sentence.empty())
    text += " " + sentence + ".";
}

}  // namespace

std::span<const known_message> known_messages_of(std::string_view tool) {
  if (tool == "mplex.exe")
    return mplex_messages();
  if (tool == "dvdauthor.exe")
    return dvdauthor_messages();
  if (tool == "spumux.exe")
    return spumux_messages();
  if (tool == "mkisofs.exe")
    return mkisofs_messages();
  return {};
}

bool is_message(std::string_view line, std::string_view pattern,
                std::vector<std::string_view>& parts) {
  const auto is_gap = [](char c) { return c == '~' || c == '%'; };
  const auto length_of_literal = [&](std::string_view text) {
    return static_cast<std::size_t>(std::find_if(text.begin(), text.end(), is_gap) - text.begin());
  };
  parts.clear();
  if (line.starts_with(' '))
    line = trim_left(line);
  // Most lines are none of the messages, and that shows in their first letters.
  std::size_t length = 0;
  for (; length < pattern.size() && !is_gap(pattern[length]); ++length)
    if (length == line.size() || line[length] != pattern[length])
      return false;
  while (length < pattern.size()) {
    line.remove_prefix(length);
    const bool is_part = pattern[length] == '~';
    pattern.remove_prefix(length + 1);
    length = length_of_literal(pattern);
    const std::size_t at = pattern.empty() ? line.size() : line.find(pattern.substr(0, length));
    if (at == std::string_view::npos)
      return false;
    if (is_part)
      parts.push_back(line.substr(0, at));
    line.remove_prefix(at);
  }
  return true;
}

finding_item item_of_call(const script_words& words, const std::string& output) {
  if (const auto subtitle = run_file::subtitle_of_control(name_in_path(words.back()))) {
    const std::optional<int> title = small_number(subtitle->title);
    const std::optional<int> number = small_number(subtitle->number);
    if (title && number)
      return {finding_item::whole_kind::title, *title, finding_item::part_kind::subtitle, *number};
  }
  if (const auto item = item_of_file(output))
    return *item;
  for (std::size_t i = 1; i + 1 < words.size(); ++i)
    if (words[i] == "-o")
      if (const auto item = item_of_file(words[i + 1]))
        return *item;
  // gm draws into the last file that it is told of.
  if (run_file::menu_of_picture(name_in_path(words.back())))
    return item_of_file(words.back()).value_or(finding_item());
  return {};
}

message_reader::message_reader(std::string_view tool, finding_item item)
    : tool_(tool.substr(0, tool.rfind('.'))), messages_(known_messages_of(tool)), item_(item) {}

void message_reader::look_at(std::string_view line) {
  constexpr std::string_view begins_file = "STAT: Processing ", after_file = "...";
  if (!messages_.empty() && line.starts_with(begins_file) && line.ends_with(after_file)) {
    line.remove_prefix(begins_file.size());
    line.remove_suffix(after_file.size());
    const std::optional<finding_item> item = item_of_file(std::string(line));
    item_ = item.value_or(finding_item());
    file_ = item ? std::string_view() : line;
    return;
  }
  std::vector<std::string_view> parts;
  for (const known_message& message : messages_)
    if (is_message(line, message.pattern, parts))
      return add(message, parts);
  if (is_error_line(line))
    add_unknown("tool-error", line);
  else if (const auto warning = warning_in(line); !messages_.empty() && !warning.empty())
    add_unknown("tool-warning", warning);
}

/// The same of the same item; null if it was not said before.
message_reader::told* message_reader::find(const finding& f) {
  const auto known = std::find_if(found_.begin(), found_.end(), [&f](const told& one) {
    return one.what.rule == f.rule && one.what.item == f.item && one.what.file == f.file;
  });
  return known == found_.end() ? nullptr : &*known;
}

void message_reader::add_unknown(std::string_view rule, std::string_view line) {
  finding f = outcome_finding(rule, item_, tool_ + " says " + sanitized_quoted(trim(line)));
  f.file = file_;
  // Another place of the same kind is no more news.
  const auto known = std::find_if(found_.begin(), found_.end(), [&f](const told& one) {
    return one.what.rule == f.rule && one.what.item == f.item && one.what.file == f.file &&
           without_digits(one.what.found) == without_digits(f.found);
  });
  if (known != found_.end())
    ++known->times;
  else if (found_.size() < most_found)
    found_.push_back({std::move(f), 1, false});
}

void message_reader::add(const known_message& message, const std::vector<std::string_view>& parts) {
  finding f;
  f.rule = message.rule;
  f.severity = message.severity;
  if (message.about == message_about::stream) {
    f.item = item_;
    f.file = file_;
  }
  if (message.part != finding_item::part_kind::whole) {
    f.item.part = message.part;
    f.item.part_number = part_number(message, parts);
  }
  if (told* const known = find(f)) {
    ++known->times;
    return;
  }
  if (found_.size() == most_found)
    return;
  if (message.byte_from > 0 && static_cast<std::size_t>(message.byte_from) <= parts.size())
    f.byte = number_in<std::uint64_t>(parts[static_cast<std::size_t>(message.byte_from) - 1]);
  f.found = filled(message.found, parts);
  f.consequence = filled(message.consequence, parts);
  f.remedy = filled(message.remedy, parts);
  found_.push_back({std::move(f)});
}

finding counted(finding f, int times) {
  if (times > 1)
    f.found += " (said " + std::to_string(times) + " times)";
  return f;
}

std::string log_line(const finding& f, int times) {
  std::string text(f.severity == finding_severity::error     ? error_mark
                   : f.severity == finding_severity::warning ? "WARN: "
                                                             : "INFO: ");
  if (f.item.whole != finding_item::whole_kind::disc)
    text += place_text(f) + ": ";
  if (!f.file.empty())
    text += f.file + ": ";
  text += counted(f, times).found + ".";
  add_sentence(text, f.consequence);
  add_sentence(text, f.remedy);
  return sanitized(text);
}

}  // namespace corvane
