#include "ui/maker/maker_window.h"

#include "drawing/page_painting.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "media/source_probe.h"
#include "menus/menu_overlay.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "runner/run_meter.h"
#include "ui/editor/file_pictures.h"
#include "ui/main_window.h"
#include "ui/maker/maker_letters_panel.h"
#include "ui/maker/maker_look_panel.h"
#include "ui/maker/maker_picture.h"
#include "ui/maker/maker_titles_panel.h"
#include "ui/widgets/attention.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/controls.h"
#include "ui/widgets/cut_line.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/labelled.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/run_lines.h"
#include "ui/widgets/screen_fit.h"
#include "ui/widgets/text_margins.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/notebook.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <utility>
#include <variant>

namespace corvane {
namespace {

constexpr int draw_page_milliseconds = 10, poll_making_milliseconds = 50;

void tell_why_no_menus(document& doc, const std::string& text) {
  message_box box;
  box.text = text;
  box.picture = icon::exclamation;
  doc.ask.message(box);
}

std::string sentence(std::string text) {
  if (!text.empty() && !text.ends_with('.'))
    text += '.';
  return text;
}

/// The design that was used the last time, else the first one that can be used.
const found_design* design_to_begin_with(const std::vector<found_design>& designs,
                                         const project& p) {
  const std::string before = menus_made_before(p).design;
  const found_design* first = nullptr;
  for (const found_design& design : designs) {
    if (!design.design)
      continue;
    if (design.id == before)
      return &design;
    if (first == nullptr)
      first = &design;
  }
  return first;
}

}  // namespace

void open_menu_maker(main_window& main) {
  open_menu_maker_with(main, make_page_drawer);
}

void open_menu_maker_with(
    main_window& main, const std::function<result<std::unique_ptr<page_drawer>>()>& make_drawer) {
  std::vector<found_design> designs;
  const found_design* first = nullptr;
  std::unique_ptr<page_drawer> drawer;
  main.run("make menus", [&](document& doc) {
    if (doc.p.List1.empty()) {
      tell_why_no_menus(doc, "Please add a title first: menus are made of the titles.");
      return;
    }
    result<std::unique_ptr<page_drawer>> made = make_drawer();
    if (!made) {
      tell_why_no_menus(doc, "The menus cannot be drawn: " + made.error +
                                 ".  Installing Corvane again brings back what is missing.");
      return;
    }
    designs = designs_in(program_designs_folder(), own_designs_folder(main.app()));
    first = design_to_begin_with(designs, doc.p);
    if (first == nullptr) {
      tell_why_no_menus(doc,
                        "There is no design for menus: the folder \"designs\" is neither beside "
                        "the program nor among what it shares.  Installing Corvane again brings it "
                        "back.");
      return;
    }
    drawer = std::move(*made);
  });
  if (drawer == nullptr)
    return;
  main.open_editor("make menus", [&](lent_project lent) -> wxTopLevelWindow* {
    auto* const window =
        new maker_window(main, std::move(lent), designs, *first, std::move(drawer));
    window->Show();
    return window;
  });
}

maker_window::maker_window(main_window& main, lent_project lent, std::vector<found_design> designs,
                           const found_design& first, std::unique_ptr<page_drawer> drawer)
    : wxDialog(&main, wxID_ANY, "make menus", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER | wxMAXIMIZE_BOX, "menumaker"),
      main_(main),
      lent_(std::move(lent)),
      drawer_(std::move(drawer)),
      draft_(
          lent_.doc().p, std::move(designs), preset_wishes(lent_.doc(), first),
          [this](std::string_view text, const text_style& style, int width, double aspect) {
            return drawer_->measure(text, style, width, aspect);
          },
          entry_exists),
      life_(*this, main, lent_.ask(),
            {[this] {
               draw_.Stop();
               run_.Stop();
               making_.reset();
             },
             [this] { return may_close(); }, [this] { lent_.give_back(); }}),
      films_([this] { draw_soon(); }) {
  name_control(*this, "menumaker");
  SetIcons(program_icon());
  const int gap = FromDIP(layout::group_gap);
  auto* const both = new wxBoxSizer(wxHORIZONTAL);
  both->Add(make_choices(), wxSizerFlags().Expand());
  both->Add(make_page(), wxSizerFlags(1).Expand().Border(wxLEFT, gap));
  auto* const groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(both, wxSizerFlags(1).Expand());
  groups->Add(make_place(), wxSizerFlags().Expand().Border(wxTOP, gap));
  groups->Add(make_state(), wxSizerFlags().Expand().Border(wxTOP, gap));
  groups->Add(make_buttons(), wxSizerFlags().Expand().Border(wxTOP, gap));
  auto* const whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizer(whole);
  SetMinClientSize(whole->CalcMin());
  progress_->Hide();
  set_size_on_screen(*this, FromDIP(wxSize(layout::maker_width, layout::maker_height)));
  Bind(wxEVT_CHAR_HOOK, &maker_window::on_key, this);
  draw_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
    if (std::exchange(page_changed_, false))
      draw_page();
    else
      draw_next_sample();
  });
  run_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { update_run(); });
  CentreOnParent();
  life_.begin();
  lent_.keeps({"make menus", [](project&) {}});  // menus come when all of them are made
  draft_.turn_to(1);
  draft_.select(1);
  show_all();
  picture_->SetFocus();
}

