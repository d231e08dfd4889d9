#include "platform/text/charset.h"

namespace corvane {

std::optional<std::string> in_system_charset(std::string_view text) {
  return std::string(text);
}

}  // namespace corvane
