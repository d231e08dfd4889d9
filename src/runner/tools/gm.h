// GraphicsMagick: it refuses drawings that are empty, which harms nothing.
#pragma once

#include "runner/tools/tool_ways.h"

namespace corvane {

class gm_ways : public tool_ways {
 public:
  /// Whether it ended with status 1 for nothing but a drawing it refuses as empty, which happens
  /// when the frame of a button leaves no inside to clear. The picture is right as it stands.
  bool forgives(const program_end& end, std::string_view printed) const override;
};

}  // namespace corvane
