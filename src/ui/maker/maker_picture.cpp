#include "ui/maker/maker_picture.h"

#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/dcbuffer.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

int scaled_to(int length, int shown, int whole) {
  return static_cast<int>(std::lround(static_cast<double>(length) * shown / std::max(whole, 1)));
}

}  // namespace

maker_picture::maker_picture(wxWindow* parent, const menus_draft& draft, handlers on)
    : draft_(draft), on_(std::move(on)) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
         wxBORDER_NONE | wxFULL_REPAINT_ON_RESIZE | wxWANTS_CHARS | wxCLIP_CHILDREN);
  name_drawn_control(*this, "page", control_role::picture);
  SetMinSize(FromDIP(wxSize(layout::maker_page_width, layout::maker_page_height)));
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { on_paint(); });
  Bind(wxEVT_LEFT_DOWN, &maker_picture::on_down, this);
  Bind(wxEVT_LEFT_DCLICK, &maker_picture::on_double_click, this);
  Bind(wxEVT_KEY_DOWN, &maker_picture::on_key, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    event.Skip();
    place_field();
  });
  for (const auto& focus : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
    Bind(focus, [this](wxFocusEvent& event) {
      event.Skip();
      Refresh(false);
    });
}

void maker_picture::show_page(const wxImage& page) {
  shown_.show(page);
  Refresh(false);
}

void maker_picture::show_reason(const wxString& reason) {
  end_edit(false);
  shown_.tell(reason);
  Refresh(false);
}

// Places ------------------------------------------------------------------------------------------

wxSize maker_picture::shape() const {
  return draft_.chosen().is_wide ? wxSize(16, 9) : wxSize(4, 3);
}

wxRect maker_picture::shown_place() const {
  const wxSize room = GetClientSize();
  const wxSize ratio = shape();
  const int width = std::max(1, std::min(room.x, room.y * ratio.x / ratio.y));
  const int height = std::max(1, width * ratio.y / ratio.x);
  return {(room.x - width) / 2, (room.y - height) / 2, width, height};
}

wxRect maker_picture::on_window(const page_box& box) const {
  const wxRect whole = shown_place();
  if (draft_.page() == 0)
    return whole;
  const drawn_page& page = draft_.shown().page;
  const int left = scaled_to(box.left, whole.width, page.width);
  const int top = scaled_to(box.top, whole.height, page.height);
  return {whole.x + left, whole.y + top, scaled_to(box.right(), whole.width, page.width) - left,
          scaled_to(box.bottom(), whole.height, page.height) - top};
}

int maker_picture::item_under(const wxPoint& at) const {
  const wxRect whole = shown_place();
  if (draft_.page() == 0 || !whole.Contains(at))
    return wxNOT_FOUND;
  const drawn_page& page = draft_.shown().page;
  return draft_.item_at((at.x - whole.x) * page.width / whole.width,
                        (at.y - whole.y) * page.height / whole.height);
}

// Drawing -----------------------------------------------------------------------------------------

void maker_picture::on_paint() {
  wxAutoBufferedPaintDC paint(this);
  shown_.paint(paint, *this, shown_place());
  if (shown_.picture().IsOk())
    paint_selection(paint);
}

// The look of a button is in the page; what can be typed at has a dotted line around it.
void maker_picture::paint_selection(wxDC& dc) {
  if (field_ != nullptr || draft_.page() == 0)
    return;
  const wxRect around = on_window(draft_.place(draft_.selected())).Inflate(FromDIP(2));
  dc.SetBrush(*wxTRANSPARENT_BRUSH);
  dc.SetPen(wxPen(*wxBLACK, FromDIP(1)));
  dc.DrawRectangle(around);
  dc.SetPen(wxPen(HasFocus() ? *wxWHITE : wxColour(160, 160, 160), FromDIP(1), wxPENSTYLE_DOT));
  dc.DrawRectangle(around);
}

// Pointer and keys --------------------------------------------------------------------------------

void maker_picture::on_down(wxMouseEvent& event) {
  const int item = item_under(event.GetPosition());
  const bool was_selected = item == draft_.selected() && HasFocus() && !is_editing();
  end_edit(true);
  SetFocus();
  if (item == wxNOT_FOUND)
    return;
  on_.select(item);
  if (was_selected)
    edit(item);
}

