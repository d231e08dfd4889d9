#include "platform/system_version.h"

namespace corvane {

failure why_system_is_too_old() {
  return std::nullopt;
}

}  // namespace corvane
