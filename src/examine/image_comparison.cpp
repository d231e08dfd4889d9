#include "examine/image_comparison.h"

#include "formats/text.h"

#include <algorithm>
#include <limits>
#include <span>
#include <utility>

namespace corvane {

namespace {

bool is_of_video(const std::string& path) {
  return upper(path).starts_with("VIDEO_TS/");
}

/// Those of `files` that are neither in VIDEO_TS nor named in `but`.
std::vector<const disc_file*> other_files(const disc_files& files, const disc_files& but) {
  std::vector<const disc_file*> others;
  for (const disc_file& one : files.files())
    if (!is_of_video(one.path) && but.find(one.path) == nullptr)
      others.push_back(&one);
  return others;
}

/// The first of `files` that has that size, taken out of them; null: none.
const disc_file* take_by_size(std::vector<const disc_file*>& files, std::uint64_t size) {
  const auto found = std::ranges::find(files, size, &disc_file::size);
  if (found == files.end())
    return nullptr;
  const disc_file* const taken = *found;
  files.erase(found);
  return taken;
}

}  // namespace

image_files_matched match_files(const disc_files& disc, const disc_files& tree,
                                const disc_files& image,
                                const std::function<bool(const std::string&)>& is_newer) {
  image_files_matched all;
  std::uint64_t before = 0;
  const auto match = [&](const disc_file& one, const disc_file* in_image) {
    if (in_image == nullptr)
      all.differences.push_back({one.path, "is not in the image"});
    else if (in_image->size != one.size)
      all.differences.push_back({one.path, "has " + std::to_string(in_image->size) +
                                               " bytes in the image, and " +
                                               std::to_string(one.size) + " in the folder"});
    else
      all.pairs.push_back({one, *in_image, before});
  };
  for (const disc_file& one : disc.files()) {
    match(one, image.find(one.path));
    before += one.size;
  }
  for (const disc_file& one : image.files())
    if (is_of_video(one.path) && disc.find(one.path) == nullptr)
      all.differences.push_back({one.path, "is not in the folder"});
  std::vector<const disc_file*> renamed = other_files(image, tree);
  for (const disc_file& one : tree.files()) {
    if (is_of_video(one.path) || is_newer(one.path))
      continue;
    const disc_file* const named = image.find(one.path);
    match(one, named != nullptr ? named : take_by_size(renamed, one.size));
  }
  return all;
}

image_comparison::image_comparison(std::unique_ptr<disc_files> folder, disc_files& image,
                                   std::vector<pair> pairs)
    : folder_(std::move(folder)),
      image_(image),
      pairs_(std::move(pairs)),
      thread_([this] { run(); }) {}

image_comparison::~image_comparison() {
  {
    const std::lock_guard lock(mutex_);
    stop_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void image_comparison::run() {
  const auto one = std::make_unique_for_overwrite<slice_buffer>();
  const auto other = std::make_unique_for_overwrite<slice_buffer>();
  for (const pair& files : pairs_) {
    const bool equal = same(files, *one, *other);
    const std::lock_guard lock(mutex_);
    if (stop_)
      return;
    if (!equal)
      differing_.push_back(files.in_folder.path);
  }
  const std::lock_guard lock(mutex_);
  done_ = true;
  changed_.notify_all();
}

/// True as well if the thread is stopped.
bool image_comparison::same(const pair& files, slice_buffer& one, slice_buffer& other) {
  const std::uint64_t size = files.in_folder.size;
  for (std::uint64_t at = 0; at < size;) {
    if (!may_go_on(files.before + at))
      return true;
    const auto count =
        static_cast<std::size_t>(std::min<std::uint64_t>(one.bytes.size(), size - at));
    const std::span<std::uint8_t> in_folder = one.first(count), in_image = other.first(count);
    if (!folder_->read(files.in_folder, at, in_folder) ||
        !image_.read(files.in_image, at, in_image) || !std::ranges::equal(in_folder, in_image))
      return false;
    at += count;
  }
  return true;
}

/// The thread stands at `byte`, and may read on; it waits until it may. False: it is to stop.
///
/// Who waits, waits until half of the way is free: to wake somebody takes longer than a slice.
bool image_comparison::may_go_on(std::uint64_t byte) {
  std::unique_lock lock(mutex_);
  here_ = byte;
  if (waits_there_ && there_ <= here_ + farthest / 2)
    changed_.notify_all();
  if (here_ > there_ && here_ - there_ > farthest) {
    waits_here_ = true;
    changed_.wait(lock, [this] { return stop_ || here_ <= there_ + farthest / 2; });
    waits_here_ = false;
  }
  return !stop_;
}

bool image_comparison::keep_with(std::uint64_t byte, time_point until) {
  std::unique_lock lock(mutex_);
  there_ = byte;
  if (waits_here_ && here_ <= there_ + farthest / 2)
    changed_.notify_all();
  if (done_ || there_ <= here_ + (waits_there_ ? farthest / 2 : farthest))
    return true;
  waits_there_ = true;
  if (!changed_.wait_until(lock, until, [this] { return done_ || there_ <= here_ + farthest / 2; }))
    return false;
  waits_there_ = false;
  return true;
}

std::optional<std::vector<std::string>> image_comparison::differing(time_point until) {
  std::unique_lock lock(mutex_);
  there_ = std::numeric_limits<std::uint64_t>::max() - farthest;
  changed_.notify_all();
  if (!changed_.wait_until(lock, until, [this] { return done_; }))
    return std::nullopt;
  return differing_;
}

}  // namespace corvane
