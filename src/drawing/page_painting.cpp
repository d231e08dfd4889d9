#include "drawing/page_painting.h"

#include "drawing/page_pictures.h"
#include "drawing/png_file.h"
#include "formats/sanitized.h"

#include <memory>
#include <new>
#include <set>
#include <string_view>
#include <utility>
#include <variant>

namespace corvane {
namespace {

struct page_painting {
  explicit page_painting(std::unique_ptr<page_drawer> d) : drawer(std::move(d)) {}
  std::unique_ptr<page_drawer> drawer;
  page_pictures pictures;
};

std::vector<std::string> sentences_of(const std::vector<missing_picture>& missing) {
  std::vector<std::string> sentences;
  std::set<std::string> told;
  for (const missing_picture& one : missing)
    if (told.insert(one.file).second)
      sentences.push_back("There is no picture of " + sanitized_quoted(one.file) + ": " +
                          sanitized(one.why));
  return sentences;
}

void fetch_pictures(page_pictures& pictures, const drawn_page& page) {
  if (const auto* background = std::get_if<picture_background>(&page.background))
    pictures.at(background->file, 0);
  for (const page_shape& shape : page.shapes)
    if (const auto* thumbnail = std::get_if<page_thumbnail>(&shape))
      pictures.at(thumbnail->file, thumbnail->seconds);
}

result<painted_page> paint_page(page_painting& painting, const drawn_page& page) {
  try {
    const page_drawing drawing =
        painting.drawer->draw(page, [&](const std::string& file, double seconds) {
          return painting.pictures.at(file, seconds);
        });
    if (drawing.trouble)
      return result<painted_page>::fail(*drawing.trouble);
    const bool is_over_video = std::holds_alternative<video_background>(page.background);
    return result<painted_page>::ok(
        {is_over_video ? png_of(drawing.canvas) : png_of(on_colour(drawing.canvas, {})),
         sentences_of(drawing.missing)});
  } catch (const std::bad_alloc&) {
    return result<painted_page>::fail("there is not enough memory to draw a menu");
  }
}

}  // namespace

result<page_painter> make_page_painter() {
  auto drawer = make_page_drawer();
  return drawer ? result<page_painter>::ok(page_painter_of(std::move(*drawer)))
                : result<page_painter>::fail(drawer.error);
}

page_painter page_painter_of(std::unique_ptr<page_drawer> drawer) {
  const auto painting = std::make_shared<page_painting>(std::move(drawer));
  page_painter painter;
  painter.measure = [painting](std::string_view text, const text_style& style, int box_width,
                               double pixel_aspect) {
    return painting->drawer->measure(text, style, box_width, pixel_aspect);
  };
  painter.fetch = [painting](const drawn_page& page) { fetch_pictures(painting->pictures, page); };
  painter.paint = [painting](const drawn_page& page) { return paint_page(*painting, page); };
  return painter;
}

}  // namespace corvane
