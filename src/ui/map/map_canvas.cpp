#include "ui/map/map_canvas.h"

#include "ui/widgets/control_name.h"

#include <wx/dcbuffer.h>
#include <wx/graphics.h>
#include <wx/settings.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <iterator>
#include <memory>
#include <utility>

namespace corvane {
namespace {

constexpr double least_zoom = 0.1, most_zoom = 4, first_least_zoom = 0.75;
constexpr double zoom_step = 1.2;
constexpr int key_step = 60, far_steps = 5, wheel_step = 60;
constexpr int drag_begins = 4;  // pixels; less is a click
constexpr int drag_edge = 24;   // within it a dragged arrow moves the map
constexpr double sight_margin = 16;

bool is_dark() {
  return wxSystemSettings::GetAppearance().IsUsingDarkBackground();
}

}  // namespace

map_canvas::map_canvas(wxWindow* parent, handlers on) : on_(std::move(on)) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);  // all of it is drawn, in one go
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
         wxWANTS_CHARS | wxBORDER_THEME | wxFULL_REPAINT_ON_RESIZE);
  name_drawn_control(*this, "map", control_role::picture);
  Bind(wxEVT_PAINT, [this](wxPaintEvent&) { on_paint(); });
  Bind(wxEVT_KEY_DOWN, &map_canvas::on_key, this);
  Bind(wxEVT_LEFT_DOWN, &map_canvas::on_left_down, this);
  Bind(wxEVT_LEFT_DCLICK, &map_canvas::on_double_click, this);
  Bind(wxEVT_LEFT_UP, &map_canvas::on_left_up, this);
  Bind(wxEVT_MOTION, &map_canvas::on_motion, this);
  Bind(wxEVT_RIGHT_DOWN, &map_canvas::on_right_down, this);
  Bind(wxEVT_MOUSEWHEEL, &map_canvas::on_wheel, this);
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { end_drag(); });
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    if (!is_placed_)
      fit();
    event.Skip();
  });
  for (const auto& type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
    Bind(type, [this](wxFocusEvent& event) {
      highlight_.has_keys = event.GetEventType() == wxEVT_SET_FOCUS;
      Refresh(false);
      event.Skip();
    });
}

// The window may close in the middle of a drag.
map_canvas::~map_canvas() {
  if (HasCapture())
    ReleaseMouse();
}

// What is shown ----------------------------------------------------------------------------------

void map_canvas::show_map(drawn_map map) {
  const map_card* const card = selected_card();
  const std::optional<map_place> place = card ? std::optional(card->place) : std::nullopt;
  const bool is_new = map.layout != map_.layout;
  map_ = std::move(map);
  if (is_new)
    end_drag();
  const std::optional<std::size_t> node = place ? index_of(*place) : std::nullopt;
  highlight_.node = node ? node : map_.cards.empty() ? std::nullopt : std::optional<std::size_t>(0);
  highlight_.exit = node ? std::min(highlight_.exit, exits_of(*node)) : 0;
  if (!is_placed_)
    fit();
  keep_in_sight();
  Refresh(false);
  on_.selected();
}

const map_card* map_canvas::selected_card() const {
  return highlight_.node && *highlight_.node < map_.cards.size() ? &map_.cards[*highlight_.node]
                                                                 : nullptr;
}

std::optional<std::size_t> map_canvas::index_of(const map_place& place) const {
  const auto found = std::find_if(map_.cards.begin(), map_.cards.end(),
                                  [&place](const map_card& card) { return card.place == place; });
  return found == map_.cards.end()
             ? std::nullopt
             : std::optional(static_cast<std::size_t>(found - map_.cards.begin()));
}

int map_canvas::exits_of(std::size_t node) const {
  return static_cast<int>(std::ssize(map_.cards[node].rows));
}

void map_canvas::select(const map_place& place, int exit) {
  if (const auto node = index_of(place))
    select_node(node, std::min(exit, exits_of(*node)));
}

void map_canvas::select_node(std::optional<std::size_t> node, int exit) {
  highlight_.node = node;
  highlight_.exit = exit;
  if (node)
    see(*node);
  Refresh(false);
  on_.selected();
}

