#include "ui/maker/maker_look_panel.h"

#include "formats/sanitized.h"
#include "platform/files/paths.h"
#include "ui/maker/maker_colours.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/text_column.h"
#include "ui/widgets/wheel.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/clrpicker.h>
#include <wx/dataview.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace corvane {
namespace {

constexpr int alpha_full = 255, percent_full = 100, darkest_percent = 90;

const char* const pictures_filter =
    "pictures|*.jpg;*.jpeg;*.png;*.bmp;*.tif;*.tiff;*.gif;*.webp|all files|*";
const char* const behind_filter =
    "videos|*.m2v;*.mpg;*.mpeg;*.vob;*.mp4;*.m4v;*.mkv;*.mov;*.avi;*.mts;*.m2ts;*.ts;*.wmv;*.webm|"
    "all files|*";

wxSize sample_size(const wxSize& room, bool is_wide) {
  const wxSize ratio = is_wide ? wxSize(16, 9) : wxSize(4, 3);
  const int width = std::min(room.x, room.y * ratio.x / ratio.y);
  return {width, width * ratio.y / ratio.x};
}

/// With nothing around it, so that the list is seen there, selected or not.
wxImage in_middle_of(const wxSize& room, wxImage page) {
  if (!page.HasAlpha())
    page.InitAlpha();
  return page.Resize(room,
                     wxPoint((room.x - page.GetWidth()) / 2, (room.y - page.GetHeight()) / 2));
}

/// Stands where a page will be drawn: its outline, between the list's colour and that of what is
/// quiet in it.
wxImage expected_page(const wxSize& room, bool is_wide) {
  constexpr unsigned char inside = 28, outline = 110;
  const wxSize size = sample_size(room, is_wide);
  const wxColour quiet = wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT);
  wxImage page(size);
  page.SetRGB(wxRect(size), quiet.Red(), quiet.Green(), quiet.Blue());
  page.InitAlpha();
  for (int y = 0; y < size.y; ++y)
    for (int x = 0; x < size.x; ++x) {
      const bool is_edge = x == 0 || y == 0 || x == size.x - 1 || y == size.y - 1;
      page.SetAlpha(x, y, is_edge ? outline : inside);
    }
  return in_middle_of(room, page);
}

int percent_of(const page_colour& shade) {
  return static_cast<int>(std::lround(shade.alpha * percent_full / double{alpha_full}));
}

}  // namespace

maker_look_panel::maker_look_panel(wxWindow* parent, menus_draft& draft, maker_events on)
    : scrolled_column(parent), draft_(draft), on_(std::move(on)) {
  const int gap = FromDIP(layout::group_gap);
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(make_designs(), wxSizerFlags(1).Expand());
  column->Add(make_layout(), wxSizerFlags().Expand().Border(wxTOP, gap));
  column->Add(make_background(),
              wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::control_gap)));
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(column, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::box_border)));
  hold(whole);
  let_scroll(true);
  show_choices();
}

wxSizer* maker_look_panel::make_designs() {
  wxStaticText* const label = make_label(this, "&design");
  designs_ = new wxDataViewListCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                    wxDV_SINGLE | wxDV_NO_HEADER);
  name_control(*designs_, "designs");
  label_leads_to(label, designs_);
  const wxSize sample = FromDIP(wxSize(layout::maker_sample_width, layout::maker_sample_height));
  designs_->AppendBitmapColumn("", 0, wxDATAVIEW_CELL_INERT, sample.x + FromDIP(layout::group_gap));
  designs_->AppendColumn(text_column("design", 1, FromDIP(layout::list_height)));
  designs_->SetRowHeight(sample.y + FromDIP(layout::control_gap));
  const wxImage expected = expected_page(sample, draft_.chosen().is_wide);
  for (const found_design& design : draft_.designs()) {
    wxVector<wxVariant> cells;
    cells.push_back(wxVariant(wxBitmap(expected)));
    cells.push_back(wxVariant(wx_text(sanitized(design.design->name))));
    designs_->AppendItem(cells);
  }
  designs_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::maker_designs_height)));
  designs_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) {
    const int row = designs_->GetSelectedRow();
    if (row == wxNOT_FOUND || static_cast<std::size_t>(row) == draft_.design())
      return;
    draft_.choose_design(static_cast<std::size_t>(row));
    on_.changed();
  });
  about_ = new wxStaticText(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                            wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  about_->SetMinSize(wxSize(1, -1));
  name_control(*about_, "about");
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(label);
  column->Add(designs_, wxSizerFlags(1).Expand().Border(wxTOP, FromDIP(layout::label_gap)));
  column->Add(about_, wxSizerFlags().Expand().Border(wxTOP, FromDIP(layout::label_gap)));
  return column;
}

