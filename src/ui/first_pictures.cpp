#include "ui/first_pictures.h"

#include "media/video_loader.h"
#include "ui/editor/file_pictures.h"

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <utility>

namespace corvane {
namespace {

constexpr int rest_milliseconds = 150;  // a key that is held repeats faster
constexpr int read_on_milliseconds = 20;
constexpr std::size_t most_pictures = 6;

}  // namespace

first_pictures::first_pictures(std::function<void()> came) : came_(std::move(came)) {
  rest_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { begin(); });
  poll_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { take(); });
}

first_pictures::~first_pictures() {
  if (decoding_.valid())
    decoding_.wait();
}

void first_pictures::look_again() {
  for (kept& one : kept_)
    one.looked_at = false;
}

const first_picture* first_pictures::find(const std::string& path) {
  const auto known = std::ranges::find(kept_, path, &kept::path);
  if (known == kept_.end() || (!known->looked_at && known->stamp != stamp_of(path)))
    return nullptr;
  known->looked_at = true;
  return &known->picture;
}

void first_pictures::want(const std::string& path) {
  if (path == wanted_)
    return;
  wanted_ = path;
  if (path.empty())
    rest_.Stop();
  else
    rest_.StartOnce(rest_milliseconds);
}

first_pictures::decoded first_pictures::decode(const std::string& path) {
  video_loader loader;
  result<picture> first = loader.open(path);
  if (!first)
    return {};
  return {std::move(*first), loader.video()->shape().aspect_width == 16};
}

void first_pictures::begin() {
  if (decoding_.valid() || wanted_.empty())
    return;  // it begins when the other one is there
  path_ = wanted_;
  stamp_ = stamp_of(path_);
  decoding_ = std::async(std::launch::async, [path = path_] { return decode(path); });
  poll_.Start(read_on_milliseconds);
}

void first_pictures::take() {
  if (decoding_.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
    return;
  poll_.Stop();
  const decoded got = decoding_.get();
  first_picture shown;
  if (got.first.width > 0)
    shown.image = image_of(got.first);
  if (got.is_wide)
    shown.proportions = wxSize(16, 9);
  std::erase_if(kept_, [this](const kept& one) { return one.path == path_; });
  kept_.push_front({path_, stamp_, std::move(shown)});
  if (kept_.size() > most_pictures)
    kept_.pop_back();
  if (path_ != wanted_) {
    if (!rest_.IsRunning())
      begin();
    return;
  }
  wanted_.clear();
  came_();
}

}  // namespace corvane
