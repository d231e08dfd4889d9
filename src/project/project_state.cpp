#include "project/project_state.h"

#include <algorithm>

namespace corvane {
namespace {

/// `value`, or `like` where that is equal.
template <class T>
std::shared_ptr<const T> shared(const T& value, const std::shared_ptr<const T>& like) {
  return like != nullptr && *like == value ? like : std::make_shared<const T>(value);
}

std::size_t bytes_of(const std::vector<std::string>& rows) {
  std::size_t bytes = rows.capacity() * sizeof(std::string);
  for (const std::string& row : rows)
    bytes += row.capacity();
  return bytes;
}

}  // namespace

project_state::project_state(const project& p, const project_state* like)
    : customxml_(shared(p.customxml, like == nullptr ? nullptr : like->customxml_)),
      led_to_(p.led_to),
      Frame1_(p.Frame1),
      dvdsizetext_(p.dvdsizetext),
      dvdsizetext_red_(p.dvdsizetext_red),
      dvdsize_bytes_(p.dvdsize_bytes),
      selected_(p.selected) {
  for (std::size_t i = 0; i < lists.size(); ++i)
    lists_[i] = shared(p.*lists[i], like == nullptr ? nullptr : like->lists_[i]);
  for (std::size_t i = 0; i < texts.size(); ++i)
    texts_[i] = p.*texts[i];
  for (std::size_t i = 0; i < marks.size(); ++i)
    marks_[i] = p.*marks[i];
}

void project_state::restore(project& p) const {
  for (std::size_t i = 0; i < lists.size(); ++i)
    p.*lists[i] = *lists_[i];
  for (std::size_t i = 0; i < texts.size(); ++i)
    p.*texts[i] = texts_[i];
  for (std::size_t i = 0; i < marks.size(); ++i)
    p.*marks[i] = marks_[i];
  p.customxml = *customxml_;
  p.led_to = led_to_;
  p.Frame1 = Frame1_;
  p.dvdsizetext = dvdsizetext_;
  p.dvdsizetext_red = dvdsizetext_red_;
  p.dvdsize_bytes = dvdsize_bytes_;
  p.selected = selected_;
}

bool project_state::is_same_project(const project_state& other) const {
  for (std::size_t i = 0; i < lists.size(); ++i)
    if (lists_[i] != other.lists_[i] && *lists_[i] != *other.lists_[i])
      return false;
  return texts_ == other.texts_ && marks_ == other.marks_ &&
         (customxml_ == other.customxml_ || *customxml_ == *other.customxml_);
}

std::size_t project_state::bytes_beside(const project_state* other) const {
  std::size_t bytes = sizeof(project_state) + led_to_.capacity() * sizeof(command_target);
  for (std::size_t i = 0; i < lists.size(); ++i)
    if (other == nullptr || lists_[i] != other->lists_[i])
      bytes += bytes_of(*lists_[i]);
  if (other == nullptr || customxml_ != other->customxml_)
    bytes += customxml_->capacity();
  return bytes;
}

}  // namespace corvane
