#include "project/project_history.h"

#include <utility>

namespace corvane {

std::size_t project_history::bytes_of(const project_step& step, const project_step* last) {
  std::size_t bytes = step.before.bytes_beside(last == nullptr ? nullptr : &last->after) +
                      step.after.bytes_beside(&step.before);
  if (step.origin_after != nullptr && step.origin_after != step.origin_before)
    bytes += step.origin_after->text.capacity();
  return bytes;
}

void project_history::add(project_step step) {
  for (; steps_.size() > done_; steps_.pop_back())
    bytes_ -= steps_.back().bytes;
  const std::size_t bytes = bytes_of(step, steps_.empty() ? nullptr : &steps_.back().step);
  steps_.push_back({std::move(step), bytes});
  bytes_ += bytes;
  while (bytes_ > most_bytes_ && !steps_.empty())
    forget_oldest();
  done_ = steps_.size();
}

/// What the next one shared with it takes its memory now alone.
void project_history::forget_oldest() {
  bytes_ -= steps_.front().bytes;
  steps_.pop_front();
  if (steps_.empty())
    return;
  kept& front = steps_.front();
  bytes_ -= front.bytes;
  front.bytes = bytes_of(front.step, nullptr);
  bytes_ += front.bytes;
}

void project_history::was_saved(const std::shared_ptr<const project_origin>& before,
                                const std::shared_ptr<const project_origin>& now) {
  for (kept& each : steps_)
    for (auto* const origin : {&each.step.origin_before, &each.step.origin_after})
      if (*origin != nullptr && (*origin == before || (*origin)->file == now->file))
        *origin = now;
}

const project_step* project_history::undone_next() const {
  return done_ == 0 ? nullptr : &steps_[done_ - 1].step;
}

const project_step* project_history::redone_next() const {
  return done_ == steps_.size() ? nullptr : &steps_[done_].step;
}

}  // namespace corvane
