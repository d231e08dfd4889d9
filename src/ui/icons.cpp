#include "ui/icons.h"

#include <wx/icon.h>

#include <algorithm>

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
  for (const int edge : {16, 32, 48, 64}) {
    wxIcon icon;
    icon.CopyFromBitmap(picture.GetBitmap(wxSize(edge, edge)));
    icons.AddIcon(icon);
  }
  return icons;
}

}  // namespace corvane
