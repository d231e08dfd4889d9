#include "disc/finding_file.h"

#include "formats/numbers.h"
#include "formats/time_text.h"
#include "formats/xml_reader.h"
#include "formats/xml_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr const char* list_name = "findings";
constexpr const char* entry_name = "finding";

void add_attribute(std::string& line, const char* name, std::string_view value) {
  if (!value.empty())
    line += " " + std::string(name) + "=\"" + xml_attribute_text(value) + "\"";
}

void add_number(std::string& line, const char* name, int number) {
  if (number != 0)
    add_attribute(line, name, std::to_string(number));
}

std::string milliseconds_text(double seconds) {
  return std::to_string(std::llround(std::clamp(seconds, 0.0, latest_time) * 1000));
}

std::string entry_of(const finding& f) {
  std::string line = "  <" + std::string(entry_name);
  add_attribute(line, "rule", f.rule);
  add_attribute(line, "severity", name_of(f.severity));
  add_attribute(line, "of", name_of(f.item.whole));
  add_number(line, "number", f.item.number);
  add_attribute(line, "part", name_of(f.item.part));
  add_number(line, "part-number", f.item.part_number);
  add_attribute(line, "file", f.file);
  if (f.seconds)
    add_attribute(line, "milliseconds", milliseconds_text(*f.seconds));
  if (f.byte)
    add_attribute(line, "byte", std::to_string(*f.byte));
  add_attribute(line, "found", f.found);
  add_attribute(line, "wanted", f.wanted);
  add_attribute(line, "consequence", f.consequence);
  add_attribute(line, "remedy", f.remedy);
  return line + "/>\n";
}

template <typename Kind, std::size_t Count>
bool read_name(const xml_element& element, std::string_view name,
               const std::array<std::string_view, Count>& names, Kind& kind) {
  const auto at = std::find(names.begin(), names.end(), attribute_text(element, name));
  if (at == names.end())
    return false;
  kind = static_cast<Kind>(at - names.begin());
  return true;
}

std::optional<std::uint64_t> read_byte(const std::string& text) {
  std::uint64_t byte = 0;
  const auto read = std::from_chars(text.data(), text.data() + text.size(), byte);
  return read.ec == std::errc() ? std::optional(byte) : std::nullopt;
}

std::optional<finding> finding_in(const xml_element& element) {
  finding f;
  if (!read_name(element, "severity", severity_names, f.severity) ||
      !read_name(element, "of", whole_names, f.item.whole) ||
      !read_name(element, "part", part_names, f.item.part))
    return std::nullopt;
  f.rule = attribute_text(element, "rule");
  f.item.number = leading_whole(attribute_text(element, "number"));
  f.item.part_number = leading_whole(attribute_text(element, "part-number"));
  f.file = attribute_text(element, "file");
  if (const std::string milliseconds = attribute_text(element, "milliseconds");
      !milliseconds.empty())
    f.seconds = leading_number(milliseconds) / 1000;
  f.byte = read_byte(attribute_text(element, "byte"));
  f.found = attribute_text(element, "found");
  f.wanted = attribute_text(element, "wanted");
  f.consequence = attribute_text(element, "consequence");
  f.remedy = attribute_text(element, "remedy");
  return f;
}

}  // namespace

std::string findings_text(const std::vector<finding>& findings) {
  std::string text =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<" + std::string(list_name) + ">\n";
  for (const finding& f : findings)
    text += entry_of(f);
  return text + "</" + list_name + ">\n";
}

result<std::vector<finding>> parse_findings(std::string_view text) {
  using parsed = result<std::vector<finding>>;
  const xml_reading read = read_xml(text);
  if (read.fault)
    return parsed::fail("line " + std::to_string(read.fault->line) + ": " + read.fault->what);
  if (read.elements.front().name != list_name)
    return parsed::fail("it holds no findings");
  std::vector<finding> findings;
  for (const xml_element& element : read.elements) {
    if (element.name != entry_name)
      continue;
    std::optional<finding> f = finding_in(element);
    if (!f)
      return parsed::fail("line " + std::to_string(element.line) + " is no finding");
    findings.push_back(std::move(*f));
  }
  return parsed::ok(std::move(findings));
}

}  // namespace corvane
