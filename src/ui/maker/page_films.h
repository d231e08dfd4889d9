// The pictures of films and files that a page of menus shows, read beside a window: those that were
// wished for last, one after the other. A window that goes waits for the one that is being read.
//
// Belongs to the main thread.
#pragma once

#include "drawing/fitted_picture.h"
#include "drawing/page_pictures.h"
#include "formats/drawn_page.h"

#include <wx/timer.h>

#include <cstddef>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

class page_films {
 public:
  /// Native path, and seconds from its beginning.
  using wish = std::pair<std::string, double>;
  using had_picture = result<std::shared_ptr<const shaped_picture>>;

  /// `came`: another picture is there, or it is known that there is none.
  explicit page_films(std::function<void()> came);
  /// Waits for what is being read.
  ~page_films();
  page_films(const page_films&) = delete;
  page_films& operator=(const page_films&) = delete;

  /// From now on these are wished for, the first ones first, and no others.
  void want(std::vector<wish> wishes);

  /// Fails as long as it is not there.
  had_picture at(const std::string& file, double seconds) const;

  bool is_reading() const { return reading_.valid(); }

 private:
  void begin_next();
  void take();
  void forget_some();

  std::function<void()> came_;
  std::shared_ptr<page_pictures> pictures_;
  std::map<wish, had_picture> had_;
  std::vector<wish> wishes_;
  wish now_;  ///< that `reading_` reads
  std::future<had_picture> reading_;
  wxTimer poll_;
};

/// All that a page shows.
std::vector<page_films::wish> pictures_of(const drawn_page& page);

}  // namespace corvane
