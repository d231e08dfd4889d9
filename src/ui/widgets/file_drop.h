// Files dropped on a window from the file manager.
#pragma once

#include <wx/dnd.h>

#include <functional>
#include <string>
#include <vector>

namespace corvane {

class file_drop : public wxFileDropTarget {
 public:
  using receiver = std::function<void(const std::vector<std::string>&)>;

  /// `receive` gets the native paths of files dropped together. It is called after the drop has
  /// ended: a question asked during it would hold up the program the files come from.
  explicit file_drop(receiver receive);

  bool OnDropFiles(wxCoord x, wxCoord y, const wxArrayString& names) override;

 private:
  receiver receive_;
};

}  // namespace corvane
