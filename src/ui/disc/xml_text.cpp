#include "ui/disc/xml_text.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/fixed_pitch.h"
#include "ui/widgets/wx_text.h"

#include <wx/settings.h>
#include <wx/stc/stc.h>

namespace corvane {
namespace {

constexpr int numbers_margin = 0, marks_margin = 1;
constexpr int indentation = 2;
constexpr int left_gap = 4;  // the caret at the start of a line stands apart from the numbers

struct colours {
  const char *tag, *attribute, *value, *comment, *entity;
};
constexpr colours on_light = {"#00479d", "#7a3e00", "#0b6e21", "#6e6e6e", "#9b1c6b"};
constexpr colours on_dark = {"#7db8ff", "#f0b47a", "#8fd694", "#9c9c9c", "#f29ad0"};

void set_colours(wxStyledTextCtrl& editor) {
  const wxColour background = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW);
  const wxColour text = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT);
  const colours& c = background.GetLuminance() > 0.5 ? on_light : on_dark;
  editor.StyleSetForeground(wxSTC_STYLE_DEFAULT, text);
  editor.StyleSetBackground(wxSTC_STYLE_DEFAULT, background);
  editor.StyleSetFont(wxSTC_STYLE_DEFAULT, fixed_pitch(editor.GetFont()));
  editor.StyleClearAll();
  editor.SetCaretForeground(text);
  const auto colour = [&editor](const char* name, std::initializer_list<int> styles) {
    for (const int style : styles)
      editor.StyleSetForeground(style, wxColour(name));
  };
  colour(c.tag,
         {wxSTC_H_TAG, wxSTC_H_TAGEND, wxSTC_H_TAGUNKNOWN, wxSTC_H_XMLSTART, wxSTC_H_XMLEND});
  colour(c.attribute, {wxSTC_H_ATTRIBUTE, wxSTC_H_ATTRIBUTEUNKNOWN, wxSTC_H_OTHER});
  colour(c.value, {wxSTC_H_DOUBLESTRING, wxSTC_H_SINGLESTRING, wxSTC_H_VALUE});
  colour(c.comment, {wxSTC_H_COMMENT, wxSTC_H_CDATA, wxSTC_STYLE_LINENUMBER});
  colour(c.entity, {wxSTC_H_ENTITY});
}

bool select(wxStyledTextCtrl& editor, int from, int to, const wxString& words) {
  editor.SetTargetRange(from, to);
  if (editor.SearchInTarget(words) < 0)
    return false;
  editor.SetSelection(editor.GetTargetStart(), editor.GetTargetEnd());
  editor.EnsureCaretVisible();
  return true;
}

}  // namespace

wxStyledTextCtrl* make_xml_text(wxWindow* parent) {
  auto* editor = new wxStyledTextCtrl(parent, wxID_ANY);
  name_control(*editor, "Text1");
  set_colours(*editor);
  editor->SetLexer(wxSTC_LEX_XML);
  editor->SetEOLMode(wxSTC_EOL_CRLF);
  editor->SetUseTabs(false);
  editor->SetTabWidth(indentation);
  editor->SetScrollWidth(1);
  editor->SetScrollWidthTracking(true);
  editor->SetMarginType(numbers_margin, wxSTC_MARGIN_NUMBER);
  editor->SetMarginWidth(numbers_margin, editor->TextWidth(wxSTC_STYLE_LINENUMBER, "_99999"));
  editor->SetMarginWidth(marks_margin, 0);
  editor->SetMarginLeft(editor->FromDIP(left_gap));
  return editor;
}

// By its length: a text may hold what would end it.
void fill_xml_text(wxStyledTextCtrl& editor, std::string_view text) {
  editor.ClearAll();
  editor.AddText(wx_text(text));
  editor.EmptyUndoBuffer();
  editor.SetSavePoint();
  editor.GotoPos(0);
}

// Its own bytes: as a string of the toolkit, a text of 100 megabytes would take four times that.
std::string text_of(wxStyledTextCtrl& editor) {
  const wxCharBuffer bytes = editor.GetTextRaw();
  return {bytes.data(), bytes.length()};
}

bool find_in(wxStyledTextCtrl& editor, const std::string& words, bool backwards) {
  const wxString sought = wx_text(words);
  if (sought.empty())
    return false;
  editor.SetSearchFlags(0);
  const int end = editor.GetLength();
  if (backwards)
    return select(editor, editor.GetSelectionStart(), 0, sought) || select(editor, end, 0, sought);
  return select(editor, editor.GetSelectionEnd(), end, sought) || select(editor, 0, end, sought);
}

}  // namespace corvane
