// Controls as the windows have them: with a name, a tip, and the wheel that only passes.
//
// They belong to their parent. Names are as for name_control; a tip is told by the pointer that
// rests on the control.
#pragma once

#include <functional>
#include <string>
#include <vector>

class wxButton;
class wxChoice;
class wxSpinCtrl;
class wxWindow;

namespace corvane {

wxButton* make_button(wxWindow* parent, const char* name, const char* label, const char* tip,
                      std::function<void()> click);

/// A drop-down list of these entries (UTF-8), none of which is selected.
wxChoice* make_choice(wxWindow* parent, const char* name, const char* tip,
                      const std::vector<std::string>& entries);

/// A field for a whole number, which is the least at first.
wxSpinCtrl* make_spin(wxWindow* parent, const char* name, int least, int most, const char* tip);

}  // namespace corvane
