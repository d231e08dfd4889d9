// Projects kept for the case that their program ends without saving them: it dies, the power fails,
// the session ends. Each running program keeps its own, in a folder of its own that is locked as
// long as the program lives.
#pragma once

#include "platform/files/folder_lock.h"
#include "platform/result.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace corvane {

struct kept_project {
  std::string file;    ///< native path of the project's file; empty: it was never saved
  std::string editor;  ///< caption of the window that was open with unaccepted work; or empty
  std::string text;    ///< as a project file holds it
  std::string mark{};  ///< of what the file held (mark_of_text); empty: not known
  bool operator==(const kept_project&) const = default;
};

/// A short text that is another one for another text.
std::string mark_of_text(std::string_view text);

/// A project that another program has left. Nobody else is offered it while this lives.
class left_project {
 public:
  left_project(std::string folder, std::unique_ptr<folder_lock> lock, kept_project what);

  const kept_project& what() const { return what_; }

  /// It is no longer needed.
  void drop();

 private:
  std::string folder_;
  std::unique_ptr<folder_lock> lock_;
  kept_project what_;
};

class recovery {
 public:
  /// `folder` (native) holds the folders of all programs; it is made when something is kept.
  explicit recovery(std::string folder);

  /// Waits until all is written. What is kept stays.
  ~recovery();
  recovery(const recovery&) = delete;
  recovery& operator=(const recovery&) = delete;

  /// Keeps this in the place of what was kept before. It is written by a thread; this waits until
  /// the one before is written, so that no more than the last can be lost.
  void keep(kept_project what);

  /// Nothing needs to be kept any more.
  void forget();

  /// Waits until all is written. Why the last could not be, if so: then what was kept before stays.
  failure flush();

  /// Why the last that was written could not be; nullopt if all is well. Waits for nothing.
  failure trouble();

  /// What programs have left that are gone, the latest last.
  std::vector<left_project> left();

 private:
  void write();
  failure try_to_write(const std::optional<kept_project>& what);
  failure write_one(const std::optional<kept_project>& what);
  failure make_own_folder();

  const std::string folder_;
  std::string own_;  ///< the folder of this program; empty: not made yet
  std::unique_ptr<folder_lock> own_lock_;

  std::mutex guard_;
  std::condition_variable changed_;
  std::optional<std::optional<kept_project>> waiting_;  ///< to be written; an empty one: forget
  bool writing_ = false;
  bool ending_ = false;
  failure trouble_;
  std::thread writer_;
};

}  // namespace corvane
