// The steps that a user has done to the project, to be undone and redone.
#pragma once

#include "project/project_state.h"

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

namespace corvane {

/// The file of a project, and what it holds.
struct project_origin {
  std::string file;  ///< native path; empty: the project was never saved
  std::string text;  ///< of the file, as this program writes it
  bool operator==(const project_origin&) const = default;
};

struct project_step {
  std::string name;  ///< as menus name it: "remove title"
  project_state before, after;
  std::shared_ptr<const project_origin> origin_before, origin_after;
};

class project_history {
 public:
  /// Beyond `most_bytes` the oldest steps are forgotten.
  explicit project_history(std::size_t most_bytes = std::size_t{64} << 20)
      : most_bytes_(most_bytes) {}

  /// A step was done. Those that were undone before can no longer be redone.
  void add(project_step step);

  /// The step to be undone next, or redone next; null if there is none.
  const project_step* undone_next() const;
  const project_step* redone_next() const;

  /// The project was saved: as `now`, from `before`. Steps that stay with either stay with the new
  /// one; whatever they lead to is another project than its file holds.
  void was_saved(const std::shared_ptr<const project_origin>& before,
                 const std::shared_ptr<const project_origin>& now);

  /// The one is undone, or redone. There must be one.
  void undo() { --done_; }
  void redo() { ++done_; }

 private:
  struct kept {
    project_step step;
    std::size_t bytes;
  };

  /// `last`: the step before, with which it shares what is equal; or null.
  static std::size_t bytes_of(const project_step& step, const project_step* last);
  void forget_oldest();

  std::deque<kept> steps_;
  std::size_t done_ = 0;  ///< how many of them are done; the others were undone
  std::size_t bytes_ = 0;
  std::size_t most_bytes_;
};

}  // namespace corvane
