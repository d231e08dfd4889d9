#include "ui/editor/menu_button_list.h"

#include "formats/text.h"
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/offered_colours.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/text_column.h"
#include "ui/widgets/wx_text.h"

#include <wx/dataview.h>
#include <wx/dcmemory.h>
#include <wx/sizer.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace corvane {
namespace {

// In pixels at 100 %.
constexpr int swatch_width = 20, swatch_height = 12;
constexpr int least_list_height = 110;
constexpr int number_width = 48, look_width = 64, action_width = 128, place_width = 132;
constexpr int most_more_look = 90;
constexpr unsigned number_column = 0, look_column = 1, action_column = 2, place_column = 3;

wxColour offered_colour_named(const std::string& name) {
  const auto found = std::find_if(offered_colours.begin(), offered_colours.end(),
                                  [&name](const offered_colour& c) { return name == c.name; });
  return found == offered_colours.end() ? *wxBLACK
                                        : wxColour(found->red, found->green, found->blue);
}

/// Both colours beside each other; of bitmaps none.
wxBitmap swatch_of(const std::string& highlight, const std::string& select, const wxWindow& on) {
  wxBitmap bitmap;
  const wxSize size = on.FromDIP(wxSize(swatch_width, swatch_height));
  bitmap.Create(size);
  wxMemoryDC dc(bitmap);
  dc.SetPen(*wxGREY_PEN);
  int left = 0;
  for (const std::string& look : {highlight, select}) {
    dc.SetBrush(is_bitmap(look) ? *wxGREY_BRUSH : wxBrush(offered_colour_named(look)));
    dc.DrawRectangle(left, 0, size.x / 2, size.y);
    left += size.x / 2;
  }
  dc.SelectObject(wxNullBitmap);
  return bitmap;
}

std::string look_text(const std::string& look) {
  return is_bitmap(look) ? std::string(file_name_of(look)) : look;
}

/// "100, 60  200 x 40": where and how large.
std::string place_of_record(const std::string& record) {
  const menu_rectangle r = edges_of(record);
  const auto text = [](int number) { return std::to_string(number); };
  return text(r.x0) + ", " + text(r.y0) + "  " + text(r.x1 - r.x0) + " x " + text(r.y1 - r.y0);
}

}  // namespace

menu_button_list::menu_button_list(wxWindow* parent, tell_event tell, words_of_action words)
    : wxPanel(parent),
      tell_(std::move(tell)),
      words_(std::move(words)),
      list_(new wxDataViewListCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                   wxDV_MULTIPLE | wxDV_ROW_LINES)) {
  name_control(*list_, "buttonlist");
  list_->SetToolTip(
      "the menu's buttons: Ctrl or Shift selects several, dragging them or Ctrl+Up and Ctrl+Down "
      "changes their order, Delete removes them");
  make_columns();
  list_->SetMinSize(FromDIP(wxSize(layout::list_height, least_list_height)));
  bind_list();
  auto* whole = new wxBoxSizer(wxVERTICAL);
  whole->Add(list_, wxSizerFlags(1).Expand());
  SetSizer(whole);
}

void menu_button_list::make_columns() {
  list_->AppendColumn(
      new wxDataViewColumn("", new wxDataViewIconTextRenderer, number_column, FromDIP(number_width),
                           wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE),
      wxDataViewIconTextRenderer::GetDefaultType());
  list_->AppendColumn(text_column("look", look_column, FromDIP(look_width)));
  list_->AppendColumn(text_column("action", action_column, FromDIP(action_width)));
  list_->AppendColumn(text_column("place", place_column, FromDIP(place_width)));
}

/// What there is more than they need goes to the words of the buttons' looks and actions.
void menu_button_list::share_width(int width) {
  const int more = width - FromDIP(number_width + look_width + action_width + place_width);
  const int of_look = std::clamp(more / 3, 0, FromDIP(most_more_look));
  list_->GetColumn(look_column)->SetWidth(FromDIP(look_width) + of_look);
  list_->GetColumn(action_column)
      ->SetWidth(FromDIP(action_width) + std::max(0, more / 2 - of_look / 2));
}

