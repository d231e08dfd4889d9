#include "ui/widgets/text_column.h"

#include <wx/dataview.h>

namespace corvane {

wxDataViewColumn* text_column(const char* title, unsigned model_column, int width) {
  auto* const renderer = new wxDataViewTextRenderer;
  renderer->EnableEllipsize(wxELLIPSIZE_END);
  return new wxDataViewColumn(title, renderer, model_column, width, wxALIGN_LEFT,
                              wxDATAVIEW_COL_RESIZABLE);
}

}  // namespace corvane
