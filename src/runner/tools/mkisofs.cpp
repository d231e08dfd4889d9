#include "runner/tools/mkisofs.h"

namespace corvane {

std::string mkisofs_ways::why_not_after_errors() const {
  return "no image is made, since something went wrong before";
}

}  // namespace corvane
