#include "examine/program_stream_scan.h"

#include "examine/pack_headers.h"
#include "examine/time_course.h"

#include <algorithm>
#include <array>
#include <utility>

namespace corvane {

namespace {

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

// Of the first picture whose header stands in the payload, how many of its group are shown before
// it. Nullopt if none stands there, or it is no I picture.
std::optional<int> pictures_before_first(std::span<const std::uint8_t> payload) {
  constexpr std::array<std::uint8_t, 4> picture = {0, 0, 1, 0};
  constexpr int intra = 1;
  const auto found = std::search(payload.begin(), payload.end(), picture.begin(), picture.end());
  constexpr std::ptrdiff_t to_kind = 6;
  if (payload.end() - found < to_kind)
    return std::nullopt;
  const auto number = found + picture.size();
  if ((number[1] >> 3 & 7) != intra)
    return std::nullopt;
  return number[0] << 2 | number[1] >> 6;
}

bool all_zeros(std::span<const std::uint8_t> bytes) {
  return std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; });
}

}  // namespace

void program_stream_scan::feed(bytes_view bytes) {
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

void program_stream_scan::end(bool at_end) {
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
  if (at_end)
    add_units();
}

/// How many of the bytes need not be held; all of them at the end.
std::size_t program_stream_scan::take(bytes_view view, bool at_end) {
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

std::size_t program_stream_scan::later(std::size_t bytes) {
  needed_ = bytes;
  return 0;
}

std::size_t program_stream_scan::step(bytes_view rest, bool at_end) {
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

std::size_t program_stream_scan::search(bytes_view rest, bool at_end) {
  if (const std::size_t before = bytes_to_pack(rest); before > 0) {
    add_loose(rest.first(before));
    return before;
  }
  if (rest.size() < longest_pack_header && !at_end)
    return later(longest_pack_header);
  if (is_pack_header(rest)) {
    close_loose();
    searching_ = false;
    return step(rest, at_end);
  }
  add_loose(rest.first(1));
  return 1;
}

std::size_t program_stream_scan::take_cut(const stream_packet& packet, bytes_view rest) {
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
void program_stream_scan::take_packet(const stream_packet& packet, bytes_view bytes) {
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

void program_stream_scan::take_pack_header(const stream_packet& packet, bytes_view bytes) {
  measure_pack(at_);
  take_clock(*packet.clock);
  pack_ = at_;
  pack_open_ = true;
  if (facts.packs++ == 0)
    facts.mpeg2 = is_mpeg2_pack(bytes);
  else if (facts.mpeg2 != is_mpeg2_pack(bytes))
    ++facts.packs_of_the_other;
  mux_rate_ = mux_rate(bytes);
  facts.lowest_mux_rate = facts.packs == 1 ? mux_rate_ : std::min(facts.lowest_mux_rate, mux_rate_);
  facts.highest_mux_rate = std::max(facts.highest_mux_rate, mux_rate_);
}

void program_stream_scan::take_clock(std::uint64_t clock) {
  if (facts.last_clock) {
    const std::int64_t step = way_between(*facts.last_clock, clock, clock_turn);
    // Most packs are short; MPEG-1's may last for seconds.
    const auto is_too_far = [&] {
      const double bits = 8 * static_cast<double>(at_ - pack_);
      const double taken = mux_rate_ > 0 ? bits / static_cast<double>(mux_rate_) : 0;
      return static_cast<double>(step) > (taken + 1) * clocks_a_second;
    };
    if (step < 0 || (step > static_cast<std::int64_t>(clocks_a_second) && is_too_far()))
      facts.clock_breaks.add({at_, *facts.last_clock, clock, facts.clock_length});
    else
      facts.clock_length += static_cast<std::uint64_t>(step);
  } else {
    facts.first_clock = clock;
  }
  facts.last_clock = clock;
}

void program_stream_scan::take_navigation(const stream_packet& packet, bytes_view bytes) {
  if (is_navigation(packet) && nav_ != pack_) {
    measure_nav(pack_);
    nav_ = pack_;
    ++facts.nav_packs;
    if (pack_ == 0)
      facts.begins_with_nav_pack = true;
    if (!facts.first_nav_pack)
      facts.first_nav_pack = pack_;
    begin_unit();
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

void program_stream_scan::name_vob() {
  ++vobs_;
  std::vector<time_break>& breaks = facts.clock_breaks.kept;
  if (!breaks.empty() && breaks.back().position == pack_)
    breaks.back().new_vob = true;
}

void program_stream_scan::begin_unit() {
  units_known_ = units_known_ && !unit_waits_;
  unit_waits_ = examined_;
}

/// Multiplexers begin a unit with the packet in which its I picture begins.
void program_stream_scan::take_unit_picture(const stream_packet& packet, bytes_view payload) {
  const auto before = pictures_before_first(payload);
  unit_waits_ = false;
  if (packet.shown && before && units_.size() < video_facts::most_units)
    units_.push_back({*packet.shown, *before});
  else
    units_known_ = false;
}

void program_stream_scan::take_inner(const stream_packet& packet, bytes_view bytes) {
  if (unit_waits_ && units_known_ && packet.stream == first_video_stream)
    take_unit_picture(packet, bytes.subspan(packet.payload));
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

void program_stream_scan::measure_pack(std::uint64_t end) {
  if (pack_open_ && (pack_ % disc_pack_size != 0 || end - pack_ != disc_pack_size))
    facts.uneven_packs.add(pack_);
  pack_open_ = false;
}

void program_stream_scan::measure_nav(std::uint64_t end) {
  if (!nav_ || end - *nav_ <= facts.largest_nav_distance)
    return;
  facts.largest_nav_distance = end - *nav_;
  facts.largest_nav_distance_at = *nav_;
}

void program_stream_scan::add_loose(bytes_view bytes) {
  if (loose_.size == 0)
    loose_ = {at_, 0, true};
  loose_.size += bytes.size();
  loose_.zeros = loose_.zeros && all_zeros(bytes);
}

void program_stream_scan::close_loose() {
  if (loose_.size == 0)
    return;
  facts.loose.add(loose_);
  facts.loose_bytes_in_all += loose_.size;
  loose_.size = 0;
}

void program_stream_scan::order_streams() {
  std::ranges::sort(facts.streams, {},
                    [](const inner_stream& one) { return std::pair(one.kind, one.number); });
}

void program_stream_scan::add_length() {
  const inner_stream* const video = facts.video();
  if (video == nullptr || !video->first)
    return;
  facts.seconds = static_cast<double>(video->length) / stamps_a_second;
  if (video->video && video->video->shape && video->video->shape->rate_numerator > 0)
    facts.seconds += static_cast<double>(video->video->shape->rate_denominator) /
                     video->video->shape->rate_numerator;
}

void program_stream_scan::add_units() {
  const inner_stream* const video = facts.video();
  if (!units_known_ || unit_waits_ || units_.empty() || video->number != 0 || !video->last ||
      !video->video || !video->video->shape || video->video->shape->rate_numerator <= 0)
    return;
  const video_shape& shape = *video->video->shape;
  const double picture = static_cast<double>(shape.rate_denominator) / shape.rate_numerator;
  const unit_picture& first = units_.front();
  const auto since_first = [&](stream_time shown, int pictures_before) {
    return static_cast<double>(way_between(first.shown, shown, stamp_turn)) / stamps_a_second -
           picture * (pictures_before - first.pictures_before);
  };
  for (const unit_picture& one : units_) {
    const double begins = since_first(one.shown, one.pictures_before);
    if (!facts.unit_begins.empty() && begins <= facts.unit_begins.back()) {
      facts.unit_begins.clear();
      return;
    }
    facts.unit_begins.push_back(begins);
  }
  facts.shown_until = since_first(*video->last, 0) + picture;
}

}  // namespace corvane
