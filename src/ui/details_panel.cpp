#include "ui/details_panel.h"

#include "examine/item_summary.h"
#include "formats/sanitized.h"
#include "ui/first_pictures.h"
#include "ui/video/video_picture.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/wx_text.h"

#include <wx/textctrl.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace corvane {
namespace {

// Of each line, and of what is wrapped; in tenths of a millimetre.
constexpr int indent = 15, further_indent = 30;

/// The text with the places of what stands out in it, from and to.
struct styled_text {
  wxString text;
  std::vector<std::pair<long, long>> bold;

  void add(const wxString& piece) { text += piece; }
  void add_bold(const wxString& piece) {
    const auto from = static_cast<long>(text.length());
    text += piece;
    bold.emplace_back(from, static_cast<long>(text.length()));
  }
};

styled_text text_of(const item_summary& item) {
  styled_text all;
  all.add_bold(wx_text(item.heading));
  for (const summary_line& line : item.lines) {
    all.add("\n");
    if (!line.name.empty()) {
      all.add_bold(wx_text(line.name));
      all.add(": ");
    }
    all.add(wx_text(sanitized(line.text)));
  }
  return all;
}

}  // namespace

details_panel::details_panel(wxWindow* parent)
    : wxPanel(parent), picture_(new video_picture(this)) {
  name_control(*this, "itempanel");
  name_drawn_control(*picture_, "itempicture", control_role::picture);
  picture_->Hide();
  text_ = new wxTextCtrl(this, wxID_ANY, wxString(), wxDefaultPosition, wxDefaultSize,
                         wxTE_MULTILINE | wxTE_READONLY | wxTE_RICH2);
  name_control(*text_, "itemdetails");
  SetMinSize(wxSize(1, 1));
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    place();
    event.Skip();
  });
}

/// The picture as wide as there is room, but never more than its part of the height.
void details_panel::place() {
  const wxSize room = GetClientSize();
  int top = 0;
  if (picture_->IsShown()) {
    const int most = room.y * layout::details_picture_percent / 100;
    wxSize size(room.x, room.x * proportions_.y / proportions_.x);
    if (size.y > most)
      size = wxSize(most * proportions_.x / proportions_.y, most);
    picture_->SetSize(wxRect(wxPoint((room.x - size.x) / 2, 0), size));
    top = size.y + FromDIP(layout::control_gap);
  }
  text_->SetSize(0, top, room.x, std::max(1, room.y - top));
}

void details_panel::show(const item_summary& item) {
  const styled_text all = text_of(item);
  if (all.text == shown_)
    return;  // setting it anew would lose the place that is read
  shown_ = all.text;
  text_->ChangeValue(all.text);
  wxTextAttr indented;
  indented.SetLeftIndent(indent, further_indent);
  text_->SetStyle(0, text_->GetLastPosition(), indented);
  wxTextAttr bold;
  bold.SetFont(text_->GetFont().Bold());
  for (const auto& [from, to] : all.bold)
    text_->SetStyle(from, to, bold);
  text_->SetInsertionPoint(0);
  text_->ShowPosition(0);
}

void details_panel::set_picture_shown(bool shown) {
  picture_->Show(shown);
  place();
}

void details_panel::show_picture(const first_picture& picture) {
  if (picture.image.IsOk()) {
    proportions_ = picture.proportions;
    picture_->set_full_size(proportions_);
    picture_->show_picture(picture.image);
  }
  set_picture_shown(picture.image.IsOk());
}

void details_panel::await_picture() {
  picture_->show_reason(wxString());
}

}  // namespace corvane
