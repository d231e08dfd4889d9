#include "authoring/checks.h"
#include "authoring/navigation_xml.h"
#include "authoring/row_checks.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "formats/xml_reader.h"

#include <algorithm>

namespace corvane {
namespace {

std::string refused(const std::string& clause) {
  return "The hand-edited XML cannot be authored: " + clause +
         ".  Please edit the XML again, or discard the edit by changing the project.";
}

// As a clause.
refusal why_not_value(std::string_view value) {
  // dvdauthor prints the names of files as they are: behind a line end a name could say that the
  // run is complete. Only references give such characters; those that just stand there are blanks.
  if (holds_control_character(value))
    return "contains a control character, which no name can have";
  // dvdauthor starts what a file name that ends in "|" names as a shell command, for every kind of
  // file; no attribute has another reason to end so.
  if (trim(value).ends_with('|'))
    return "ends in a vertical bar (|), which would run it as a command";
  return std::nullopt;
}

refusal why_not_attributes(const std::vector<xml_element>& tags) {
  for (const xml_element& tag : tags)
    for (const xml_attribute& a : tag.attributes)
      if (const refusal why = why_not_value(a.value))
        return refused("in line " + std::to_string(tag.line) + ", the attribute " +
                       sanitized_quoted(a.name) + " of " + sanitized_quoted(tag.name) + ", " +
                       sanitized_quoted(a.value) + ", " + *why);
  return std::nullopt;
}

std::size_t second_line(std::string_view text) {
  const auto end = text.find('\n');
  if (end == std::string_view::npos)
    return text.size();
  return std::min(text.find_first_not_of(" \t", end + 1), text.size());
}

// Script and dvdauthor must mean the same folder: the first tag stands on the second line, and no
// other names one.
refusal why_not_folder_line(std::string_view text, const std::vector<xml_element>& tags) {
  const std::string other = "its second line is not the one that names the output folder";
  if (tags.empty() || tags[0].name != "dvdauthor" || tags[0].at != second_line(text))
    return refused(other);
  const std::vector<xml_attribute>& attributes = tags[0].attributes;
  if (attributes.empty() || attributes[0].name != "dest" ||
      attributes[0].value != folder_of_custom_xml(text))
    return refused(other);
  for (std::size_t i = 0; i < tags.size(); ++i)
    for (const xml_attribute& a : tags[i].attributes)
      if (a.name == "dest" && &a != &attributes[0])
        return refused("it names more than one output folder");
  return std::nullopt;
}

}  // namespace

std::optional<std::string> why_not_safe_xml(std::string_view customxml) {
  const xml_reading xml = read_xml(customxml);
  if (xml.fault)
    return refused("in line " + std::to_string(xml.fault->line) + ", " + xml.fault->what);
  if (const refusal why = why_not_attributes(xml.elements))
    return why;
  return why_not_folder_line(customxml, xml.elements);
}

}  // namespace corvane
