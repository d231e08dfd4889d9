#include "examine/audio_facts.h"

#include <algorithm>
#include <string_view>

namespace corvane {

namespace {

using byte_span = std::span<const std::uint8_t>;

// How many headers must follow that of a frame, each where the one before ends: one, where a frame
// is due or when it is of the same kind and rate as the last one. Two elsewhere: in some hundred MB
// of any bytes one is found by chance.
constexpr int headers_to_go_on = 1;
constexpr int headers_to_begin = 2;

constexpr std::size_t mpeg_header_bytes = 4;
constexpr std::size_t first_bytes = 16;
constexpr std::size_t id3v1_bytes = 128;
constexpr std::size_t id3v2_header_bytes = 10;

bool same_stream(const audio_frame& one, const audio_frame& other) {
  return one.kind == other.kind && one.sample_rate == other.sample_rate;
}

bool same_channels(const audio_frame& one, const audio_frame& other) {
  return one.channels == other.channels && one.low_frequency == other.low_frequency;
}

bool has_checksum(const audio_frame& frame) {
  return frame.kind == audio_kind::ac3 || frame.kind == audio_kind::eac3;
}

audio_time length_of(const audio_frame& frame) {
  return audio_clock / static_cast<audio_time>(frame.sample_rate) *
         static_cast<audio_time>(frame.samples);
}

// Whether the frame begins with the same bytes as another one of this kind, but for the checksum
// that AC-3 has there. A header of other bytes may say the same, too.
bool same_header(audio_kind kind, byte_span one, byte_span other) {
  const auto same = [&](std::ptrdiff_t from, std::ptrdiff_t to) {
    return std::equal(one.begin() + from, one.begin() + to, other.begin() + from);
  };
  switch (kind) {
    case audio_kind::ac3:
      return same(0, 2) && same(4, 7);
    case audio_kind::eac3:
      return same(0, 7);
    default:
      return same(0, 4);
  }
}

bool begins_with(byte_span bytes, std::string_view text) {
  return bytes.size() >= text.size() && std::equal(text.begin(), text.end(), bytes.begin());
}

bool may_begin_frame(std::uint8_t first, std::uint8_t second) {
  return (first == 0x0B && second == 0x77) || (first == 0xFF && second >= 0xF0);
}

constexpr std::size_t stretch = 64;

// Whether a sync word begins with one of the next `stretch` bytes, which the compiler turns into a
// few instructions for 16 bytes.
bool sync_ahead(const std::uint8_t* data) {
  std::uint8_t least = 0xFF;
  for (std::size_t i = 0; i < stretch; ++i) {
    const auto ac3 = static_cast<std::uint8_t>((data[i] ^ 0x0B) | (data[i + 1] ^ 0x77));
    const auto mpeg = static_cast<std::uint8_t>((data[i] ^ 0xFF) | (data[i + 1] >> 4 ^ 0x0F));
    least = std::min({least, ac3, mpeg});
  }
  return least == 0;
}

// The first place from `at` on where a sync word stands; `end` if none begins before it. One byte
// more than `end` is there.
std::size_t next_sync(byte_span bytes, std::size_t at, std::size_t end) {
  while (at < end) {
    if (end - at >= stretch && !sync_ahead(bytes.data() + at)) {
      at += stretch;
      continue;
    }
    for (const std::size_t stop = std::min(end, at + stretch); at < stop; ++at)
      if (may_begin_frame(bytes[at], bytes[at + 1]))
        return at;
  }
  return end;
}

// Of the tag that begins with the first byte, its header included; 0 if none does.
std::uint64_t size_of_id3v2(byte_span bytes) {
  if (bytes.size() < id3v2_header_bytes || !begins_with(bytes, "ID3") || bytes[3] == 0xFF ||
      bytes[4] == 0xFF)
    return 0;
  std::uint64_t size = 0;
  for (const std::uint8_t byte : bytes.subspan(6, 4)) {
    if (byte >= 0x80)
      return 0;
    size = size << 7 | byte;
  }
  const bool footer = (bytes[5] & 0x10) != 0;
  return size + id3v2_header_bytes * (footer ? 2 : 1);
}

}  // namespace

void audio_scanner::feed(const std::uint8_t* data, std::size_t size) {
  byte_span slice(data, size);
  if (!held_.empty()) {
    // What is held is judged with the first bytes of this slice, as few as are needed.
    constexpr std::size_t portion = 8192;
    const std::size_t before = held_.size();
    std::size_t used = 0;
    for (byte_span rest = slice; used < before && !rest.empty();) {
      const byte_span joined = rest.first(std::min(rest.size(), portion));
      held_.insert(held_.end(), joined.begin(), joined.end());
      rest = rest.subspan(joined.size());
      used += take(byte_span(held_).subspan(used), false);
    }
    if (used < before) {
      held_.erase(held_.begin(), held_.begin() + static_cast<std::ptrdiff_t>(used));
      return;
    }
    held_.clear();
    slice = slice.subspan(used - before);
  }
  const std::size_t used = take(slice, false);
  held_.assign(slice.begin() + static_cast<std::ptrdiff_t>(used), slice.end());
}

void audio_scanner::finish() {
  const std::vector<std::uint8_t> rest = std::move(held_);
  held_.clear();
  take(rest, true);
  close_gap();
  if (!facts_.first)
    facts_.kind = first_bytes_;
}

void audio_scanner::stop() {
  finish();
  if (!facts_.cut)
    return;
  facts_.bytes -= facts_.cut->bytes_there;
  facts_.cut.reset();
}

// Judges as many of the bytes as it can and says how many these are: all at the end, else all but
// fewer than the frames that are checked at once may have.
std::size_t audio_scanner::take(bytes view, bool at_end) {
  std::size_t used = 0;
  while (used < view.size()) {
    const state before = state_;
    const std::size_t more = step(view.subspan(used), at_end);
    if (more == 0 && state_ == before)
      break;
    used += more;
    facts_.bytes += more;
  }
  return used;
}

// 0 with the state as it was: more bytes are needed.
std::size_t audio_scanner::step(bytes view, bool at_end) {
  switch (state_) {
    case state::beginning:
      return begin(view, at_end);
    case state::in_step:
      return take_frames(view, at_end);
    case state::at_gap:
      return look_for_tag(view, at_end);
    case state::in_tag:
      return pass_tag(view);
    case state::searching:
      return search(view, at_end);
    case state::foreign:
      break;
  }
  add_to_gap(view);
  return view.size();
}

std::size_t audio_scanner::begin(bytes view, bool at_end) {
  if (view.size() < first_bytes && !at_end)
    return 0;
  first_bytes_ = kind_of_first_bytes(view.first(std::min(view.size(), first_bytes)));
  // The others begin with fewer bytes, which sound of another kind may have in front of it.
  const bool sure = first_bytes_ == audio_kind::wav || first_bytes_ == audio_kind::dts;
  state_ = sure ? state::foreign : state::at_gap;
  return 0;
}

// The stream is where a frame should begin.
std::size_t audio_scanner::take_frames(bytes view, bool at_end) {
  if (view.size() < audio_header_bytes && !at_end)
    return 0;
  const std::optional<audio_frame> frame = read_audio_frame(view);
  if (!frame) {
    if (!is_part_of_header(view)) {
      state_ = state::at_gap;
      return 0;
    }
    cut_off(view, last_.size);
    return view.size();
  }
  if (!goes_on(*frame)) {
    const answer sound = is_sound(view, *frame, headers_to_go_on, at_end);
    if (sound == answer::no)
      state_ = state::at_gap;
    if (sound != answer::yes)
      return 0;
  }
  if (frame->size > view.size()) {
    if (at_end)
      cut_off(view, frame->size);
    return at_end ? view.size() : 0;
  }
  const std::size_t alike = frames_alike(view, *frame, at_end);
  const bytes all = view.first(alike * frame->size);
  if (!all.empty()) {
    check(all, *frame);
    count(*frame, alike);
  }
  return all.size();
}

// How many frames like the first, which is whole, stand in a row, up to what is taken at once; 0 if
// more bytes are needed to tell.
std::size_t audio_scanner::frames_alike(bytes view, const audio_frame& frame, bool at_end) {
  for (std::size_t found = 1; found < checksum_of_frames::frames; ++found) {
    const bytes rest = view.subspan(found * frame.size);
    if (rest.size() < std::max(audio_header_bytes, frame.size))
      return at_end ? found : 0;
    if (!same_header(frame.kind, view, rest) && read_audio_frame(rest) != frame)
      return found;
  }
  return checksum_of_frames::frames;
}

// Finds the frames with a wrong checksum among the next ones, which are all like this one.
void audio_scanner::check(bytes all, const audio_frame& frame) {
  if (!has_checksum(frame))
    return;
  if (all.size() == checksum_of_frames::frames * frame.size) {
    if (!checksum_ || checksum_->size() != frame.size)
      checksum_.emplace(frame.size);
    if (checksum_->fit(all))
      return;
  }
  for (std::size_t at = 0; at < all.size(); at += frame.size)
    if (!checksum_fits(all.subspan(at, frame.size)) && facts_.damaged_frames++ == 0)
      facts_.first_damaged = damaged_audio_frame{
          facts_.bytes + at, facts_.length + at / frame.size * length_of(frame)};
}

// Behind a frame or a tag, where no frame begins, or at the beginning.
std::size_t audio_scanner::look_for_tag(bytes view, bool at_end) {
  if (view.size() < id3v2_header_bytes && !at_end)
    return 0;
  if (const std::uint64_t size = size_of_id3v2(view)) {
    gap_.content = audio_gap::id3v2;
    left_of_tag_ = size;
  } else if (begins_with(view, "TAG")) {
    gap_.content = audio_gap::id3v1;
    left_of_tag_ = id3v1_bytes;
  } else {
    state_ = state::searching;
    return 0;
  }
  state_ = state::in_tag;
  return 0;
}

std::size_t audio_scanner::pass_tag(bytes view) {
  const std::size_t here =
      static_cast<std::size_t>(std::min<std::uint64_t>(left_of_tag_, view.size()));
  const audio_gap::content_kind tag = gap_.content;
  add_to_gap(view.first(here));
  gap_.content = tag;
  left_of_tag_ -= here;
  if (left_of_tag_ == 0) {
    close_gap();
    state_ = facts_.first ? state::at_gap : state::beginning;
  }
  return here;
}

std::size_t audio_scanner::search(bytes view, bool at_end) {
  const std::size_t needed = at_end ? mpeg_header_bytes : audio_header_bytes;
  const std::size_t end = view.size() - std::min(view.size(), needed - 1);
  std::size_t at = 0;
  while ((at = next_sync(view, at, end)) < end) {
    const bytes here = view.subspan(at);
    if (const std::optional<audio_frame> frame = read_audio_frame(here)) {
      const bool due = at == 0 && gap_.size == 0;
      const int headers = due || same_stream(last_, *frame) ? headers_to_go_on : headers_to_begin;
      const answer sound = is_sound(here, *frame, headers, at_end);
      if (sound != answer::no) {
        add_to_gap(view.first(at));
        if (sound == answer::yes) {
          close_gap();
          state_ = state::in_step;
        }
        return at;
      }
    }
    ++at;
  }
  const std::size_t used = at_end ? view.size() : end;
  add_to_gap(view.first(used));
  return used;
}

// Whether the stream breaks off within a header like the last one.
bool audio_scanner::is_part_of_header(bytes view) const {
  const bool mpeg = last_.kind > audio_kind::eac3;
  return last_.kind != audio_kind::unknown &&
         view.size() < (mpeg ? mpeg_header_bytes : audio_header_bytes) &&
         view[0] == (mpeg ? 0xFF : 0x0B) && (view.size() == 1 || may_begin_frame(view[0], view[1]));
}

// Whether the frame is so like the last one that nothing more need be asked of it in its place. One
// of another bit rate has another length, too, which a damaged header may have.
bool audio_scanner::goes_on(const audio_frame& frame) const {
  return same_stream(last_, frame) && last_.bit_rate == frame.bit_rate;
}

// Whether so many headers follow the one of `frame`, with which `view` begins, or the stream ends.
audio_scanner::answer audio_scanner::is_sound(bytes view, const audio_frame& frame, int headers,
                                              bool at_end) {
  std::size_t at = frame.size;
  for (int followed = 0; followed < headers; ++followed) {
    const bool header_there = at + audio_header_bytes <= view.size();
    if (!header_there && !at_end)
      return answer::later;
    if (at == view.size())
      return answer::yes;
    const std::optional<audio_frame> next =
        at < view.size() ? read_audio_frame(view.subspan(at)) : std::nullopt;
    if (!next && !header_there)  // the last frame is cut, but not the only one
      return followed > 0 ? answer::yes : answer::no;
    if (!next || !same_stream(frame, *next))
      return answer::no;
    at += next->size;
  }
  return answer::yes;
}

// The next `frames` ones, which are all like this one.
void audio_scanner::count(const audio_frame& frame, std::size_t frames) {
  if (!facts_.first) {
    facts_.first = frame;
    facts_.kind = frame.kind;
  }
  if (gap_since_frame_) {
    if (!facts_.first_inner_gap)
      facts_.first_inner_gap = gap_since_frame_;
    gap_since_frame_.reset();
  }
  if (frame.samples > 0) {
    if (!facts_.change &&
        (!same_stream(*facts_.first, frame) || !same_channels(*facts_.first, frame)))
      facts_.change = audio_change{facts_.bytes, facts_.length, frame};
    facts_.highest_bit_rate = std::max(facts_.highest_bit_rate, frame.bit_rate);
    facts_.bit_rate_varies = facts_.bit_rate_varies || frame.bit_rate != facts_.first->bit_rate;
  }
  facts_.frames += frames;
  facts_.frame_bytes += frames * frame.size;
  facts_.samples += frames * static_cast<std::uint64_t>(frame.samples);
  facts_.length += frames * length_of(frame);
  last_ = frame;
}

void audio_scanner::cut_off(bytes view, std::uint64_t whole) {
  facts_.cut = cut_audio_frame{facts_.bytes, view.size(), whole - view.size()};
}

// Bytes without a frame, the next ones of the stream.
void audio_scanner::add_to_gap(bytes view) {
  if (view.empty())
    return;
  if (gap_.size == 0) {
    gap_.position = facts_.bytes;
    gap_.before = facts_.length;
    gap_.content = audio_gap::zeros;
  }
  gap_.size += view.size();
  if (gap_.content == audio_gap::zeros &&
      !std::all_of(view.begin(), view.end(), [](std::uint8_t byte) { return byte == 0; }))
    gap_.content = audio_gap::other;
}

void audio_scanner::close_gap() {
  if (gap_.size == 0)
    return;
  if (facts_.gaps.size() < audio_facts::most_gaps)
    facts_.gaps.push_back(gap_);
  ++facts_.gap_count;
  facts_.gap_bytes += gap_.size;
  if (facts_.first && !gap_since_frame_)
    gap_since_frame_ = gap_;
  gap_ = audio_gap{};
}

std::optional<audio_facts> read_audio_head(std::span<const std::uint8_t> bytes, bool whole) {
  const byte_span head = bytes.first(std::min(bytes.size(), audio_head_bytes));
  audio_scanner scanner;
  scanner.feed(head.data(), head.size());
  if (whole && head.size() == bytes.size())
    scanner.finish();
  else
    scanner.stop();
  const audio_facts& facts = scanner.facts();
  const bool tag = !facts.gaps.empty() && facts.gaps.front().content >= audio_gap::id3v1;
  if (facts.kind == audio_kind::unknown && !tag)
    return std::nullopt;
  return facts;
}

}  // namespace corvane