maker_window::~maker_window() = default;

// Controls ----------------------------------------------------------------------------------------

wxSizer* maker_window::make_choices() {
  choices_ = new wxNotebook(this, wxID_ANY);
  name_control(*choices_, "makerchoices");
  const maker_events on{[this] { changed(); },
                        [this](const file_dialog& dialog) {
                          std::string file;
                          life_.during([&] { file = lent_.ask().open_file(dialog); });
                          return file;
                        }};
  titles_ = new maker_titles_panel(choices_, draft_, on);
  look_ = new maker_look_panel(choices_, draft_, on);
  letters_ = new maker_letters_panel(choices_, draft_, on);
  choices_->AddPage(titles_, "what");
  choices_->AddPage(look_, "look");
  choices_->AddPage(letters_, "letters");
  choices_->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, [this](wxBookCtrlEvent& event) {
    event.Skip();
    draw_soon();
  });
  choices_->SetMinSize(wxSize(FromDIP(layout::maker_choices_width), -1));
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(choices_, wxSizerFlags(1).Expand());
  return column;
}

wxSizer* maker_window::make_page() {
  const int gap = FromDIP(layout::control_gap);
  const wxSizerFlags beside = wxSizerFlags().CentreVertical().Border(wxLEFT, gap);
  previous_ = make_button(this, "previouspage", "pre&vious", "the menu before (PageUp)",
                          [this] { turn(-1); });
  next_ = make_button(this, "nextpage", "ne&xt", "the next menu (PageDown)", [this] { turn(1); });
  page_words_ = make_cut_line(this, "pagewords");
  page_words_->SetFont(page_words_->GetFont().Bold());
  edit_ = make_button(this, "edittext", "&edit text",
                      "edit the text that is selected in the picture (F2, or a click on it); Tab "
                      "goes on to the next one",
                      [this] { edit_selected(); });
  pressed_ = new wxCheckBox(this, wxID_ANY, "sho&w pressed");
  name_control(*pressed_, "showpressed");
  pressed_->SetToolTip("show the selected button as it looks when it is pressed");
  pressed_->Bind(wxEVT_CHECKBOX, [this](wxCommandEvent&) { draw_soon(); });
  auto* const turner = new wxBoxSizer(wxHORIZONTAL);
  turner->Add(previous_, wxSizerFlags().CentreVertical());
  turner->Add(next_, beside);
  turner->Add(page_words_, wxSizerFlags(beside).Proportion(1));
  turner->Add(pressed_, beside);
  turner->Add(edit_, beside);
  maker_picture::handlers on;
  on.select = [this](int item) { select(item); };
  on.set_text = [this](int item, const std::string& text) { set_text(item, text); };
  on.turn = [this](int by) { turn(by); };
  picture_ = new maker_picture(this, draft_, std::move(on));
  selected_ = make_cut_line(this, "selectedentry");
  auto* const column = new wxBoxSizer(wxVERTICAL);
  column->Add(turner, wxSizerFlags().Expand());
  column->Add(picture_, wxSizerFlags(1).Expand().Border(wxTOP, gap));
  column->Add(selected_, wxSizerFlags().Expand().Border(wxTOP, gap));
  return column;
}

wxSizer* maker_window::make_place() {
  wxStaticText* const label = make_label(this, "backgrounds &into");
  folder_ = new wxTextCtrl(this, wxID_ANY);
  name_control(*folder_, "makerfolder");
  folder_->SetToolTip("the folder that the videos of the menus are made in; it is made if need be");
  label_leads_to(label, folder_);
  folder_->ChangeValue(wx_text(draft_.chosen().folder));
  folder_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { take_folder(); });
  choose_folder_ = make_button(this, "choosefolder", "ch&oose...", "choose the folder",
                               [this] { choose_folder(); });
  return labelled_row(label, folder_, choose_folder_);
}

