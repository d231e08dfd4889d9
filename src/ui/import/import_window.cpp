#include "ui/import/import_window.h"

#include "formats/sanitized.h"
#include "import/finish_import.h"
#include "import/picture_still.h"
#include "import/unfinished_imports.h"
#include "media/source_probe.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "project/missing_tools.h"
#include "project/picked_file.h"
#include "ui/details_panel.h"
#include "ui/import/import_log_window.h"
#include "ui/main_window.h"
#include "ui/still/still_window.h"
#include "ui/widgets/attention.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/cut_line.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/file_drop.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/run_lines.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/text_column.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/checklst.h>
#include <wx/choicdlg.h>
#include <wx/choice.h>
#include <wx/dataview.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace corvane {
namespace {

constexpr int poll_run_milliseconds = 100;
constexpr int kilo = 1000;

const char* const films_filter =
    "films|*.mp4;*.m4v;*.mkv;*.mov;*.avi;*.mts;*.m2ts;*.ts;*.mpg;*.mpeg;*.vob;*.m2v;*.wmv;*.asf;"
    "*.webm;*.flv;*.ogv;*.ogm;*.3gp;*.dv;*.divx;*.rm;*.rmvb;*.mxf|all files|*";

// The entries of "quality".
constexpr int fill_dvd5 = 0, fill_dvd9 = 1, mean_rate = 2, constant_quality = 3;

constexpr int least_kilobits = 700, most_kilobits = 8500, step_kilobits = 100;
constexpr int best_quantizer = 2, worst_quantizer = 31;

file_dialog dialog_of_films() {
  return {"import films", films_filter, {}};
}

/// The project's folder; empty if it has no file.
std::string folder_of(const document& doc) {
  return doc.file().empty() ? std::string() : text_of(path_of(doc.file()).parent_path());
}

int entry_of(const import_choices& choices) {
  switch (choices.quality) {
    case import_quality::mean_rate:
      return mean_rate;
    case import_quality::constant:
      return constant_quality;
    case import_quality::fill_disc:
      break;
  }
  return choices.disc_bytes > single_layer_bytes ? fill_dvd9 : fill_dvd5;
}

std::array<wxString, 3> cells_of(const import_list::shown_row& row) {
  return {wx_text(sanitized(row.file)), wx_text(row.length), wx_text(sanitized(row.what))};
}

/// With GTK the toolkit's list of check boxes knows the mouse alone.
void let_space_check(wxDialog& dialog, wxCheckListBox& list) {
  list.SetSelection(0);
  list.SetFocus();
  dialog.Bind(wxEVT_CHAR_HOOK, [&list](wxKeyEvent& event) {
    if (event.GetKeyCode() != WXK_SPACE || !list.HasFocus()) {
      event.Skip();
      return;
    }
    wxArrayInt rows;
    list.GetSelections(rows);
    for (const int row : rows)
      list.Check(static_cast<unsigned>(row), !list.IsChecked(static_cast<unsigned>(row)));
  });
}

/// Whether nothing stands against importing at all; it is told.
bool may_import(const main_window& main, document& doc) {
  const std::string missing = missing_tools(main.app(), {import_tool().name});
  if (missing.empty())
    return custom(doc) == 1;
  message_box box;
  box.text = missing;
  box.picture = icon::exclamation;
  doc.ask.message(box);
  return false;
}

void show_import(main_window& main, const std::vector<std::string>& files) {
  main.open_editor("import", [&](lent_project lent) -> wxTopLevelWindow* {
    auto* const window = new import_window(main, std::move(lent), files);
    window->Show();
    return window;
  });
}

}  // namespace

bool is_for_still(const std::string& file) {
  if (!is_picture_file(file))
    return false;
  const wxBusyCursor busy;
  const result<source_facts> facts = probe_source(file);
  return !facts || is_picture_alone(*facts);
}

void import_chosen_files(main_window& main) {
  std::vector<std::string> files;
  main.run("import", [&](document& doc) {
    if (may_import(main, doc))
      files = main.user_prompts().open_files(dialog_of_films());
  });
  if (files.size() == 1 && is_for_still(files.front()))
    open_still_window(main, files.front(), false);
  else if (!files.empty())
    show_import(main, files);
}

void open_import(main_window& main, const std::vector<std::string>& files) {
  bool may = false;
  main.run("import", [&](document& doc) { may = may_import(main, doc); });
  if (may)
    show_import(main, files);
}

