#include "ui/open_text_file.h"

#include "ui/shown_text.h"

#include <wx/log.h>
#include <wx/utils.h>

namespace corvane {

bool open_text_file(const std::string& path) {
  const wxLogNull quiet;  // the caller tells the user, in its own words
#ifdef _WIN32
  return wxExecute("notepad.exe \"" + shown(path) + "\"", wxEXEC_ASYNC) != 0;
#else
  return wxLaunchDefaultApplication(shown(path));
#endif
}

}  // namespace corvane
