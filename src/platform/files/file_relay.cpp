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
  stopped_ = true;
  for (std::thread& one : running_)
    one.join();
}

std::uint64_t file_relay::place_of(std::uint64_t block) const {
  return std::min(from_ + block * block_size, end_);
}

// A thread that stops hands its turn on, too, so that the other one does not wait for ever.
void file_relay::run(std::size_t thread) {
  const auto buffer = std::make_unique_for_overwrite<read_buffer<block_size>>();
  for (std::uint64_t block = thread; block < blocks_; block += threads) {
    const std::uint64_t at = place_of(block);
    const auto bytes = buffer->first(static_cast<std::size_t>(place_of(block + 1) - at));
    const bool is_read = !stopped_ && read_at(files_[thread], at, bytes);
    for (std::uint64_t turn = turn_; turn != block; turn = turn_)
      turn_.wait(turn);
    if (!stopped_)
      take(bytes, is_read);
    const bool stops = stopped_;
    turn_ = block + 1;
    turn_.notify_all();
    if (stops)
      return;
  }
}

void file_relay::take(std::span<const std::uint8_t> bytes, bool is_read) {
  try {
    if (is_read) {
      take_(bytes);
      taken_ += bytes.size();
      return;
    }
  } catch (...) {
    thrown_ = std::current_exception();
  }
  failed_ = stopped_ = true;
}

file_relay::state file_relay::wait_for(std::uint64_t bytes) {
  for (;;) {
    const std::uint64_t turn = turn_;
    if (failed_) {
      if (thrown_)
        std::rethrow_exception(thrown_);
      return state::failed;
    }
    if (taken_ == end_ - from_)
      return state::ended;
    if (taken_ >= bytes)
      return state::going_on;
    turn_.wait(turn);
  }
}

std::uint64_t file_relay::taken() const {
  return taken_;
}

}  // namespace corvane