wxSizer* maker_look_panel::make_layout() {
  const int gap = FromDIP(layout::control_gap);
  auto* const grid = new wxFlexGridSizer(2, wxSize(gap, gap));
  grid->AddGrowableCol(1);
  arrangement_ =
      make_labelled_choice(this, "la&yout", "arrangement", "how the entries of a page stand",
                           {"list of texts", "list with pictures", "grid of pictures"}, *grid);
  arrangement_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
    draft_.arrange(static_cast<menu_arrangement>(arrangement_->GetSelection()));
    on_.changed();
  });
  constexpr int most_columns = 6, most_rows = 12;
  const auto spin = [this](const char* name, int most, const char* tip) {
    wxSpinCtrl* const field = make_spin(this, name, 1, most, tip);
    field->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent&) { take_entries(); });
    return field;
  };
  wxStaticText* const words = make_label(this, "e&ntries");
  columns_ = spin("columns", most_columns, "entries beside each other");
  label_leads_to(words, columns_);
  rows_ = spin("rows", most_rows,
               "entries below each other; no more than there is room for with these letters");
  auto* const entries = new wxBoxSizer(wxHORIZONTAL);
  entries->Add(columns_, wxSizerFlags(1));
  entries->Add(new wxStaticText(this, wxID_ANY, "x"),
               wxSizerFlags().CentreVertical().Border(wxLEFT | wxRIGHT, gap));
  entries->Add(rows_, wxSizerFlags(1));
  grid->Add(words, wxSizerFlags().CentreVertical());
  grid->Add(entries, wxSizerFlags().Expand());
  shape_ = make_labelled_choice(
      this, "sha&pe", "shape",
      "in which proportions the menus are shown; all menus of a disc have the same, so menus of "
      "your own that stay decide",
      {"4:3", "16:9"}, *grid);
  shape_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
    draft_.change([this](menu_wishes& w) { w.is_wide = shape_->GetSelection() == 1; });
    on_.changed();
  });
  background_ =
      make_labelled_choice(this, "back&ground", "background", "what is behind the texts",
                           {"as the design has it", "colours", "a picture", "a video"}, *grid);
  background_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
    draft_.choose_background(static_cast<chosen_background>(background_->GetSelection()));
    show_background();
    on_.changed();
  });
  return grid;
}

wxSizer* maker_look_panel::make_background() {
  auto* const column = new wxBoxSizer(wxVERTICAL);
  colours_ = make_colours();
  picture_ = make_picture();
  film_ = make_film();
  for (wxSizer* const one : {colours_, picture_, film_})
    column->Add(one, wxSizerFlags().Expand());
  return column;
}

wxSizer* maker_look_panel::make_colours() {
  const auto picker = [this](const char* name, const char* tip) {
    auto* const made = new wxColourPickerCtrl(this, wxID_ANY);
    name_control(*made, name);
    made->SetToolTip(tip);
    made->Bind(wxEVT_COLOURPICKER_CHANGED, [this](wxColourPickerEvent&) { take_colours(); });
    return made;
  };
  from_ = picker("fromcolour", "the colour where the background begins");
  to_ = picker("tocolour", "the colour where it ends; the same for one colour");
  direction_ = make_choice(this, "direction", "which way the colours go",
                           {"down", "right", "down right", "up right"});
  direction_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { take_colours(); });
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(new wxStaticText(this, wxID_ANY, "from"), wxSizerFlags().CentreVertical());
  row->Add(from_, gap);
  row->Add(new wxStaticText(this, wxID_ANY, "to"), gap);
  row->Add(to_, gap);
  row->Add(direction_, wxSizerFlags(gap).Proportion(1));
  return row;
}

