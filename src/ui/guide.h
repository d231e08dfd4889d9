// The user guide: pages (HTML) that stand with the program and are shown by the user's browser, and
// the key that opens the one about the window in which it is pressed.
//
// The pages are those of docs/guide: in "guide" beside the program (a build tree, Windows), or in
// share/doc/corvane/guide beside the folder of the program (installed by a package).
#pragma once

#include "platform/result.h"

#include <wx/eventfilter.h>

#include <functional>
#include <string>
#include <string_view>
#include <vector>

class wxWindow;

namespace corvane {

class desktop;

/// The page about a window.
struct guide_place {
  const char* window;  ///< the window's name
  const char* page;    ///< name of the file
};
const std::vector<guide_place>& guide_places();

/// The page about the window, or about the one over which it stands; the first page if there is
/// none.
const char* guide_page_about(const wxWindow* window);

/// The folder with the pages (native, absolute); empty when they are not installed.
std::string guide_folder();

/// Opens a page of the guide. A failure is a text for the user, who is told there which file to
/// open.
failure open_guide(desktop& user_desktop, const std::string& page);

/// F1 in any window of the program, as long as this lives.
class guide_key : public wxEventFilter {
 public:
  /// `open` is called with the name of the page.
  explicit guide_key(std::function<void(const char* page)> open);
  ~guide_key() override;
  guide_key(const guide_key&) = delete;
  guide_key& operator=(const guide_key&) = delete;

  int FilterEvent(wxEvent& event) override;

 private:
  std::function<void(const char*)> open_;
};

}  // namespace corvane