void menu_button_list::bind_list() {
  list_->Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    if (event.GetSize().x != width_shared_)
      share_width(width_shared_ = event.GetSize().x);
    event.Skip();
  });
  list_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) {
    if (!filling_)
      CallAfter([this] { tell_selection(); });
  });
  list_->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent& event) {
    const int row = list_->ItemToRow(event.GetItem());
    CallAfter([this, row] { tell_([row](menu_editor& editor) { editor.choose(row); }); });
  });
  const auto choose = [this](int row) {
    CallAfter([this, row] { tell_([row](menu_editor& editor) { editor.choose(row); }); });
  };
  const auto move = [this](int row) { CallAfter([this, row] { move_selected_before(row); }); };
  drag_.emplace(*list_, menu_row_drag::wishes{choose, move});
}

// What was pressed may not have been told yet, and a button that was just added is not selected.
void menu_button_list::move_selected_before(int row) {
  tell_selection();
  tell_([row](menu_editor& editor) {
    if (!editor.selected().empty())
      editor.move_before(row);
  });
}

wxWindow& menu_button_list::list() {
  return *list_;
}

bool menu_button_list::has_keyboard() const {
  const wxWindow* focus = FindFocus();
  return focus != nullptr && (focus == list_ || focus->GetParent() == list_);
}

bool menu_button_list::give_up_drag() {
  const bool was_on = drag_->is_on();
  drag_->give_up();
  return was_on;
}

bool menu_button_list::use_key(int key, int modifiers) {
  if (drag_->is_on())
    return true;
  if ((key == WXK_DELETE || key == WXK_NUMPAD_DELETE) && modifiers == wxMOD_NONE)
    tell_(&menu_editor::delete_selected);
  else if (key == WXK_UP && modifiers == wxMOD_CONTROL)
    tell_(&menu_editor::move_up);
  else if (key == WXK_DOWN && modifiers == wxMOD_CONTROL)
    tell_(&menu_editor::move_down);
  else
    return false;
  return true;
}

void menu_button_list::show(const menu_editor& editor) {
  std::vector<shown_row> rows;
  for (const std::string& record : editor.controls().List1) {
    const button_record b = parse_button(record);
    rows.push_back({b.highlight, b.select, words_(command_of(b.action)), place_of_record(record)});
  }
  filling_ = true;
  while (rows_.size() > rows.size()) {
    list_->DeleteItem(static_cast<unsigned>(rows_.size()) - 1);
    rows_.pop_back();
  }
  for (std::size_t i = 0; i < rows.size(); ++i)
    if (i >= rows_.size() || rows_[i] != rows[i])
      show_row(static_cast<unsigned>(i), rows[i]);
  rows_ = std::move(rows);
  show_selection(editor.shows_another() ? std::vector<int>() : editor.selected());
  filling_ = false;
}

void menu_button_list::show_row(unsigned number, const shown_row& r) {
  wxVariant first;
  first << wxDataViewIconText(wxString::Format("%u", number + 1),
                              swatch_of(r.highlight, r.select, *this));
  wxString looks = wx_text(look_text(r.highlight));
  if (r.select != r.highlight)
    looks += ", " + wx_text(look_text(r.select));
  if (number >= rows_.size()) {
    wxVector<wxVariant> cells;
    cells.push_back(first);
    cells.push_back(looks);
    cells.push_back(wx_text(r.action));
    cells.push_back(wx_text(r.place));
    list_->AppendItem(cells);
    rows_.push_back(r);
    return;
  }
  list_->SetValue(first, number, number_column);
  list_->SetTextValue(looks, number, look_column);
  list_->SetTextValue(wx_text(r.action), number, action_column);
  list_->SetTextValue(wx_text(r.place), number, place_column);
}

std::vector<int> menu_button_list::selected_rows() const {
  wxDataViewItemArray items;
  list_->GetSelections(items);
  std::vector<int> rows;
  std::transform(items.begin(), items.end(), std::back_inserter(rows),
                 [this](const wxDataViewItem& item) { return list_->ItemToRow(item); });
  std::sort(rows.begin(), rows.end());
  return rows;
}

void menu_button_list::show_selection(const std::vector<int>& wanted) {
  if (selected_rows() == wanted)
    return;
  list_->UnselectAll();
  for (const int row : wanted)
    list_->SelectRow(static_cast<unsigned>(row));
  if (!wanted.empty() && !has_keyboard())
    list_->EnsureVisible(list_->RowToItem(wanted.back()));
}

void menu_button_list::tell_selection() {
  const std::vector<int> rows = selected_rows();
  const wxDataViewItem current = list_->GetCurrentItem();
  const int chosen = current.IsOk() ? list_->ItemToRow(current) : -1;
  tell_([rows, chosen](menu_editor& editor) {
    if (rows != editor.selected() || editor.shows_another())
      editor.select(rows, chosen);
  });
}

}  // namespace corvane
