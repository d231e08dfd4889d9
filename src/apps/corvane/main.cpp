// corvane: the windows.
#include "platform/files/program_folder.h"
#include "ui/app.h"

#include <wx/init.h>

#ifdef __WXGTK__
#include <pango/pangocairo.h>
#endif

// The arguments are read here: the toolkit would lose what the user's locale cannot say.
int main(int argc, char** argv) {
#ifdef __WXGTK__
  // Pango reads the fonts in a thread of its own; begun here, it does so while GTK starts.
  pango_cairo_font_map_get_default();
#endif
  wxApp::SetInstance(new corvane::corvane_app(corvane::argument_text(argc, argv)));
  return wxEntry(argc, argv);
}
