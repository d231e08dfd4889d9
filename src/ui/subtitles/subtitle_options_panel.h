// The frame "subtitle options": how the text of one subtitle file is drawn, in twelve fields and
// the list of fonts.
//
// Each change goes to the model as it is typed.
#pragma once

#include "tools/subtitles.h"

#include <wx/panel.h>

#include <functional>
#include <utility>
#include <vector>

class wxComboBox;
class wxGridBagSizer;
class wxStaticText;
class wxTextCtrl;
class wxTextEntry;

namespace corvane {

class search_list;

/// Runs with the model, after which the window shows what the model says.
using subtitle_event = std::function<void(Subtitles&)>;

class subtitle_options_panel : public wxPanel {
 public:
  /// `tell` gets each event as it happens.
  subtitle_options_panel(wxWindow* parent, const Subtitles& model,
                         std::function<void(const subtitle_event&)> tell);

  void show(const Subtitles& model);

 private:
  void add_alignment();
  void add_margins();
  void add_font(const font_list& fonts);
  void add_movie();
  void add(wxStaticText* label, wxWindow* field, int row, int column, int span = 1);
  search_list* make_list(const char* name, subtitle_field field, const wxArrayString& items);
  wxTextCtrl* make_text(const char* name, subtitle_field field);
  wxComboBox* make_rates();
  void bind(wxWindow* window, wxTextEntry* entry, subtitle_field field);

  std::function<void(const subtitle_event&)> tell_;
  wxWindow* box_ = nullptr;
  wxGridBagSizer* grid_ = nullptr;
  std::vector<std::pair<wxTextEntry*, subtitle_field>> entries_;
  std::vector<std::pair<search_list*, subtitle_field>> lists_;
  search_list* fontface_ = nullptr;
  search_list* charact_ = nullptr;
  wxTextCtrl* fontfac_ = nullptr;
};

}  // namespace corvane