import_window::import_window(main_window& main, lent_project lent,
                             const std::vector<std::string>& files)
    : wxDialog(&main, wxID_ANY, "import", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "import"),
      main_(main),
      lent_(std::move(lent)),
      list_(folder_of(lent_.doc())),
      life_(*this, main, lent_.ask(),
            {[this] {
               timer_.Stop();
               run_.reset();
             },
             [this] { return stop_if_wanted(); }, [this] { lent_.give_back(); }}) {
  name_control(*this, "import");
  SetIcons(program_icon());
  // What a program that was killed has left would take the names of what is made now.
  if (main_.lock().take()) {
    remove_left_imports(main_.app());
    main_.lock().release();
  }
  list_.follow(lent_.doc().p);
  list_.expect(read_import_speeds(main_.app()));
  const int gap = FromDIP(layout::group_gap);
  auto* const groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(make_files(), wxSizerFlags(1).Expand());
  groups->Add(make_choices(), wxSizerFlags().Expand().Border(wxTOP, gap));
  groups->Add(make_state(), wxSizerFlags().Expand().Border(wxTOP, gap));
  groups->Add(make_buttons(), wxSizerFlags().Expand().Border(wxTOP, gap));
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizer(whole);
  SetMinClientSize(whole->CalcMin());
  progress_->Hide();
  set_size_on_screen(*this, FromDIP(wxSize(layout::import_width, layout::import_height)));
  bind_controls();
  show_choices();
  CentreOnParent();
  life_.begin();
  lent_.keeps({"import", [](project&) {}});  // titles that are added here are kept at once
  look_ =
      std::make_unique<source_look>(source_look::handlers{[this] { return list_.next_unknown(); },
                                                          [this](const probed_source& source) {
                                                            list_.know(source);
                                                            show_all();
                                                          },
                                                          [this] { show_details(); }});
  SetDropTarget(new file_drop([this](const std::vector<std::string>& paths) {
    if (!life_.is_busy() && !runs())
      add(paths);
  }));
  add(files);
  files_->SetFocus();
}

import_window::~import_window() = default;

wxSizer* import_window::make_files() {
  files_ = new wxDataViewListCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE);
  name_control(*files_, "importfiles");
  files_->AppendColumn(text_column("file", 0, FromDIP(layout::import_name_width)));
  files_->AppendColumn(text_column("length", 1, FromDIP(layout::import_length_width)));
  files_->AppendColumn(text_column("what becomes of it", 2, FromDIP(layout::import_what_width)));
  files_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::import_least_height)));
  add_ = make_button(this, "addfiles", "&add files...",
                     "choose more films; they can also be dropped on this window",
                     [this] { ask_for_files(); });
  remove_ = make_button(this, "removefile", "&remove",
                        "take the selected file from the list; the file itself stays (Delete)",
                        [this] { remove_selected(); });
  streams_ = make_button(this, "choosestreams", "&streams...",
                         "choose which sound and subtitles of the selected file are wanted",
                         [this] { choose_streams(); });
  details_ = new details_panel(this);
  choosers_.push_back(add_);
  const int gap = FromDIP(layout::control_gap);
  auto* const buttons = new wxBoxSizer(wxHORIZONTAL);
  buttons->Add(add_);
  buttons->Add(remove_, wxSizerFlags().Border(wxLEFT, gap));
  buttons->Add(streams_, wxSizerFlags().Border(wxLEFT, gap));
  auto* const left = new wxBoxSizer(wxVERTICAL);
  left->Add(files_, wxSizerFlags(1).Expand());
  left->Add(buttons, wxSizerFlags().Border(wxTOP, gap));
  auto* const both = new wxBoxSizer(wxHORIZONTAL);
  both->Add(left, wxSizerFlags(layout::lists_share).Expand());
  both->Add(
      details_,
      wxSizerFlags(layout::details_share).Expand().Border(wxLEFT, FromDIP(layout::group_gap)));
  return both;
}

wxSizer* import_window::make_choices() {
  auto* const box = new wxStaticBoxSizer(wxVERTICAL, this, "how");
  wxStaticBox* const parent = box->GetStaticBox();
  name_control(*parent, "how");
  const int border = FromDIP(layout::box_border);
  const wxSizerFlags below = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, border);
  box->Add(make_quality(parent), wxSizerFlags().Expand().Border(wxALL, border));
  box->Add(make_checks(parent), below);
  box->Add(make_sounds(parent), below);
  box->Add(make_place(parent), below);
  return box;
}

