#include "ui/video/chapter_window.h"

#include "formats/text.h"
#include "tools/visual_chapters.h"
#include "ui/main_window.h"
#include "ui/video/chapter_marks.h"
#include "ui/video/chapters_editor_window.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/dialog_buttons.h"
#include "ui/widgets/fixed_pitch.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wrapped_text.h"
#include "ui/widgets/wx_text.h"

#include <wx/button.h>
#include <wx/dcclient.h>
#include <wx/sizer.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace corvane {

void edit_chapters(main_window& main) {
  edit_chapters_at(main, 0);
}

void edit_chapters_at(main_window& main, int line) {
  std::optional<chapter> model;
  main.run("edit chapters", [&model](document& doc) { model = chapter::open(doc); });
  if (model)
    main.open_editor("edit chapters", [&](lent_project lent) -> wxTopLevelWindow* {
      auto* dialog = new chapter_window(&main, std::move(lent), std::move(*model));
      dialog->select_line(line);
      dialog->Show();
      return dialog;
    });
}

chapter_window::chapter_window(wxWindow* main, lent_project lent, chapter model)
    : wxDialog(main, wxID_ANY, "chapters", wxDefaultPosition, wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER, "chapter"),
      lent_(std::move(lent)),
      model_(std::move(model)),
      life_(*this, *main, lent_.ask(),
            {{}, [this] { return may_close(); }, [this] { lent_.give_back(); }}) {
  name_control(*this, "chapter");
  SetIcons(program_icon());
  const int gap = FromDIP(layout::group_gap);
  auto* groups = new wxBoxSizer(wxVERTICAL);
  groups->Add(make_title(), wxSizerFlags().Expand());
  groups->Add(make_times(), wxSizerFlags(1).Expand().Border(wxTOP, gap));
  groups->Add(make_buttons(), wxSizerFlags().Expand().Border(wxTOP, gap));
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(groups, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(layout::window_border)));
  SetSizerAndFit(whole);
  show_fates();
  bind_controls();
  CentreOnParent();
  life_.begin();
  lent_.keeps({"chapters", [this](project& copy) {
                 take_typed();
                 const std::string typed = model_.RichTextBox1();
                 if (const auto* editor = dynamic_cast<chapters_editor_window*>(editor_.get()))
                   model_.set_text(editor->text());
                 model_.keep_in(copy);
                 model_.set_text(typed);
               }});
  RichTextBox1_->SetFocus();
}

// The editor works on the model.
chapter_window::~chapter_window() {
  if (editor_ != nullptr)
    delete editor_.get();
}

void chapter_window::select_line(int line) {
  if (line < 1 || line > RichTextBox1_->GetNumberOfLines())
    return;
  const long begin = RichTextBox1_->XYToPosition(0, line - 1);
  RichTextBox1_->SetSelection(begin, begin + RichTextBox1_->GetLineLength(line - 1));
  RichTextBox1_->ShowPosition(begin);
}

/// `Frame1` with the title's number and row.
wxSizer* chapter_window::make_title() {
  auto* frame = new wxStaticBoxSizer(wxHORIZONTAL, this, "add chapters for:");
  wxStaticBox* Frame1 = frame->GetStaticBox();
  name_control(*Frame1, "Frame1");
  auto* Label2 = new wxStaticText(Frame1, wxID_ANY, wx_text(model_.Label2()));
  Label2->SetFont(Label2->GetFont().Bold());
  name_control(*Label2, "Label2");
  auto* Label3 = new wxStaticText(Frame1, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                  wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END);
  Label3->SetLabelText(wx_text(model_.Label3()));
  Label3->SetToolTip(wx_text(model_.Label3()));
  Label3->SetMinSize(wxSize(FromDIP(layout::chapters_width), -1));
  name_control(*Label3, "Label3");
  const int border = FromDIP(layout::box_border);
  frame->Add(Label2, wxSizerFlags().Border(wxALL, border));
  frame->Add(Label3, wxSizerFlags(1).Border(wxTOP | wxRIGHT | wxBOTTOM, border));
  return frame;
}

wxSizer* chapter_window::make_times() {
  RichTextBox1_ = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                                 wxTE_MULTILINE | wxTE_DONTWRAP | wxTE_RICH2);
  name_control(*RichTextBox1_, "RichTextBox1");
  RichTextBox1_->SetToolTip("one time a line; Ctrl+Enter accepts");
  RichTextBox1_->SetFont(fixed_pitch(RichTextBox1_->GetFont()));
  RichTextBox1_->SetMinSize(wxSize(-1, FromDIP(layout::chapters_height)));
  RichTextBox1_->ChangeValue(wx_lines(model_.RichTextBox1()));
  auto* column = new wxBoxSizer(wxVERTICAL);
  column->Add(RichTextBox1_, wxSizerFlags(1).Expand());
  column->Add(make_below_times(), wxSizerFlags().Expand());
  return column;
}