// What is said and how far a run is take turns in one place.
wxSizer* maker_window::make_state() {
  const int gap = FromDIP(layout::control_gap);
  said_ = new said_line(this);
  notes_ = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                          wxTE_MULTILINE | wxTE_READONLY | wxTE_RICH2);
  name_control(*notes_, "notes");
  set_text_margins(*notes_, FromDIP(wxSize(layout::control_gap, layout::label_gap)));
  notes_->SetToolTip("what is left out, shortened, or otherwise than chosen");
  notes_->SetMinSize(FromDIP(wxSize(layout::list_height, layout::maker_notes_height)));
  progress_ =
      new run_line(this, "&stop", "end it; the project stays as it was, and no file is left",
                   [this] { ask_to_stop(); });
  auto* const state = new wxBoxSizer(wxVERTICAL);
  state->Add(said_, wxSizerFlags().Expand());
  state->Add(progress_, wxSizerFlags().Expand());
  state->Add(notes_, wxSizerFlags().Expand().Border(wxTOP, gap));
  return state;
}

wxSizer* maker_window::make_buttons() {
  begin_ = make_button(this, "make", "ma&ke the menus",
                       "make the backgrounds, and put the menus into the project; undo takes them "
                       "back",
                       [this] { begin(); });
  begin_->SetDefault();
  const wxSizerFlags gap = wxSizerFlags().Border(wxLEFT, FromDIP(layout::control_gap));
  auto* const row = new wxBoxSizer(wxHORIZONTAL);
  row->AddStretchSpacer();
  row->Add(begin_, gap);
  row->Add(make_close_button(*this), gap);
  return row;
}

// The dialog takes Enter and Esc for itself otherwise; and pages turn wherever the keyboard is, but
// in lists, which have these keys themselves.
void maker_window::on_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const bool is_enter = key == WXK_RETURN || key == WXK_NUMPAD_ENTER;
  const bool turns = (key == WXK_PAGEUP || key == WXK_PAGEDOWN) && !event.HasAnyModifiers();
  const wxWindow* const focus = FindFocus();
  const bool is_plain = dynamic_cast<const wxButton*>(focus) != nullptr ||
                        dynamic_cast<const wxCheckBox*>(focus) != nullptr || focus == folder_;
  if (is_enter && picture_->HasFocus()) {
    event.DoAllowNextEvent();
    event.Skip();
  } else if (turns && is_plain && !runs()) {
    turn(key == WXK_PAGEUP ? -1 : 1);
  } else if (key == WXK_F2 && !event.HasAnyModifiers() && !picture_->is_editing() && !runs()) {
    edit_selected();
  } else {
    event.Skip();
  }
}

// What the user does ------------------------------------------------------------------------------

void maker_window::select(int item) {
  const int before = draft_.selected();
  draft_.select(item);
  if (draft_.selected() == before)
    return;
  show_page_words();
  draw_soon();
}

void maker_window::set_text(int item, const std::string& text) {
  if (text == draft_.text_of(item))
    return;
  draft_.set_text(item, text);
  changed();
}

void maker_window::turn(int by) {
  const int before = draft_.page();
  picture_->end_edit(true);
  draft_.turn_to(before + by);
  if (draft_.page() == before)
    return;
  show_page_words();
  draw_soon();
}

void maker_window::edit_selected() {
  if (!runs())
    picture_->edit(draft_.selected());
}

void maker_window::choose_folder() {
  life_.during([this] {
    const std::string folder = lent_.ask().choose_folder("folder for the backgrounds of the menus",
                                                         draft_.chosen().folder);
    if (!folder.empty())
      folder_->SetValue(wx_text(folder));
  });
}

void maker_window::take_folder() {
  const std::string folder = utf8_of(folder_->GetValue());
  if (folder == draft_.chosen().folder)
    return;
  draft_.change([&](menu_wishes& wishes) { wishes.folder = folder; });
  changed();
}

// What is shown -----------------------------------------------------------------------------------

void maker_window::changed() {
  outcome_.clear();
  picture_->end_edit(true);
  show_all();
}

void maker_window::show_all() {
  titles_->show_choices();
  look_->show_choices();
  letters_->show_choices();
  if (samples_are_wide_ != draft_.chosen().is_wide) {
    samples_are_wide_ = draft_.chosen().is_wide;
    next_sample_ = 0;
  }
  show_page_words();
  show_state();
  draw_soon();
}