wxSizer* import_window::make_quality(wxWindow* parent) {
  wxStaticText* const quality_label = make_label(parent, "&quality");
  quality_ = make_choice(
      parent, "quality",
      "filling shares the room that is left on the disc by the length of the films; it and a mean "
      "rate take two passes, constant quality takes one",
      {"fill a DVD-5 (4.7 GB)", "fill a DVD-9 (8.5 GB)", "mean rate", "constant quality"});
  label_leads_to(quality_label, quality_);
  rate_ = make_spin(parent, "rate", least_kilobits, most_kilobits,
                    "kilobits of video a second, on average");
  rate_->SetIncrement(step_kilobits);
  quantizer_ = make_spin(parent, "quantizer", best_quantizer, worst_quantizer,
                         "2 is the best, 31 the worst");
  unit_ = new wxStaticText(parent, wxID_ANY, "kbit/s, 700 to 8500");
  wxStaticText* const fit_label = make_label(parent, "&picture");
  fit_ = make_choice(parent, "picture",
                     "what is done when a film is wider or narrower than the disc's picture",
                     {"all of it, with black bars", "fill the screen, cut the rest"});
  label_leads_to(fit_label, fit_);
  for (wxWindow* const control : {static_cast<wxWindow*>(quality_), static_cast<wxWindow*>(rate_),
                                  static_cast<wxWindow*>(quantizer_), static_cast<wxWindow*>(fit_)})
    choosers_.push_back(control);
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(quality_label, wxSizerFlags().CentreVertical());
  row->Add(quality_, gap);
  row->Add(rate_, gap);
  row->Add(quantizer_, gap);
  row->Add(unit_, gap);
  row->AddStretchSpacer();
  row->Add(fit_label, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::column_gap)));
  row->Add(fit_, gap);
  return row;
}

wxSizer* import_window::make_checks(wxWindow* parent) {
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxRIGHT, FromDIP(layout::column_gap));
  row->Add(
      make_check(parent, "deinterlace", "&deinterlace",
                 "interlaced films become whole pictures; left off, a television shows them as "
                 "they were taken",
                 &import_choices::deinterlace),
      gap);
  row->Add(make_check(parent, "speed", "PAL: &film by speed",
                      "cinema films of 24 pictures a second play with 25, a little faster",
                      &import_choices::film_by_speed),
           wxSizerFlags().CentreVertical());
  return row;
}

wxSizer* import_window::make_sounds(wxWindow* parent) {
  wxStaticText* const label = make_label(parent, "so&und");
  sound_ = make_choice(
      parent, "soundkind",
      "what sound is encoded as, unless the project's first title decides; players for NTSC need "
      "not know MPEG audio",
      {"as AC-3", "as MPEG audio"});
  label_leads_to(label, sound_);
  choosers_.push_back(sound_);
  const wxSizerFlags gap =
      wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::column_gap));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(label, wxSizerFlags().CentreVertical());
  row->Add(sound_, wxSizerFlags().CentreVertical().Border(wxLEFT, FromDIP(layout::control_gap)));
  row->Add(make_check(parent, "allsounds", "all sound str&eams",
                      "also those for which the project's first title has none",
                      &import_choices::more_sounds),
           gap);
  row->Add(make_check(parent, "silence", "silence for films &without sound",
                      "a film without sound gets a silent stream, which some players need",
                      &import_choices::silence),
           gap);
  row->Add(make_check(parent, "loudness", "even &loudness",
                      "brings the sound of all films to the loudness of television (EBU R 128)",
                      &import_choices::even_loudness),
           gap);
  return row;
}

wxCheckBox* import_window::make_check(wxWindow* parent, const char* name, const char* label,
                                      const char* tip, bool import_choices::*choice) {
  auto* const box = new wxCheckBox(parent, wxID_ANY, label);
  name_control(*box, name);
  box->SetToolTip(tip);
  box->SetValue(list_.choices().*choice);
  box->Bind(wxEVT_CHECKBOX, [this, choice, box](wxCommandEvent&) {
    import_choices now = list_.choices();
    now.*choice = box->GetValue();
    list_.choose(now);
    show_all();
  });
  choosers_.push_back(box);
  return box;
}

