#include "ui/wx_prompts.h"

#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "ui/disc/findings_question_window.h"
#include "ui/widgets/file_filter.h"
#include "ui/widgets/open_text_file.h"
#include "ui/widgets/wx_text.h"

#include <wx/dirdlg.h>
#include <wx/filedlg.h>
#include <wx/msgdlg.h>
#include <wx/textdlg.h>
#include <wx/toplevel.h>

#include <utility>

#ifdef __WXGTK__
#include <gtk/gtk.h>
#endif

namespace corvane {
namespace {

#ifdef __WXGTK__
/// Lets a save dialog take the name of a folder, one that exists included, where the toolkit would
/// go into that folder instead. `name` is the name offered. To be called before it is shown. GTK
/// makes the folder when it is accepted.
void let_name_folder(wxFileDialog& dialog, const std::string& name) {
  auto* chooser = GTK_FILE_CHOOSER(dialog.GetHandle());
  gchar* folder = gtk_file_chooser_get_current_folder(chooser);
  gtk_file_chooser_set_action(chooser, GTK_FILE_CHOOSER_ACTION_CREATE_FOLDER);
  // A new action makes the dialog forget both.
  if (folder != nullptr)
    gtk_file_chooser_set_current_folder(chooser, folder);
  gtk_file_chooser_set_current_name(chooser, name.c_str());
  g_free(folder);
}
#else
void let_name_folder(wxFileDialog& /*dialog*/, const std::string& /*name*/) {}
#endif

long picture_style(icon picture) {
  switch (picture) {
    case icon::information:
      return wxICON_INFORMATION;
    case icon::exclamation:
      return wxICON_EXCLAMATION;
    case icon::critical:
      return wxICON_ERROR;
    case icon::none:
      break;
  }
  return wxICON_NONE;
}

/// A plain yes/no question guards something that cannot be undone (a file overwritten, a disc
/// replaced, a run stopped), so Enter answers No where the question does not say otherwise.
long button_style(const message_box& box) {
  switch (box.choice) {
    case buttons::ok_cancel:
      return wxOK | wxCANCEL | (box.enter_cancels ? wxCANCEL_DEFAULT : wxOK_DEFAULT);
    case buttons::yes_no:
      return wxYES_NO | (box.enter_answers_yes ? wxYES_DEFAULT : wxNO_DEFAULT);
    case buttons::yes_no_cancel:
      return wxYES_NO | wxCANCEL;
    case buttons::ok:
      break;
  }
  return wxOK;
}

answer answer_of(int id, buttons choice) {
  switch (id) {
    case wxID_OK:
      return answer::ok;
    case wxID_YES:
      return answer::yes;
    case wxID_NO:
      return answer::no;
    default:  // closed without a button
      return choice == buttons::ok ? answer::ok : answer::cancel;
  }
}

}  // namespace

wx_prompts::wx_prompts(wxWindow& owner, settings& prefs, std::string folder)
    : owner_(owner), folders_(prefs, std::move(folder)) {}

wxWindow* wx_prompts::parent() const {
  if (!askers_.empty())
    return askers_.back();
  wxWindow* active = wxGetTopLevelParent(wxGetActiveWindow());
  return active != nullptr && active->IsShown() && !active->IsBeingDeleted() ? active : &owner_;
}

/// The id of the button that ended the dialog.
int wx_prompts::show(wxDialog& dialog) {
  if (asking_stopped_)
    return wxID_CANCEL;
  ++asking_;
  const int id = dialog.ShowModal();
  --asking_;
  return id;
}

answer wx_prompts::message(const message_box& box) {
  wxMessageDialog dialog(parent(), wx_lines(box.text), wx_text(box.caption),
                         button_style(box) | picture_style(box.picture) | wxCENTRE);
  return answer_of(show(dialog), box.choice);
}

std::string wx_prompts::choose(const file_dialog& dialog, long style) {
  wxFileDialog chooser(parent(), wx_text(dialog.title), wx_text(folders_.folder_for(dialog)),
                       wx_text(dialog.preset), wx_text(toolkit_filter(dialog.filter)), style);
  if ((style & wxFD_SAVE) != 0 && dialog.filter.empty())  // no kind of file: it names a folder
    let_name_folder(chooser, dialog.preset);
  if (show(chooser) != wxID_OK)
    return {};
  std::string path = utf8_of(chooser.GetPath());
  if (path.empty())
    return path;
  path = absolute_path(path);
  folders_.left_at(dialog, path);
  return path;
}

std::string wx_prompts::open_file(const file_dialog& dialog) {
  return choose(dialog, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
}

std::string wx_prompts::save_file(const file_dialog& dialog) {
  return with_implied_extension(choose(dialog, wxFD_SAVE), dialog.filter);
}

std::vector<std::string> wx_prompts::open_files(const file_dialog& dialog) {
  wxFileDialog chooser(parent(), wx_text(dialog.title), wx_text(folders_.folder_for(dialog)),
                       wxString(), wx_text(toolkit_filter(dialog.filter)),
                       wxFD_OPEN | wxFD_FILE_MUST_EXIST | wxFD_MULTIPLE);
  std::vector<std::string> files;
  if (show(chooser) != wxID_OK)
    return files;
  wxArrayString paths;
  chooser.GetPaths(paths);
  for (const wxString& path : paths)
    files.push_back(absolute_path(utf8_of(path)));
  if (!files.empty())
    folders_.left_at(dialog, files.front());
  return files;
}

std::string wx_prompts::choose_folder(const std::string& title, const std::string& folder) {
  wxDirDialog chooser(parent(), wx_text(title), wx_text(folder), wxDD_DEFAULT_STYLE);
  if (show(chooser) != wxID_OK)
    return {};
  const std::string path = utf8_of(chooser.GetPath());
  return path.empty() ? path : absolute_path(path);
}

bool wx_prompts::go_on_despite(const findings_question& question) {
  findings_question_window window(
      parent(), question, [this](const finding& f) { return places_.has && places_.has(f); });
  const bool go_on = show(window) == wxID_OK;
  if (window.to_repair())
    places_.ask_for(*window.to_repair());
  return go_on;
}

std::string wx_prompts::folder_of_missing(const missing_question& missing) {
  const std::vector<std::string>& files = missing.files;
  wxString text;
  if (!missing.searched.empty())
    text = (missing.found == 0 ? wxString("None of them was found in ")
                               : wxString::Format("%zu were found in ", missing.found)) +
           wx_text(sanitized(missing.searched)) + ".\n\n";
  text +=
      files.size() == 1
          ? wxString("A file of the project is not where it was:\n\n")
          : wxString::Format("%zu files of the project are not where they were:\n\n", files.size());
  constexpr std::size_t most_named = 5;
  for (std::size_t i = 0; i < files.size() && i < most_named; ++i)
    text += wx_text(sanitized(files[i])) + "\n";
  if (files.size() > most_named)
    text += wxString::Format("and %zu more\n", files.size() - most_named);
  text +=
      "\nIf they were moved, choose the folder where they are now; it is searched with all "
      "folders in it.";
  wxMessageDialog question(parent(), text, "files have moved", wxYES_NO | wxICON_QUESTION);
  question.SetYesNoLabels("&choose folder...", "&leave them");
  if (show(question) != wxID_YES)
    return {};
  wxDirDialog folder(parent(), "the folder where the files are now", wx_text(folders_.last()),
                     wxDD_DEFAULT_STYLE | wxDD_DIR_MUST_EXIST);
  return show(folder) == wxID_OK ? utf8_of(folder.GetPath()) : std::string();
}

bool wx_prompts::show_text_file(const std::string& path) {
  const auto show_here = [show = show_text_, path] {
    if (show)
      show(path);
  };
  if (open_text_file(path, show_here))
    return true;
  show_here();
  return show_text_ != nullptr;
}

std::string wx_prompts::input(const input_box& box) {
  wxTextEntryDialog dialog(parent(), wx_lines(box.prompt), wx_text(box.title), wx_text(box.preset));
  return show(dialog) == wxID_OK ? utf8_of(dialog.GetValue()) : std::string();
}

}  // namespace corvane
