#include "ui/editor/menu_picture.h"

#include "ui/editor/menu_drawing.h"

#include <wx/dcbuffer.h>
#include <wx/dcgraph.h>
#include <wx/dcmemory.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <utility>

namespace corvane {
namespace {

bool same(const std::vector<faint_button>& a, const std::vector<faint_button>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](const faint_button& x, const faint_button& y) {
                      return x.index == y.index && x.edges == y.edges;
                    });
}

}  // namespace

menu_picture::menu_picture(wxWindow* parent, const menu_editor& editor, tell_event tell)
    : editor_(editor), tell_(std::move(tell)) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxBORDER_NONE);
  Bind(wxEVT_PAINT, &menu_picture::on_paint, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    base_ = wxBitmap();
    Refresh(false);
    event.Skip();
  });
  Bind(wxEVT_LEFT_DOWN, &menu_picture::on_down, this);
  Bind(wxEVT_LEFT_DCLICK, &menu_picture::on_down, this);
  Bind(wxEVT_MOTION, &menu_picture::on_motion, this);
  Bind(wxEVT_LEFT_UP, [this](wxMouseEvent&) { end_drag(); });
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { drag_.reset(); });
  Bind(wxEVT_KEY_DOWN, &menu_picture::on_key, this);
  for (const auto& type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
    Bind(type, [this](wxFocusEvent& event) {
      CallAfter([this] { show_buttons(); });
      event.Skip();
    });
}

void menu_picture::show_picture(const wxImage& picture) {
  picture_ = wxBitmap(picture);
  reason_.clear();
  base_ = wxBitmap();
  Refresh(false);
}

void menu_picture::show_reason(const wxString& reason) {
  picture_ = wxBitmap();
  reason_ = reason;
  base_ = wxBitmap();
  Refresh(false);
}

void menu_picture::show_look(const wxBitmap& highlight) {
  if (highlight_.IsSameAs(highlight))
    return;
  highlight_ = highlight;
  scaled_look_ = wxBitmap();
  Refresh(false);
}

picture_scale menu_picture::scale() const {
  const wxSize size = GetClientSize();
  return {size.x, size.y, editor_.ymax()};
}

int menu_picture::unit() const {
  return std::max(1, FromDIP(1));
}

std::optional<menu_picture::drawn> menu_picture::now() const {
  const std::optional<menu_rectangle> edges = editor_.outline();
  if (!edges)
    return std::nullopt;
  const menu_editor_controls& c = editor_.controls();
  drawn d;
  d.place = shown_rectangle(scale().to_picture(*edges));
  d.bitmap = c.bitmap_mode;
  d.colour = c.Colorhighlight;
  d.framed = edges->y1 - edges->y0 > 3;
  d.line = std::max(
      1, static_cast<int>(std::lround((c.thickness.value + 1) * (GetClientSize().x / 720.0))));
  d.sizes = c.sizes_enabled;
  d.focused = HasFocus();
  return d;
}

// While a button is dragged only the places where it was and where it is are drawn anew.
void menu_picture::show_buttons() {
  if (!same(editor_.others(), composed_)) {
    base_ = wxBitmap();
    Refresh(false);
  }
  const std::optional<drawn> next = now();
  if (next == drawn_)
    return;
  for (const std::optional<drawn>& d : {drawn_, next})
    if (d)
      RefreshRect(outline_extent(d->place, unit()), false);
  drawn_ = next;
}

void menu_picture::compose() {
  const wxSize size = GetClientSize();
  base_.CreateScaled(size.x, size.y, wxBITMAP_SCREEN_DEPTH, GetContentScaleFactor());
  wxMemoryDC memory(base_);
  wxGCDC dc(memory);
  dc.SetBackground(wxBrush(wxColour(52, 56, 64)));
  dc.Clear();
  if (picture_.IsOk())
    dc.GetGraphicsContext()->DrawBitmap(picture_, 0, 0, size.x, size.y);
  else
    paint_reason(dc);
  paint_others(dc);
}

void menu_picture::paint_reason(wxDC& dc) {
  dc.SetFont(GetFont());
  dc.SetTextForeground(wxColour(230, 230, 230));
  dc.DrawLabel(reason_, wxRect(GetClientSize()).Deflate(FromDIP(20)), wxALIGN_CENTRE);
}

void menu_picture::paint_others(wxDC& dc) {
  composed_ = editor_.others();
  dc.SetFont(GetFont().Smaller());
  const picture_scale to = scale();
  for (const faint_button& button : composed_)
    draw_faint(dc, shown_rectangle(to.to_picture(button.edges)), button.index + 1, GetClientSize(),
               unit());
}

/// The highlight bitmap in the size in which it is drawn.
const wxBitmap& menu_picture::look_for(wxSize size) {
  const wxSize own = highlight_.GetSize();
  if (std::abs(own.x - size.x) <= 1 && std::abs(own.y - size.y) <= 1)
    return highlight_;  // 719 menu pixels are 720 of the picture: a matter of rounding
  if (!scaled_look_.IsOk() || scaled_look_.GetSize() != size)
    scaled_look_ = wxBitmap(highlight_.ConvertToImage().Scale(size.x, size.y));
  return scaled_look_;
}

void menu_picture::draw_selected(wxDC& dc, const drawn& d) {
  if (d.bitmap && highlight_.IsOk()) {
    dc.DrawBitmap(look_for(d.place.GetSize()), d.place.GetTopLeft(), true);
  } else if (!d.bitmap) {
    // The disc's button ends two pixels before the right edge of its record, one before the lower.
    wxRect place = d.place;
    place.width = std::max(1, place.width - unit());
    draw_look(dc, place, {button_colour(d.colour), d.framed, d.line});
  }
  draw_outline(dc, d.place, {d.sizes, d.focused, unit()});
}

void menu_picture::on_paint(wxPaintEvent& /*event*/) {
  wxAutoBufferedPaintDC dc(this);
  const wxSize size = GetClientSize();
  if (size.x <= 0 || size.y <= 0)
    return;
  if (!base_.IsOk())
    compose();
  dc.DrawBitmap(base_, 0, 0);
  drawn_ = now();
  if (drawn_)
    draw_selected(dc, *drawn_);
}

}  // namespace corvane