wxSizer* import_window::make_place(wxWindow* parent) {
  wxStaticText* const label = make_label(parent, "&to");
  folder_ = new wxTextCtrl(parent, wxID_ANY);
  name_control(*folder_, "folder");
  folder_->SetToolTip("the folder that the files for the disc are made in; it is made if need be");
  label_leads_to(label, folder_);
  wxButton* const choose = make_button(parent, "choosefolder", "c&hoose...", "choose the folder",
                                       [this] { choose_folder(); });
  choosers_.push_back(folder_);
  choosers_.push_back(choose);
  return labelled_row(label, folder_, choose);
}

// What is said and how far a run is take turns in one place.
wxSizer* import_window::make_state() {
  const int gap = FromDIP(layout::control_gap);
  estimate_ = make_cut_line(this, "estimate");
  said_ = new said_line(this);
  progress_ = new run_line(this, "st&op", "end the import; what is complete stays",
                           [this] { ask_to_stop(); });
  auto* const state = new wxBoxSizer(wxVERTICAL);
  state->Add(estimate_, wxSizerFlags().Expand());
  state->Add(said_, wxSizerFlags().Expand().Border(wxTOP, gap));
  state->Add(progress_, wxSizerFlags().Expand().Border(wxTOP, gap));
  // What is above keeps its height whatever is shown.
  state->SetMinSize(0, estimate_->GetBestSize().y + gap + progress_->GetBestSize().y);
  return state;
}

wxSizer* import_window::make_buttons() {
  log_ = make_button(this, "showlog", "lo&g", "what the tools have said in the last import",
                     [this] { show_log(); });
  begin_ = make_button(this, "begin", "&import", "make the films ready for the disc",
                       [this] { begin(); });
  begin_->SetDefault();
  const wxSizerFlags gap = wxSizerFlags().Border(wxLEFT, FromDIP(layout::control_gap));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(log_);
  row->AddStretchSpacer();
  row->Add(begin_, gap);
  row->Add(make_close_button(*this), gap);
  return row;
}

void import_window::bind_controls() {
  timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { update_run(); });
  files_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { show_details(); });
  Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& event) {
    const int key = event.HasAnyModifiers() ? WXK_NONE : event.GetKeyCode();
    const wxWindow* const focus = FindFocus();
    const bool in_list = focus == files_ || (focus != nullptr && focus->GetParent() == files_);
    if (in_list && (key == WXK_DELETE || key == WXK_NUMPAD_DELETE))
      remove_selected();
    else
      event.Skip();
  });
  for (wxChoice* const choice : {quality_, fit_, sound_})
    choice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { take_choices(); });
  for (wxSpinCtrl* const field : {rate_, quantizer_})
    field->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent&) { take_choices(); });
  folder_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { take_folder(); });
}

int import_window::selected() const {
  return files_->GetSelectedRow();
}

void import_window::ask_for_files() {
  life_.during([this] { add(lent_.ask().open_files(dialog_of_films())); });
}

void import_window::add(const std::vector<std::string>& files) {
  const int before = static_cast<int>(list_.size());
  for (const std::string& file : files)
    if (!folder_exists(file))
      list_.add(file);
  outcome_.clear();
  show_choices();
  show_all();
  if (static_cast<int>(list_.size()) > before) {
    files_->SelectRow(static_cast<unsigned>(before));
    show_details();
  }
  look_->go_on();
}

void import_window::remove_selected() {
  const int row = selected();
  if (row == wxNOT_FOUND || runs() || life_.is_busy())
    return;
  list_.remove(static_cast<std::size_t>(row));
  outcome_.clear();
  show_all();
  if (list_.size() > 0)
    files_->SelectRow(
        static_cast<unsigned>(std::min<int>(row, static_cast<int>(list_.size()) - 1)));
  show_details();
}

void import_window::choose_streams() {
  const int row = selected();
  if (row == wxNOT_FOUND || runs())
    return;
  const auto index = static_cast<std::size_t>(row);
  const auto all = list_.choosable_streams(index);
  wxArrayString texts;
  wxArrayInt wanted;
  for (std::size_t i = 0; i < all.size(); ++i) {
    texts.Add(wx_text(sanitized(all[i].text)));
    if (all[i].wanted)
      wanted.Add(static_cast<int>(i));
  }
  life_.during([&] {
    wxMultiChoiceDialog dialog(this, "What is not marked is left out.", "streams", texts);
    name_control(dialog, "streams");
    dialog.SetSelections(wanted);
    for (wxWindow* const child : dialog.GetChildren())
      if (auto* const list = dynamic_cast<wxCheckListBox*>(child))
        let_space_check(dialog, *list);
    if (dialog.ShowModal() != wxID_OK)
      return;
    std::vector<bool> chosen(all.size(), false);
    for (const int i : dialog.GetSelections())
      chosen[static_cast<std::size_t>(i)] = true;
    list_.want(index, chosen);
  });
  show_all();
  streams_->SetFocus();
}

