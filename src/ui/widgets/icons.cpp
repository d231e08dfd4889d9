#include "ui/widgets/icons.h"

#include "formats/text.h"

#include <wx/icon.h>
#include <wx/settings.h>

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace corvane {
namespace {

const embedded_icon* find_icon(std::string_view name) {
  const std::vector<embedded_icon>& icons = embedded_icons();
  const auto found = std::find_if(icons.begin(), icons.end(),
                                  [name](const embedded_icon& i) { return name == i.name; });
  return found == icons.end() ? nullptr : &*found;
}

/// A picture with the colours that cannot be told from a dark ground made brighter.
std::string brighter(std::string svg) {
  for (const auto& [dark, bright] : {std::pair("#3d5a80", "#86a9d6"), {"#cf3f3a", "#ea6a64"}})
    svg = replace_all(svg, dark, bright);
  return svg;
}

}  // namespace

wxBitmapBundle icon_picture(std::string_view name, int edge) {
  const embedded_icon* const icon = find_icon(name);
  if (icon == nullptr)
    return {};
  const bool dark = wxSystemSettings::GetAppearance().IsUsingDarkBackground();
  const std::string svg = dark ? brighter(icon->svg) : icon->svg;
  return wxBitmapBundle::FromSVG(svg.c_str(), wxSize(edge, edge));
}

// It stands on grounds of the system's.
wxIconBundle program_icon() {
  const wxBitmapBundle picture = wxBitmapBundle::FromSVG(find_icon("corvane")->svg, wxSize(32, 32));
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
