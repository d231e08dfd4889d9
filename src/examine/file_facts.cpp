#include "examine/file_facts.h"

#include "formats/video_headers.h"
#include "formats/video_standard.h"
#include "platform/files/file_relay.h"
#include "platform/files/file_slices.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using bytes = std::span<const std::uint8_t>;

// The largest of what the scanners look at to know a kind.
constexpr std::size_t head_bytes = program_stream_head_bytes;
static_assert(head_bytes >= audio_head_bytes && head_bytes >= enough_for_a_header);
static_assert(head_bytes % file_slices::slice_size == 0);

// Enough for a stream that is nothing but video or sound.
constexpr std::size_t plain_bytes = enough_for_a_header;
static_assert(plain_bytes == audio_head_bytes && plain_bytes <= file_slices::slice_size);

// In one call: whoever waits looks at a clock after each.
constexpr std::uint64_t bytes_a_call = std::uint64_t{4} << 20;

constexpr const char* unreadable_end = "it could not be read to its end";

// A kind, and what the beginning tells of it.
struct told_by_head {
  file_kind kind = file_kind::unknown;
  std::optional<video_facts> video;
  std::optional<audio_facts> audio;
  std::optional<program_stream_facts> program;
};

// Of a stream that is video from its first byte to the last one here, or sound; nullopt for others.
// `whole`: the file ends with these bytes.
std::optional<told_by_head> plain_stream(bytes head, bool whole) {
  constexpr std::array<std::uint8_t, 4> sequence = {0, 0, 1, start_code::sequence_header};
  head = head.first(std::min(head.size(), plain_bytes));
  if (std::ranges::equal(head.first(std::min(head.size(), sequence.size())), sequence)) {
    video_facts video = read_video_head(head);
    if (video.kind == video_kind::elementary)
      return told_by_head{file_kind::video, std::move(video), {}, {}};
  } else if (auto audio = read_audio_head(head, whole);
             audio && audio->first && audio->gap_count == 0) {
    return told_by_head{file_kind::audio, {}, std::move(audio), {}};
  }
  return std::nullopt;
}

told_by_head told_by(bytes head, bool whole) {
  if (head.empty())
    return {file_kind::empty, {}, {}, {}};
  if (auto plain = plain_stream(head, whole && head.size() <= plain_bytes))
    return std::move(*plain);
  if (auto program = read_program_stream_head(head))
    return {file_kind::program_stream, {}, {}, std::move(program)};
  const bytes first = head.first(std::min(head.size(), plain_bytes));
  video_facts video = read_video_head(first);
  auto audio = read_audio_head(first, whole && head.size() <= plain_bytes);
  // Start codes and sync words turn up in each other's streams: what begins with the file is it.
  const bool is_sound = audio && audio->first && (audio->gaps.empty() || !video.shape);
  if (!is_sound && video.kind == video_kind::elementary)
    return {file_kind::video, std::move(video), {}, {}};
  if (audio)
    return {file_kind::audio, {}, std::move(audio), {}};
  const bool has_packets = video.kind == video_kind::packets;
  return {has_packets ? file_kind::program_stream : file_kind::unknown, {}, {}, {}};
}

// The beginning of a file of which these bytes have been read; nullopt if it cannot be read.
std::optional<std::vector<std::uint8_t>> head_of(file_slices& file, bytes first) {
  std::vector<std::uint8_t> head(first.begin(), first.end());
  while (head.size() < head_bytes) {
    const auto slice = file.next(head_bytes - head.size());
    if (!slice)
      return std::nullopt;
    if (slice->empty())
      break;
    head.insert(head.end(), slice->begin(), slice->end());
  }
  return head;
}

// There is nothing more in such a file than its beginning tells.
bool is_told_whole(file_kind kind) {
  return kind == file_kind::empty || kind == file_kind::unknown;
}

}  // namespace

// A file's beginning, and the scanner of its kind for all of it.
struct file_scan::state {
  explicit state(const std::string& path);

