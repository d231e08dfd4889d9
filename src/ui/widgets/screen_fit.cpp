#include "ui/widgets/screen_fit.h"

#include <wx/display.h>
#include <wx/toplevel.h>

namespace corvane {

wxSize most_client_size(const wxWindow& window) {
  const wxSize added_by_window_managers = window.FromDIP(wxSize(8, 48));
  return wxDisplay(&window).GetClientArea().GetSize() - added_by_window_managers;
}

void set_size_on_screen(wxTopLevelWindow& window, wxSize client) {
  const wxSize most = most_client_size(window);
  wxSize least = window.GetMinClientSize();
  least.DecTo(most);
  client.DecTo(most);
  window.SetMinClientSize(least);
  window.SetClientSize(client);
}

}  // namespace corvane
