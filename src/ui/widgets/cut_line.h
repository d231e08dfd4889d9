// A line of text that asks for no room of its own: it is cut where its room ends, and all of it is
// its tip.
#pragma once

#include <string>

class wxStaticText;
class wxWindow;

namespace corvane {

wxStaticText* make_cut_line(wxWindow* parent, const char* name);

/// Shows a text (UTF-8) in it. One that it shows already is left alone.
void show_line(wxStaticText& line, const std::string& text);

}  // namespace corvane
