#include "examine/program_stream_facts.h"

#include "examine/inner_stream_scan.h"
#include "examine/time_course.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <utility>

namespace corvane {

namespace {

using byte_span = std::span<const std::uint8_t>;

constexpr std::uint8_t program_end = 0xB9, system_header = 0xBB;
constexpr std::uint64_t clock_turn = stamp_turn * 300;

struct stream_name {
  inner_kind kind = inner_kind::other;
  int number = 0;
};

stream_name name_of_substream(int number) {
  struct range {
    int first, last;
    inner_kind kind;
  };
  constexpr range ranges[] = {{0x20, 0x3F, inner_kind::subpicture},
                              {0x80, 0x87, inner_kind::ac3},
                              {0x88, 0x8F, inner_kind::dts},
                              {0xA0, 0xA7, inner_kind::lpcm}};
  for (const range& one : ranges)
    if (number >= one.first && number <= one.last)
      return {one.kind, number - one.first};
  return {inner_kind::other_private, number};
}

stream_name name_of(const stream_packet& packet) {
  constexpr int last_sound_stream = 0xDF;
  const int stream = packet.stream;
  if (packet.substream)
    return name_of_substream(*packet.substream);
  if (stream >= first_video_stream && stream <= last_video_stream)
    return {inner_kind::video, stream - first_video_stream};
  if (stream >= first_sound_stream && stream <= last_sound_stream)
    return {inner_kind::mpeg_audio, stream - first_sound_stream};
  return {inner_kind::other, stream};
}

bool is_mpeg2(byte_span pack_header) {
  return (pack_header[4] & 0xC0) == 0x40;
}

// Whether the bits that are 1 in every pack header are; looked at only where one is searched for.
bool has_marks(byte_span header) {
  const auto set = [header](std::size_t at, int bits) { return (header[at] & bits) == bits; };
  if (is_mpeg2(header))
    return set(4, 4) && set(6, 4) && set(8, 4) && set(9, 1) && set(12, 3);
  return set(4, 1) && set(6, 1) && set(8, 1) && set(9, 0x80) && set(11, 1);
}

constexpr std::size_t longest_fixed_part = 14;  // of a pack header

// Whether a pack header begins here, or ends the stream as far as it is there.
bool is_pack_header(byte_span bytes) {
  if (bytes.size() < 4 ||
      read_packet(bytes.data(), bytes.size()).found == stream_packet::state::none)
    return false;
  return bytes.size() < longest_fixed_part || has_marks(bytes);
}

// In bits a second; it stands in units of 50 bytes.
std::uint64_t mux_rate(byte_span header) {
  const auto bits = [header](std::size_t at, unsigned mask) {
    return std::uint64_t{header[at] & mask};
  };
  constexpr std::uint64_t unit = 400;
  if (is_mpeg2(header))
    return (bits(10, 0xFF) << 14 | bits(11, 0xFF) << 6 | bits(12, 0xFC) >> 2) * unit;
  return (bits(9, 0x7F) << 15 | bits(10, 0xFF) << 7 | bits(11, 0xFE) >> 1) * unit;
}

// Bytes of the header that tell the length of the packet, or of the pack header's fixed part.
std::size_t bytes_to_length(byte_span beginning) {
  if (beginning.size() < 4)
    return 4;
  if (beginning[3] != pack_header)
    return 6;
  if (beginning.size() < 5)
    return 5;
  return is_mpeg2(beginning) ? longest_fixed_part : 12;
}

bool all_zeros(byte_span bytes) {
  return std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; });
}

// Up to the next bytes that a pack header may begin with; all of them if there are none.
std::size_t bytes_to_pack(byte_span bytes) {
  constexpr std::uint8_t code[] = {0, 0, 1, pack_header};
  for (std::size_t at = 3; at < bytes.size(); ++at) {
    const void* const found = std::memchr(bytes.data() + at, pack_header, bytes.size() - at);
    if (found == nullptr)
      break;
    at = static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - bytes.data());
    if (std::memcmp(bytes.data() + at - 3, code, sizeof code) == 0)
      return at - 3;
  }
  // Its first bytes may be the last ones here.
  for (std::size_t part = std::min<std::size_t>(3, bytes.size()); part > 0; --part)
    if (std::memcmp(bytes.data() + bytes.size() - part, code, part) == 0)
      return bytes.size() - part;
  return bytes.size();
}

}  // namespace

