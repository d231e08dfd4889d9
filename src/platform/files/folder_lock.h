// A lock on a folder: one authoring run at a time uses a program folder's files, and one writes
// into an output folder.
//
// The file "corvane.lock" in the folder stays there unless it is told to vanish; the lock on it
// ends with the process that holds it, so one left by a killed program does not block.
#pragma once

#include <memory>
#include <string>

namespace corvane {

class folder_lock {
 public:
  /// Makes the lock file (native folder path) without taking the lock.
  explicit folder_lock(const std::string& folder);
  ~folder_lock();
  folder_lock(const folder_lock&) = delete;
  folder_lock& operator=(const folder_lock&) = delete;

  /// Takes the lock; true also when this object holds it already. False when another process (or
  /// another object of this one) holds it, or the lock file cannot be made.
  bool take();
  void release();
  bool held() const;

  /// Whether the last `take` failed because another holds the lock. Where a file system knows no
  /// locks, it fails for that.
  bool is_held_elsewhere() const;

  /// Why the last `take` failed where nobody holds the lock, in the system's words.
  const std::string& trouble() const;

  /// Releases the lock, if it is held, and removes its file.
  void vanish();

 private:
  struct state;
  std::unique_ptr<state> s_;
};

}  // namespace corvane
