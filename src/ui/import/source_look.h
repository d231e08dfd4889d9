// What is in people's files, and pictures of them, found out beside a window: one file after the
// other, and the picture that was wished for last. A window that goes waits for what is being read.
//
// Belongs to the main thread.
#pragma once

#include "import/import_batch.h"
#include "media/picture.h"
#include "ui/first_pictures.h"

#include <wx/timer.h>

#include <functional>
#include <future>
#include <map>
#include <optional>
#include <string>

namespace corvane {

class source_look {
 public:
  struct handlers {
    /// The file that is to be looked into next (native path), if there is one.
    std::function<std::optional<std::string>()> next;
    std::function<void(const probed_source&)> known;
    /// The picture that was wished for is there, or it is known that there is none.
    std::function<void()> picture_came;
  };

  explicit source_look(handlers on);
  /// Waits for what is being read.
  ~source_look();
  source_look(const source_look&) = delete;
  source_look& operator=(const source_look&) = delete;

  /// There may be files to look into.
  void go_on();

  /// Null if it is not known yet.
  const first_picture* picture_of(const std::string& file) const;
  /// Wishes for the picture of a file (native path) so many seconds from its beginning; the wish
  /// before is forgotten. An empty path: for none.
  void want_picture(const std::string& file, double seconds);

 private:
  void take();
  void begin_picture();

  handlers on_;
  std::future<probed_source> looking_;
  std::future<result<picture>> decoding_;
  std::string decoded_;  ///< the file of `decoding_`
  std::string wanted_;
  double seconds_ = 0;
  std::map<std::string, first_picture> pictures_;
  wxTimer poll_;
};

}  // namespace corvane
