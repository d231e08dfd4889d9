#include "import/followed_video.h"

#include "platform/files/files.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <fstream>
#include <ios>
#include <mutex>
#include <utility>
#include <vector>

namespace corvane {
namespace {

constexpr auto look_again = std::chrono::milliseconds(50);

constexpr std::size_t bytes_at_once = std::size_t{256} * 1024;

/// A file that grows.
class growing_file {
 public:
  explicit growing_file(std::string path) : path_(std::move(path)), buffer_(bytes_at_once) {
    stream_.rdbuf()->pubsetbuf(nullptr, 0);
  }

  /// What there is more of it; 0: nothing as yet.
  std::size_t read() {
    if (!stream_.is_open())
      stream_.open(path_of(path_), std::ios::binary);
    if (!stream_.is_open())
      return 0;
    // Without going there again Windows gives nothing more once it has met an end.
    stream_.clear();
    stream_.seekg(static_cast<std::streamoff>(read_));
    stream_.read(buffer_.data(), static_cast<std::streamsize>(buffer_.size()));
    const auto count = static_cast<std::size_t>(stream_.gcount());
    read_ += count;
    return count;
  }

  bool is_open() const { return stream_.is_open(); }
  bool is_broken() const { return stream_.bad(); }
  const std::uint8_t* data() const { return reinterpret_cast<const std::uint8_t*>(buffer_.data()); }

 private:
  std::string path_;
  std::vector<char> buffer_;
  std::uint64_t read_ = 0;
  std::ifstream stream_;
};

}  // namespace

struct followed_video::progress {
  std::mutex guard;
  std::condition_variable changed;
  bool is_complete = false;  ///< nothing more will be written
  bool is_given_up = false;

  void set(bool progress::*what) {
    const std::lock_guard<std::mutex> lock(guard);
    this->*what = true;
    changed.notify_all();
  }
  bool is(bool progress::*what) {
    const std::lock_guard<std::mutex> lock(guard);
    return this->*what;
  }
  void wait() {
    std::unique_lock<std::mutex> lock(guard);
    changed.wait_for(lock, look_again, [this] { return is_complete || is_given_up; });
  }
};

followed_video::followed_video(std::string path)
    : now_(std::make_shared<progress>()),
      looking_(std::async(std::launch::async,
                          [path = std::move(path), now = now_] { return follow(path, *now); })) {}

followed_video::~followed_video() {
  give_up();
}

void followed_video::give_up() {
  now_->set(&progress::is_given_up);
}

file_facts followed_video::facts() {
  now_->set(&progress::is_complete);
  return looking_.get();
}

file_facts followed_video::follow(const std::string& path, progress& now) {
  growing_file file(path);
  video_scanner scanner;
  file_facts facts;
  while (!now.is(&progress::is_given_up)) {
    // Asked before reading: what was written until then is read.
    const bool is_complete = now.is(&progress::is_complete);
    const std::size_t count = file.read();
    scanner.feed(file.data(), count);
    facts.size += count;
    if (count == 0 && is_complete)
      break;
    if (count == 0)
      now.wait();
  }
  if (!file.is_open() || file.is_broken()) {
    facts.why_unreadable = "it cannot be read";
    return facts;
  }
  facts.kind = file_kind::unknown;
  if (now.is(&progress::is_given_up))
    return facts;
  scanner.finish();
  facts.whole = true;
  if (scanner.facts().kind == video_kind::elementary) {
    facts.kind = file_kind::video;
    facts.video = scanner.facts();
  }
  return facts;
}

}  // namespace corvane
