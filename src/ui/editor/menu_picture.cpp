#include "ui/editor/menu_picture.h"

#include "formats/text.h"
#include "menus/menu_view.h"

#include <wx/control.h>
#include <wx/dcbuffer.h>
#include <wx/dcclient.h>
#include <wx/dcgraph.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstring>
#include <utility>

namespace corvane {
namespace {

constexpr int least_label_width = 72;  // what a button does is shortened, but not to nothing
constexpr int trouble_width = 230;     // what is wrong with it is not

/// A number of pixels of the toolkit in those of the screen.
int on_screen(int pixels, double scale) {
  return static_cast<int>(std::lround(pixels * scale));
}

wxBitmap bitmap_of_part(const video_pixels& video, const overlay_picture& overlay, wxSize view,
                        const wxRect& part, double scale) {
  const view_size shown{on_screen(view.x, scale), on_screen(view.y, scale)};
  const view_part pixels{on_screen(part.x, scale), on_screen(part.y, scale),
                         on_screen(part.width, scale), on_screen(part.height, scale)};
  const std::vector<std::uint8_t> bytes = view_of(video, overlay, shown, pixels);
  wxImage image(pixels.width, pixels.height, false);
  std::memcpy(image.GetData(), bytes.data(), bytes.size());
  return {image, wxBITMAP_SCREEN_DEPTH, scale};
}

}  // namespace

menu_picture::menu_picture(wxWindow* parent, const menu_editor& editor, tell_event tell,
                           words_of_action words, picture_wishes wishes)
    : editor_(editor),
      tell_(std::move(tell)),
      words_(std::move(words)),
      wishes_(std::move(wishes)) {
  SetBackgroundStyle(wxBG_STYLE_PAINT);
  Create(parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
         wxWANTS_CHARS | wxBORDER_NONE | wxHSCROLL | wxVSCROLL);
  SetFont(GetFont().Smaller());
  Bind(wxEVT_PAINT, &menu_picture::on_paint, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
    arrange_scrolling();
    Refresh(false);
    event.Skip();
  });
  for (const auto& type : {wxEVT_SCROLLWIN_TOP, wxEVT_SCROLLWIN_BOTTOM, wxEVT_SCROLLWIN_LINEUP,
                           wxEVT_SCROLLWIN_LINEDOWN, wxEVT_SCROLLWIN_PAGEUP,
                           wxEVT_SCROLLWIN_PAGEDOWN, wxEVT_SCROLLWIN_THUMBTRACK})
    Bind(type, &menu_picture::on_scroll, this);
  Bind(wxEVT_LEFT_DOWN, &menu_picture::on_down, this);
  Bind(wxEVT_LEFT_DCLICK, &menu_picture::on_down, this);
  Bind(wxEVT_MOTION, &menu_picture::on_motion, this);
  Bind(wxEVT_MOUSEWHEEL, &menu_picture::on_wheel, this);
  Bind(wxEVT_LEFT_UP, &menu_picture::on_up, this);
  Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { end_drag(); });
  Bind(wxEVT_KEY_DOWN, &menu_picture::on_key, this);
  drag_scrolls_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { go_on_scrolling(); });
  for (const auto& type : {wxEVT_SET_FOCUS, wxEVT_KILL_FOCUS})
    Bind(type, [this](wxFocusEvent& event) {
      CallAfter([this] { show_buttons(); });
      event.Skip();
    });
}

void menu_picture::show_picture(const wxImage& picture) {
  picture_ = picture;
  reason_.clear();
  Refresh(false);
}

void menu_picture::show_reason(const wxString& reason) {
  picture_ = wxImage();
  reason_ = reason;
  Refresh(false);
}

void menu_picture::set_options(const picture_options& options) {
  if (options == options_)
    return;
  options_ = options;
  draw_all_anew();
}

void menu_picture::set_view(wxSize shown) {
  if (shown == view_)
    return;
  // What was in the middle stays there.
  const wxSize half = GetClientSize() / 2;
  if (view_.x > 0 && view_.y > 0)
    origin_ = wxPoint((origin_.x + half.x) * shown.x / view_.x - half.x,
                      (origin_.y + half.y) * shown.y / view_.y - half.y);
  view_ = shown;
  arrange_scrolling();
  draw_all_anew();
}

