// A bar below a text in which the user types what to look for. Hidden until it is asked for.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <string>

class wxStaticText;
class wxTextCtrl;

namespace corvane {

class find_bar : public wxPanel {
 public:
  /// `find` looks for the words and gives whether they were found; `done` when the bar was left.
  find_bar(wxWindow* parent, std::function<bool(const std::string& words, bool backwards)> find,
           std::function<void()> done);

  /// Shows the bar, its words selected.
  void ask();

  /// Looks for the words that stand in it; asks for them when there are none.
  void find(bool backwards);

 private:
  void leave();

  std::function<bool(const std::string&, bool)> find_;
  std::function<void()> done_;
  wxTextCtrl* words_;
  wxStaticText* none_;
};

}  // namespace corvane
