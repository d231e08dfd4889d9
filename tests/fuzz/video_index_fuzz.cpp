// Any bytes as an MPEG video stream, in slices of any size and in packets: the index names pictures
// that lie in the stream one after the other, each of them shown once or not at all, and it does
// not depend on the slices.
#include "formats/program_stream.h"
#include "formats/video_index.h"
#include "must.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

using corvane::video_index;

video_index index_of(const std::uint8_t* data, std::size_t size, std::size_t slice) {
  corvane::video_index_builder builder;
  for (std::size_t at = 0; at < size; at += slice)
    builder.feed(data + at, std::min(slice, size - at));
  builder.finish();
  return builder.index();
}

void check_pictures(const video_index& index, std::size_t size) {
  std::uint64_t end = 0;
  for (std::size_t coded = 0; coded < index.coded(); ++coded) {
    const corvane::byte_range range = index.bytes_of(coded);
    must(range.position >= end && range.size > 0, "pictures come one after the other");
    end = range.position + range.size;
    must(end <= size, "pictures lie in the stream");
    must(index.group_of(coded) < index.groups().size(), "a picture has a group");
    must(index.groups()[index.group_of(coded)].first_coded <= coded, "a group begins first");
  }
}

void check_order(const video_index& index) {
  std::vector<bool> shown(index.coded(), false);
  for (std::size_t n = 0; n < index.shown(); ++n) {
    const std::size_t coded = index.coded_of(n);
    must(coded < index.coded() && !shown[coded], "each number shows a picture of its own");
    shown[coded] = true;
    must(index.fields_before(n + 1) >= index.fields_before(n) + 2, "each picture takes its time");
    must(index.shown_at_field(index.fields_before(n)) == n, "times lead back to the picture");
  }
  for (std::size_t group = 0; group < index.groups_shown(); ++group)
    must(index.group_shown(index.first_shown(group)) == group, "a group is where it begins");
  must(index.groups_shown() == index.groups().size(), "every group is shown");
}

void check_same(const video_index& a, const video_index& b) {
  must(a.shape() == b.shape() && a.coded() == b.coded() && a.shown() == b.shown(),
       "slices make no difference");
  for (std::size_t coded = 0; coded < a.coded(); ++coded)
    must(a.bytes_of(coded).position == b.bytes_of(coded).position &&
             a.bytes_of(coded).size == b.bytes_of(coded).size &&
             a.kind_of(coded) == b.kind_of(coded) && a.leading(coded) == b.leading(coded),
         "slices make no difference to a picture");
}

void check_packets(const std::uint8_t* data, std::size_t size) {
  for (std::size_t at = 0; at < size;) {
    const corvane::stream_packet packet = corvane::read_packet(data + at, size - at);
    if (packet.found == corvane::stream_packet::state::none) {
      at += std::max<std::size_t>(1, corvane::bytes_to_packet(data + at, size - at));
      continue;
    }
    if (packet.found == corvane::stream_packet::state::cut)
      return;
    must(packet.size >= 4 && packet.size <= size - at && packet.payload <= packet.size,
         "a packet and its payload lie in the bytes");
    at += packet.size;
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0)
    return 0;
  const std::size_t slice = 1 + data[size - 1] % 64;
  const video_index index = index_of(data, size, size);
  check_pictures(index, size);
  check_order(index);
  check_same(index, index_of(data, size, slice));
  check_packets(data, size);
  return 0;
}
