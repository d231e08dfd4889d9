#include "media/video_file.h"

#include "formats/video_index.h"
#include "media/group_decoder.h"
#include "media/video_source.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <optional>
#include <utility>
#include <vector>

namespace corvane {

struct video_file::state {
  std::unique_ptr<video_source> source;
  video_index_builder builder;
  std::optional<group_decoder> decoder;
  byte_vector piece;
  bool finished = false;
  std::vector<std::uint32_t> units;  // the groups they begin with, once finished; empty: all

  const video_index& index() const { return builder.index(); }

  /// Indexes the next piece of the file.
  failure advance() {
    const auto more = source->next(piece);
    if (!more)
      return more.error;
    builder.feed(piece.data(), piece.size());
    if (!*more) {
      builder.finish();
      finished = true;
      find_units();
    }
    return std::nullopt;
  }

  /// The first group behind each navigation packet.
  void find_units() {
    std::size_t group = 0;
    for (const std::uint64_t position : source->units()) {
      const auto before = [&] {
        return index().bytes_of(index().groups()[group].first_coded).position < position;
      };
      while (group < index().groups_shown() && before())
        ++group;
      if (group < index().groups_shown() && (units.empty() || units.back() != group))
        units.push_back(static_cast<std::uint32_t>(group));
    }
  }

  /// Until the first picture on the screen is known.
  failure read_head() {
    constexpr std::uint64_t most = std::uint64_t{8} * 1024 * 1024;
    while (!finished && index().shown() == 0 && source->done() < most)
      if (failure why = advance())
        return why;
    if (index().coded() == 0 || !index().shape())
      return "it holds no MPEG-1 or MPEG-2 pictures";
    // Far above what a disc holds: 720 x 576.
    constexpr int largest = 4096;
    if (index().shape()->width > largest || index().shape()->height > largest)
      return "its pictures are too large";
    return std::nullopt;
  }

  double field_seconds() const {
    return 0.5 * index().shape()->rate_denominator / index().shape()->rate_numerator;
  }
};

result<std::unique_ptr<video_file>> video_file::open(const std::string& path) {
  using opened = result<std::unique_ptr<video_file>>;
  auto s = std::make_unique<state>();
  auto source = open_video_source(path);
  if (!source)
    return opened::fail(source.error);
  s->source = std::move(*source);
  if (const failure why = s->read_head())
    return opened::fail(*why);
  auto decoder = group_decoder::create(*s->source, s->index());
  if (!decoder)
    return opened::fail(decoder.error);
  s->decoder.emplace(std::move(*decoder));
  return opened::ok(std::unique_ptr<video_file>(new video_file(std::move(s))));
}

video_file::video_file(std::unique_ptr<state> s) : state_(std::move(s)) {}
video_file::~video_file() = default;

const video_shape& video_file::shape() const {
  return *state_->index().shape();
}

double video_file::frame_rate() const {
  return static_cast<double>(shape().rate_numerator) / shape().rate_denominator;
}

result<picture> video_file::first_picture() {
  // The only one of a stream may still wait for the end of the file to be shown.
  const video_index& index = state_->index();
  return state_->decoder->decode(index.shown() > 0 ? index.coded_of(0) : 0);
}

result<scan_progress> video_file::scan(int milliseconds) {
  using clock = std::chrono::steady_clock;
  const auto end = clock::now() + std::chrono::milliseconds(milliseconds);
  while (!state_->finished) {
    if (const failure why = state_->advance())
      return result<scan_progress>::fail(*why);
    if (clock::now() >= end)
      break;
  }
  return result<scan_progress>::ok(
      {state_->source->done(), state_->source->total(), state_->finished});
}

std::int64_t video_file::pictures() const {
  return static_cast<std::int64_t>(state_->index().shown());
}

double video_file::length() const {
  return time_of(pictures());
}

result<picture> video_file::picture_number(std::int64_t number) {
  if (number < 0 || number >= pictures())
    return result<picture>::fail("there is no such picture");
  return state_->decoder->decode(state_->index().coded_of(static_cast<std::size_t>(number)));
}

result<picture> video_file::picture_at(double seconds) {
  return picture_number(number_at(seconds));
}

std::int64_t video_file::number_at(double seconds) const {
  // A time that was computed from a picture's number may be a hair too early.
  constexpr double hair = 1e-6;
  if (pictures() == 0 || !(seconds > 0))
    return 0;
  if (seconds >= length())
    return pictures() - 1;
  const auto field =
      static_cast<std::uint64_t>(std::floor(seconds / state_->field_seconds() + hair));
  const auto number = static_cast<std::int64_t>(state_->index().shown_at_field(field));
  return std::min(number, pictures() - 1);
}

double video_file::time_of(std::int64_t number) const {
  const std::int64_t known = std::clamp<std::int64_t>(number, 0, pictures());
  const std::uint64_t fields = state_->index().fields_before(static_cast<std::size_t>(known));
  return static_cast<double>(fields) * state_->field_seconds();
}

std::int64_t video_file::gops() const {
  return static_cast<std::int64_t>(state_->index().groups_shown());
}

std::int64_t video_file::gop_of(std::int64_t number) const {
  return static_cast<std::int64_t>(
      state_->index().group_shown(static_cast<std::size_t>(std::max<std::int64_t>(number, 0))));
}

std::int64_t video_file::first_of_gop(std::int64_t gop) const {
  if (gops() == 0)
    return 0;
  const std::int64_t known = std::clamp<std::int64_t>(gop, 0, gops() - 1);
  return static_cast<std::int64_t>(state_->index().first_shown(static_cast<std::size_t>(known)));
}

std::int64_t video_file::begin_of_gop(std::int64_t gop) const {
  if (gops() == 0)
    return 0;
  const std::int64_t known = std::clamp<std::int64_t>(gop, 0, gops() - 1);
  return static_cast<std::int64_t>(state_->index().begin_shown(static_cast<std::size_t>(known)));
}

std::int64_t video_file::units() const {
  return state_->units.empty() ? gops() : static_cast<std::int64_t>(state_->units.size());
}

std::int64_t video_file::begin_of_unit(std::int64_t unit) const {
  if (state_->units.empty())
    return begin_of_gop(unit);
  return begin_of_gop(
      state_->units[static_cast<std::size_t>(std::clamp<std::int64_t>(unit, 0, units() - 1))]);
}

std::uint64_t video_file::decoded() const {
  return state_->decoder->decoded();
}

}  // namespace corvane
