// Any bytes as an audio stream, in slices of any size: each of them is in a frame, in a gap or in
// the frame that is cut, gaps lie in the stream one after the other, and nothing depends on the
// slices.
#include "examine/audio_facts.h"
#include "must.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace {

using corvane::audio_facts;

audio_facts facts_of(const std::uint8_t* data, std::size_t size, std::size_t slice) {
  corvane::audio_scanner scanner;
  for (std::size_t at = 0; at < size; at += slice)
    scanner.feed(data + at, std::min(slice, size - at));
  scanner.finish();
  return scanner.facts();
}

void check_gaps(const audio_facts& facts) {
  std::uint64_t end = 0, all = 0;
  corvane::audio_time before = 0;
  for (const corvane::audio_gap& gap : facts.gaps) {
    must(gap.size > 0 && gap.position >= end, "gaps come one after the other");
    end = gap.position + gap.size;
    must(end <= facts.bytes, "gaps lie in the stream");
    must(gap.before >= before && gap.before <= facts.length, "gaps have a time in the stream");
    before = gap.before;
    all += gap.size;
  }
  must(facts.gap_count >= facts.gaps.size(), "all gaps are counted");
  must(facts.gap_count > facts.gaps.size() || all == facts.gap_bytes, "all their bytes are");
  must(!facts.first_inner_gap || facts.frames > 1, "an inner gap stands between frames");
}

void check(const audio_facts& facts, std::size_t size) {
  must(facts.bytes == size, "all bytes are counted");
  const std::uint64_t cut = facts.cut ? facts.cut->bytes_there : 0;
  must(facts.frame_bytes + facts.gap_bytes + cut == size, "each byte is somewhere");
  must(!facts.cut || (facts.cut->position + cut == size && facts.cut->bytes_missing > 0),
       "a cut frame is the last thing");
  must(facts.first.has_value() == (facts.frames > 0), "with a frame there is a first one");
  must(!facts.first || facts.kind == facts.first->kind, "the kind is that of the first frame");
  must(facts.damaged_frames <= facts.frames, "damaged frames are frames");
  must(facts.first_damaged.has_value() == (facts.damaged_frames > 0), "the first damaged is known");
  check_gaps(facts);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0)
    return 0;
  const audio_facts facts = facts_of(data, size, size);
  check(facts, size);
  for (const std::size_t slice : {1 + data[size - 1] % std::size_t{64}, std::size_t{1000}})
    must(facts_of(data, size, slice) == facts, "slices make no difference");
  const auto head = corvane::read_audio_head({data, size}, true);
  must(!head || size > corvane::audio_head_bytes || *head == facts, "a short file is its head");
  return 0;
}
