// A video that is opened and then looked through in slices, so that the window that shows it stays
// live meanwhile.
//
// Owns the open video. Belongs to one thread; may be destroyed in the middle of it all.
#pragma once

#include "media/video_file.h"

#include <chrono>
#include <memory>
#include <string>

namespace corvane {

class video_loader {
 public:
  /// Opens a video (native path) and gives its first picture. Fails, and has no video then, when it
  /// cannot be read or shown.
  result<picture> open(const std::string& path);

  /// Closes the file.
  void close();

  /// Returns nullptr if there is none.
  video_file* video() const { return video_.get(); }

  /// Until this is false, not all pictures are known.
  bool scanning() const { return scanning_; }

  /// Looks through the next slice, which takes some milliseconds.
  void scan();

  /// How much has been looked through, 0 to 1.
  double part() const { return part_; }

  /// Whether it takes long enough to tell the user how far it is.
  bool takes_long() const;

  /// Why the file could not be read to its end. What was read until then can still be shown.
  const failure& unread() const { return unread_; }

 private:
  std::unique_ptr<video_file> video_;
  bool scanning_ = false;
  double part_ = 0;
  failure unread_;
  std::chrono::steady_clock::time_point began_;
};

}  // namespace corvane
