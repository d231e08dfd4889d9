#include "platform/files/file_slices.h"

#include "platform/files/files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <filesystem>
#include <ios>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace corvane {

namespace {

constexpr const char* cannot_be_read = "the file cannot be read";

// Whether all of the bytes were there.
bool read_all(std::ifstream& stream, std::span<std::uint8_t> bytes) {
  const auto count = static_cast<std::streamsize>(bytes.size());
  stream.read(reinterpret_cast<char*>(bytes.data()), count);
  return stream.gcount() == count;
}

}  // namespace

/// Blocks go round: the thread fills them, `next` empties them. The thread rests until half of them
/// are empty: to wake it for each would take longer than to fill it.
class file_slices::reader {
 public:
  reader(std::ifstream stream, std::uint64_t size)
      : stream_(std::move(stream)), left_(size), thread_([this] { run(); }) {}
  ~reader() {
    {
      const std::lock_guard lock(mutex_);
      stop_ = true;
    }
    changed_.notify_all();
    thread_.join();
  }
  reader(const reader&) = delete;
  reader& operator=(const reader&) = delete;

  result<std::span<const std::uint8_t>> next(std::size_t most);

 private:
  static constexpr std::size_t block_size = 8 * slice_size, blocks = 8;

  struct block {
    read_buffer<block_size> buffer;
    std::size_t size = 0;
    bool whole = true;  // all of it could be read
  };

  void run();
  block& block_of(std::uint64_t number) { return (*blocks_)[number % blocks]; }

  // Of the thread.
  std::ifstream stream_;
  std::uint64_t left_;

  // Of both.
  std::unique_ptr<std::array<block, blocks>> blocks_ =
      std::make_unique_for_overwrite<std::array<block, blocks>>();
  std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t filled_ = 0, emptied_ = 0;  // blocks so far
  bool ended_ = false, stop_ = false;

  std::size_t taken_ = 0;  // of the oldest block that is not empty
  std::thread thread_;
};

void file_slices::reader::run() {
  for (bool more = left_ > 0; more;) {
    {
      std::unique_lock lock(mutex_);
      if (filled_ - emptied_ == blocks)
        changed_.wait(lock, [this] { return stop_ || filled_ - emptied_ <= blocks / 2; });
      if (stop_)
        return;
    }
    block& here = block_of(filled_);
    here.size = static_cast<std::size_t>(std::min<std::uint64_t>(left_, block_size));
    here.whole = read_all(stream_, here.buffer.first(here.size));
    left_ -= here.size;
    more = here.whole && left_ > 0;
    const std::lock_guard lock(mutex_);
    if (filled_++ == emptied_)
      changed_.notify_all();
  }
  const std::lock_guard lock(mutex_);
  ended_ = true;
  changed_.notify_all();
}

result<std::span<const std::uint8_t>> file_slices::reader::next(std::size_t most) {
  using read = result<std::span<const std::uint8_t>>;
  {
    std::unique_lock lock(mutex_);
    if (filled_ > emptied_ && taken_ == block_of(emptied_).size) {
      taken_ = 0;
      if (filled_ - ++emptied_ == blocks / 2)
        changed_.notify_all();
    }
    changed_.wait(lock, [this] { return filled_ > emptied_ || ended_; });
    if (filled_ == emptied_)
      return read::ok({});
  }
  block& here = block_of(emptied_);
  if (!here.whole)
    return read::fail(cannot_be_read);
  const std::size_t count = std::min({here.size - taken_, most, slice_size});
  const auto bytes = here.buffer.first(here.size).subspan(taken_, count);
  taken_ += count;
  return read::ok(bytes);
}

file_slices::file_slices() = default;
file_slices::file_slices(file_slices&&) noexcept = default;
file_slices& file_slices::operator=(file_slices&&) noexcept = default;
file_slices::~file_slices() = default;

void file_slices::read_ahead() {
  if (!reader_)
    reader_ = std::make_unique<reader>(std::move(stream_), left_);
}

result<file_slices> file_slices::open(const std::string& path) {
  using opened = result<file_slices>;
  const std::filesystem::path native = path_of(path);
  std::error_code error;
  const bool is_file = std::filesystem::is_regular_file(native, error);
  if (!error && !is_file)
    return opened::fail("it is no file");
  const std::uintmax_t size = error ? 0 : std::filesystem::file_size(native, error);
  if (error)
    return opened::fail(error.message());
  file_slices file;
  errno = 0;
  file.stream_.open(native, std::ios::binary);
  if (!file.stream_)
    return opened::fail(std::generic_category().message(errno != 0 ? errno : EIO));
  file.buffer_ = std::make_unique_for_overwrite<read_buffer<slice_size>>();
  file.size_ = file.left_ = size;
  return opened::ok(std::move(file));
}

result<std::span<const std::uint8_t>> file_slices::next(std::size_t most) {
  using read = result<std::span<const std::uint8_t>>;
  if (reader_)
    return reader_->next(most);
  const auto count =
      static_cast<std::size_t>(std::min<std::uint64_t>(left_, std::min(most, slice_size)));
  const std::span<std::uint8_t> bytes = buffer_->first(count);
  if (!read_all(stream_, bytes))
    return read::fail(cannot_be_read);
  left_ -= count;
  return read::ok(bytes);
}

}  // namespace corvane