picture_scale menu_picture::scale() const {
  return {view_.x, view_.y, editor_.ymax()};
}

int menu_picture::unit() const {
  return std::max(1, FromDIP(1));
}

wxRect menu_picture::place_of(int index) const {
  const std::string& record = editor_.controls().List1[static_cast<std::size_t>(index)];
  return shown_rectangle(scale().to_picture(edges_of(record)));
}

std::optional<menu_picture::drawn> menu_picture::outline_now() const {
  const std::optional<menu_rectangle> edges = editor_.outline();
  if (!edges)
    return std::nullopt;
  return drawn{shown_rectangle(scale().to_picture(*edges)), editor_.controls().sizes_enabled,
               HasFocus()};
}

void menu_picture::draw_anew(const wxRect& in_picture) {
  RefreshRect(wxRect(in_picture.GetTopLeft() - origin_, in_picture.GetSize()), false);
}

void menu_picture::draw_all_anew() {
  marks_.clear();
  ways_.clear();
  Refresh(false);
  show_buttons();
}

// While a button is dragged only the places where it was and where it is are drawn anew.
void menu_picture::show_buttons() {
  show_dots();
  show_marks();
  show_ways();
  show_outline();
  show_others();
  show_guides();
  follow_outline();
}

/// The place of dots in the picture, with what a pixel there may show of its neighbours.
wxRect menu_picture::in_view(const button_box& dots) const {
  const auto at = [](std::int64_t value, int from, int to) {
    const std::int64_t most = std::int64_t{from} * 2;
    return static_cast<int>(std::clamp(value, -most, most) * to / from);
  };
  const int lines = editor_.ymax() + 1;
  const wxPoint first(at(dots.left, overlay_width, view_.x), at(dots.top, lines, view_.y));
  const wxPoint last(at(dots.right, overlay_width, view_.x), at(dots.bottom, lines, view_.y));
  return wxRect(first, last).Inflate(2);
}

void menu_picture::show_dots() {
  const menu_editor_controls& c = editor_.controls();
  drawn_dots next;
  next.thickness = c.thickness.value;
  const button_state state = options_.pressed ? button_state::selected : button_state::highlighted;
  for (const std::string& record : c.List1)
    if (!trim(record).empty())
      next.buttons.push_back(overlay_button_of(record, state));
  const bool other_files = bitmaps_.forget_changed();
  if (next == dots_ && !other_files && !overlay_.rgba.empty())
    return;
  if (next.thickness != dots_.thickness)
    marks_.clear();  // labels stand behind the frames
  if (other_files || next.thickness != dots_.thickness ||
      next.buttons.size() != dots_.buttons.size())
    Refresh(false);
  else
    for (std::size_t i = 0; i < next.buttons.size(); ++i)
      if (next.buttons[i] != dots_.buttons[i])
        for (const overlay_button& b : {dots_.buttons[i], next.buttons[i]})
          draw_anew(in_view(extent_of(b, bitmaps_)));
  dots_ = std::move(next);
  overlay_ = overlay_of(dots_.buttons, dots_.thickness, editor_.ymax() + 1, bitmaps_);
}

/// `dc` measures, in the font of the labels.
shown_mark menu_picture::measured(const button_mark& mark, const wxDC& dc) const {
  shown_mark shown{mark, place_of(mark.index), text_of_mark(mark), {}, {}};
  const bool trouble = !mark.is_reached || !mark.overlaps.empty();
  const int room = std::max(FromDIP(trouble ? trouble_width : least_label_width),
                            shown.place.width - FromDIP(12));
  shown.text = wxControl::Ellipsize(shown.text, dc, wxELLIPSIZE_END, room);
  const double across = view_.x / static_cast<double>(overlay_width);
  const int line = static_cast<int>(std::ceil((editor_.controls().thickness.value + 1) * across));
  shown.label =
      place_of_label(shown.place, label_size(dc.GetTextExtent(shown.text), unit()), line, view_);
  for (const int other : mark.overlaps) {
    wxRect both = shown.place;
    both.Intersect(place_of(other));
    shown.clashes.push_back(both.Inflate(unit()));
  }
  return shown;
}