wxTextCtrl* maker_look_panel::make_path(const char* name, const char* tip) {
  auto* const path =
      new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize, wxTE_READONLY);
  name_control(*path, name);
  path->SetToolTip(tip);
  return path;
}

wxSizer* maker_look_panel::make_picture() {
  const int gap = FromDIP(layout::control_gap);
  picture_file_ = make_path("picturefile", "the picture behind the texts");
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(picture_file_, wxSizerFlags(1).CentreVertical());
  row->Add(make_button(this, "choosepicture", "c&hoose...", "choose a picture of any size and kind",
                       [this] { choose_picture(); }),
           wxSizerFlags().Border(wxLEFT, gap));
  fit_ = make_choice(this, "picturefit",
                     "what is done when the picture is wider or narrower than the screen",
                     {"fills the screen", "all of it is seen"});
  fit_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { take_picture(); });
  shade_ = make_spin(this, "shade", 0, darkest_percent,
                     "how much darker the picture becomes, so that texts can be read: percent");
  shade_->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent&) { take_picture(); });
  auto* const how = new wxBoxSizer(wxHORIZONTAL);
  how->Add(fit_, wxSizerFlags(1).CentreVertical());
  how->Add(new wxStaticText(this, wxID_ANY, "darker by"),
           wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  how->Add(shade_, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  how->Add(new wxStaticText(this, wxID_ANY, "%"),
           wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::label_gap)));
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(row, wxSizerFlags().Expand());
  column->Add(how, wxSizerFlags().Expand().Border(wxTOP, gap));
  return column;
}

wxSizer* maker_look_panel::make_film() {
  const int gap = FromDIP(layout::control_gap);
  film_file_ = make_path("filmfile", "the video that plays behind the texts");
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(film_file_, wxSizerFlags(1).CentreVertical());
  row->Add(make_button(this, "choosefilm", "c&hoose...", "choose a video of any kind",
                       [this] { choose_film(); }),
           wxSizerFlags().Border(wxLEFT, gap));
  const auto spin = [this](const char* name, double least, double most, const char* tip) {
    auto* const field = new wxSpinCtrlDouble(this, wxID_ANY, wxString(), wxDefaultPosition,
                                             wxDefaultSize, wxSP_ARROW_KEYS, least, most, least);
    field->SetDigits(1);
    name_control(*field, name);
    field->SetToolTip(tip);
    let_wheel_pass(*field);
    field->Bind(wxEVT_SPINCTRLDOUBLE, [this](wxSpinDoubleEvent&) { take_film(); });
    return field;
  };
  constexpr double a_day = 86400;
  begin_ = spin("filmbegin", 0, a_day, "seconds of the video at which it begins");
  length_ = spin("filmlength", 1, longest_menu_motion,
                 "seconds that it plays at most; then the menu begins again");
  sound_ = new wxCheckBox(this, wxID_ANY, "wi&th its sound");
  name_control(*sound_, "filmsound");
  sound_->SetToolTip("the sound of the video is heard while the menu is shown");
  sound_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { take_film(); });
  auto* const how = new wxFlexGridSizer(2, wxSize(gap, gap));
  how->AddGrowableCol(1);
  how->Add(new wxStaticText(this, wxID_ANY, "begins at (seconds)"),
           wxSizerFlags().CentreVertical());
  how->Add(begin_, wxSizerFlags().Expand());
  how->Add(new wxStaticText(this, wxID_ANY, "lasts at most"), wxSizerFlags().CentreVertical());
  how->Add(length_, wxSizerFlags().Expand());
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(row, wxSizerFlags().Expand());
  column->Add(how, wxSizerFlags().Expand().Border(wxTOP, gap));
  column->Add(sound_, wxSizerFlags().Border(wxTOP, gap));
  return column;
}

// What is chosen ----------------------------------------------------------------------------------

void maker_look_panel::choose_file(const file_dialog& dialog,
                                   const std::function<void(const std::string&)>& take) {
  const std::string file = on_.choose_file(dialog);
  if (file.empty())
    return;
  take(file);
  show_background();
  on_.changed();
}

void maker_look_panel::choose_picture() {
  choose_file({"picture behind the menus", pictures_filter, {}}, [this](const std::string& file) {
    picture_background picture = draft_.picture();
    picture.file = file;
    draft_.set_picture(picture);
  });
}