void maker_picture::on_double_click(wxMouseEvent& event) {
  const int item = item_under(event.GetPosition());
  if (item != wxNOT_FOUND && !is_editing())
    edit(item);
}

void maker_picture::on_key(wxKeyEvent& event) {
  if (event.GetKeyCode() == WXK_TAB && !event.ControlDown() && !event.AltDown())
    Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                               : wxNavigationKeyEvent::IsForward);
  else if (event.HasAnyModifiers() || !do_key(event.GetKeyCode()))
    event.Skip();
}

bool maker_picture::do_key(int key) {
  switch (key) {
    case WXK_UP:
    case WXK_LEFT:
      on_.select(std::max(0, draft_.selected() - 1));
      return true;
    case WXK_DOWN:
    case WXK_RIGHT:
      on_.select(draft_.selected() + 1);
      return true;
    case WXK_HOME:
      on_.select(0);
      return true;
    case WXK_END:
      on_.select(draft_.items() - 1);
      return true;
    case WXK_PAGEUP:
      on_.turn(-1);
      return true;
    case WXK_PAGEDOWN:
      on_.turn(1);
      return true;
    case WXK_F2:
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
      edit(draft_.selected());
      return true;
    default:
      return false;
  }
}

// Editing -----------------------------------------------------------------------------------------

bool maker_picture::edit(int item) {
  end_edit(true);
  if (item < 0 || item >= draft_.items())
    return false;
  on_.select(item);
  edited_ = item;
  field_ = new wxTextCtrl(this, wxID_ANY, wx_text(draft_.text_of(item)), wxDefaultPosition,
                          wxDefaultSize, wxTE_PROCESS_ENTER | wxTE_PROCESS_TAB);
  name_control(*field_, "pagetext");
  field_->SetToolTip(
      "Enter takes the text, Tab goes on to the next one, Esc leaves it as it was; "
      "an empty one becomes what it was made of");
  field_->Bind(wxEVT_CHAR_HOOK, &maker_picture::on_field_key, this);
  // Once the focus is where it goes to: the field goes with it.
  field_->Bind(wxEVT_KILL_FOCUS, [this, field = field_](wxFocusEvent& event) {
    event.Skip();
    CallAfter([this, field] {
      if (field == field_ && !field->HasFocus())
        end_edit(true);
    });
  });
  place_field();
  field_->SelectAll();
  field_->SetFocus();
  Refresh(false);
  return true;
}

void maker_picture::place_field() {
  if (field_ == nullptr)
    return;
  const wxRect at = on_window(draft_.text_place(edited_));
  const int height = std::max(field_->GetBestSize().y, std::min(at.height, FromDIP(60)));
  const int width = std::max(at.width, FromDIP(140));
  const int left =
      std::clamp(at.x + (at.width - width) / 2, 0, std::max(0, GetClientSize().x - width));
  field_->SetSize(left, at.y + (at.height - height) / 2, width, height);
}

void maker_picture::end_edit(bool takes) {
  if (field_ == nullptr)
    return;
  wxTextCtrl* const field = std::exchange(field_, nullptr);
  const int item = std::exchange(edited_, -1);
  const std::string text = utf8_of(field->GetValue());
  const bool had_focus = field->HasFocus();
  field->Hide();
  // In the middle of its own event perhaps.
  CallAfter([field] { field->Destroy(); });
  if (had_focus)
    SetFocus();
  Refresh(false);
  if (takes)
    on_.set_text(item, text);
}

void maker_picture::on_field_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  const int item = edited_;
  if (key == WXK_RETURN || key == WXK_NUMPAD_ENTER) {
    end_edit(true);
  } else if (key == WXK_ESCAPE) {
    end_edit(false);
  } else if (key == WXK_TAB && !event.ControlDown()) {
    end_edit(true);
    edit((item + (event.ShiftDown() ? draft_.items() - 1 : 1)) % std::max(1, draft_.items()));
  } else {
    event.Skip();
  }
}

}  // namespace corvane