void import_window::choose_folder() {
  life_.during([this] {
    const std::string folder =
        lent_.ask().choose_folder("the folder for the imported files", list_.folder());
    if (!folder.empty())
      folder_->SetValue(wx_text(folder));
  });
}

void import_window::take_folder() {
  std::string typed = utf8_of(folder_->GetValue());
  if (path_of(typed).is_absolute())
    typed = absolute_path(typed);
  list_.put_in(std::move(typed));
  show_all();
}

void import_window::take_choices() {
  import_choices now = list_.choices();
  const int quality = quality_->GetSelection();
  now.quality = quality == mean_rate          ? import_quality::mean_rate
                : quality == constant_quality ? import_quality::constant
                                              : import_quality::fill_disc;
  if (now.quality == import_quality::fill_disc)
    now.disc_bytes = quality == fill_dvd9 ? double_layer_bytes : single_layer_bytes;
  now.mean_rate = std::int64_t{rate_->GetValue()} * kilo;
  now.quantizer = quantizer_->GetValue();
  now.fit = fit_->GetSelection() == 1 ? picture_fit::cropped : picture_fit::bars;
  now.new_sound = sound_->GetSelection() == 1 ? disc_sound::mp2 : disc_sound::ac3;
  list_.choose(now);
  show_choices();
  show_all();
}

// Nothing is written into a field that shows it already: its cursor would move.
void import_window::show_choices() {
  const import_choices& now = list_.choices();
  quality_->SetSelection(entry_of(now));
  fit_->SetSelection(now.fit == picture_fit::cropped ? 1 : 0);
  sound_->SetSelection(now.new_sound == disc_sound::mp2 ? 1 : 0);
  const int kilobits = static_cast<int>(now.mean_rate / kilo);
  if (rate_->GetValue() != kilobits)
    rate_->SetValue(kilobits);
  if (quantizer_->GetValue() != now.quantizer)
    quantizer_->SetValue(now.quantizer);
  if (utf8_of(folder_->GetValue()) != list_.folder() && !folder_->HasFocus())
    folder_->ChangeValue(wx_text(list_.folder()));
  rate_->Show(now.quality == import_quality::mean_rate);
  quantizer_->Show(now.quality == import_quality::constant);
  unit_->Show(now.quality != import_quality::fill_disc);
  unit_->SetLabel(now.quality == import_quality::constant ? "2 is best, 31 smallest" : "kbit/s");
  Layout();
}

void import_window::show_all() {
  show_rows();
  show_details();
  show_state();
}

void import_window::show_rows() {
  std::vector<import_list::shown_row> rows;
  for (std::size_t i = 0; i < list_.size(); ++i)
    rows.push_back(list_.shown(i));
  if (rows.size() != shown_.size()) {
    const int was = selected();
    files_->DeleteAllItems();
    for (const import_list::shown_row& row : rows) {
      wxVector<wxVariant> cells;
      for (const wxString& cell : cells_of(row))
        cells.push_back(cell);
      files_->AppendItem(cells);
    }
    if (was >= 0 && was < static_cast<int>(rows.size()))
      files_->SelectRow(static_cast<unsigned>(was));
  } else
    for (std::size_t i = 0; i < rows.size(); ++i)
      if (rows[i] != shown_[i]) {
        const std::array<wxString, 3> cells = cells_of(rows[i]);
        for (unsigned cell = 0; cell < cells.size(); ++cell)
          files_->SetTextValue(cells[cell], static_cast<unsigned>(i), cell);
      }
  shown_ = std::move(rows);
}

