#include "ui/map/map_drawing.h"

#include "ui/widgets/wx_text.h"

#include <wx/brush.h>
#include <wx/font.h>
#include <wx/graphics.h>
#include <wx/imagpng.h>
#include <wx/mstream.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <utility>

namespace corvane {
namespace {

namespace measures = map_measures;
using node_kind = map_place::kind;

constexpr int text_pixels = 12;
constexpr int row_characters = 60, head_characters = 40;  // more never fit
constexpr double plain_line = 1.3, bold_line = 2.6, edge_line = 1, wrong_line = 2, ring_line = 3;
constexpr double round_corner = 4, ring_gap = 3, end_mark = 8;
constexpr unsigned char faint_cover = 170;

class map_painter {
 public:
  map_painter(wxGraphicsContext& gc, const drawn_map& map, const map_colours& colours,
              const map_highlight& highlight)
      : gc_(gc), map_(map), colours_(colours), highlight_(highlight) {
    const wxFont plain(wxFontInfo(wxSize(0, text_pixels)).Family(wxFONTFAMILY_SWISS));
    plain_ = plain;
    bold_ = plain.Bold();
  }

  void draw(const wxRect2DDouble& visible) {
    // Those of the selected node last, over the others.
    for (const bool bold : {false, true})
      for (const laid_arrow& arrow : map_.layout.arrows)
        if (is_bold(arrow) == bold)
          draw_arrow(arrow, bold);
    for (std::size_t i = 0; i < map_.layout.boxes.size(); ++i) {
      const map_box& box = map_.layout.boxes[i];
      if (visible.Intersects(wxRect2DDouble(box.x, box.y, box.width, box.height)))
        draw_card(i);
    }
  }

 private:
  static wxColour colour(const std::string& text) { return wxColour(wx_text(text)); }
  void fill(const std::string& text) { gc_.SetBrush(wxBrush(colour(text))); }
  void line(const std::string& text, double width) {
    gc_.SetPen(gc_.CreatePen(
        wxGraphicsPenInfo(colour(text)).Width(width).Join(wxJOIN_ROUND).Cap(wxCAP_BUTT)));
  }
  void no_line() { gc_.SetPen(wxNullGraphicsPen); }

  bool is_bold(const laid_arrow& laid) const {
    if (!highlight_.node)
      return false;
    const map_arrow& arrow = map_.map.arrows[laid.arrow];
    const map_place& place = map_.cards[*highlight_.node].place;
    if (highlight_.exit > 0)
      return arrow.from == place && (arrow.button == 0 || arrow.button == highlight_.exit);
    return arrow.from == place || arrow.to == place;
  }

  void draw_arrow(const laid_arrow& laid, bool bold) {
    const map_arrow& arrow = map_.map.arrows[laid.arrow];
    const std::string& of_arrow = arrow_colour(arrow, colours_);
    wxGraphicsPath path = gc_.CreatePath();
    path.MoveToPoint(laid.points.front().x, laid.points.front().y);
    for (const auto& c : curves_of(laid.points))
      path.AddCurveToPoint(c[0].x, c[0].y, c[1].x, c[1].y, c[2].x, c[2].y);
    line(of_arrow, bold ? bold_line : plain_line);
    gc_.StrokePath(path);
    const map_arrow_head head = head_of_arrow(laid.points);
    wxGraphicsPath tip = gc_.CreatePath();
    tip.MoveToPoint(head.tip.x, head.tip.y);
    tip.AddLineToPoint(head.upper.x, head.upper.y);
    tip.AddLineToPoint(head.lower.x, head.lower.y);
    tip.CloseSubpath();
    no_line();
    fill(of_arrow);
    gc_.FillPath(tip);
  }

