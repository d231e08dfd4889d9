// corvane: the windows.
#include "platform/program_folder.h"
#include "ui/app.h"

#include <wx/init.h>

// The arguments are read here: the toolkit would lose what the user's locale cannot say.
int main(int argc, char** argv) {
  wxApp::SetInstance(new corvane::corvane_app(corvane::utf8_arguments(argc, argv)));
  return wxEntry(argc, argv);
}
