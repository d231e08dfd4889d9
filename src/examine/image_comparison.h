// The files of a disc in a folder held against those in its image, by a thread of its own: to copy
// both from the system takes as long as all else that a look at a disc does.
#pragma once

#include "formats/disc_files.h"
#include "platform/files/read_buffer.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace corvane {

/// Two files of one size.
struct compared_files {
  disc_file in_folder, in_image;
  std::uint64_t before = 0;  ///< bytes of all files of VIDEO_TS that are read before it
};

/// Which file of an image is which of its folder's.
struct image_files_matched {
  std::vector<compared_files> pairs;
  struct difference {
    std::string path;
    std::string what;  ///< a predicate: "is not in the image"
  };
  std::vector<difference> differences;
};

/// Those of `disc` (VIDEO_TS) come first, in its order, then the others of `tree`, which is the
/// folder above it. An image may give one of these another name, for not all can be written in it:
/// it is then known by its size. `is_newer` says of such a file, by its path in the tree, that it
/// came or was changed after the image was made; it is not looked for.
image_files_matched match_files(const disc_files& disc, const disc_files& tree,
                                const disc_files& image,
                                const std::function<bool(const std::string& path)>& is_newer);

class image_comparison {
 public:
  using time_point = std::chrono::steady_clock::time_point;
  using pair = compared_files;

  /// Begins at once, and takes the pairs in their order. `folder`, which has the files of the
  /// pairs, and `image` are its own until it is done; `image` must outlive it.
  image_comparison(std::unique_ptr<disc_files> folder, disc_files& image, std::vector<pair> pairs);
  /// Waits for the thread, which stops at the end of its slice.
  ~image_comparison();
  image_comparison(const image_comparison&) = delete;
  image_comparison& operator=(const image_comparison&) = delete;

  /// Somebody else reads the folder's files, too, and stands at `byte` of all of them. The thread
  /// goes no further than 16 MB ahead, so that a disk gives each byte once. True if it is not as
  /// far behind, or no longer; false if it still is at `until`.
  bool keep_with(std::uint64_t byte, time_point until);

  /// Paths of the files that are not the same or cannot be read; nullopt if that is not known at
  /// `until`. `keep_with` does not hold the thread back any more.
  std::optional<std::vector<std::string>> differing(time_point until);

 private:
  static constexpr std::uint64_t farthest = std::uint64_t{16} << 20;
  using slice_buffer = read_buffer<std::size_t{128} << 10>;

  void run();
  bool may_go_on(std::uint64_t byte);
  bool same(const pair& files, slice_buffer& one, slice_buffer& other);

  // Of the thread.
  std::unique_ptr<disc_files> folder_;
  disc_files& image_;
  std::vector<pair> pairs_;

  // Of both.
  std::mutex mutex_;
  std::condition_variable changed_;
  std::uint64_t here_ = 0;   // where the thread is
  std::uint64_t there_ = 0;  // where the other reader is
  bool waits_here_ = false, waits_there_ = false;
  bool stop_ = false, done_ = false;
  std::vector<std::string> differing_;

  std::thread thread_;
};

}  // namespace corvane
