#include "examine/file_facts.h"

#include "formats/video_standard.h"
#include "platform/files/file_slices.h"

#include <algorithm>
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

// In one call, 4 MB: whoever waits looks at a clock after each.
constexpr int slices_a_call = 32;

file_kind kind_of(bytes head, bool whole) {
  if (head.empty())
    return file_kind::empty;
  if (read_program_stream_head(head))
    return file_kind::program_stream;
  const video_facts video = read_video_head(head);
  const auto audio = read_audio_head(head.first(std::min(head.size(), audio_head_bytes)), whole);
  // Start codes and sync words turn up in each other's streams: what begins with the file is it.
  if (audio && audio->first && (audio->gaps.empty() || !video.shape))
    return file_kind::audio;
  if (video.kind == video_kind::elementary)
    return file_kind::video;
  if (audio)
    return file_kind::audio;
  return video.kind == video_kind::packets ? file_kind::program_stream : file_kind::unknown;
}

void fill_from_head(file_facts& facts, bytes head, bool whole) {
  switch (facts.kind) {
    case file_kind::video:
      facts.video = read_video_head(head.first(std::min(head.size(), enough_for_a_header)));
      break;
    case file_kind::audio:
      facts.audio = read_audio_head(head.first(std::min(head.size(), audio_head_bytes)),
                                    whole && head.size() <= audio_head_bytes);
      break;
    case file_kind::program_stream:
      facts.program = read_program_stream_head(head);
      break;
    case file_kind::unreadable:
    case file_kind::empty:
    case file_kind::unknown:
      break;
  }
}

}  // namespace

// An open file and the scanner of its kind.
struct file_scan::state {
  std::optional<file_slices> file;
  std::vector<std::uint8_t> head;
  std::uint64_t read = 0;
  file_facts facts;
  std::unique_ptr<video_scanner> video;
  std::unique_ptr<audio_scanner> audio;
  std::unique_ptr<program_stream_scanner> program;

  void open(const std::string& path);
  std::optional<bytes> next();
  void make_scanner();
  void feed(bytes slice);
  void finish();
};

void file_scan::state::open(const std::string& path) {
  result<file_slices> opened = file_slices::open(path);
  if (!opened) {
    facts.why_unreadable = opened.error;
    return;
  }
  file = std::move(*opened);
  facts.size = file->size();
  while (head.size() < head_bytes) {
    const auto slice = next();
    if (!slice)
      return;
    if (slice->empty())
      break;
    head.insert(head.end(), slice->begin(), slice->end());
  }
  facts.kind = kind_of(head, head.size() == facts.size);
}

// None of the bytes at the end; nullopt, and the file counts as unreadable, if they cannot be read.
std::optional<bytes> file_scan::state::next() {
  const auto slice = file->next();
  if (!slice) {
    facts.kind = file_kind::unreadable;
    facts.why_unreadable = "it could not be read to its end";
    return std::nullopt;
  }
  read += slice->size();
  return *slice;
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
  file_scan scan(path);
  return scan.head();
}

file_scan::file_scan(const std::string& path) : state_(std::make_unique<state>()) {
  state_->open(path);
  if (state_->facts.kind == file_kind::empty || state_->facts.kind == file_kind::unknown)
    state_->facts.whole = true;
}

file_scan::~file_scan() = default;
file_scan::file_scan(file_scan&&) noexcept = default;
file_scan& file_scan::operator=(file_scan&&) noexcept = default;

file_facts file_scan::head() const {
  file_facts facts = state_->facts;
  fill_from_head(facts, state_->head, state_->head.size() == facts.size);
  return facts;
}

bool file_scan::read_slice() {
  state& s = *state_;
  if (s.facts.kind == file_kind::unreadable || s.facts.whole)
    return false;
  if (!s.video && !s.audio && !s.program) {
    s.make_scanner();
    s.feed(s.head);
    return true;
  }
  for (int count = 0; count < slices_a_call; ++count) {
    const auto slice = s.next();
    if (!slice)
      return false;
    if (slice->empty()) {
      s.finish();
      return false;
    }
    s.feed(*slice);
  }
  return true;
}

std::uint64_t file_scan::bytes_read() const {
  return state_->read;
}

const file_facts& file_scan::facts() const {
  return state_->facts;
}

}  // namespace corvane
