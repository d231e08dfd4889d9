#include "authoring/menu_overlays.h"

#include "authoring/disc_texts.h"
#include "authoring/navigation_xml.h"
#include "examine/button_shapes.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "runner/run_files.h"

namespace corvane {
namespace {

// The colour that spumux takes for "nothing here": background of the pictures, inside of frames.
constexpr const char* transparent = "#010101";

// The two pictures of a menu.
struct overlay_kind {
  const char* name;               ///< as the script's progress lines have it
  std::string (*file)(int menu);  ///< its name in the program folder
  disc_look disc_button::*look;   ///< what a button has for it
};

const overlay_kind highlight{"highlight", run_file::highlight_picture, &disc_button::highlight};
const overlay_kind select{"select", run_file::select_picture, &disc_button::select};

std::string blank_picture(const disc_description& d, const run_paths& where,
                          const std::string& target) {
  return in_double_quotes(where.tool("gm")) + " convert -size " + video_size(d) +
         " null:" + transparent + " " + in_double_quotes(target);
}

// `corners` is what stands after "roundrectangle "; 2,3 are the radii of the rounded corners.
std::string drawing(const run_paths& where, const std::string& colour, const std::string& corners,
                    const std::string& target) {
  return in_double_quotes(where.tool("gm")) + " mogrify +antialias -fill " + colour + " -draw " +
         in_double_quotes("roundrectangle " + corners + ", 2,3") + " " + in_double_quotes(target);
}

// Corners that are computed carry the leading blank of the number texts, those taken from the
// record do not.
std::string filled_corners(const rounded_box& r) {
  return trimmed(r.left) + "," + trimmed(r.top) + " " + leading_blank(r.right) + "," +
         leading_blank(r.bottom);
}

std::string inner_corners(const rounded_box& r) {
  return leading_blank(r.left) + "," + leading_blank(r.top) + " " + leading_blank(r.right) + "," +
         leading_blank(r.bottom);
}

void add_coloured_button(std::string& text, const run_paths& where, const button_box& r,
                         const std::string& colour, int thickness, const std::string& target) {
  add_line(text, drawing(where, colour, filled_corners(filled_shape(r)), target));
  // A frame thicker than its button has no inside: gm refuses that drawing and leaves the picture
  // as it is.
  if (const auto inside = cleared_shape(r, thickness))
    add_line(text, drawing(where, transparent, inner_corners(*inside), target));
}

void add_bitmap_button(std::string& text, const run_paths& where, const button_box& r,
                       const std::string& bitmap, const std::string& target) {
  const std::string pasted = native_from_stored(bitmap, where.style);
  add_line(text, in_double_quotes(where.tool("gm")) + " composite -geometry +" + trimmed(r.left) +
                     "+" + trimmed(r.top) + " " + in_double_quotes(pasted) + " " +
                     in_double_quotes(target) + " " + in_double_quotes(target));
}

void add_button(std::string& text, const disc_description& d, const run_paths& where, int menu,
                const disc_button& b, const disc_look& look, const std::string& target) {
  if (look.is_bitmap)
    add_bitmap_button(text, where, box_of(b), look.text, target);
  else
    add_coloured_button(text, where, box_of(b), look.text,
                        static_cast<int>(d.menu(menu).thickness.value), target);
}

// All buttons of one picture.
void add_picture(std::string& text, const disc_description& d, const run_paths& where, int menu,
                 const overlay_kind& kind) {
  int number = 0;
  for (const disc_button& b : d.menu(menu).buttons) {
    add_line(text, std::string("echo *generating ") + kind.name + " button" +
                       leading_blank(++number) + " for menu" + leading_blank(menu));
    add_button(text, d, where, menu, b, b.*kind.look, where.in_app(kind.file(menu)));
  }
}

std::string button_element(const disc_button& b) {
  const auto value = [](const char* name, std::string_view text) {
    return std::string(" ") + name + "=" + in_double_quotes(text);
  };
  return "    <button" + value("x0", trim_left(b.x0.text)) + value("y0", trimmed(box_of(b).top)) +
         value("x1", trim_left(b.x1.text)) + value("y1", trim_left(b.y1.text)) + "/>";
}

}  // namespace

std::string video_size(const disc_description& d) {
  return "720x" + trimmed(d.picture_height());
}

std::string menu_subpicture_xml(const disc_description& d, const run_paths& where, int menu) {
  const auto path = [&](const overlay_kind& kind) {
    return in_double_quotes(escape_ampersands(where.in_app(kind.file(menu))));
  };
  const std::string indent = "         ";

  std::string text;
  add_line(text, R"(<?xml version="1.0" encoding="UTF-8"?>)");
  add_line(text, "<subpictures>");
  add_line(text, "  <stream>");
  add_line(text, "    <spu start=" + in_double_quotes(d.menu(menu).spu_begin.text) +
                     " end=" + in_double_quotes(d.menu(menu).spu_end.text));
  add_line(text, indent + "highlight=" + path(highlight));
  add_line(text, indent + "select=" + path(select));
  add_line(text, indent + R"(transparent="010101" force="yes")");
  add_line(text, indent + R"(autoorder="rows">)");
  for (const disc_button& b : d.menu(menu).buttons)
    add_line(text, button_element(b));
  add_line(text, "    </spu>");
  add_line(text, "  </stream>");
  add_line(text, "</subpictures>");
  return text;
}

std::string button_image_commands(const disc_description& d, const run_paths& where, int menu) {
  std::string text;
  for (const overlay_kind& kind : {highlight, select})
    add_line(text, blank_picture(d, where, where.in_app(kind.file(menu))));
  for (const overlay_kind& kind : {highlight, select})
    add_picture(text, d, where, menu, kind);
  return text;
}

}  // namespace corvane
