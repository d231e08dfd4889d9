// For looking at the program's designs: draws the pages that they give for discs of all kinds, as
// PNG files in the shape that a television shows, with the first button highlighted and the second
// one selected.
//   draw_designs DESIGNS FOLDER [LABEL... [-- FILM...]]
// LABELS choose pages: design, "ntsc" or "pal", "narrow" or "wide", the kind of disc
// (design_pages.h) with the menu, such as "7-titles" or "1-chapters". Of several labels of one sort
// any will do. FILMS: whose pictures are taken, instead of landscapes.
#include "drawing/design_pages.h"
#include "drawing/page_drawer.h"
#include "drawing/page_pictures.h"
#include "drawing/png_file.h"
#include "menus/maker/design_folder.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::drawing_test {
namespace {

class no_bitmaps final : public bitmap_reader {
 public:
  const button_bitmap* read(const std::string& /*stored*/) override { return nullptr; }
};

page_picture_source pictures_of(std::vector<std::string> films, page_pictures& pictures) {
  return [films = std::move(films), &pictures](const std::string& file, double seconds) {
    if (films.empty())
      return result<std::shared_ptr<const shaped_picture>>::ok(landscape_of(file, seconds));
    return pictures.at(films.at(std::hash<std::string>()(file) % films.size()), seconds / 10);
  };
}

/// What lies behind a page whose background is a video.
page_canvas with_film_behind(const page_canvas& drawn, double pixel_aspect) {
  page_canvas seen(drawn.width, drawn.height);
  const fitted_picture film =
      fitted(*landscape(2), drawn.width, drawn.height, pixel_aspect, page_fit::fill);
  put_picture(seen, film.pixels, 0, 0);
  for (int y = 0; y < drawn.height; ++y)
    for (int x = 0; x < drawn.width; ++x)
      put_over(seen, x, y, drawn.at(x, y));
  return seen;
}

void put_buttons(page_canvas& canvas, const menu_design& design, const designed_page& page) {
  std::vector<overlay_button> buttons{shown_button(design, page, 1, button_state::highlighted)};
  if (page.laid_out.buttons.size() > 1)
    buttons.push_back(shown_button(design, page, 2, button_state::selected));
  no_bitmaps none;
  const overlay_picture overlay = overlay_of(buttons, design.frame, canvas.height, none);
  for (int y = 0; y < overlay.height; ++y)
    for (int x = 0; x < overlay.width; ++x) {
      const std::uint8_t* const dot = &overlay.rgba[canvas.offset(x, y)];
      put_over(canvas, x, y, {dot[0], dot[1], dot[2], dot[3]});
    }
}

struct page_chooser {
  std::vector<std::string> labels;

  /// Whether none of the labels is one of this sort, or this one is.
  bool takes(const std::string& label, const std::vector<std::string>& sort) const {
    const auto is_wanted = [this](const std::string& one) {
      return std::ranges::find(labels, one) != labels.end();
    };
    return is_wanted(label) || std::ranges::none_of(sort, is_wanted);
  }
};

class design_painter {
 public:
  design_painter(page_drawer& drawer, page_picture_source pictures, page_chooser chooser,
                 std::string folder)
      : drawer_(drawer),
        pictures_(std::move(pictures)),
        chooser_(std::move(chooser)),
        folder_(std::move(folder)) {}

  failure paint(const found_design& found) {
    for (const video_standard standard : {video_standard::ntsc, video_standard::pal})
      for (const bool is_wide : {false, true}) {
        const std::string lines = standard == video_standard::pal ? "pal" : "ntsc";
        const std::string shape = is_wide ? "wide" : "narrow";
        if (!chooser_.takes(lines, {"ntsc", "pal"}) || !chooser_.takes(shape, {"narrow", "wide"}))
          continue;
        if (auto why = paint(*found.design, {standard, is_wide},
                             found.id + "-" + lines + "-" + shape + "-"))
          return why;
      }
    return std::nullopt;
  }

 private:
  static std::string menu_label(const disc_kind& kind, bool is_titles) {
    return kind.name + (is_titles ? "-titles" : "-chapters");
  }

  static std::vector<std::string> menu_labels() {
    std::vector<std::string> labels;
    for (const disc_kind& kind : kinds_of_discs())
      for (const bool is_titles : {false, true})
        labels.push_back(menu_label(kind, is_titles));
    return labels;
  }

  failure paint(const menu_design& design, const page_form& form, const std::string& name) {
    const text_measure measure = [this](std::string_view text, const text_style& style, int width,
                                        double pixel_aspect) {
      return drawer_.measure(text, style, width, pixel_aspect);
    };
    for (const disc_kind& kind : kinds_of_discs()) {
      if (!chooser_.takes(menu_label(kind, true), menu_labels()) &&
          !chooser_.takes(menu_label(kind, false), menu_labels()))
        continue;
      for (const designed_page& page : designed_pages(design, form, kind.disc, measure)) {
        const std::string label = menu_label(kind, page.menu.title == 0);
        if (!chooser_.takes(label, menu_labels()))
          continue;
        const std::string file = name + label + "-" + std::to_string(page.menu.page) + ".png";
        if (auto why = write_page(design, page, join_path(folder_, file)))
          return why;
      }
    }
    return std::nullopt;
  }

  failure write_page(const menu_design& design, const designed_page& page,
                     const std::string& path) {
    const drawn_page& shapes = page.laid_out.page;
    page_canvas canvas =
        with_film_behind(drawer_.draw(shapes, pictures_).canvas, shapes.pixel_aspect);
    put_buttons(canvas, design, page);
    const int width = static_cast<int>(std::lround(canvas.width * shapes.pixel_aspect));
    const shaped_picture whole{on_colour(canvas, {}), shapes.pixel_aspect};
    for (const std::string& note : page.laid_out.notes)
      std::cout << path << ": " << note << "\n";
    return write_file(path, png_of(fitted(whole, width, canvas.height, 1, page_fit::fill).pixels));
  }

  page_drawer& drawer_;
  page_picture_source pictures_;
  page_chooser chooser_;
  std::string folder_;
};

}  // namespace
}  // namespace corvane::drawing_test

int main(int argc, char** argv) {
  using namespace corvane;
  using namespace corvane::drawing_test;
  if (argc < 3) {
    std::cerr << "usage: draw_designs DESIGNS FOLDER [LABEL... [-- FILM...]]\n";
    return 2;
  }
  const auto drawer = make_page_drawer();
  if (!drawer) {
    std::cerr << drawer.error << "\n";
    return 1;
  }
  std::vector<std::string> labels(argv + 3, argv + argc);
  const auto dashes = std::ranges::find(labels, "--");
  std::vector<std::string> films;
  if (dashes != labels.end())
    films.assign(dashes + 1, labels.end());
  labels.erase(dashes, labels.end());
  page_pictures read;
  const page_chooser chooser{labels};
  design_painter painter(**drawer, pictures_of(films, read), chooser, argv[2]);
  const auto designs = designs_in(argv[1], "");
  std::vector<std::string> ids;
  ids.reserve(designs.size());
  for (const found_design& found : designs)
    ids.push_back(found.id);
  for (const found_design& found : designs) {
    if (!chooser.takes(found.id, ids))
      continue;
    const failure why =
        found.design ? painter.paint(found) : found.file + ": " + found.design.error;
    if (why) {
      std::cerr << *why << "\n";
      return 1;
    }
  }
  return 0;
}