  void draw_card(std::size_t index) {
    const map_card& card = map_.cards[index];
    const map_box& box = map_.layout.boxes[index];
    const bool is_first = card.place.what == node_kind::first_play;
    const double head = is_first ? measures::first_play_head : measures::head;
    no_line();
    fill(colours_.card);
    gc_.DrawRoundedRectangle(box.x, box.y, box.width, box.height, round_corner);
    fill(head_colour(card, colours_));
    gc_.DrawRoundedRectangle(box.x, box.y, box.width, head, round_corner);
    if (is_first)
      draw_first_play(card, box);
    else
      draw_head(card, box);
    draw_rows(index, box);
    gc_.SetBrush(wxNullGraphicsBrush);
    const bool wrong = is_wrong(card);
    line(wrong ? colours_.wrong : colours_.card_edge, wrong ? wrong_line : edge_line);
    gc_.DrawRoundedRectangle(box.x, box.y, box.width, box.height, round_corner);
    draw_state(index, box);
  }

  void draw_first_play(const map_card& card, const map_box& box) {
    const double y = box.y + (measures::first_play_head - text_pixels) / 2 - 2;
    const double x = box.x + measures::inset;
    const double used = draw_text(card.heading, bold_, colours_.text, x, y, box.width / 2);
    const double left = x + used + measures::inset;
    draw_text(card.detail, plain_, card.trouble.empty() ? colours_.faint_text : colours_.wrong,
              left, y, box.x + box.width - measures::inset - left);
  }

  void draw_head(const map_card& card, const map_box& box) {
    const double x = box.x + measures::inset;
    const double y = box.y + (measures::head - measures::picture_height) / 2;
    draw_picture(card.place, x, y);
    const double left = x + measures::picture_width + measures::inset;
    const double room = box.x + box.width - measures::inset - left;
    draw_text(card.heading, bold_, colours_.text, left, box.y + 7, room);
    draw_text(card.name, plain_, colours_.text, left, box.y + 25, room);
    const bool in_trouble = !card.trouble.empty();
    draw_text(in_trouble ? card.trouble : card.detail, plain_,
              in_trouble ? colours_.wrong : colours_.faint_text, left, box.y + 43, room);
  }

  /// In its own proportions, which a wide one keeps.
  void draw_picture(const map_place& place, double x, double y) {
    const auto picture = map_.pictures.find(place);
    no_line();
    if (picture == map_.pictures.end()) {
      fill(colours_.blank_picture);
      gc_.DrawRectangle(x, y, measures::picture_width, measures::picture_height);
      return;
    }
    fill("#000000");
    gc_.DrawRectangle(x, y, measures::picture_width, measures::picture_height);
    const wxImage& image = picture->second;
    const double shape = static_cast<double>(image.GetWidth()) / image.GetHeight();
    const double width = std::min(measures::picture_width, measures::picture_height * shape);
    const double height = width / shape;
    gc_.DrawBitmap(gc_.CreateBitmapFromImage(image), x + (measures::picture_width - width) / 2,
                   y + (measures::picture_height - height) / 2, width, height);
  }

  void draw_rows(std::size_t index, const map_box& box) {
    const map_card& card = map_.cards[index];
    for (std::size_t i = 0; i < card.rows.size(); ++i) {
      const map_card_row& row = card.rows[i];
      const int exit = static_cast<int>(i) + 1;
      const double middle = box.y + exit_height(card.place, exit);
      if (highlight_.node == index && highlight_.exit == exit) {
        no_line();
        fill(head_colour(card, colours_));
        gc_.DrawRectangle(box.x + 1, middle - measures::row / 2, box.width - 2, measures::row);
      }
      const double mark = row.ends_disc ? end_mark + measures::inset : 0;
      draw_text(row.text, plain_, row.is_wrong ? colours_.wrong : colours_.text,
                box.x + measures::inset, middle - text_pixels / 2.0 - 2,
                box.width - 2 * measures::inset - mark);
      if (row.ends_disc) {
        no_line();
        fill(colours_.faint_text);
        gc_.DrawRectangle(box.x + box.width - measures::inset - end_mark, middle - end_mark / 2,
                          end_mark, end_mark);
      }
    }
  }

