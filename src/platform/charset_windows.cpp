#include "platform/charset.h"

namespace corvane {

decoded_bytes decode(std::string_view /*bytes*/, const std::string& /*charset*/) {
  return {};
}

}  // namespace corvane