void maker_window::show_page_words() {
  show_line(*page_words_, draft_.page_words());
  previous_->Enable(!runs() && draft_.page() > 1);
  next_->Enable(!runs() && draft_.page() < draft_.pages());
  edit_->Enable(!runs() && draft_.page() > 0);
  const int item = draft_.selected();
  std::string text;
  if (draft_.page() > 0) {
    const std::string leads = draft_.leads_to(item);
    text = item == 0 ? "heading: " : "button " + trimmed(item) + ": ";
    text += sanitized(draft_.text_of(item)) + (leads.empty() ? "" : ", leads to " + leads) +
            (draft_.has_own_text(item) ? " (your text)" : "");
  }
  show_line(*selected_, text);
}

void maker_window::say(const std::string& text, const char* picture) {
  said_->say(text, picture);
  Layout();
}

void maker_window::show_state() {
  if (!outcome_.empty()) {
    say(outcome_, all_well_ ? "found-nothing" : "found-error");
  } else {
    say(draft_.summary(), !draft_.trouble().empty() ? "found-error"
                          : draft_.notes().empty()  ? "found-nothing"
                                                    : "found-note");
    const wxString notes = draft_.notes().empty() && draft_.trouble().empty()
                               ? wxString("Nothing is left out or shortened.")
                               : wx_text(join(draft_.notes(), "\n"));
    if (notes_->GetValue() != notes)
      notes_->ChangeValue(notes);
  }
  begin_->Enable(!runs() && draft_.trouble().empty());
}

// Only the last of what was wished for since is drawn.
void maker_window::draw_soon() {
  page_changed_ = true;
  if (!draw_.IsRunning())
    draw_.StartOnce(draw_page_milliseconds);
}

wxImage maker_window::drawn(const drawn_page& page) {
  const auto had = [this](const std::string& file, double seconds) {
    return films_.at(file, seconds);
  };
  const page_drawing drawing = drawer_->draw(page, had);
  if (!std::holds_alternative<video_background>(page.background))
    return image_of(on_colour(drawing.canvas, {}));
  // What the video shows where the page has nothing.
  drawn_page behind = page;
  behind.shapes.clear();
  page_thumbnail film;
  film.file = draft_.film().film;
  film.seconds = draft_.film().begin;
  film.box = {0, 0, page.width, page.height};
  behind.background = colour_background{};
  if (!film.file.empty())
    behind.shapes.emplace_back(film);
  wxImage image = image_of(on_colour(drawer_->draw(behind, had).canvas, {}));
  const page_canvas& over = drawing.canvas;
  unsigned char* const dots = image.GetData();
  for (std::size_t i = 0; i * 4 < over.rgba.size(); ++i)
    for (std::size_t part = 0; part < 3; ++part) {
      const unsigned alpha = over.rgba[i * 4 + 3];
      dots[i * 3 + part] = static_cast<unsigned char>(
          (over.rgba[i * 4 + part] * alpha + dots[i * 3 + part] * (255 - alpha)) / 255);
    }
  return image;
}

/// The selected button in its look, dot by dot as it will be drawn for the disc.
void maker_window::put_button(wxImage& image) const {
  const int item = draft_.selected();
  if (item < 1)
    return;
  const std::string& record =
      draft_.shown().memory.buttons[static_cast<std::size_t>(item) - 1].record;
  file_bitmaps none;
  const overlay_picture over =
      overlay_of({overlay_button_of(record, pressed_->GetValue() ? button_state::selected
                                                                 : button_state::highlighted)},
                 draft_.look().frame, image.GetHeight(), none);
  for (int y = 0; y < over.height; ++y)
    for (int x = 0; x < std::min(over.width, image.GetWidth()); ++x) {
      const auto at = (static_cast<std::size_t>(y) * static_cast<std::size_t>(over.width) +
                       static_cast<std::size_t>(x)) *
                      4;
      if (over.rgba[at + 3] != 0)
        image.SetRGB(x, y, over.rgba[at], over.rgba[at + 1], over.rgba[at + 2]);
    }
}

void maker_window::draw_page() {
  if (draft_.page() == 0) {
    films_.want({});
    picture_->show_reason(wx_text(draft_.trouble()));
    return;
  }
  const drawn_page& page = draft_.shown().page;
  std::vector<page_films::wish> wishes = pictures_of(page);
  if (std::holds_alternative<video_background>(page.background) && !draft_.film().film.empty())
    wishes.insert(wishes.begin(), {draft_.film().film, draft_.film().begin});
  films_.want(std::move(wishes));
  wxImage image = drawn(page);
  put_button(image);
  picture_->show_page(image);
  draw_.StartOnce(draw_page_milliseconds);
}

