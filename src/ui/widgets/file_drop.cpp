#include "ui/widgets/file_drop.h"

#include "ui/widgets/wx_text.h"

#include <wx/app.h>

#include <utility>

namespace corvane {

file_drop::file_drop(receiver receive) : receive_(std::move(receive)) {}

bool file_drop::OnDropFiles(wxCoord /*x*/, wxCoord /*y*/, const wxArrayString& names) {
  std::vector<std::string> paths;
  for (const wxString& name : names)
    paths.push_back(utf8_of(name));
  wxTheApp->CallAfter([receive = receive_, paths] { receive(paths); });
  return true;
}

}  // namespace corvane
