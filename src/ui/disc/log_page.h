// The log of the last run as a page of the log window: to be searched and copied, lines of errors
// in colour.
#pragma once

#include <wx/panel.h>

#include <string>

class wxStaticText;
class wxTextCtrl;

namespace corvane {

class find_bar;

class log_page : public wxPanel {
 public:
  /// `file`: the log file's native path. Nothing is read yet.
  log_page(wxWindow* parent, std::string file);

  /// Reads the file, if it may have changed since it was shown, and shows its end.
  void show_log();

  /// It has been written anew.
  void has_changed() { shown_ = false; }

  /// Whether there is a log.
  bool has_log() const;

  void ask_what_to_find();
  void find_again(bool backwards);

 private:
  void fill();
  bool find(const std::string& words, bool backwards);
  void copy();

  std::string file_;
  bool shown_ = false;
  wxTextCtrl* text_;
  wxStaticText* about_;
  find_bar* find_;
};

}  // namespace corvane
