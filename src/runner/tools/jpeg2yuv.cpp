#include "runner/tools/jpeg2yuv.h"

#include "formats/aspect_code.h"
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

finding still_finding(std::string_view rule, const std::string& m2v, const std::string& what) {
  finding f = outcome_finding(rule, {}, "the still video \"" + m2v + "\" " + what);
  f.file = m2v;
  return f;
}

/// The aspect code that mpeg2enc was asked for. It writes 1 (square pixels, which no DVD has) when
/// it is asked for none; the pictures have the shape of a television then, which is 4:3.
int asked_aspect(const script_words& mpeg2enc) {
  return word_after(mpeg2enc, "-a") == "3" ? aspect_code::wide : aspect_code::narrow;
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
  if (!why.empty())
    return {still_finding("still-incomplete", m2v, "is not as it should be: " + why)};
  if (const failure why_not = files.set_aspect_code(m2v, asked_aspect(call.line[1])))
    return {
        still_finding("still-aspect", m2v, "does not get the proportions of a DVD: " + *why_not)};
  return {};
}

}  // namespace corvane
