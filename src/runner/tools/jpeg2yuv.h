// jpeg2yuv, which hands a still's pictures on to mpeg2enc: of a picture that gets lost between
// them, or a video that is not whole, neither exit status tells. The video calls its pixels square,
// which no DVD knows: in a whole one the proportions are put right.
#pragma once

#include "runner/tools/tool_ways.h"

#include <string>
#include <vector>

namespace corvane {

class jpeg2yuv_ways : public tool_ways {
 public:
  std::string makes(const tool_call& call) const override;
  std::vector<finding> judge(const tool_call& call, const tool_result& result,
                             tool_files& files) const override;
};

}  // namespace corvane