void menu_picture::show_marks() {
  const std::vector<button_mark> marks = marks_of(editor_.controls().List1, words_);
  std::vector<shown_mark> next;
  next.reserve(marks.size());
  wxClientDC dc(this);
  dc.SetFont(GetFont());
  for (const button_mark& mark : marks) {
    const std::size_t i = next.size();
    const bool known = i < marks_.size() && marks_[i].mark == mark && mark.overlaps.empty() &&
                       marks_[i].place == place_of(mark.index);
    next.push_back(known ? marks_[i] : measured(mark, dc));
  }
  for (std::size_t i = 0; i < std::max(next.size(), marks_.size()); ++i) {
    const bool before = i < marks_.size(), after = i < next.size();
    if (before && after && marks_[i] == next[i])
      continue;
    if (before)
      draw_anew(extent_of(marks_[i], unit()));
    if (after)
      draw_anew(extent_of(next[i], unit()));
  }
  marks_ = std::move(next);
}

void menu_picture::show_ways() {
  std::vector<shown_way> next;
  const int chosen = editor_.controls().Combo2_index;
  const bool all = options_.ways == shown_ways::all;
  if (all || (options_.ways == shown_ways::chosen && chosen >= 0)) {
    const std::vector<key_way> ways =
        ways_of(editor_.controls().List1, all ? std::nullopt : std::optional(chosen));
    for (const key_way& way : ways)
      next.push_back(way_between(way.key, place_of(way.from), place_of(way.to), unit()));
  }
  if (next == ways_)
    return;
  ways_.swap(next);
  for (const std::vector<shown_way>* ways : {&ways_, &next})
    for (const shown_way& way : *ways)
      draw_anew(extent_of(way, unit()));
}

void menu_picture::show_outline() {
  const std::optional<drawn> next = outline_now();
  if (next == outline_)
    return;
  for (const std::optional<drawn>& d : {outline_, next})
    if (d)
      draw_anew(outline_extent(d->place, unit()));
  outline_ = next;
}

void menu_picture::show_others() {
  std::vector<wxRect> next;
  for (const int index : editor_.selected())
    if (!is_outlined(index))
      next.push_back(place_of(index));
  if (next == also_selected_)
    return;
  also_selected_.swap(next);
  for (const std::vector<wxRect>* places : {&also_selected_, &next})
    for (const wxRect& place : *places)
      draw_anew(outline_extent(place, unit()));
}

void menu_picture::show_guides() {
  std::vector<snap_guide> next = editor_.guides();
  if (next == guides_)
    return;
  guides_.swap(next);
  for (const std::vector<snap_guide>* guides : {&guides_, &next})
    for (const snap_guide& guide : *guides)
      draw_anew(extent_of_guide(guide, scale(), unit()));
}

// Scrolling ---------------------------------------------------------------------------------------

void menu_picture::arrange_scrolling() {
  // Where the bars take room of this window, as on Windows, they must not be what makes it too
  // small.
  const wxSize whole = GetSize();
  const bool fits = view_.x <= whole.x && view_.y <= whole.y;
  const wxSize room = fits ? whole : GetClientSize();
  const wxPoint most(std::max(0, view_.x - room.x), std::max(0, view_.y - room.y));
  origin_ = wxPoint(std::clamp(origin_.x, 0, most.x), std::clamp(origin_.y, 0, most.y));
  if (most.x > 0)
    SetScrollbar(wxHORIZONTAL, origin_.x, room.x, view_.x);
  else
    SetScrollbar(wxHORIZONTAL, 0, 0, 0);
  if (most.y > 0)
    SetScrollbar(wxVERTICAL, origin_.y, room.y, view_.y);
  else
    SetScrollbar(wxVERTICAL, 0, 0, 0);
}

void menu_picture::scroll_to(wxPoint origin) {
  const wxPoint before = origin_;
  origin_ = origin;
  arrange_scrolling();
  if (origin_ != before)
    Refresh(false);
}

