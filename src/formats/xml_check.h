// Whether a text is well-formed XML, and where the first fault is.
//
// As XML 1.0 has it, for a document in UTF-8 without a document type declaration: authoring
// refuses one, since entities of its own could hide what the other checks look for. The text may
// come from a stranger: the time taken grows with its length alone, and the depth of its elements
// takes no stack.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

struct xml_fault {
  int line = 1;      ///< from 1; ends at LF, CR LF or CR
  int column = 1;    ///< from 1, in characters
  std::string what;  ///< clause for a message: "the element \"pgc\" is not closed"
};

/// Nothing when the text is well formed.
std::optional<xml_fault> first_xml_fault(std::string_view text);

}  // namespace corvane
