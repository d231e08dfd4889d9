#include "ui/widgets/icons.h"

#include <wx/icon.h>
#include <wx/settings.h>

#include <algorithm>
#include <set>

namespace corvane {

wxBitmapBundle icon_picture(std::string_view name, int edge) {
  const std::vector<embedded_icon>& icons = embedded_icons();
  const auto found = std::find_if(icons.begin(), icons.end(),
                                  [name](const embedded_icon& i) { return name == i.name; });
  return found == icons.end() ? wxBitmapBundle()
                              : wxBitmapBundle::FromSVG(found->svg, wxSize(edge, edge));
}

wxIconBundle program_icon() {
  const wxBitmapBundle picture = icon_picture("corvane", 32);
  wxIconBundle icons;
  std::set<int> edges{16, 32, 48, 64};
#ifdef __WXMSW__
  // The sizes that Windows asks for go with the scale of the screen; others it would stretch.
  for (const auto size : {wxSYS_SMALLICON_X, wxSYS_ICON_X})
    edges.insert(std::max(16, wxSystemSettings::GetMetric(size)));
#endif
  for (const int edge : edges) {
    wxIcon icon;
    icon.CopyFromBitmap(picture.GetBitmap(wxSize(edge, edge)));
    icons.AddIcon(icon);
  }
  return icons;
}

}  // namespace corvane
