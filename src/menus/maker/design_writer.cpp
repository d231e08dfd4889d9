#include "menus/maker/design_writer.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "menus/maker/page_rows.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>
#include <variant>

namespace corvane {
namespace {

std::string hex_colour(const page_colour& colour) {
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text = "#";
  for (const int part : {+colour.red, +colour.green, +colour.blue, +colour.alpha}) {
    text += digits[static_cast<std::size_t>(part / 16)];
    text += digits[static_cast<std::size_t>(part % 16)];
  }
  if (colour.alpha == 255)
    text.resize(7);
  return text;
}

const char* yes_or_no(bool value) {
  return value ? "yes" : "no";
}

std::string align_word(page_align align) {
  return align == page_align::begin ? "left" : align == page_align::middle ? "centre" : "right";
}

std::string direction_word(colour_background::direction towards) {
  switch (towards) {
    case colour_background::direction::right:
      return "right";
    case colour_background::direction::down_right:
      return "down right";
    case colour_background::direction::up_right:
      return "up right";
    case colour_background::direction::outward:
      return "outward";
    case colour_background::direction::down:
      break;
  }
  return "down";
}

std::string arrangement_word(menu_arrangement arrangement) {
  switch (arrangement) {
    case menu_arrangement::thumbnails_list:
      return "list with thumbnails";
    case menu_arrangement::grid:
      return "grid";
    case menu_arrangement::list:
      break;
  }
  return "list";
}

class design_writer {
 public:
  std::string write(const menu_design& design) {
    add("name", design.name);
    if (!design.about.empty())
      add("about", design.about);
    add_background(design.background);
    add_edge("upper band", design.upper_band);
    add_edge("lower band", design.lower_band);
    add_text("heading", design.heading, design.heading_panel);
    add_edge("rule", design.heading_rule);
    add_entries(design);
    add_text("entry", design.entry, design.entry_panel);
    add_look(design.entry_look);
    begin("thumbnail");
    add_edge("border", design.thumbnail_border, design.thumbnail_border_colour);
    add_edge("shadow", design.thumbnail_shadow);
    add_text("way", design.way, design.way_panel);
    add_look(design.way_look);
    begin("buttons");
    add("frame", trimmed(design.frame));
    return text_;
  }

 private:
  void begin(const std::string& section) { text_ += "\n[" + section + "]\n"; }
  void add(const std::string& key, const std::string& value) {
    text_ += key + " = " + value + "\n";
  }
  void add_edge(const std::string& key, int width, const page_colour& colour) {
    add(key, trimmed(width) + " " + hex_colour(colour));
  }
  void add_edge(const std::string& key, const design_edge& edge) {
    add_edge(key, edge.lines, edge.colour);
  }

  void add_background(const page_background& background) {
    begin("background");
    if (const auto* const colours = std::get_if<colour_background>(&background)) {
      add("colours", hex_colour(colours->from) + " " + hex_colour(colours->to));
      add("direction", direction_word(colours->towards));
    } else if (const auto* const picture = std::get_if<picture_background>(&background)) {
      add("picture", picture->file);
      add("fit", picture->fit == page_fit::fill ? "fill" : "whole");
      add("around", hex_colour(picture->around));
      add("shade", hex_colour(picture->shade));
    } else {
      add("video", "yes");
    }
  }

  void add_text(const std::string& section, const design_text& text, const design_panel& panel) {
    begin(section);
    add("font", join(text.style.families, ", "));
    add("size", trimmed(text.style.size));
    add("least size", trimmed(text.least_size));
    add("lines", trimmed(text.most_lines));
    add("bold", yes_or_no(text.style.bold));
    add("italic", yes_or_no(text.style.italic));
    add("colour", hex_colour(text.style.colour));
    add_edge("outline", text.style.outline, text.style.outline_colour);
    add_edge("shadow", text.style.shadow, text.style.shadow_colour);
    add("align", align_word(text.align));
    add_panel("panel ", panel);
  }

  void add_panel(const std::string& before, const design_panel& panel) {
    add(before + "colour", hex_colour(panel.colour));
    add(before + "radius", trimmed(panel.radius));
    add_edge(before + "border", panel.border, panel.border_colour);
  }

  void add_look(const design_look& look) {
    add("highlight", look.highlight);
    add("select", look.select);
  }

  void add_entries(const menu_design& design) {
    begin("entries");
    add("arrangement", arrangement_word(design.arrangement));
    add("columns", trimmed(design.columns));
    add("rows", trimmed(design.rows));
    add("gap", trimmed(design.gap));
    add_panel("sheet ", design.sheet);
  }

  std::string text_;
};

}  // namespace

std::string written_design(const menu_design& design) {
  return design_writer().write(design);
}

menu_design with_entries(menu_design design, int columns, int rows) {
  constexpr int most = 36 - most_ways, most_columns = 6, most_rows = 12;
  design.columns = std::clamp(columns, 1, most_columns);
  design.rows = std::clamp(rows, 1, std::min(most_rows, most / design.columns));
  while (design.rows > 1 && why_no_room(design))
    --design.rows;
  while (design.columns > 1 && why_no_room(design))
    --design.columns;
  return design;
}

menu_design arranged(menu_design design, menu_arrangement arrangement) {
  if (design.arrangement == arrangement)
    return design;
  design.arrangement = arrangement;
  // Captions stand below the middle of their pictures, other texts at their side.
  design.entry.align =
      arrangement == menu_arrangement::grid ? page_align::middle : page_align::begin;
  switch (arrangement) {
    case menu_arrangement::list:
      return with_entries(std::move(design), 1, 6);
    case menu_arrangement::thumbnails_list:
      return with_entries(std::move(design), 1, 4);
    case menu_arrangement::grid:
      break;
  }
  return with_entries(std::move(design), 3, 2);
}

}  // namespace corvane