// One at a time, so that keys are answered meanwhile; once more when the films' pictures are there.
void maker_window::draw_next_sample() {
  if (!look_->IsShownOnScreen())
    return;
  if (next_sample_ >= draft_.designs().size()) {
    if (samples_have_pictures_ || films_.is_reading())
      return;
    samples_have_pictures_ = true;
    next_sample_ = 0;
  }
  const drawn_page page = draft_.sample_of(next_sample_);
  if (page.shapes.empty())
    return;
  look_->show_sample(next_sample_++, drawn(page), page.is_wide);
  draw_.StartOnce(draw_page_milliseconds);
}

// Making ------------------------------------------------------------------------------------------

bool maker_window::agree_to_erase() {
  if (!draft_.erases_menus())
    return true;
  message_box question;
  question.text =
      "The jump table can change only without menus.  Erase the menus that are there, change it, "
      "and make all menus again?  Undo brings them back.\n\nNo: make the menus without changing "
      "it.";
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no_cancel;
  const answer given = lent_.ask().message(question);
  if (given == answer::no)
    draft_.change([](menu_wishes& wishes) { wishes.jump_table.reset(); });
  return given == answer::yes || given == answer::no;
}

void maker_window::begin() {
  picture_->end_edit(true);
  if (runs() || !draft_.trouble().empty())
    return;
  life_.during([this] {
    if (!agree_to_erase())
      return;
    show_all();
    if (!draft_.trouble().empty())
      return;
    result<page_painter> painter = make_page_painter();
    if (!painter) {
      tell_why_no_menus(lent_.doc(), sentence("The menus cannot be drawn: " + painter.error) +
                                         "  Installing Corvane again brings back what is missing.");
      return;
    }
    outcome_.clear();
    making_events on;
    on.progress = [this](const making_progress& p) {
      const std::string time = time_left_text(p.seconds_left);
      progress_->tell(p.percent, p.step + (time.empty() ? "" : ", " + time));
    };
    on.ended = [this](const making_end& end) { has_ended(end); };
    making_ =
        std::make_unique<menu_making>(lent_.doc(), draft_.wishes(),
                                      making_equipment{std::move(*painter), probe_source,
                                                       main_.launcher(), main_.lock(), main_.app()},
                                      std::move(on));
    progress_->tell(0, {});
    if (const failure why = making_->start()) {
      making_.reset();
      if (!why->empty())
        tell_why_no_menus(lent_.doc(), *why);
      return;
    }
    let_choose(false);
    run_.Start(poll_making_milliseconds);
  });
  if (runs())
    progress_->focus_stop();
}

// The polling rests while a question stands, as that of every run does.
void maker_window::update_run() {
  life_.during([this] { making_->update(); });
}

void maker_window::has_ended(const making_end& end) {
  run_.Stop();
  all_well_ = end.problem.empty() && !end.stopped;
  if (all_well_)
    draft_.texts_are_kept();
  draft_.plan();
  let_choose(true);
  outcome_ = end.stopped            ? "Nothing was made: it was stopped."
             : !end.problem.empty() ? "No menus were made: " + end.problem
             : end.menus == 1       ? "1 menu made."
                                    : trimmed(end.menus) + " menus made.";
  show_all();
  // What is longer than the line above it can be read here.
  notes_->ChangeValue(wx_text(end.problem.empty() ? join(end.notes, "\n") : end.problem));
  if (!end.stopped)
    ask_for_attention(*this);
  picture_->SetFocus();
}

void maker_window::let_choose(bool enabled) {
  for (wxWindow* const control :
       {static_cast<wxWindow*>(choices_), static_cast<wxWindow*>(picture_),
        static_cast<wxWindow*>(folder_), static_cast<wxWindow*>(choose_folder_),
        static_cast<wxWindow*>(pressed_)})
    control->Enable(enabled);
  progress_->Show(!enabled);
  said_->Show(enabled);
  show_page_words();
  show_state();
  Layout();
}

void maker_window::ask_to_stop() {
  life_.during([this] { may_close(); });
}

bool maker_window::may_close() {
  message_box question;
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no;
  if (!runs()) {
    if (!draft_.has_new_texts())
      return true;
    question.text = "Close without making the menus?  The texts that you have typed are lost.";
    return lent_.ask().message(question) == answer::yes;
  }
  question.text = "Stop making the menus?  The project stays as it is.";
  if (lent_.ask().message(question) != answer::yes)
    return false;
  making_->stop();
  return true;
}

}  // namespace corvane