bool map_canvas::find(const std::string& words, bool behind) {
  highlight_.words = words;
  Refresh(false);
  if (words.empty() || map_.layout.order.empty())
    return true;
  const auto at =
      std::find(map_.layout.order.begin(), map_.layout.order.end(), highlight_.node.value_or(0));
  const auto first = static_cast<std::size_t>(at - map_.layout.order.begin()) + (behind ? 1 : 0);
  for (std::size_t i = 0; i < map_.layout.order.size(); ++i) {
    const std::size_t node = map_.layout.order[(first + i) % map_.layout.order.size()];
    if (holds_text(map_.cards[node], words)) {
      select_node(node, 0);
      return true;
    }
  }
  return false;
}

// Drawing ----------------------------------------------------------------------------------------

/// Pixels of the window for a unit of the layout.
double map_canvas::scale() const {
  constexpr int many = 1000;
  return zoom_ * FromDIP(many) / many;
}

void map_canvas::on_paint() {
  wxAutoBufferedPaintDC paint(this);
  const map_colours colours = is_dark() ? dark_map_colours() : map_colours();
  paint.SetBackground(wxBrush(wxColour(colours.paper)));
  paint.Clear();
  const std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::Create(paint));
  if (!gc)
    return;
  gc->Scale(scale(), scale());
  gc->Translate(-origin_.x, -origin_.y);
  const wxSize size = GetClientSize();
  draw_map(*gc, map_, colours, highlight_,
           {origin_.x, origin_.y, size.x / scale(), size.y / scale()});
  if (drag_ != drag::arrow || !has_moved_ || !pressed_on_.node)
    return;
  const map_card& from = map_.cards[*pressed_on_.node];
  const map_point begin =
      exit_point(map_.layout.boxes[*pressed_on_.node], from.place, pressed_on_.exit);
  const map_point end = on_map(dragged_to_);
  gc->SetPen(gc->CreatePen(wxGraphicsPenInfo(wxColour(colours.button_arrow))
                               .Width(2 / zoom_)
                               .Style(wxPENSTYLE_SHORT_DASH)));
  gc->StrokeLine(begin.x, begin.y, end.x, end.y);
}

// Place and size ---------------------------------------------------------------------------------

wxPoint map_canvas::middle() const {
  return {GetClientSize().x / 2, GetClientSize().y / 2};
}

map_point map_canvas::on_map(const wxPoint& pointer) const {
  return {origin_.x + pointer.x / scale(), origin_.y + pointer.y / scale()};
}

wxPoint map_canvas::place_on_window(const map_place& place, int exit) const {
  const auto node = index_of(place);
  if (!node)
    return {};
  const map_box& box = map_.layout.boxes[*node];
  const double head = place.what == map_place::kind::first_play ? map_measures::first_play_head
                                                                : map_measures::head;
  const double y = box.y + (exit > 0 ? exit_height(place, exit) : head / 2);
  return {static_cast<int>(std::lround((box.x + box.width / 2 - origin_.x) * scale())),
          static_cast<int>(std::lround((y - origin_.y) * scale()))};
}

double map_canvas::fitting_zoom() const {
  const wxSize size = GetClientSize();
  if (map_.layout.width <= 0 || map_.layout.height <= 0)
    return 1;
  const double at_one = scale() / zoom_;
  return std::clamp(std::min(size.x / map_.layout.width, size.y / map_.layout.height) / at_one,
                    least_zoom, 1.0);
}

// The first time a large map is shown in a size that can be read, from its beginning.
void map_canvas::fit() {
  const bool first = !is_placed_;
  zoom_ = first ? std::max(fitting_zoom(), first_least_zoom) : fitting_zoom();
  is_placed_ = !first || (IsShownOnScreen() && !map_.cards.empty());
  origin_ = {0, first && !map_.layout.boxes.empty()
                    ? map_.layout.boxes.front().y - GetClientSize().y / scale() / 2
                    : 0};
  keep_in_sight();
  Refresh(false);
  on_.zoomed();
}

void map_canvas::zoom_by(double factor) {
  set_zoom(zoom_ * factor, middle());
}

/// What is at this place of the window stays there.
void map_canvas::set_zoom(double zoom, const wxPoint& around) {
  const map_point at = on_map(around);
  zoom_ = std::clamp(zoom, least_zoom, most_zoom);
  origin_ = {at.x - around.x / scale(), at.y - around.y / scale()};
  is_placed_ = true;
  keep_in_sight();
  Refresh(false);
  on_.zoomed();
}

void map_canvas::pan(double dx, double dy) {
  origin_.x += dx / scale();
  origin_.y += dy / scale();
  is_placed_ = true;
  keep_in_sight();
  Refresh(false);
}