  void draw_state(std::size_t index, const map_box& box) {
    if (!highlight_.words.empty() && !holds_text(map_.cards[index], highlight_.words)) {
      const wxColour paper = colour(colours_.paper);
      no_line();
      gc_.SetBrush(wxBrush(wxColour(paper.Red(), paper.Green(), paper.Blue(), faint_cover)));
      gc_.DrawRectangle(box.x - 1, box.y - 1, box.width + 2, box.height + 2);
    }
    if (highlight_.node != index && highlight_.over != index)
      return;
    gc_.SetBrush(wxNullGraphicsBrush);
    line(colours_.button_arrow,
         highlight_.over == index || highlight_.has_keys ? ring_line : wrong_line);
    gc_.DrawRoundedRectangle(box.x - ring_gap, box.y - ring_gap, box.width + 2 * ring_gap,
                             box.height + 2 * ring_gap, round_corner + ring_gap);
  }

  /// Gives its width.
  double draw_text(const std::string& text, const wxFont& font, const std::string& text_colour,
                   double x, double y, double room) {
    gc_.SetFont(font, colour(text_colour));
    const int most = room > measures::width / 2 ? row_characters : head_characters;
    wxString shown = wx_text(cut_to_columns(text, most));
    double width = 0;
    gc_.GetTextExtent(shown, &width, nullptr);
    for (std::size_t keep = shown.length(); width > room && keep > 1;) {
      const auto by_share =
          static_cast<std::size_t>(static_cast<double>(keep) * std::max(0.1, room / width));
      keep = std::min(keep - 1, std::max<std::size_t>(1, by_share));
      shown = shown.Left(keep).Trim() + wxUniChar(0x2026);
      gc_.GetTextExtent(shown, &width, nullptr);
    }
    gc_.DrawText(shown, x, y);
    return width;
  }

  wxGraphicsContext& gc_;
  const drawn_map& map_;
  const map_colours& colours_;
  const map_highlight& highlight_;
  wxFont plain_, bold_;
};

/// The bytes of a PNG file; empty if they cannot be made.
std::string png_file([[maybe_unused]] const wxImage& image) {
#if wxUSE_LIBPNG
  wxMemoryOutputStream stream;
  wxPNGHandler handler;
  wxImage copy = image;
  if (!handler.SaveFile(&copy, stream, false))
    return {};
  std::string bytes(static_cast<std::size_t>(stream.GetLength()), '\0');
  stream.CopyTo(bytes.data(), bytes.size());
  return bytes;
#else
  return {};
#endif
}

}  // namespace

bool makes_png() {
  return wxUSE_LIBPNG != 0;
}

void draw_map(wxGraphicsContext& gc, const drawn_map& map, const map_colours& colours,
              const map_highlight& highlight, const wxRect2DDouble& visible) {
  map_painter(gc, map, colours, highlight).draw(visible);
}

result<std::string> png_of(const drawn_map& map) {
  constexpr double most_pixels = 12'000, usual_scale = 2;
  const double longest = std::max({map.layout.width, map.layout.height, 1.0});
  const double scale = std::min(usual_scale, most_pixels / longest);
  const map_colours colours;
  wxImage image(std::max(1, static_cast<int>(std::lround(map.layout.width * scale))),
                std::max(1, static_cast<int>(std::lround(map.layout.height * scale))));
  if (!image.IsOk())
    return result<std::string>::fail("there is not enough memory for the picture");
  const wxColour paper(wx_text(colours.paper));
  image.SetRGB(wxRect(image.GetSize()), paper.Red(), paper.Green(), paper.Blue());
  {
    const std::unique_ptr<wxGraphicsContext> gc(wxGraphicsContext::Create(image));
    if (!gc)
      return result<std::string>::fail("the system cannot draw into a picture");
    gc->Scale(scale, scale);
    draw_map(*gc, map, colours, {}, wxRect2DDouble(0, 0, map.layout.width, map.layout.height));
  }
  std::string bytes = png_file(image);
  return bytes.empty() ? result<std::string>::fail("the picture could not be made into a PNG file")
                       : result<std::string>::ok(std::move(bytes));
}

std::map<map_place, std::string> png_pictures(const drawn_map& map) {
  std::map<map_place, std::string> files;
  for (const auto& [place, image] : map.pictures)
    if (std::string bytes = png_file(image); !bytes.empty())
      files.emplace(place, std::move(bytes));
  return files;
}

}  // namespace corvane
