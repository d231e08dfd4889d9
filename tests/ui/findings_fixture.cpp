#include "ui/findings_fixture.h"

#include "platform/files/paths.h"
#include "project/subtitle_rows.h"
#include "ui/widgets/wx_text.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/dataview.h>
#include <wx/textctrl.h>

namespace corvane::testing_support {
namespace {

wxDataViewIconText severity_of(const wxDataViewListCtrl& list, int row) {
  wxVariant value;
  list.GetStore()->GetValueByRow(value, static_cast<unsigned>(row), 0);
  wxDataViewIconText severity;
  severity << value;
  return severity;
}

wxString text_of(const wxDataViewListCtrl& list, int row, unsigned column) {
  return list.GetTextValue(static_cast<unsigned>(row), column);
}

wxDataViewListCtrl& list_in(const std::string& window) {
  return *dynamic_cast<wxDataViewListCtrl*>(control("findingslist", window));
}

std::vector<std::string> rows_in(const std::string& window) {
  return ask_ui([&] {
    const wxDataViewListCtrl& list = list_in(window);
    std::vector<std::string> all;
    for (int row = 0; row < list.GetItemCount(); ++row) {
      const wxDataViewIconText severity = severity_of(list, row);
      EXPECT_TRUE(severity.GetBitmapBundle().IsOk());
      all.push_back(
          utf8_of(severity.GetText() + "|" + text_of(list, row, 1) + "|" + text_of(list, row, 2)));
    }
    return all;
  });
}

}  // namespace

void answer_findings(const std::vector<std::string>& rows, const std::string& button) {
  ASSERT_TRUE(window_comes(findings_question_name));
  EXPECT_EQ(rows_in(findings_question_name), rows);
  click_button(button);
  EXPECT_TRUE(window_goes(findings_question_name));
}

wxDataViewListCtrl& findings_test::list(const std::string& window) {
  return list_in(window);
}

bool findings_test::lists(const std::string& text) {
  for (int row = 0; row < list().GetItemCount(); ++row)
    if (severity_of(list(), row).GetText().StartsWith(text) ||
        text_of(list(), row, 1).StartsWith(text) || text_of(list(), row, 2).StartsWith(text))
      return true;
  return false;
}

std::vector<std::string> findings_test::shown_rows(const std::string& window) {
  return rows_in(window);
}

int findings_test::selected_row(const std::string& window) {
  return ask_ui([&] { return list_in(window).GetSelectedRow(); });
}

wxPoint findings_test::middle_of_row(int row, const std::string& window) {
  return ask_ui([&] {
    wxDataViewListCtrl& list = list_in(window);
    const wxRect place = list.GetItemRect(list.RowToItem(row), list.GetColumn(1));
    return list.ClientToScreen(wxPoint(place.x + 20, place.y + place.height / 2));
  });
}

std::string findings_test::details(const std::string& window) {
  return ask_ui(
      [&] { return utf8_of(dynamic_cast<wxTextCtrl*>(control("details", window))->GetValue()); });
}

bool findings_test::is_enabled(const std::string& name, const std::string& window) {
  return ask_ui([&] { return control(name, window)->IsEnabled(); });
}

bool findings_test::is_shown(const std::string& name, const std::string& window) {
  return ask_ui([&] { return control(name, window)->IsShownOnScreen(); });
}

bool findings_test::has_focus(const std::string& name, const std::string& window) {
  return wait_until([&] { return control(name, window)->HasFocus(); });
}

std::string findings_test::clipboard() {
  return ask_ui([] {
    const wxClipboardLocker open;
    wxTextDataObject text;
    wxTheClipboard->GetData(text);
    return utf8_of(text.GetText());
  });
}

bool findings_test::is_active(const std::string& name) {
  return wait_until([&] {
    auto* window = dynamic_cast<wxTopLevelWindow*>(wxWindow::FindWindowByName(name));
    return window != nullptr && window->IsActive();
  });
}

project findings_test::one_title(const std::string& video, const std::string& audio) {
  project p;
  add_title_to(p, video, audio);
  return p;
}

void findings_test::add_title_to(project& p, const std::string& video, const std::string& audio) {
  p.List11.push_back(stored_from_native(video) + "/" + stored_from_native(audio));
  p.chapters.emplace_back("00:00:00.00");
  p.delay.emplace_back("0");
  p.subtitledata.emplace_back("<none>");
  p.subtitleoptions.push_back(default_subtitleoptions("NTSC"));
  rebuild_List1(p);
}

}  // namespace corvane::testing_support
