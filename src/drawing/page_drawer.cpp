#include "drawing/page_drawer.h"

#include <algorithm>
#include <utility>
#include <variant>

namespace corvane {
namespace {

/// One page on its way.
class page_on_canvas {
 public:
  page_on_canvas(const drawn_page& page, const page_picture_source& pictures, text_drawer& texts)
      : page_(page), pictures_(pictures), texts_(texts) {
    constexpr int most = 4096;
    drawing_.canvas =
        page_canvas(std::clamp(page.width, 0, most), std::clamp(page.height, 0, most));
  }

  page_drawing drawn() {
    std::visit([this](const auto& background) { put(background); }, page_.background);
    for (const page_shape& shape : page_.shapes)
      std::visit([this](const auto& one) { put(one); }, shape);
    return std::move(drawing_);
  }

 private:
  void put(const colour_background& background) {
    put_background(drawing_.canvas, background, page_.pixel_aspect);
  }

  void put(const picture_background& background) {
    const page_box whole{0, 0, page_.width, page_.height};
    page_colour around = background.around;
    around.alpha = 255;
    put_box(drawing_.canvas, whole, around);
    put_file(background.file, 0, whole, background.fit);
    put_box(drawing_.canvas, whole, background.shade);
  }

  void put(const video_background& /*shows where the page has nothing*/) {}

  void put(const page_rectangle& rectangle) {
    put_rectangle(drawing_.canvas, rectangle, page_.pixel_aspect);
  }

  void put(const page_text& text) {
    if (failure why = texts_.draw(drawing_.canvas, text, page_.pixel_aspect))
      drawing_.trouble = std::move(why);
  }

  void put(const page_thumbnail& thumbnail) {
    if (!put_file(thumbnail.file, thumbnail.seconds, thumbnail.box, thumbnail.fit))
      put_box(drawing_.canvas, thumbnail.box, thumbnail.without);
    if (thumbnail.border > 0)
      put(page_rectangle{
          thumbnail.box, 0, {0, 0, 0, 0}, thumbnail.border, thumbnail.border_colour});
  }

  bool put_file(const std::string& file, double seconds, const page_box& box, page_fit fit) {
    if (box.width <= 0 || box.height <= 0)
      return true;
    const auto source = pictures_(file, seconds);
    if (!source || *source == nullptr) {
      drawing_.missing.push_back({file, seconds, source.error});
      return false;
    }
    const fitted_picture shown = fitted(**source, std::min(box.width, 4096),
                                        std::min(box.height, 4096), page_.pixel_aspect, fit);
    put_picture(drawing_.canvas, shown.pixels, box.left + shown.left, box.top + shown.top);
    return true;
  }

  const drawn_page& page_;
  const page_picture_source& pictures_;
  text_drawer& texts_;
  page_drawing drawing_;
};

}  // namespace

page_drawer::page_drawer(std::unique_ptr<letter_drawer> letters)
    : letters_(std::move(letters)), texts_(*letters_) {}

text_extent page_drawer::measure(std::string_view text, const text_style& style, int box_width,
                                 double pixel_aspect) {
  return texts_.measure(text, style, box_width, pixel_aspect);
}

page_drawing page_drawer::draw(const drawn_page& page, const page_picture_source& pictures) {
  return page_on_canvas(page, pictures, texts_).drawn();
}

result<std::unique_ptr<page_drawer>> make_page_drawer() {
  using made = result<std::unique_ptr<page_drawer>>;
  auto letters = make_letter_drawer();
  if (!letters)
    return made::fail(letters.error);
  return made::ok(std::make_unique<page_drawer>(std::move(*letters)));
}

}  // namespace corvane
