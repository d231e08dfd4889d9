#include "ui/menu_picture.h"

#include "ui/menu_drawing.h"

#include <wx/dcbuffer.h>
#include <wx/dcgraph.h>
#include <wx/dcmemory.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace corvane {
namespace {

const wxColour plain_background(52, 56, 64);

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
  dc.SetBackground(wxBrush(plain_background));
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

void menu_picture::draw_selected(wxDC& dc, const drawn& d) {
  if (d.bitmap && highlight_.IsOk()) {
    wxMemoryDC memory;
    memory.SelectObjectAsSource(highlight_);
    dc.StretchBlit(d.place.x, d.place.y, d.place.width, d.place.height, &memory, 0, 0,
                   highlight_.GetWidth(), highlight_.GetHeight());
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

outline_grip menu_picture::grip_under(wxPoint p) const {
  const std::optional<menu_rectangle> edges = editor_.outline();
  if (!edges)
    return {};
  return grip_at(shown_rectangle(scale().to_picture(*edges)), p, editor_.controls().sizes_enabled,
                 unit());
}

/// The faint button at `p`; lines of three pixels are met from a little way off.
int menu_picture::faint_under(wxPoint p) const {
  const menu_point at = scale().to_menu(p.x, p.y);
  const std::vector<faint_button> others = editor_.others();
  const int exact = editor_.button_at(at.x, at.y);
  const picture_scale to = scale();
  const auto near = std::find_if(others.rbegin(), others.rend(), [&](const faint_button& button) {
    return outline_near(shown_rectangle(to.to_picture(button.edges)), unit()).Contains(p);
  });
  return exact >= 0 || near == others.rend() ? exact : near->index;
}

/// The button that a click at `p` is about; -1: none. One that was just added lies over the one it
/// is a copy of, and is what the user means.
int menu_picture::button_under(wxPoint p) const {
  const menu_point at = scale().to_menu(p.x, p.y);
  const int chosen = editor_.controls().Combo2_index;
  for (const faint_button& button : editor_.others())
    if (button.index == chosen && button.edges.contains(at.x, at.y))
      return chosen;
  const std::optional<menu_rectangle> outlined = editor_.outline();
  if (outlined && grip_under(p).holds())
    return editor_.button_at(outlined->x0, outlined->y0);
  return faint_under(p);
}

bool menu_picture::is_outlined(int index) const {
  const std::vector<faint_button> others = editor_.others();
  return editor_.outline() &&
         std::none_of(others.begin(), others.end(),
                      [index](const faint_button& button) { return button.index == index; });
}

// A press on another button picks it, and the drag goes on with that one.
void menu_picture::on_down(wxMouseEvent& event) {
  SetFocus();
  const wxPoint p = event.GetPosition();
  const int index = button_under(p);
  if (index < 0 || HasCapture())
    return;
  if (index != editor_.controls().Combo2_index || !is_outlined(index))
    tell_([index](menu_editor& editor) { editor.choose(index); });
  const outline_grip grip = grip_under(p);
  const std::optional<menu_rectangle> edges = editor_.outline();
  if (!grip.holds() || !edges)
    return;
  drag_ = drag{grip, scale().to_menu(p.x, p.y), *edges};
  CaptureMouse();
}

void menu_picture::on_motion(wxMouseEvent& event) {
  if (drag_ && !event.LeftIsDown())
    end_drag();
  if (drag_) {
    drag_to(event.GetPosition());
    return;
  }
  const wxPoint p = event.GetPosition();
  const outline_grip grip = grip_under(p);
  if (grip.holds()) {
    SetCursor(cursor_of(grip));
    return;
  }
  SetCursor(faint_under(p) < 0 ? wxCURSOR_ARROW : wxCURSOR_HAND);
}

void menu_picture::drag_to(wxPoint p) {
  const drag d = *drag_;
  const menu_point at = scale().to_menu(p.x, p.y);
  const int dx = at.x - d.from.x;
  const int dy = at.y - d.from.y;
  if (d.grip.moves) {
    tell_([&](menu_editor& editor) { editor.move_to(d.edges.x0 + dx, d.edges.y0 + dy); });
    return;
  }
  const dragged_edges which{d.grip.left, d.grip.top, d.grip.right, d.grip.bottom};
  const int x = (d.grip.left ? d.edges.x0 : d.edges.x1) + dx;
  const int y = (d.grip.top ? d.edges.y0 : d.edges.y1) + dy;
  tell_([&](menu_editor& editor) { editor.drag_edges(which, x, y); });
}

void menu_picture::end_drag() {
  drag_.reset();
  if (HasCapture())
    ReleaseMouse();
}

void menu_picture::on_key(wxKeyEvent& event) {
  const int key = event.GetKeyCode();
  if (key == WXK_TAB) {
    Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward
                               : wxNavigationKeyEvent::IsForward);
    return;
  }
  const int dx = key == WXK_RIGHT ? 1 : key == WXK_LEFT ? -1 : 0;
  const int dy = key == WXK_DOWN ? 1 : key == WXK_UP ? -1 : 0;
  if ((dx == 0 && dy == 0) || (event.GetModifiers() & ~wxMOD_SHIFT) != 0) {
    event.Skip();
    return;
  }
  if (event.ShiftDown())
    tell_([dx, dy](menu_editor& editor) { editor.size_by(dx, dy); });
  else
    tell_([dx, dy](menu_editor& editor) { editor.move_by(dx, dy); });
}

}  // namespace corvane