class program_stream_scanner::state {
 public:
  explicit state(inner_streams streams) : examined_(streams == inner_streams::examined) {
    scan_of_.fill(nothing);
  }

  void feed(byte_span bytes);
  void end(bool at_end);

  program_stream_facts facts;

 private:
  static constexpr std::uint16_t nothing = 0xFFFF;

  std::size_t take(byte_span view, bool at_end);
  std::size_t step(byte_span rest, bool at_end);
  std::size_t search(byte_span rest, bool at_end);
  std::size_t later(std::size_t bytes);
  std::size_t take_cut(const stream_packet& packet, byte_span rest);
  void take_packet(const stream_packet& packet, byte_span bytes);
  void take_pack_header(const stream_packet& packet, byte_span bytes);
  void take_clock(std::uint64_t clock);
  void take_navigation(const stream_packet& packet, byte_span bytes);
  void name_vob();
  void take_inner(const stream_packet& packet, byte_span bytes);
  void measure_pack(std::uint64_t end);
  void measure_nav(std::uint64_t end);
  void add_loose(byte_span bytes);
  void close_loose();
  void order_streams();
  void add_length();

  bool examined_;
  std::vector<std::uint8_t> held_;  // the beginning of a packet whose rest was not fed yet
  std::size_t needed_ = 1;          // so many bytes must be there to go on
  bool searching_ = true;           // for a pack header
  std::uint64_t at_ = 0;            // of the next byte to be taken

  loose_bytes loose_;           // still growing; of size 0 if none are
  std::uint64_t pack_ = 0;      // position of the newest
  std::uint64_t mux_rate_ = 0;  // of that
  bool pack_open_ = false;      // its end is not known yet
  std::optional<std::uint64_t> nav_, end_code_;
  std::optional<cell_begin> cell_;
  std::uint64_t vobs_ = 0;                // how often another VOB was named
  std::vector<inner_stream_scan> scans_;  // beside facts.streams
  // By the last byte of the start code, then by substream.
  std::array<std::uint16_t, 512> scan_of_{};
};

void program_stream_scanner::state::feed(byte_span bytes) {
  facts.bytes += bytes.size();
  while (!held_.empty() && !bytes.empty()) {
    const std::size_t more = std::min(needed_ - held_.size(), bytes.size());
    held_.insert(held_.end(), bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(more));
    bytes = bytes.subspan(more);
    if (held_.size() < needed_)
      return;
    const std::size_t taken = take(held_, false);
    held_.erase(held_.begin(), held_.begin() + static_cast<std::ptrdiff_t>(taken));
  }
  bytes = bytes.subspan(take(bytes, false));
  held_.insert(held_.end(), bytes.begin(), bytes.end());
}

void program_stream_scanner::state::end(bool at_end) {
  if (at_end) {
    take(held_, true);
    close_loose();
    measure_pack(facts.bytes);
    measure_nav(facts.bytes);
    facts.end_code = end_code_.has_value();
    facts.whole = true;
  }
  for (std::size_t i = 0; i < scans_.size(); ++i)
    scans_[i].end(facts.streams[i], at_end);
  order_streams();
  add_length();
}

/// How many of the bytes need not be held; all of them at the end.
std::size_t program_stream_scanner::state::take(byte_span view, bool at_end) {
  std::size_t taken = 0;
  while (taken < view.size()) {
    const std::size_t step_taken = step(view.subspan(taken), at_end);
    if (step_taken == 0)
      break;
    taken += step_taken;
    at_ += step_taken;
  }
  return taken;
}

std::size_t program_stream_scanner::state::later(std::size_t bytes) {
  needed_ = bytes;
  return 0;
}

std::size_t program_stream_scanner::state::step(byte_span rest, bool at_end) {
  if (searching_)
    return search(rest, at_end);
  const stream_packet packet = read_packet(rest.data(), rest.size());
  switch (packet.found) {
    case stream_packet::state::whole:
      take_packet(packet, rest.first(packet.size));
      return packet.size;
    case stream_packet::state::cut:
      if (at_end)
        return take_cut(packet, rest);
      return later(packet.size > 0 ? packet.size : bytes_to_length(rest));
    case stream_packet::state::none:
      break;
  }
  searching_ = true;
  return search(rest, at_end);
}

