// mplex: where an MPEG audio stream holds a byte too many it stops reading that stream, and ends
// with status 0.
#pragma once

#include "runner/tools/tool_ways.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

class mplex_ways : public tool_ways {
 public:
  std::vector<finding> explain(const tool_call& call, const tool_result& result,
                               tool_files& files) const override;
};

/// An audio stream that mplex put in.
struct muxed_audio {
  std::string id;           ///< as mplex names it: "c0" is the first of MPEG audio, "bd" is AC-3
  std::string file;         ///< native path
  std::uint64_t bytes = 0;  ///< how much of it was taken; 0 if mplex did not come so far
  double bit_rate = 0;      ///< bit/s that its header names; 0 if none
};

/// The audio streams of which mplex's output speaks, in the order of its call.
std::vector<muxed_audio> muxed_audio_in(std::string_view printed);

}  // namespace corvane