void maker_look_panel::choose_film() {
  choose_file({"video behind the menus", behind_filter, {}}, [this](const std::string& file) {
    menu_motion film = draft_.film();
    film.film = file;
    draft_.set_film(film);
  });
}

void maker_look_panel::take_entries() {
  draft_.set_entries(columns_->GetValue(), rows_->GetValue());
  on_.changed();
}

void maker_look_panel::take_colours() {
  colour_background colours = draft_.colours();
  colours.from = with_hue({0, 0, 0, alpha_full}, from_->GetColour());
  colours.to = with_hue({0, 0, 0, alpha_full}, to_->GetColour());
  colours.towards = static_cast<colour_background::direction>(direction_->GetSelection());
  draft_.set_colours(colours);
  on_.changed();
}

void maker_look_panel::take_picture() {
  picture_background picture = draft_.picture();
  picture.fit = fit_->GetSelection() == 1 ? page_fit::fit : page_fit::fill;
  picture.shade = {0, 0, 0,
                   static_cast<std::uint8_t>(shade_->GetValue() * alpha_full / percent_full)};
  draft_.set_picture(picture);
  on_.changed();
}

void maker_look_panel::take_film() {
  menu_motion film = draft_.film();
  film.begin = begin_->GetValue();
  film.length = length_->GetValue();
  film.with_sound = sound_->GetValue();
  draft_.set_film(film);
  on_.changed();
}

// What is shown -----------------------------------------------------------------------------------

void maker_look_panel::show_choices() {
  const auto row = static_cast<int>(draft_.design());
  if (designs_->GetSelectedRow() != row)
    designs_->SelectRow(static_cast<unsigned>(row));
  const found_design& design = draft_.designs()[draft_.design()];
  about_->SetLabelText(wx_text(sanitized(design.design->about)));
  about_->SetToolTip(wx_text(sanitized(design.design->about)));
  const menu_design& look = draft_.look();
  arrangement_->SetSelection(static_cast<int>(look.arrangement));
  if (columns_->GetValue() != look.columns)
    columns_->SetValue(look.columns);
  if (rows_->GetValue() != look.rows)
    rows_->SetValue(look.rows);
  shape_->SetSelection(draft_.chosen().is_wide ? 1 : 0);
  shape_->Enable(draft_.may_choose_shape());
  show_background();
}

void maker_look_panel::show_background() {
  const chosen_background kind = draft_.background();
  background_->SetSelection(static_cast<int>(kind));
  from_->SetColour(wx_colour(draft_.colours().from));
  to_->SetColour(wx_colour(draft_.colours().to));
  direction_->SetSelection(static_cast<int>(draft_.colours().towards));
  picture_file_->ChangeValue(wx_text(native_file_name(draft_.picture().file)));
  fit_->SetSelection(draft_.picture().fit == page_fit::fit ? 1 : 0);
  if (const int shade = percent_of(draft_.picture().shade); shade_->GetValue() != shade)
    shade_->SetValue(shade);
  film_file_->ChangeValue(wx_text(native_file_name(draft_.film().film)));
  if (begin_->GetValue() != draft_.film().begin)
    begin_->SetValue(draft_.film().begin);
  if (length_->GetValue() != draft_.film().length)
    length_->SetValue(draft_.film().length);
  sound_->SetValue(draft_.film().with_sound);
  colours_->ShowItems(kind == chosen_background::colours);
  picture_->ShowItems(kind == chosen_background::picture);
  film_->ShowItems(kind == chosen_background::film);
  if (IsShownOnScreen()) {
    FitInside();
    Layout();
  }
}

void maker_look_panel::show_sample(std::size_t design, const wxImage& page, bool is_wide) {
  const wxSize room = FromDIP(wxSize(layout::maker_sample_width, layout::maker_sample_height));
  const wxSize size = sample_size(room, is_wide);
  const wxImage small = in_middle_of(room, page.Scale(size.x, size.y, wxIMAGE_QUALITY_BOX_AVERAGE));
  designs_->SetValue(wxVariant(wxBitmap(small)), static_cast<unsigned>(design), 0);
}

}  // namespace corvane
