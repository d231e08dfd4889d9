#include "platform/files/file_relay.h"

#include "platform/files/files.h"
#include "platform/files/read_buffer.h"

#include <algorithm>
#include <cerrno>
#include <ios>
#include <system_error>
#include <utility>

namespace corvane {

namespace {

bool read_at(std::ifstream& file, std::uint64_t at, std::span<std::uint8_t> bytes) {
  const auto count = static_cast<std::streamsize>(bytes.size());
  file.seekg(static_cast<std::streamoff>(at));
  file.read(reinterpret_cast<char*>(bytes.data()), count);
  return file.good() && file.gcount() == count;
}

}  // namespace

result<std::unique_ptr<file_relay>> file_relay::begin(const std::string& path, std::uint64_t from,
                                                      std::uint64_t end, taker take) {
  using begun = result<std::unique_ptr<file_relay>>;
  std::array<std::ifstream, threads> files;
  for (std::ifstream& file : files) {
    errno = 0;
    file.open(path_of(path), std::ios::binary);
    if (!file)
      return begun::fail(std::generic_category().message(errno != 0 ? errno : EIO));
  }
  return begun::ok(std::unique_ptr<file_relay>(
      new file_relay(std::move(files), from, std::max(from, end), std::move(take))));
}

file_relay::file_relay(std::array<std::ifstream, threads> files, std::uint64_t from,
                       std::uint64_t end, taker take)
    : from_(from),
      end_(end),
      blocks_((end - from + block_size - 1) / block_size),
      take_(std::move(take)),
      files_(std::move(files)) {
  for (std::size_t i = 0; i < threads; ++i)
    running_[i] = std::thread([this, i] { run(i); });
}

file_relay::~file_relay() {
  {
    const std::lock_guard lock(mutex_);
    stopped_ = true;
  }
  turn_changed_.notify_all();
  for (std::thread& one : running_)
    one.join();
}

std::uint64_t file_relay::place_of(std::uint64_t block) const {
  return std::min(from_ + block * block_size, end_);
}

void file_relay::run(std::size_t thread) {
  const auto buffer = std::make_unique_for_overwrite<read_buffer<block_size>>();
  for (std::uint64_t block = thread; block < blocks_; block += threads) {
    const std::uint64_t at = place_of(block);
    const auto bytes = buffer->first(static_cast<std::size_t>(place_of(block + 1) - at));
    const bool is_read = read_at(files_[thread], at, bytes);
    if (!wait_for_turn(block))
      return;
    end_turn(bytes.size(), is_read && take(bytes));
  }
}

/// False: the thread is to stop. To fall asleep and be woken takes as long as half a turn: it looks
/// for a while first.
bool file_relay::wait_for_turn(std::uint64_t block) {
  constexpr int looks = 200;
  const auto is_over = [&] { return stopped_ || turn_ == block; };
  for (int i = 0; i < looks && !is_over(); ++i)
    std::this_thread::yield();
  if (!is_over()) {
    std::unique_lock lock(mutex_);
    turn_changed_.wait(lock, is_over);
  }
  return !stopped_;
}

bool file_relay::take(std::span<const std::uint8_t> bytes) {
  try {
    take_(bytes);
    return true;
  } catch (...) {
    thrown_ = std::current_exception();
    return false;
  }
}

void file_relay::end_turn(std::uint64_t bytes, bool well) {
  bool is_reached = false;
  {
    const std::lock_guard lock(mutex_);
    if (well)
      taken_ += bytes;
    else
      failed_ = stopped_ = true;
    is_reached = failed_ || taken_ >= wanted_;
    ++turn_;
  }
  turn_changed_.notify_all();
  if (is_reached)
    reached_.notify_all();
}

file_relay::state file_relay::wait_for(std::uint64_t bytes) {
  std::unique_lock lock(mutex_);
  const std::uint64_t all = end_ - from_;
  wanted_ = std::min(bytes, all);
  reached_.wait(lock, [&] { return failed_ || taken_ >= wanted_; });
  if (failed_ && thrown_)
    std::rethrow_exception(thrown_);
  if (failed_)
    return state::failed;
  return taken_ == all ? state::ended : state::going_on;
}

std::uint64_t file_relay::taken() const {
  const std::lock_guard lock(mutex_);
  return taken_;
}

}  // namespace corvane
