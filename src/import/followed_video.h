// The video of an import, looked through while the encoder writes it: when it has ended, all but
// the last bytes have been seen, and a film of gigabytes is not read from the disk once more.
#pragma once

#include "examine/file_facts.h"

#include <future>
#include <memory>
#include <string>

namespace corvane {

class followed_video {
 public:
  /// Begins to look at the file (native path), which need not be there yet, in a thread of its own.
  explicit followed_video(std::string path);
  /// Does not wait for the file's end.
  ~followed_video();
  followed_video(const followed_video&) = delete;
  followed_video& operator=(const followed_video&) = delete;

  /// To be called when nothing is written any more: what is in the file, as file_scan tells it of a
  /// video. Of what is none, and of a file of which the rest was not wanted any more, only the size
  /// is told. Call once; waits for the end of the file.
  file_facts facts();

  /// The rest is not wanted any more. May be called while another thread waits for `facts`.
  void give_up();

 private:
  struct progress;
  static file_facts follow(const std::string& path, progress& now);

  std::shared_ptr<progress> now_;
  std::future<file_facts> looking_;
};

}  // namespace corvane
