// Texts as XML holds them.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// The text as it stands between the double quotes of an attribute. Who reads it there gets it back
/// as it was; but each byte of what is no UTF-8, or a character that XML does not allow, is a "?"
/// then.
std::string xml_attribute_text(std::string_view text);

}  // namespace corvane
