#include "ui/import/source_look.h"

#include "media/source_probe.h"
#include "ui/editor/file_pictures.h"

#include <chrono>
#include <utility>

namespace corvane {
namespace {

constexpr int poll_looks_milliseconds = 30;
constexpr int most_width = 480, most_height = 360;

template <typename Result>
bool is_ready(const std::future<Result>& future) {
  return future.valid() && future.wait_for(std::chrono::seconds(0)) == std::future_status::ready;
}

}  // namespace

source_look::source_look(handlers on) : on_(std::move(on)) {
  poll_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { take(); });
}

source_look::~source_look() {
  if (looking_.valid())
    looking_.wait();
  if (decoding_.valid())
    decoding_.wait();
}

void source_look::go_on() {
  if (looking_.valid())
    return;
  const std::optional<std::string> file = on_.next();
  if (!file)
    return;
  looking_ =
      std::async(std::launch::async, [file = *file] { return look_into(file, probe_source); });
  poll_.Start(poll_looks_milliseconds);
}

const first_picture* source_look::picture_of(const std::string& file) const {
  const auto found = pictures_.find(file);
  return found == pictures_.end() ? nullptr : &found->second;
}

void source_look::want_picture(const std::string& file, double seconds) {
  wanted_ = file;
  seconds_ = seconds;
  begin_picture();
}

void source_look::begin_picture() {
  if (decoding_.valid() || wanted_.empty() || picture_of(wanted_) != nullptr)
    return;
  decoded_ = wanted_;
  decoding_ = std::async(std::launch::async, [file = wanted_, seconds = seconds_] {
    return source_picture(file, seconds, most_width, most_height);
  });
  poll_.Start(poll_looks_milliseconds);
}

void source_look::take() {
  if (is_ready(looking_)) {
    on_.known(looking_.get());
    go_on();
  }
  if (is_ready(decoding_)) {
    const result<picture> got = decoding_.get();
    first_picture& shown = pictures_[decoded_];
    if (got && got->width > 0) {
      shown.image = image_of(*got);
      shown.proportions = wxSize(got->width, got->height);
    }
    begin_picture();
    on_.picture_came();
  }
  if (!looking_.valid() && !decoding_.valid())
    poll_.Stop();
}

}  // namespace corvane