std::size_t program_stream_scanner::state::search(byte_span rest, bool at_end) {
  if (const std::size_t before = bytes_to_pack(rest); before > 0) {
    add_loose(rest.first(before));
    return before;
  }
  if (rest.size() < longest_fixed_part && !at_end)
    return later(longest_fixed_part);
  if (is_pack_header(rest)) {
    close_loose();
    searching_ = false;
    return step(rest, at_end);
  }
  add_loose(rest.first(1));
  return 1;
}

std::size_t program_stream_scanner::state::take_cut(const stream_packet& packet, byte_span rest) {
  if (all_zeros(rest)) {
    add_loose(rest);
    return rest.size();
  }
  const std::size_t whole = packet.size > 0 ? packet.size : bytes_to_length(rest);
  facts.cut = {at_, rest.size(), whole - rest.size()};
  if (packet.size > 0 && packet.stream != pack_header)
    take_packet(packet, rest);
  return rest.size();
}

/// `bytes` are those of the packet, as far as they are there.
void program_stream_scanner::state::take_packet(const stream_packet& packet, byte_span bytes) {
  if (end_code_)
    facts.middle_end_codes.add(*std::exchange(end_code_, std::nullopt));
  if (packet.stream == program_end) {
    end_code_ = at_;
    if (at_ - pack_ == disc_pack_size)
      measure_pack(at_);
    return;
  }
  if (packet.stream == pack_header) {
    take_pack_header(packet, bytes);
    return;
  }
  if (packet.stream == padding_stream)
    facts.padding_bytes += bytes.size();
  else if (packet.stream == private_stream_2)
    take_navigation(packet, bytes);
  else if (packet.stream != system_header)
    take_inner(packet, bytes);
}

void program_stream_scanner::state::take_pack_header(const stream_packet& packet, byte_span bytes) {
  measure_pack(at_);
  take_clock(*packet.clock);
  pack_ = at_;
  pack_open_ = true;
  if (facts.packs++ == 0)
    facts.mpeg2 = is_mpeg2(bytes);
  else if (facts.mpeg2 != is_mpeg2(bytes))
    ++facts.packs_of_the_other;
  mux_rate_ = mux_rate(bytes);
  facts.lowest_mux_rate = facts.packs == 1 ? mux_rate_ : std::min(facts.lowest_mux_rate, mux_rate_);
  facts.highest_mux_rate = std::max(facts.highest_mux_rate, mux_rate_);
}

void program_stream_scanner::state::take_clock(std::uint64_t clock) {
  if (facts.last_clock) {
    const std::int64_t step = way_between(*facts.last_clock, clock, clock_turn);
    // Most packs are short; MPEG-1's may last for seconds.
    const double bits = 8 * static_cast<double>(at_ - pack_);
    const double taken = mux_rate_ > 0 ? bits / static_cast<double>(mux_rate_) : 0;
    if (step < 0 || static_cast<double>(step) > (taken + 1) * clocks_a_second)
      facts.clock_breaks.add({at_, *facts.last_clock, clock, facts.clock_length});
    else
      facts.clock_length += static_cast<std::uint64_t>(step);
  } else {
    facts.first_clock = clock;
  }
  facts.last_clock = clock;
}

void program_stream_scanner::state::take_navigation(const stream_packet& packet, byte_span bytes) {
  if (is_navigation(packet) && nav_ != pack_) {
    measure_nav(pack_);
    nav_ = pack_;
    ++facts.nav_packs;
    if (pack_ == 0)
      facts.begins_with_nav_pack = true;
    return;
  }
  // Of the data search packet (DSI): its number, 24 bytes, VOB (2), a byte, cell.
  constexpr std::size_t data_search_packet = 6 + 0x3FA, vob = 31, cell = 34;
  if (packet.size != data_search_packet || bytes.size() <= cell || bytes[6] != 1)
    return;
  const cell_begin here{pack_, bytes[vob] << 8 | bytes[vob + 1], bytes[cell]};
  if (cell_ && cell_->vob == here.vob && cell_->cell == here.cell)
    return;
  if (cell_ && cell_->vob != here.vob)
    name_vob();
  facts.cells.add(here);
  cell_ = here;
}

void program_stream_scanner::state::name_vob() {
  ++vobs_;
  std::vector<time_break>& breaks = facts.clock_breaks.kept;
  if (!breaks.empty() && breaks.back().position == pack_)
    breaks.back().new_vob = true;
}

