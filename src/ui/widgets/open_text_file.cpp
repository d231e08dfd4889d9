#include "ui/widgets/open_text_file.h"

#ifdef _WIN32
#include "platform/processes/desktop.h"
#else
#include "ui/widgets/wx_text.h"

#include <wx/log.h>
#include <wx/utils.h>
#endif

namespace corvane {

bool open_text_file(const std::string& path) {
#ifdef _WIN32
  return !make_desktop()->edit_text(path);
#else
  const wxLogNull quiet;  // the caller tells the user, in its own words
  return wxLaunchDefaultApplication(wx_text(path));
#endif
}

}  // namespace corvane