/// A map that is smaller than the window stands in its middle; a larger one fills it.
void map_canvas::keep_in_sight() {
  const auto kept = [](double origin, double room, double length) {
    return length <= room ? (length - room) / 2 : std::clamp(origin, 0.0, length - room);
  };
  origin_.x = kept(origin_.x, GetClientSize().x / scale(), map_.layout.width);
  origin_.y = kept(origin_.y, GetClientSize().y / scale(), map_.layout.height);
}

void map_canvas::see(std::size_t node) {
  const map_box& box = map_.layout.boxes[node];
  const auto seen = [](double origin, double room, double from, double length) {
    const double latest = from - sight_margin;
    const double earliest = std::min(latest, from + length + sight_margin - room);
    return std::clamp(origin, earliest, std::max(earliest, latest));
  };
  origin_.x = seen(origin_.x, GetClientSize().x / scale(), box.x, box.width);
  origin_.y = seen(origin_.y, GetClientSize().y / scale(), box.y, box.height);
  keep_in_sight();
}

// Keys -------------------------------------------------------------------------------------------

void map_canvas::on_key(wxKeyEvent& event) {
  if (event.AltDown() || !do_key(event.GetKeyCode(), event.ControlDown(), event.ShiftDown()))
    event.Skip();
}

bool map_canvas::do_key(int key, bool control, bool shift) {
  const int step = FromDIP(key_step) * (shift ? far_steps : 1);
  const map_card* const card = selected_card();
  switch (key) {
    case WXK_TAB:
      if (control || !move_selection(shift))
        Navigate(shift ? wxNavigationKeyEvent::IsBackward : wxNavigationKeyEvent::IsForward);
      return true;
    case WXK_HOME:
      if (!map_.layout.order.empty())
        select_node(map_.layout.order.front(), 0);
      return true;
    case WXK_END:
      if (!map_.layout.order.empty())
        select_node(map_.layout.order.back(), 0);
      return true;
    case WXK_UP:
    case WXK_DOWN:
      if (control)
        move_exit(key == WXK_UP ? -1 : 1);
      else
        pan(0, key == WXK_UP ? -step : step);
      return true;
    case WXK_LEFT:
    case WXK_RIGHT:
      pan(key == WXK_LEFT ? -step : step, 0);
      return true;
    case WXK_PAGEUP:
    case WXK_PAGEDOWN:
      pan(0, (key == WXK_PAGEUP ? -1 : 1) * GetClientSize().y * 0.9);
      return true;
    case WXK_RETURN:
    case WXK_NUMPAD_ENTER:
      if (card != nullptr)
        on_.open(card->place, highlight_.exit);
      return true;
    case WXK_WINDOWS_MENU:
    case WXK_MENU:
      if (card != nullptr)
        on_.context(card->place, highlight_.exit, place_on_window(card->place, highlight_.exit));
      return true;
    case WXK_F10:
      if (shift && card != nullptr)
        on_.context(card->place, highlight_.exit, place_on_window(card->place, highlight_.exit));
      return shift;
    case '+':
    case '=':
    case WXK_NUMPAD_ADD:
      zoom_by(zoom_step);
      return true;
    case '-':
    case WXK_NUMPAD_SUBTRACT:
      zoom_by(1 / zoom_step);
      return true;
    case '1':
    case WXK_NUMPAD1:
      zoom_fully();
      return true;
    case '0':
    case WXK_NUMPAD0:
      fit();
      return true;
    default:
      return false;
  }
}

/// False: the selected node is the last one in this direction.
bool map_canvas::move_selection(bool back) {
  const auto at =
      std::find(map_.layout.order.begin(), map_.layout.order.end(), highlight_.node.value_or(0));
  if (at == map_.layout.order.end() ||
      (back ? at == map_.layout.order.begin() : at + 1 == map_.layout.order.end()))
    return false;
  select_node(back ? *(at - 1) : *(at + 1), 0);
  return true;
}

void map_canvas::move_exit(int by) {
  if (highlight_.node)
    select_node(highlight_.node, std::clamp(highlight_.exit + by, 0, exits_of(*highlight_.node)));
}

// The pointer ------------------------------------------------------------------------------------

