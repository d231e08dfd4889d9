// Any bytes as an MPEG video stream: its facts do not depend on how it is sliced, their sums hold,
// every place lies in the stream, and they agree with the index of the player.
#include "examine/video_facts.h"
#include "formats/start_code_mask.h"
#include "formats/video_index.h"
#include "must.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <numeric>

namespace {

using corvane::counted_list;
using corvane::video_facts;

video_facts facts_of(const std::uint8_t* data, std::size_t size, std::size_t slice) {
  corvane::video_scanner scanner;
  for (std::size_t at = 0; at < size; at += slice)
    scanner.feed(data + at, std::min(slice, size - at));
  scanner.finish();
  return scanner.facts();
}

void check_place(const corvane::video_place& place, const video_facts& facts) {
  must(place.byte <= facts.bytes, "a place lies in the stream");
  must(place.seconds >= 0 && place.seconds <= facts.seconds * (1 + 1e-9), "and in its time");
}

void check_place(const corvane::video_damage& one, const video_facts& facts) {
  check_place(one.place, facts);
}
void check_place(const corvane::video_change& one, const video_facts& facts) {
  check_place(one.place, facts);
}
void check_place(const corvane::video_bytes& one, const video_facts& facts) {
  check_place(one.place, facts);
  must(one.size > 0 && one.place.byte + one.size <= facts.bytes, "bytes lie in the stream");
}
void check_place(const corvane::video_group& one, const video_facts& facts) {
  check_place(one.place, facts);
  must(one.pictures > 0 && one.fields >= 2 * one.pictures, "a group has pictures");
}

template <typename T>
void check_list(const counted_list<T>& list, const video_facts& facts) {
  must(list.kept.size() == std::min<std::uint64_t>(list.count, counted_list<T>::most_kept),
       "a list keeps the first ones");
  for (const T& one : list.kept)
    check_place(one, facts);
}

void check_lists(const video_facts& facts) {
  check_list(facts.long_groups, facts);
  check_list(facts.groups_without_sequence_header, facts);
  check_list(facts.intra_without_group_header, facts);
  check_list(facts.broken_links, facts);
  check_list(facts.size_changes, facts);
  check_list(facts.rate_changes, facts);
  check_list(facts.aspect_changes, facts);
  check_list(facts.standard_changes, facts);
  check_list(facts.coding_changes, facts);
  check_list(facts.middle_end_codes, facts);
  check_list(facts.missing_sequence_headers, facts);
  check_list(facts.stray_bytes, facts);
  check_list(facts.system_codes, facts);
  check_list(facts.damage, facts);
}

void check_sums(const video_facts& facts, std::size_t size) {
  must(facts.bytes == size, "every byte is read");
  must(facts.picture_bytes + facts.stray_bytes_in_all <= facts.bytes,
       "no byte is of a picture and stray");
  if (facts.stray_bytes.count <= counted_list<corvane::video_bytes>::most_kept)
    must(std::accumulate(facts.stray_bytes.kept.begin(), facts.stray_bytes.kept.end(),
                         std::uint64_t{0},
                         [](std::uint64_t sum, const auto& one) { return sum + one.size; }) ==
             facts.stray_bytes_in_all,
         "stray bytes add up");
  must(facts.hidden_pictures <= facts.pictures && facts.intra_pictures <= facts.pictures &&
           facts.field_pictures <= facts.pictures,
       "pictures of a kind are pictures");
  must(facts.fields == 2 * (facts.pictures - facts.hidden_pictures) + facts.repeated_fields,
       "fields are those of pictures and repeated ones");
  must(std::accumulate(facts.groups_by_fields.begin(), facts.groups_by_fields.end(),
                       std::uint64_t{0}) == facts.groups,
       "groups add up");
  must(facts.open_groups <= facts.groups && facts.longest_group.has_value() == (facts.groups > 0),
       "one group is the longest");
  must(facts.largest_picture <= facts.picture_bytes, "a picture is no more than all");
  must(std::isfinite(facts.average_rate) && std::isfinite(facts.peak_rate) &&
           facts.peak_rate <= 8.0 * static_cast<double>(facts.picture_bytes),
       "a second holds no more than all");
}

// The index does not know end codes; they part a header from its picture and a field from the
// other.
bool has_end_code(const std::uint8_t* data, std::size_t size) {
  constexpr std::array<std::uint8_t, 4> code{0, 0, 1, corvane::start_code::sequence_end};
  return std::search(data, data + size, code.begin(), code.end()) != data + size;
}

void check_index(const video_facts& facts, const std::uint8_t* data, std::size_t size) {
  corvane::video_index_builder builder;
  builder.feed(data, size);
  builder.finish();
  const corvane::video_index& index = builder.index();
  must(facts.pictures == index.coded(), "the index has the same pictures");
  must(facts.pictures - facts.hidden_pictures == index.shown(), "and shows the same");
  must(facts.fields == index.fields_before(index.shown()), "for the same time");
  must(facts.intra_pictures == index.groups().size(), "and knows the same I pictures");
  must(facts.pictures == 0 || facts.shape == index.shape(), "of the same shape");
}

void check_masks(const std::uint8_t* data, std::size_t size) {
  for (std::size_t at = 0; at + corvane::mask_bytes + 2 <= size; at += corvane::mask_bytes)
    must(corvane::start_code_mask(data + at) == corvane::portable_start_code_mask(data + at),
         "start codes are the same on every processor");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0)
    return 0;
  const video_facts facts = facts_of(data, size, size);
  must(facts_of(data, size, 1 + data[size - 1] % 64) == facts, "slices make no difference");
  check_sums(facts, size);
  check_lists(facts);
  if (!has_end_code(data, size))
    check_index(facts, data, size);
  check_masks(data, size);
  const corvane::video_kind beginning = corvane::read_video_head({data, size}).kind;
  must(beginning == corvane::video_kind::none || beginning == facts.kind,
       "the beginning tells what it is");
  return 0;
}
