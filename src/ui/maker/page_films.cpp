#include "ui/maker/page_films.h"

#include <algorithm>
#include <chrono>
#include <variant>

namespace corvane {
namespace {

constexpr int poll_films_milliseconds = 30;
constexpr std::size_t most_film_bytes = std::size_t{128} << 20;

}  // namespace

page_films::page_films(std::function<void()> came)
    : came_(std::move(came)), pictures_(std::make_shared<page_pictures>()) {
  poll_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { take(); });
}

page_films::~page_films() {
  if (reading_.valid())
    reading_.wait();
}

void page_films::want(std::vector<wish> wishes) {
  wishes_ = std::move(wishes);
  begin_next();
}

page_films::had_picture page_films::at(const std::string& file, double seconds) const {
  const auto found = had_.find({file, seconds});
  return found == had_.end() ? had_picture::fail("it is being read") : found->second;
}

// Who reads keeps an open film and has one thread at a time: the next is read once this one is
// there.
void page_films::begin_next() {
  if (reading_.valid())
    return;
  const auto next =
      std::ranges::find_if(wishes_, [this](const wish& w) { return !had_.contains(w); });
  if (next == wishes_.end())
    return;
  now_ = *next;
  reading_ = std::async(std::launch::async, [pictures = pictures_, one = now_] {
    return pictures->at(one.first, one.second);
  });
  poll_.Start(poll_films_milliseconds);
}

void page_films::take() {
  if (reading_.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
    return;
  had_.insert_or_assign(now_, reading_.get());
  forget_some();
  begin_next();
  if (!reading_.valid())
    poll_.Stop();
  came_();
}

void page_films::forget_some() {
  const auto bytes = [](const had_picture& had) {
    return had && *had != nullptr ? (*had)->pixels.rgb.size() : std::size_t{0};
  };
  std::size_t all = 0;
  for (const auto& [one, had] : had_)
    all += bytes(had);
  for (auto one = had_.begin(); one != had_.end() && all > most_film_bytes;) {
    const bool is_wanted = std::ranges::find(wishes_, one->first) != wishes_.end();
    if (!is_wanted)
      all -= bytes(one->second);
    one = is_wanted ? std::next(one) : had_.erase(one);
  }
}

std::vector<page_films::wish> pictures_of(const drawn_page& page) {
  std::vector<page_films::wish> all;
  if (const auto* const behind = std::get_if<picture_background>(&page.background))
    all.emplace_back(behind->file, 0);
  for (const page_shape& shape : page.shapes)
    if (const auto* const thumbnail = std::get_if<page_thumbnail>(&shape))
      all.emplace_back(thumbnail->file, thumbnail->seconds);
  return all;
}

}  // namespace corvane
