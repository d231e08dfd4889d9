// The start tags of an XML text, as far as a check of attributes needs them.
#pragma once

#include "platform/result.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct xml_attribute {
  std::string name;
  std::string value;  ///< entities replaced
};

struct xml_tag {
  std::string name;
  std::vector<xml_attribute> attributes;
  std::size_t at = 0;  ///< where its "<" stands
};

/// All start tags, in order; comments, CDATA sections and instructions are passed over. Fails, with
/// a clause that names the line, on what a reader could take in another way: tags that are not well
/// formed, declarations ("<!DOCTYPE"), references to entities that XML itself does not define, an
/// encoding other than UTF-8, characters XML does not allow.
result<std::vector<xml_tag>> xml_start_tags(std::string_view text);

}  // namespace corvane
