#include "runner/tools/jpeg2yuv.h"

#include "formats/numbers.h"
#include "runner/tools/tool_outcomes.h"

#include <algorithm>

namespace corvane {
namespace {

constexpr int ntsc_lines = 480, pal_lines = 576;

/// The word behind this one; empty if there is none.
std::string word_after(const script_words& words, std::string_view option) {
  const auto at = std::find(words.begin(), words.end(), option);
  return at == words.end() || at + 1 == words.end() ? std::string() : *(at + 1);
}

bool ended_well(const tool_result& result) {
  return result.ends.size() == 2 &&
         std::all_of(result.ends.begin(), result.ends.end(),
                     [](const program_end& end) { return complaint_about("x", end).empty(); });
}

}  // namespace

std::string jpeg2yuv_ways::makes(const tool_call& call) const {
  if (call.line.size() != 2 || name_in_path(call.line[1][0]) != "mpeg2enc.exe")
    return {};
  return word_after(call.line[1], "-o");
}

// Of a failure it has been told.
std::vector<finding> jpeg2yuv_ways::judge(const tool_call& call, const tool_result& result,
                                          tool_files& files) const {
  const std::string m2v = makes(call);
  if (m2v.empty() || !ended_well(result))
    return {};
  const still_form asked{leading_whole(word_after(call.words, "-n")),
                         word_after(call.line[1], "-n") == "p" ? pal_lines : ntsc_lines};
  const std::string why = result.left_alone
                              ? "mpeg2enc did not write it, and what lies there is older"
                              : files.why_not_this_still(m2v, asked);
  if (why.empty())
    return {};
  finding f = outcome_finding("still-incomplete", {},
                              "the still video \"" + m2v + "\" is not as it should be: " + why);
  f.file = m2v;
  return {f};
}

}  // namespace corvane
