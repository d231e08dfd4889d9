// Any bytes as hand-edited XML: reading ends, and gives elements or names a place in the text.
#include "formats/xml_reader.h"
#include "must.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const auto fault = corvane::first_xml_fault(text);
  const corvane::xml_reading xml = corvane::read_xml(text);
  must(xml.fault.has_value() == fault.has_value(), "the fault is the same without elements");
  must(xml.elements.empty() == fault.has_value(), "there are elements or a fault");
  std::size_t last = 0;
  for (std::size_t i = 0; i < xml.elements.size(); ++i) {
    const corvane::xml_element& e = xml.elements[i];
    must(text.substr(e.at, e.name.size() + 1) == "<" + e.name, "an element has its place");
    must(i == 0 || (e.at > last && e.parent < i), "elements stand in order, parents first");
    last = e.at;
  }
  if (!fault) {
    must(text.find('<') != std::string_view::npos, "a well-formed text has an element");
    must(text.find('\0') == std::string_view::npos, "a well-formed text has no NUL");
    return 0;
  }
  const auto breaks =
      std::count_if(text.begin(), text.end(), [](char c) { return c == '\n' || c == '\r'; });
  must(fault->line >= 1 && fault->line <= breaks + 1, "the line is one of the text");
  must(fault->column >= 1 && static_cast<std::size_t>(fault->column) <= size + 1,
       "the column is one of the text");
  must(!fault->what.empty() && fault->what.size() < 250, "the fault is told in short");
  return 0;
}
