// Any bytes as a program stream, in slices of any size: the facts do not depend on the slices, each
// byte is counted once at most, places lie in the stream, and no list grows without an end.
#include "examine/program_stream_facts.h"
#include "must.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace {

using corvane::inner_stream;
using corvane::inner_streams;
using corvane::program_stream_facts;

program_stream_facts facts_of(const std::uint8_t* data, std::size_t size, std::size_t slice,
                              inner_streams which) {
  corvane::program_stream_scanner scanner(which);
  for (std::size_t at = 0; at < size; at += slice)
    scanner.feed(data + at, std::min(slice, size - at));
  scanner.finish();
  return scanner.facts();
}

template <typename T>
void check_list(const corvane::counted_list<T>& list) {
  must(list.kept.size() == std::min<std::uint64_t>(list.count, list.most_kept),
       "the first thousand are kept");
}

void check_breaks(const corvane::counted_list<corvane::time_break>& breaks, std::size_t size) {
  check_list(breaks);
  for (const corvane::time_break& one : breaks.kept)
    must(one.position < size, "a break lies in the stream");
}

void check_stream(const inner_stream& one, std::size_t size) {
  check_breaks(one.breaks, size);
  must(one.first_packet < size && one.packets > 0, "a stream has packets");
  must(one.stamps <= one.packets, "a packet has one stamp at most");
  must(one.first.has_value() == (one.stamps > 0) && one.last.has_value() == (one.stamps > 0),
       "stamps are first and last");
  if (one.video)
    must(one.video->bytes == one.payload_bytes, "all of the video is looked at");
  if (one.audio)
    must(one.audio->bytes == one.payload_bytes, "all of the sound is looked at");
}

void check_bytes(const program_stream_facts& facts, std::size_t size) {
  std::uint64_t bytes = facts.loose_bytes_in_all + facts.padding_bytes + 12 * facts.packs;
  for (const inner_stream& one : facts.streams)
    bytes += one.payload_bytes + 6 * one.packets;
  if (facts.cut)
    must(facts.cut->position + facts.cut->bytes_there == size && facts.cut->bytes_missing > 0,
         "a cut packet is the last one");
  must(bytes <= size, "a byte counts once");
  std::uint64_t end = 0;
  for (const corvane::loose_bytes& one : facts.loose.kept) {
    must(one.position >= end && one.size > 0, "loose bytes come one after the other");
    end = one.position + one.size;
    must(end <= size, "loose bytes lie in the stream");
  }
}

void check(const program_stream_facts& facts, std::size_t size) {
  must(facts.whole && facts.bytes == size, "all of it was read");
  check_bytes(facts, size);
  check_list(facts.loose);
  check_list(facts.uneven_packs);
  check_list(facts.cells);
  check_list(facts.middle_end_codes);
  check_breaks(facts.clock_breaks, size);
  must(facts.nav_packs <= facts.packs && facts.packs_of_the_other <= facts.packs, "packs");
  must(facts.largest_nav_distance <= size, "distances lie in the stream");
  for (const inner_stream& one : facts.streams)
    check_stream(one, size);
  must(std::ranges::is_sorted(
           facts.streams, {},
           [](const inner_stream& one) { return std::pair(one.kind, one.number); }),
       "streams are in order");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0)
    return 0;
  const std::size_t slice = 1 + data[size - 1] % 64;
  const program_stream_facts facts = facts_of(data, size, size, inner_streams::examined);
  check(facts, size);
  must(facts == facts_of(data, size, slice, inner_streams::examined), "slices make no difference");
  const program_stream_facts counted = facts_of(data, size, slice, inner_streams::counted);
  check(counted, size);
  must(counted.packs == facts.packs && counted.streams.size() == facts.streams.size(),
       "counting finds the same streams");
  const auto head = corvane::read_program_stream_head({data, size});
  must(!head || (head->packs > 0 && head->packs <= facts.packs && !head->cut),
       "the beginning tells of no more");
  return 0;
}
