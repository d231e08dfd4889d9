#include "media/video_loader.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace corvane {
namespace {

constexpr int slice_milliseconds = 12;              // less than a redraw apart
constexpr std::chrono::milliseconds patience(400);  // a bar that comes and goes at once flickers

}  // namespace

result<picture> video_loader::open(const std::string& path) {
  close();
  result<std::unique_ptr<video_file>> opened = video_file::open(path);
  if (!opened)
    return result<picture>::fail(opened.error);
  result<picture> first = (*opened)->first_picture();
  if (!first)
    return first;
  video_ = std::move(*opened);
  scanning_ = true;
  part_ = 0;
  unread_.reset();
  began_ = std::chrono::steady_clock::now();
  return first;
}

void video_loader::close() {
  scanning_ = false;
  video_.reset();
}

void video_loader::scan() {
  if (!scanning_)
    return;
  const result<scan_progress> progress = video_->scan(slice_milliseconds);
  if (!progress) {
    unread_ = progress.error;
    scanning_ = false;
    return;
  }
  scanning_ = !progress->finished;
  part_ = std::clamp(static_cast<double>(progress->done) /
                         static_cast<double>(std::max<std::uint64_t>(progress->total, 1)),
                     0.0, 1.0);
}

bool video_loader::takes_long() const {
  return scanning_ && std::chrono::steady_clock::now() - began_ > patience;
}

}  // namespace corvane
