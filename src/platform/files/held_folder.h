// A folder that files are made in for a long time, which somebody may rename meanwhile, or whose
// disk may be taken out: it is known again, and can be tidied, wherever it is then.
#pragma once

#include <memory>
#include <string>
#include <string_view>

namespace corvane {

class held_folder {
 public:
  /// A native path, absolute. A folder that is not there is elsewhere from the beginning.
  explicit held_folder(std::string native);
  ~held_folder();
  held_folder(const held_folder&) = delete;
  held_folder& operator=(const held_folder&) = delete;

  /// Whether its path leads to another folder by now, or to none.
  bool is_elsewhere() const;

  /// Removes a file in it by its name, where there is one and the system still lets it be reached.
  void remove(std::string_view name) const;

 private:
  struct state;
  std::unique_ptr<state> s_;
};

}  // namespace corvane