void import_window::show_details() {
  const int row = selected();
  remove_->Enable(row != wxNOT_FOUND && !runs());
  streams_->Enable(row != wxNOT_FOUND && row < static_cast<int>(list_.size()) && !runs() &&
                   list_.may_choose_streams(static_cast<std::size_t>(row)));
  if (row == wxNOT_FOUND || row >= static_cast<int>(list_.size())) {
    look_->want_picture({}, 0);
    details_->show_picture({});
    details_->show({"no file is selected",
                    {{"", "Add films with \"add files...\", or drop them on this window."}},
                    ""});
    return;
  }
  const auto index = static_cast<std::size_t>(row);
  details_->show(list_.summary(index));
  const std::string file = list_.path(index);
  if (!list_.has_picture(index)) {
    look_->want_picture({}, 0);
    details_->show_picture({});
    return;
  }
  if (const first_picture* const known = look_->picture_of(file)) {
    details_->show_picture(*known);
    return;
  }
  details_->await_picture();
  constexpr double place = 0.1, latest = 60;  // beginnings are black
  look_->want_picture(file, std::min(list_.seconds(index) * place, latest));
}

void import_window::say(const std::string& text, const char* picture) {
  said_->say(text, picture);
  Layout();
}

void import_window::show_state() {
  if (!runs()) {
    const std::string estimate = list_.estimate();
    show_line(*estimate_, estimate);
    estimate_->Show(!estimate.empty());
  }
  const std::string trouble = list_.trouble();
  if (!trouble.empty())
    say(trouble, "found-error");
  else if (!outcome_.empty())
    say(outcome_, all_well_ ? "found-nothing" : "found-warning");
  else
    say(list_.size() == 0 ? "Add films with \"add files...\", or drop them on this window." : "",
        "found-note");
  begin_->Enable(!runs() && list_.may_begin());
  log_->Enable(!runs() && file_exists(join_path(main_.app(), run_file::import_log)));
}

void import_window::let_choose(bool enabled) {
  for (wxWindow* const control : choosers_)
    control->Enable(enabled);
  progress_->Show(!enabled);
  said_->Show(enabled);
  Layout();
}

void import_window::begin() {
  if (runs() || !list_.may_begin())
    return;
  life_.during([this] {
    message_box box;
    box.picture = icon::exclamation;
    if (const failure why = prepare_import_folder(list_.folder())) {
      box.text = sanitized(*why);
      lent_.ask().message(box);
      return;
    }
    stopping_ = false;
    outcome_.clear();
    import_events on;
    on.progress = [this](const import_progress& p) {
      list_.runs(p.job);
      progress_->tell(p.percent, progress_text(p, run_->jobs()));
      show_rows();
    };
    on.again = [this](std::size_t job, const std::string&) {
      list_.changed(job, run_->jobs()[job]);
      show_details();
    };
    on.ended = [this](const import_end& end) { take_end(end); };
    on.done = [this](bool stopped) { run_has_ended(stopped); };
    run_ = std::make_unique<import_run>(list_.begin(), std::move(on), lent_.ask(), main_.launcher(),
                                        main_.lock(), main_.app());
    progress_->tell(0, {});
    if (const failure why = run_->start()) {
      list_.give_up();
      run_.reset();
      box.text = "Nothing can be imported now: " + *why + ".";
      lent_.ask().message(box);
    } else {
      let_choose(false);
      timer_.Start(poll_run_milliseconds);
    }
    show_all();
  });
  if (runs())
    progress_->focus_stop();
}

// The polling rests while a question stands, as that of every run does.
void import_window::update_run() {
  life_.during([this] { run_->update(); });
}

void import_window::take_end(const import_end& end) {
  list_.changed(end.job, run_->jobs()[end.job]);
  list_.ended(end, stopping_);
  if (end.problem.empty())
    add_to_project(lent_.doc(), run_->jobs()[end.job]);
  show_rows();
}

void import_window::run_has_ended(bool stopped) {
  timer_.Stop();
  outcome_ = (stopped ? "The import was stopped.  " : "") + list_.outcome() + ".";
  all_well_ = !stopped && list_.all_done();
  list_.follow(lent_.doc().p);
  list_.expect(read_import_speeds(main_.app()));
  let_choose(true);
  show_choices();
  show_all();
  if (!stopped)
    ask_for_attention(*this);
  files_->SetFocus();
}

void import_window::ask_to_stop() {
  life_.during([this] { stop_if_wanted(); });
}

bool import_window::stop_if_wanted() {
  if (!runs())
    return true;
  message_box question;
  question.text = "Stop importing?  What is complete stays.";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no;
  if (lent_.ask().message(question) != answer::yes)
    return false;
  stopping_ = true;
  run_->stop();
  return true;
}

void import_window::show_log() {
  if (log_window_ == nullptr)
    log_window_ = new import_log_window(this, join_path(main_.app(), run_file::import_log));
  log_window_->Raise();
}

}  // namespace corvane
