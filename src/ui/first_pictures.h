// The first pictures of videos, as what stands for a title or menu. A picture is decoded beside the
// window, once the wish for it has stood for a moment: whoever goes through a list by key waits for
// none. The last few are kept. Without the decoders, or for a file that is no video, there is no
// picture, and that is no failure.
//
// Belongs to the main thread.
#pragma once

#include "media/picture.h"
#include "platform/files/file_stamp.h"

#include <wx/gdicmn.h>
#include <wx/image.h>
#include <wx/timer.h>

#include <deque>
#include <functional>
#include <future>
#include <optional>
#include <string>

namespace corvane {

struct first_picture {
  wxImage image;             ///< not OK: there is none
  wxSize proportions{4, 3};  ///< that it is shown in: 16 x 9, or 4 x 3
};

class first_pictures {
 public:
  /// `came` is called once a picture that was wished for is known, or that there is none.
  explicit first_pictures(std::function<void()> came);
  /// Waits for a picture that is being decoded.
  ~first_pictures();
  first_pictures(const first_pictures&) = delete;
  first_pictures& operator=(const first_pictures&) = delete;

  /// Files may have changed: each is looked at once more before its picture is given again.
  void look_again();

  /// Of the file (native path) as it was at the last look_again or later; null if that is not
  /// known. A file that is being written changes all the time; its picture does not.
  const first_picture* find(const std::string& path);

  /// Wishes for one that is not known; the wish before is forgotten. An empty path: for none.
  void want(const std::string& path);

 private:
  struct decoded {
    picture first;  // of no size: there is none
    bool is_wide = false;
  };
  struct kept {
    std::string path;
    std::optional<file_stamp> stamp;
    first_picture picture;
    bool looked_at = true;  ///< since the last look_again
  };
  static decoded decode(const std::string& path);
  void begin();
  void take();

  std::function<void()> came_;
  std::deque<kept> kept_;  // the newest first
  std::string wanted_;
  std::string path_;  // of the one that is being decoded
  std::optional<file_stamp> stamp_;
  std::future<decoded> decoding_;
  wxTimer rest_, poll_;
};

}  // namespace corvane
