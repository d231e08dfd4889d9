#include "ui/disc/log_colours.h"

#include <wx/settings.h>
#include <wx/textctrl.h>

namespace corvane {
namespace {

struct log_colours {
  const char *error, *warning, *step;
};
constexpr log_colours log_on_light = {"#b00020", "#8a5200", "#00479d"};
constexpr log_colours log_on_dark = {"#ff8a80", "#f0b47a", "#7db8ff"};

}  // namespace

wxTextAttr look_of_log_line(log_line_kind kind) {
  const bool light = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW).GetLuminance() > 0.5;
  const log_colours& c = light ? log_on_light : log_on_dark;
  switch (kind) {
    case log_line_kind::error:
      return wxTextAttr(wxColour(c.error));
    case log_line_kind::warning:
      return wxTextAttr(wxColour(c.warning));
    case log_line_kind::step:
      return wxTextAttr(wxColour(c.step));
    case log_line_kind::plain:
      break;
  }
  return {};
}

}  // namespace corvane
