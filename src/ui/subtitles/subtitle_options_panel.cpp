#include "ui/subtitles/subtitle_options_panel.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/search_list.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wx_text.h"

#include <wx/combobox.h>
#include <wx/gbsizer.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <array>
#include <cstddef>

namespace corvane {
namespace {

template <std::size_t n>
wxArrayString shown_items(const std::array<std::string_view, n>& items) {
  wxArrayString all;
  for (const std::string_view item : items)
    all.push_back(wx_text(item));
  return all;
}

/// With room for the longest entry, unless it is very long.
void give_room(search_list* list) {
  int width = 0;
  for (const wxString& entry : list->GetStrings())
    width = std::max(width, list->GetTextExtent(entry).x);
  const int arrow = list->GetBestSize().y + list->FromDIP(layout::control_gap);
  list->SetMinSize(wxSize(std::min(width, list->FromDIP(layout::font_width)) + arrow, -1));
}

}  // namespace

subtitle_options_panel::subtitle_options_panel(wxWindow* parent, const Subtitles& model,
                                               std::function<void(const subtitle_event&)> tell)
    : wxPanel(parent), tell_(std::move(tell)) {
  auto* box = new wxStaticBoxSizer(wxVERTICAL, this, "subtitle options");
  box_ = box->GetStaticBox();
  name_control(*box_, "suboptionsframe");
  grid_ = new wxGridBagSizer(FromDIP(layout::control_gap), FromDIP(layout::control_gap));
  add_alignment();
  add_margins();
  add_font(model.fonts());
  add_movie();
  grid_->AddGrowableCol(1);
  grid_->AddGrowableCol(3);
  box->Add(grid_, wxSizerFlags().Expand().Border(wxALL, FromDIP(layout::box_border)));
  SetSizer(box);
}

// Labels come before their fields, as the Tab key goes.
void subtitle_options_panel::add_alignment() {
  wxStaticText* label = make_label(box_, "&horizontal alignment");
  add(label, make_list("halign", subtitle_field::horizontal_alignment, shown_items(halign_items)),
      0, 0);
  label = make_label(box_, "&vertical alignment");
  add(label, make_list("valign", subtitle_field::vertical_alignment, shown_items(valign_items)), 0,
      2);
}

void subtitle_options_panel::add_margins() {
  wxStaticText* label = make_label(box_, "&left margin");
  add(label, make_text("lmargin", subtitle_field::left_margin), 1, 0);
  label = make_label(box_, "r&ight margin");
  add(label, make_text("rmargin", subtitle_field::right_margin), 1, 2);
  label = make_label(box_, "&top margin");
  add(label, make_text("tmargin", subtitle_field::top_margin), 2, 0);
  label = make_label(box_, "&bottom margin");
  add(label, make_text("bmargin", subtitle_field::bottom_margin), 2, 2);
}

void subtitle_options_panel::add_font(const font_list& fonts) {
  wxArrayString names;
  for (const offered_font& font : fonts.fonts())
    names.push_back(wx_text(font.name));
  wxStaticText* label = make_label(box_, "&font face");
  fontface_ = new search_list(box_, "fontface", names, [this](int entry) {
    tell_([entry](Subtitles& model) { model.pick_font(static_cast<std::size_t>(entry)); });
  });
  give_room(fontface_);
  add(label, fontface_, 3, 0, 3);
  label = make_label(box_, "font &size");
  add(label, make_text("fontsiz", subtitle_field::font_size), 4, 0);
  label = make_label(box_, "font file");
  fontfac_ =
      new wxTextCtrl(box_, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_READONLY);
  name_control(*fontfac_, "fontfac");
  add(label, fontfac_, 4, 2);
}

void subtitle_options_panel::add_movie() {
  wxStaticText* label = make_label(box_, "&width");
  add(label, make_text("mwidth", subtitle_field::movie_width), 5, 0);
  label = make_label(box_, "hei&ght");
  add(label, make_text("mheight", subtitle_field::movie_height), 5, 2);
  label = make_label(box_, "fra&me rate");
  add(label, make_rates(), 6, 0);
  label = make_label(box_, "cha&racter set");
  charact_ = make_list("charact", subtitle_field::character_set, shown_items(charact_items));
  add(label, charact_, 6, 2);
}

void subtitle_options_panel::add(wxStaticText* label, wxWindow* field, int row, int column,
                                 int span) {
  label_leads_to(label, field);
  grid_->Add(label, wxGBPosition(row, column), wxDefaultSpan, wxALIGN_CENTRE_VERTICAL);
  grid_->Add(field, wxGBPosition(row, column + 1), wxGBSpan(1, span), wxEXPAND);
}

search_list* subtitle_options_panel::make_list(const char* name, subtitle_field field,
                                               const wxArrayString& items) {
  // What is picked stands in the list by then, whatever it offers.
  const std::size_t at = lists_.size();
  auto* list = new search_list(box_, name, items, [this, at, field](int) {
    const std::string text = utf8_of(lists_[at].first->GetValue());
    tell_([field, text](Subtitles& model) { model.change(field, text); });
  });
  give_room(list);
  lists_.emplace_back(list, field);
  return list;
}

wxTextCtrl* subtitle_options_panel::make_text(const char* name, subtitle_field field) {
  auto* text = new wxTextCtrl(box_, wxID_ANY);
  text->SetInitialSize(text->GetSizeFromTextSize(text->GetTextExtent("000.000")));
  name_control(*text, name);
  bind(text, text, field);
  return text;
}

wxComboBox* subtitle_options_panel::make_rates() {
  auto* rates = new wxComboBox(box_, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                               shown_items(mfps_items));
  rates->SetInitialSize(rates->GetSizeFromTextSize(rates->GetTextExtent("00.0000")));
  name_control(*rates, "mfps");
  let_wheel_pass(*rates);
  bind(rates, rates, subtitle_field::frame_rate);
  return rates;
}

// A pick in the list of an editable one is told as a change of the text, too.
void subtitle_options_panel::bind(wxWindow* window, wxTextEntry* entry, subtitle_field field) {
  entries_.emplace_back(entry, field);
  window->Bind(wxEVT_TEXT, [this, entry, field](wxCommandEvent&) {
    const std::string text = utf8_of(entry->GetValue());
    tell_([field, text](Subtitles& model) { model.change(field, text); });
  });
}

void subtitle_options_panel::show(const Subtitles& model) {
  for (const auto& [entry, field] : entries_)
    if (const wxString text = wx_text(model.shown()[field]); entry->GetValue() != text)
      entry->ChangeValue(text);
  charact_->offer(wx_rows(model.character_sets()));
  for (const auto& [list, field] : lists_)
    list->show(wx_text(model.shown()[field]));
  const wxString file = wx_text(model.shown()[subtitle_field::font_file]);
  if (fontfac_->GetValue() != file)
    fontfac_->ChangeValue(file);
  const std::optional<std::size_t> face = model.fontface();
  fontface_->show_entry(face ? static_cast<int>(*face) : wxNOT_FOUND);
  fontface_->set_hint(face || file.empty() ? wxString() : file + " is not installed");
}

}  // namespace corvane
