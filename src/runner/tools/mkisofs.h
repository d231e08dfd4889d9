// mkisofs: it makes an image of whatever stands in the folder, half a disc too, and the image would
// have the name of the whole one.
#pragma once

#include "runner/tools/tool_ways.h"

namespace corvane {

class mkisofs_ways : public tool_ways {
 public:
  std::string why_not_after_errors() const override;
};

}  // namespace corvane
