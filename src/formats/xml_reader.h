// XML as the program reads it: the elements of a text, or its first fault.
//
// XML 1.0 in UTF-8, without a document type declaration: entities of its own could hide what checks
// look for, so "<!DOCTYPE" is a fault, and so is another encoding in the XML declaration. The text
// may come from a stranger: the time taken grows with its length alone (but for the logarithm of
// the number of attributes in one tag), and the depth of its elements takes no stack.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct xml_fault {
  int line = 1;      ///< from 1; ends at LF, CR LF or CR
  int column = 1;    ///< from 1, in characters
  std::string what;  ///< clause for a message: "the element \"pgc\" is not closed"
};

struct xml_attribute {
  std::string name;
  std::string value;  ///< references replaced; line breaks and TABs that stood in it are blanks
};

inline constexpr std::size_t no_xml_parent = static_cast<std::size_t>(-1);

struct xml_element {
  std::string name;                       ///< as written, with its prefix ("v:vob")
  std::vector<xml_attribute> attributes;  ///< in the order of the text; no name stands twice
  /// Its own text, without that of elements inside it: references replaced, CDATA sections
  /// included, comments and processing instructions not; line breaks are LF.
  std::string text;
  std::size_t parent = no_xml_parent;  ///< index of the element around it; the first has none
  std::size_t at = 0;                  ///< the byte of the text where its "<" stands
  int line = 1;                        ///< the line of that byte, as in xml_fault
};

struct xml_reading {
  /// In the order of their start tags: the first is the document's element, and the parent of each
  /// other one stands before it. Empty when there is a fault.
  std::vector<xml_element> elements;
  std::optional<xml_fault> fault;  ///< not set when the text is well formed
};

xml_reading read_xml(std::string_view text);

/// The fault alone. Returns nullopt if the text is well formed.
std::optional<xml_fault> first_xml_fault(std::string_view text);

/// The value of an element's attribute; nullptr when it has none of that name.
const std::string* attribute_of(const xml_element& element, std::string_view name);

/// The same; empty if there is none.
std::string attribute_text(const xml_element& element, std::string_view name);

}  // namespace corvane