/// The format, what becomes of the lines, and the way to complete them.
wxSizer* chapter_window::make_below_times() {
  auto* Label4 = new wxStaticText(this, wxID_ANY, "the format is HH:MM:SS");
  name_control(*Label4, "Label4");
  complete_ = new wxButton(this, wxID_ANY, "complete &times");
  complete_->SetToolTip("adds \".00\" to each time that stands without hundredths");
  name_control(*complete_, "completetimes");
  complete_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { complete_times(); });
  notes_ = new wxStaticText(this, wxID_ANY, "\n\n", wxDefaultPosition, wxDefaultSize,
                            wxST_NO_AUTORESIZE);
  notes_->SetMinSize(wxSize(1, notes_->GetBestSize().y));  // the text does not jump
  name_control(*notes_, "chapternotes");
  const int gap = FromDIP(layout::control_gap);
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(Label4, wxSizerFlags().CentreVertical());
  row->AddStretchSpacer();
  row->Add(complete_, wxSizerFlags().CentreVertical().Border(wxLEFT, gap));
  auto* rows = new wxBoxSizer(wxVERTICAL);
  rows->Add(row, wxSizerFlags().Expand().Border(wxTOP, gap));
  rows->Add(notes_, wxSizerFlags().Expand().Border(wxTOP, gap));
  return rows;
}

wxSizer* chapter_window::make_buttons() {
  auto* vedit = new wxButton(this, wxID_ANY, "&visual editor");
  vedit->SetToolTip("plays the title's video and takes chapter points from it");
  name_control(*vedit, "vedit");
  vedit->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { edit_visually(); });
  auto* Command2 = new wxButton(this, wxID_OK, "&accept");
  name_control(*Command2, "Command2");
  auto* row = new wxBoxSizer(wxHORIZONTAL);
  row->Add(vedit);
  row->AddStretchSpacer();
  row->Add(dialog_buttons(Command2, new wxButton(this, wxID_CANCEL, "&cancel")),
           wxSizerFlags().Border(wxLEFT, FromDIP(layout::group_gap)));
  return row;
}

void chapter_window::bind_controls() {
  RichTextBox1_->Bind(wxEVT_CHAR_HOOK, &chapter_window::on_text_key, this);
  RichTextBox1_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { show_fates(); });
  RichTextBox1_->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    CallAfter([this] { show_notes(); });  // once all have their places
    event.Skip();
  });
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { accept(); }, wxID_OK);
  Bind(
      wxEVT_BUTTON, [this](wxCommandEvent&) { Close(); }, wxID_CANCEL);
}

// Enter alone begins a new line.
void chapter_window::on_text_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (event.ControlDown() && (key == WXK_RETURN || key == WXK_NUMPAD_ENTER))
    accept();
  else
    event.Skip();
}

void chapter_window::take_typed() {
  model_.set_text(replace_all(utf8_of(RichTextBox1_->GetValue()), "\n", crlf));
}

void chapter_window::show_fates() {
  if (marking_)
    return;
  const auto lines = judged_chapter_lines(utf8_of(RichTextBox1_->GetValue()));
  marking_ = true;
  mark_chapter_lines(*RichTextBox1_, lines);
  marking_ = false;
  complete_->Enable(std::any_of(lines.begin(), lines.end(),
                                [](const chapter_line& line) { return line.completable; }));
  show_notes();
}

/// In lines as wide as the window. What needs more of them than usual takes the room of the text.
void chapter_window::show_notes() {
  wxString notes;
  for (const std::string& note :
       chapter_notes(judged_chapter_lines(utf8_of(RichTextBox1_->GetValue()))))
    notes += (notes.empty() ? "" : "\n") + wx_text(note);
  wxClientDC dc(notes_);
  dc.SetFont(notes_->GetFont());
  notes = wrapped(dc, notes, RichTextBox1_->GetSize().x);
  if (notes == notes_->GetLabelText())
    return;
  notes_->SetLabelText(notes);
  const int height = dc.GetMultiLineTextExtent(notes).y;
  if (notes_->GetMinSize().y < height) {
    notes_->SetMinSize(wxSize(1, height));
    Layout();
  }
}

void chapter_window::complete_times() {
  const long at = RichTextBox1_->GetInsertionPoint();
  RichTextBox1_->SetValue(wx_text(completed_chapter_text(utf8_of(RichTextBox1_->GetValue()))));
  RichTextBox1_->SetInsertionPoint(std::min(at, RichTextBox1_->GetLastPosition()));
  RichTextBox1_->SetFocus();
}

// The editor opens with a message.
void chapter_window::edit_visually() {
  life_.during([this] {
    take_typed();
    vchapters editor(lent_.doc(), model_);
    editor_ = new chapters_editor_window(this, lent_.ask(), std::move(editor),
                                         [this] { editor_closed(); });
  });
}

void chapter_window::editor_closed() {
  const wxString text = wx_lines(model_.RichTextBox1());
  if (RichTextBox1_->GetValue() != text)
    RichTextBox1_->ChangeValue(text);
  show_fates();
  RichTextBox1_->SetFocus();
}

void chapter_window::accept() {
  bool accepted = false;
  const bool free = life_.during([&] {
    take_typed();
    accepted = model_.accept();
  });
  if (accepted)
    life_.leave();
  else if (free)
    RichTextBox1_->SetFocus();
}

bool chapter_window::may_close() {
  if (editor_ == nullptr)
    return true;
  editor_->Raise();
  return false;
}

}  // namespace corvane
