#include "disc/finding.h"

#include "formats/sanitized.h"
#include "formats/time_text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <string_view>

namespace corvane {
namespace {

std::string numbered(std::string_view word, int number) {
  std::string text(word);
  if (number > 0)
    text += " " + std::to_string(number);
  return text;
}

// Cut, not rounded: what is searched must not lie before the time that is named.
std::string seconds_text(double seconds) {
  const auto whole = static_cast<long long>(std::clamp(seconds, 0.0, latest_time));
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%02lld:%02lld:%02lld", whole / 3600, whole / 60 % 60,
                whole % 60);
  return text.data();
}

void add_line(std::string& text, std::string_view label, const std::string& value) {
  if (!value.empty())
    text += "\n    " + std::string(label) + ": " + sanitized(value);
}

std::string quoted(std::string_view value) {
  std::string text = "\"";
  for (const char c : repaired_utf8(value)) {
    if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (is_control_character(c)) {
      std::array<char, 8> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
      text += escape.data();
    } else {
      text += c;
    }
  }
  return text + '"';
}

// A JSON number, with up to three places behind the point whatever the locale.
std::string number(double value) {
  const auto thousandths = std::llround(std::clamp(value, 0.0, latest_time) * 1000);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%lld.%03lld", thousandths / 1000, thousandths % 1000);
  return text.data();
}

class json_object {
 public:
  void add(std::string_view name, const std::string& value) {
    text_ += text_.empty() ? "{" : ", ";
    text_ += quoted(name) + ": " + value;
  }
  void add_text(std::string_view name, const std::string& value) {
    if (!value.empty())
      add(name, quoted(value));
  }
  std::string text() const { return text_ + "}"; }

 private:
  std::string text_;
};

std::string object_of(const finding& f) {
  json_object item;
  item.add_text("of", std::string(name_of(f.item.whole)));
  if (f.item.number > 0)
    item.add("number", std::to_string(f.item.number));
  item.add_text("part", std::string(name_of(f.item.part)));
  if (f.item.part_number > 0)
    item.add("partNumber", std::to_string(f.item.part_number));

  json_object object;
  object.add_text("rule", f.rule);
  object.add_text("severity", name_of(f.severity));
  object.add("item", item.text());
  object.add_text("place", place_text(f));
  object.add_text("file", f.file);
  if (f.seconds)
    object.add("seconds", number(*f.seconds));
  if (f.byte)
    object.add("byte", std::to_string(*f.byte));
  object.add_text("found", f.found);
  object.add_text("wanted", f.wanted);
  object.add_text("consequence", f.consequence);
  object.add_text("remedy", f.remedy);
  return object.text();
}

}  // namespace

const char* name_of(finding_severity severity) {
  return severity_names[static_cast<std::size_t>(severity)].data();
}

std::size_t count_of(const std::vector<finding>& findings, finding_severity severity) {
  return static_cast<std::size_t>(
      std::count_if(findings.begin(), findings.end(),
                    [severity](const finding& f) { return f.severity == severity; }));
}

std::string place_text(const finding& f) {
  std::string text = numbered(name_of(f.item.whole), f.item.number);
  if (f.item.part != finding_item::part_kind::whole)
    text += ", " + numbered(name_of(f.item.part), f.item.part_number);
  if (f.seconds)
    text += ", " + seconds_text(*f.seconds);
  return text;
}

std::string line_of(const finding& f) {
  return std::string(name_of(f.severity)) + ": " + place_text(f) + ": " + sanitized(f.found) + ".";
}

std::string text_of(const finding& f) {
  std::string text = line_of(f);
  add_line(text, "file", f.file);
  add_line(text, "must be", f.wanted);
  add_line(text, "a viewer would see", f.consequence);
  add_line(text, "what to do", f.remedy);
  add_line(text, "rule", f.rule);
  return text;
}

std::string json_of(const std::vector<finding>& findings) {
  std::string text = "[";
  for (const finding& f : findings)
    text += (text.size() == 1 ? "\n  " : ",\n  ") + object_of(f);
  return text + (findings.empty() ? "]" : "\n]");
}

}  // namespace corvane