  std::string path;
  std::vector<std::uint8_t> head;
  std::uint64_t read = 0;
  file_facts facts;
  std::unique_ptr<video_scanner> video;
  std::unique_ptr<audio_scanner> audio;
  std::unique_ptr<program_stream_scanner> program;
  std::unique_ptr<file_relay> rest;  // what is behind the head, for the scanner

  bool begin();
  bool go_on();
  bool cannot_go_on();
  void make_scanner();
  void feed(bytes slice);
  void finish();
};

file_scan::state::state(const std::string& path_of_file) : path(path_of_file) {
  result<file_slices> file = file_slices::open(path);
  if (!file) {
    facts.why_unreadable = file.error;
    return;
  }
  facts.size = file->size();
  auto beginning = head_of(*file, {});
  if (!beginning) {
    cannot_go_on();
    return;
  }
  head = std::move(*beginning);
  read = head.size();
  facts.kind = told_by(head, head.size() == facts.size).kind;
  facts.whole = is_told_whole(facts.kind);
}

bool file_scan::state::cannot_go_on() {
  facts.kind = file_kind::unreadable;
  facts.why_unreadable = unreadable_end;
  return false;
}

bool file_scan::state::begin() {
  make_scanner();
  feed(head);
  auto relay = file_relay::begin(path, read, facts.size, [this](bytes part) { feed(part); });
  if (!relay)
    return cannot_go_on();
  rest = std::move(*relay);
  return true;
}

bool file_scan::state::go_on() {
  read = std::min(read + bytes_a_call, facts.size);
  switch (rest->wait_for(read - head.size())) {
    case file_relay::state::going_on:
      return true;
    case file_relay::state::ended:
      // What it took may have come all at once.
      if (read == facts.size)
        finish();
      return !facts.whole;
    case file_relay::state::failed:
      break;
  }
  return cannot_go_on();
}

void file_scan::state::make_scanner() {
  if (facts.kind == file_kind::video)
    video = std::make_unique<video_scanner>();
  else if (facts.kind == file_kind::audio)
    audio = std::make_unique<audio_scanner>();
  else if (facts.kind == file_kind::program_stream)
    program = std::make_unique<program_stream_scanner>();
}

void file_scan::state::feed(bytes slice) {
  if (video)
    video->feed(slice.data(), slice.size());
  else if (audio)
    audio->feed(slice.data(), slice.size());
  else if (program)
    program->feed(slice.data(), slice.size());
}

void file_scan::state::finish() {
  if (video) {
    video->finish();
    facts.video = video->facts();
  } else if (audio) {
    audio->finish();
    facts.audio = audio->facts();
  } else if (program) {
    program->finish();
    facts.program = program->facts();
  }
  facts.whole = true;
}

file_facts read_file_head(const std::string& path) {
  file_facts facts;
  result<file_slices> file = file_slices::open(path);
  if (!file) {
    facts.why_unreadable = file.error;
    return facts;
  }
  facts.size = file->size();
  const auto first = file->next(plain_bytes);
  std::optional<told_by_head> told;
  if (first)
    told = plain_stream(*first, first->size() == facts.size);
  if (first && !told)
    if (const auto head = head_of(*file, *first))
      told = told_by(*head, head->size() == facts.size);
  if (!told) {
    facts.why_unreadable = unreadable_end;
    return facts;
  }
  facts.kind = told->kind;
  facts.whole = is_told_whole(facts.kind);
  facts.video = std::move(told->video);
  facts.audio = std::move(told->audio);
  facts.program = std::move(told->program);
  return facts;
}

file_scan::file_scan(const std::string& path) : state_(std::make_unique<state>(path)) {}

file_scan::~file_scan() = default;
file_scan::file_scan(file_scan&&) noexcept = default;
file_scan& file_scan::operator=(file_scan&&) noexcept = default;

bool file_scan::read_slice() {
  state& s = *state_;
  if (s.facts.kind == file_kind::unreadable || s.facts.whole)
    return false;
  return s.rest ? s.go_on() : s.begin();
}

std::uint64_t file_scan::bytes_read() const {
  return state_->read;
}

const file_facts& file_scan::facts() const {
  return state_->facts;
}

}  // namespace corvane