void program_stream_scanner::state::take_inner(const stream_packet& packet, byte_span bytes) {
  std::uint16_t& index =
      scan_of_[packet.substream ? std::size_t{256} + *packet.substream : packet.stream];
  if (index == nothing) {
    const stream_name name = name_of(packet);
    index = static_cast<std::uint16_t>(scans_.size());
    scans_.emplace_back(name.kind, examined_);
    inner_stream& added = facts.streams.emplace_back();
    added.kind = name.kind;
    added.number = name.number;
  }
  scans_[index].take(facts.streams[index], packet, {at_, facts.clock_length, vobs_},
                     bytes.subspan(packet.payload));
}

void program_stream_scanner::state::measure_pack(std::uint64_t end) {
  if (pack_open_ && (pack_ % disc_pack_size != 0 || end - pack_ != disc_pack_size))
    facts.uneven_packs.add(pack_);
  pack_open_ = false;
}

void program_stream_scanner::state::measure_nav(std::uint64_t end) {
  if (!nav_ || end - *nav_ <= facts.largest_nav_distance)
    return;
  facts.largest_nav_distance = end - *nav_;
  facts.largest_nav_distance_at = *nav_;
}

void program_stream_scanner::state::add_loose(byte_span bytes) {
  if (loose_.size == 0)
    loose_ = {at_, 0, true};
  loose_.size += bytes.size();
  loose_.zeros = loose_.zeros && all_zeros(bytes);
}

void program_stream_scanner::state::close_loose() {
  if (loose_.size == 0)
    return;
  facts.loose.add(loose_);
  facts.loose_bytes_in_all += loose_.size;
  loose_.size = 0;
}

void program_stream_scanner::state::order_streams() {
  std::ranges::sort(facts.streams, {},
                    [](const inner_stream& one) { return std::pair(one.kind, one.number); });
}

void program_stream_scanner::state::add_length() {
  const inner_stream* const video = facts.video();
  if (video == nullptr || !video->first)
    return;
  facts.seconds = static_cast<double>(video->length) / stamps_a_second;
  if (video->video && video->video->shape && video->video->shape->rate_numerator > 0)
    facts.seconds += static_cast<double>(video->video->shape->rate_denominator) /
                     video->video->shape->rate_numerator;
}

program_stream_scanner::program_stream_scanner(inner_streams streams)
    : state_(std::make_unique<state>(streams)) {}
program_stream_scanner::program_stream_scanner(program_stream_scanner&&) noexcept = default;
program_stream_scanner& program_stream_scanner::operator=(program_stream_scanner&&) noexcept =
    default;
program_stream_scanner::~program_stream_scanner() = default;

void program_stream_scanner::feed(const std::uint8_t* data, std::size_t size) {
  state_->feed({data, size});
}

void program_stream_scanner::finish() {
  state_->end(true);
}

void program_stream_scanner::stop() {
  state_->end(false);
}

const program_stream_facts& program_stream_scanner::facts() const {
  return state_->facts;
}

const inner_stream* program_stream_facts::find(inner_kind kind, int number) const {
  const auto found = std::ranges::find_if(
      streams, [&](const inner_stream& one) { return one.kind == kind && one.number == number; });
  return found == streams.end() ? nullptr : &*found;
}

const inner_stream* program_stream_facts::video() const {
  const auto first = std::ranges::min_element(
      streams, {}, [](const inner_stream& one) { return std::pair(one.kind, one.number); });
  return first == streams.end() || first->kind != inner_kind::video ? nullptr : &*first;
}

int program_stream_facts::count_of(inner_kind kind) const {
  return static_cast<int>(std::ranges::count(streams, kind, &inner_stream::kind));
}

std::optional<program_stream_facts> read_program_stream_head(
    std::span<const std::uint8_t> beginning) {
  beginning = beginning.first(std::min(beginning.size(), program_stream_head_bytes));
  program_stream_scanner scanner;
  scanner.feed(beginning.data(), beginning.size());
  scanner.stop();
  const program_stream_facts& facts = scanner.facts();
  const bool any = !facts.streams.empty() || facts.nav_packs > 0 || facts.padding_bytes > 0;
  return facts.packs > 0 && any ? std::optional(facts) : std::nullopt;
}

}  // namespace corvane
