#include "disc/finding.h"

#include "disc/finding_json.h"
#include "formats/json_text.h"
#include "formats/sanitized.h"
#include "formats/time_text.h"

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

std::string object_of(const finding& f) {
  json_object object;
  object.add_text("rule", f.rule);
  object.add_text("severity", name_of(f.severity));
  object.add("item", json_of_item(f.item));
  object.add_text("place", place_text(f));
  object.add_text("file", f.file);
  if (f.seconds)
    object.add("seconds", json_number(*f.seconds));
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

std::string json_of_item(const finding_item& item) {
  json_object object;
  object.add_text("of", name_of(item.whole));
  if (item.number > 0)
    object.add("number", std::to_string(item.number));
  object.add_text("part", name_of(item.part));
  if (item.part_number > 0)
    object.add("partNumber", std::to_string(item.part_number));
  return object.text();
}

std::string json_of(const std::vector<finding>& findings) {
  json_lines lines;
  for (const finding& f : findings)
    lines.add(object_of(f));
  return lines.text();
}

}  // namespace corvane