map_canvas::hit map_canvas::hit_at(const wxPoint& pointer) const {
  const map_point at = on_map(pointer);
  for (std::size_t i = 0; i < map_.layout.boxes.size(); ++i) {
    const map_box& box = map_.layout.boxes[i];
    if (at.x < box.x || at.x > box.x + box.width || at.y < box.y || at.y > box.y + box.height)
      continue;
    hit found{i, 0};
    for (int exit = 1; exit <= exits_of(i); ++exit)
      if (std::abs(at.y - box.y - exit_height(map_.cards[i].place, exit)) <= map_measures::row / 2)
        found.exit = exit;
    return found;
  }
  return {};
}

// An arrow is dragged from a row, and from all of first play.
void map_canvas::on_left_down(wxMouseEvent& event) {
  SetFocus();
  pressed_at_ = dragged_to_ = event.GetPosition();
  has_moved_ = false;
  pressed_on_ = hit_at(pressed_at_);
  if (pressed_on_.node)
    select_node(pressed_on_.node, pressed_on_.exit);
  const bool is_source =
      pressed_on_.node && (pressed_on_.exit > 0 ||
                           map_.cards[*pressed_on_.node].place.what == map_place::kind::first_play);
  drag_ = is_source ? (commands_enabled_ ? drag::arrow : drag::none) : drag::pan;
  if (!HasCapture())
    CaptureMouse();
}

void map_canvas::on_motion(wxMouseEvent& event) {
  if (drag_ == drag::none || !event.LeftIsDown()) {
    const hit over = hit_at(event.GetPosition());
    SetCursor(over.node ? wxCursor(wxCURSOR_HAND) : wxNullCursor);
    return;
  }
  const wxPoint moved = event.GetPosition() - pressed_at_;
  has_moved_ = has_moved_ || std::abs(moved.x) + std::abs(moved.y) >= drag_begins;
  if (!has_moved_)
    return;
  if (drag_ == drag::arrow)
    return drag_arrow(event.GetPosition());
  pan(dragged_to_.x - event.GetPosition().x, dragged_to_.y - event.GetPosition().y);
  dragged_to_ = event.GetPosition();
}

void map_canvas::drag_arrow(const wxPoint& pointer) {
  const wxSize size = GetClientSize();
  const auto push = [](int at, int length) {
    return at < drag_edge ? at - drag_edge : std::max(0, at - (length - drag_edge));
  };
  if (push(pointer.x, size.x) != 0 || push(pointer.y, size.y) != 0)
    pan(push(pointer.x, size.x), push(pointer.y, size.y));
  dragged_to_ = pointer;
  highlight_.over = hit_at(pointer).node;
  Refresh(false);
}

void map_canvas::on_left_up(wxMouseEvent& event) {
  const bool leads = drag_ == drag::arrow && has_moved_;
  const hit from = pressed_on_, to = hit_at(event.GetPosition());
  end_drag();
  if (leads && from.node && to.node && *from.node < map_.cards.size())
    on_.lead(map_.cards[*from.node].place, from.exit, map_.cards[*to.node].place);
}

bool map_canvas::cancel_drag() {
  const bool dragged = drag_ != drag::none;
  end_drag();
  return dragged;
}

void map_canvas::end_drag() {
  drag_ = drag::none;
  has_moved_ = false;
  highlight_.over.reset();
  if (HasCapture())
    ReleaseMouse();
  Refresh(false);
}

void map_canvas::on_right_down(wxMouseEvent& event) {
  SetFocus();
  const hit at = hit_at(event.GetPosition());
  if (!at.node)
    return;
  select_node(at.node, at.exit);
  on_.context(map_.cards[*at.node].place, at.exit, event.GetPosition());
}

void map_canvas::on_double_click(wxMouseEvent& event) {
  end_drag();
  const hit at = hit_at(event.GetPosition());
  if (at.node)
    on_.open(map_.cards[*at.node].place, at.exit);
}

void map_canvas::on_wheel(wxMouseEvent& event) {
  const double turns =
      static_cast<double>(event.GetWheelRotation()) / std::max(1, event.GetWheelDelta());
  if (event.ControlDown())
    set_zoom(zoom_ * std::pow(zoom_step, turns), event.GetPosition());
  else if (event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL)
    pan(turns * FromDIP(wheel_step), 0);
  else if (event.ShiftDown())
    pan(-turns * FromDIP(wheel_step), 0);
  else
    pan(0, -turns * FromDIP(wheel_step));
}

}  // namespace corvane
