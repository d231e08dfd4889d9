#include "ui/widgets/fixed_pitch.h"

#include <wx/fontenum.h>

namespace corvane {

wxFont fixed_pitch(const wxFont& like) {
  wxFontInfo info(like.GetFractionalPointSize());
  info.Family(wxFONTFAMILY_TELETYPE);
  if (wxFontEnumerator::IsValidFacename("Courier New"))
    info.FaceName("Courier New");
  return wxFont(info);
}

}  // namespace corvane
