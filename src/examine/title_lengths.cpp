#include "examine/title_lengths.h"

#include "platform/files/file_stamp.h"

#include <memory>
#include <utility>

namespace corvane {

title_lengths::title_lengths(disc_description d, fact_store& store)
    : disc_(std::move(d)), store_(store) {
  for (const std::string& path : files_of(disc_))
    waiting_.push_back(path);
}

bool title_lengths::step() {
  if (waiting_.empty())
    return false;
  const std::string path = std::move(waiting_.front());
  waiting_.pop_front();
  std::shared_ptr<const file_facts> facts = store_.find(path, false);
  if (facts == nullptr) {
    const auto stamp = stamp_of(path);
    file_facts found = read_file_head(path);
    if (stamp && found.kind != file_kind::unreadable)
      store_.keep(path, *stamp, found);
    facts = std::make_shared<const file_facts>(std::move(found));
  }
  known_.files[path] = std::move(facts);
  return !waiting_.empty();
}

}  // namespace corvane