/// What the outline shows now, and did not before, comes into sight.
void menu_picture::follow_outline() {
  const std::optional<menu_rectangle> before = std::exchange(followed_, editor_.outline());
  if (!outline_ || followed_ == before || pointing_)
    return;
  // Of a button that is larger than the room, the edge that was moved.
  const bool right = before && before->x0 == followed_->x0 && before->x1 != followed_->x1;
  const bool bottom = before && before->y0 == followed_->y0 && before->y1 != followed_->y1;
  const wxSize room = GetClientSize();
  const wxRect place = outline_extent(outline_->place, unit());
  scroll_to({scrolled_to_show({origin_.x, room.x}, place.x, place.x + place.width, right),
             scrolled_to_show({origin_.y, room.y}, place.y, place.y + place.height, bottom)});
}

void menu_picture::on_scroll(wxScrollWinEvent& event) {
  constexpr int step = 20;
  const bool across = event.GetOrientation() == wxHORIZONTAL;
  wxPoint to = origin_;
  int& value = across ? to.x : to.y;
  const int page = across ? GetClientSize().x : GetClientSize().y;
  const wxEventType type = event.GetEventType();
  if (type == wxEVT_SCROLLWIN_TOP)
    value = 0;
  else if (type == wxEVT_SCROLLWIN_BOTTOM)
    value = across ? view_.x : view_.y;
  else if (type == wxEVT_SCROLLWIN_LINEUP)
    value -= FromDIP(step);
  else if (type == wxEVT_SCROLLWIN_LINEDOWN)
    value += FromDIP(step);
  else if (type == wxEVT_SCROLLWIN_PAGEUP)
    value -= page;
  else if (type == wxEVT_SCROLLWIN_PAGEDOWN)
    value += page;
  else
    value = event.GetPosition();
  scroll_to(to);
}

// Painting ----------------------------------------------------------------------------------------

void menu_picture::paint_part(wxDC& dc, const wxRect& part) {
  wxRect seen(part.GetTopLeft() + origin_, part.GetSize());
  seen.Intersect(wxRect(view_));
  if (seen.IsEmpty())
    return;
  const video_pixels video{picture_.IsOk() ? picture_.GetWidth() : 0,
                           picture_.IsOk() ? picture_.GetHeight() : 0,
                           picture_.IsOk() ? picture_.GetData() : nullptr};
  dc.DrawBitmap(bitmap_of_part(video, overlay_, view_, seen, GetContentScaleFactor()),
                seen.GetTopLeft() - origin_);
}

/// All that stands over the menu within a part of the picture.
void menu_picture::paint_over(wxDC& dc, const wxRect& part) {
  dc.SetFont(GetFont());
  if (!reason_.empty())
    paint_reason(dc);
  if (options_.safe_area)
    draw_safe_area(dc, view_, unit());
  for (const shown_mark& mark : marks_)
    if (extent_of(mark, unit()).Intersects(part))
      draw_mark(dc, mark, unit());
  for (const shown_way& way : ways_)
    if (extent_of(way, unit()).Intersects(part))
      draw_way(dc, way, unit());
  for (const wxRect& place : also_selected_)
    if (outline_extent(place, unit()).Intersects(part))
      draw_outline(dc, place, {false, false, unit()});
  for (const snap_guide& guide : guides_)
    if (extent_of_guide(guide, scale(), unit()).Intersects(part))
      draw_guide(dc, guide, scale(), unit());
  if (outline_ && outline_extent(outline_->place, unit()).Intersects(part))
    draw_outline(dc, outline_->place, {outline_->sizes, outline_->focused, unit()});
}

void menu_picture::paint_reason(wxDC& dc) {
  dc.SetTextForeground(wxColour(230, 230, 230));
  dc.DrawLabel(reason_, wxRect(view_).Deflate(FromDIP(20)), wxALIGN_CENTRE);
}

void menu_picture::on_paint(wxPaintEvent& /*event*/) {
  wxAutoBufferedPaintDC dc(this);
  const wxRect room(GetClientSize());
  wxRect whole;
  for (wxRegionIterator it(GetUpdateRegion()); it; ++it) {
    wxRect part = it.GetRect();
    part.Intersect(room);
    paint_part(dc, part);
    whole.Union(part);
  }
  if (whole.IsEmpty())
    return;
  wxGCDC over(dc);
  over.SetDeviceOrigin(-origin_.x, -origin_.y);
  paint_over(over, wxRect(whole.GetTopLeft() + origin_, whole.GetSize()));
}

}  // namespace corvane
