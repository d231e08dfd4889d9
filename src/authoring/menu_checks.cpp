#include "authoring/row_checks.h"
#include "examine/colour_groups.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "project/menu_rows.h"
#include "project/project_file.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace corvane {
namespace {

constexpr int most_buttons = 36;

std::string menu_named(int menu) {
  return "Menu " + trimmed(menu);
}

std::string button_named(int menu, int button) {
  return "Button " + trimmed(button) + " of menu " + trimmed(menu);
}

refusal why_not_menu_file(int menu, const std::string& file, path_style style) {
  if (const refusal why = why_not_usable_path(file, style))
    return menu_named(menu) + " cannot be authored: the file name " + sanitized_quoted(file) + " " +
           *why + ".  Please remove the menu, rename the file and add the menu again.";
  return std::nullopt;
}

refusal why_not_menu_streams(const disc_menu& m, int menu, path_style style) {
  if (const refusal why = why_not_menu_file(menu, native_from_stored(m.video(), style), style))
    return why;
  const std::string audio = native_from_stored(m.audio(), style);
  return audio.empty() ? std::nullopt : why_not_menu_file(menu, audio, style);
}

refusal why_not_options(const disc_menu& m, int menu) {
  for (const std::string& time : {m.spu_begin.text, m.spu_end.text})
    if (time.empty() || time.find_first_not_of("0123456789:.") != std::string::npos)
      return menu_named(menu) + " has the button time " + sanitized_quoted(time) +
             ", which is not of the form 00:00:00.0.  Please edit the menu.";
  // The inside of a frame without lines would clear what is around it.
  if (m.thickness.value < 0)
    return menu_named(menu) + " has the box thickness " +
           trimmed(static_cast<int>(m.thickness.value)) +
           ", but the lines of a box cannot be thinner than nothing.  Please edit the menu.";
  return std::nullopt;
}

// Of rounded rectangles as small as these gm draws nothing at all.
bool is_too_small_to_draw(double width, double height) {
  return width < 4 || height < 2 || (width < 6 && height < 3);
}

// spumux takes no rectangle that reaches out of the picture, gm draws none that has no inside.
refusal why_not_edges(const disc_description& d, int menu, int button, const disc_button& b) {
  for (const text_number& edge : {b.x0, b.y0, b.x1, b.y1})
    if (!edge.is_number)
      return button_named(menu, button) + " has the position " + sanitized_quoted(edge.text) +
             ", which is not a number.  Please edit the menu.";
  const int height = d.picture_height();
  const double x0 = b.x0.value, x1 = b.x1.value, y0 = b.y0.value, y1 = b.y1.value;
  if (x0 < 0 || y0 < 0 || x1 > 720 || y1 > height)
    return button_named(menu, button) + " reaches out of the picture of 720 by " + trimmed(height) +
           ".  Please edit the menu.";
  const bool is_drawn = !b.highlight.is_bitmap || !b.select.is_bitmap;
  if (x1 <= x0 || y1 <= y0 || (is_drawn && is_too_small_to_draw(x1 - x0, y1 - y0)))
    return button_named(menu, button) + " is too small to be drawn.  Please edit the menu.";
  return std::nullopt;
}

refusal why_not_bitmap_name(int menu, int button, const std::string& file, path_style style) {
  refusal why = why_not_usable_path(file, style);
  // gm picks how to read a file by its name too, and some of its readers are scripts.
  if (!why && lower_extension_of(file) != "bmp")
    why = "does not end in .bmp";
  if (!why)
    return std::nullopt;
  return button_named(menu, button) + " cannot be authored: the bitmap's file name " +
         sanitized_quoted(file) + " " + *why + ".  Please rename the file and edit the menu.";
}

refusal why_not_look(int menu, int button, const disc_button& b, path_style style) {
  for (const disc_look& look : {b.highlight, b.select}) {
    if (look.is_bitmap) {
      const std::string file = native_from_stored(look.text, style);
      if (const refusal why = why_not_bitmap_name(menu, button, file, style))
        return why;
    } else if (std::find(button_colours.begin(), button_colours.end(), look.text) ==
               button_colours.end()) {
      return button_named(menu, button) + " has the colour " + sanitized_quoted(look.text) +
             ", which is none of those a button can have.  Please edit the menu.";
    }
  }
  return std::nullopt;
}

// A button has one of three groups of four colours, one of them the background; each is a highlight
// and a select colour. spumux skips a picture that needs more, with status 0.
refusal why_not_colour_pairs(int menu, const std::vector<disc_button>& buttons) {
  std::set<std::pair<std::string, std::string>> pairs;
  int number = 0;
  for (const disc_button& b : buttons) {
    ++number;
    if (!b.highlight.is_bitmap && !b.select.is_bitmap)
      pairs.emplace(b.highlight.text, b.select.text);
    if (std::ssize(pairs) > most_looks)
      return button_named(menu, number) + " cannot be shown: with it the menu uses " +
             std::to_string(pairs.size()) +
             " combinations of highlight and select colour, but a DVD menu can show 9.  Please "
             "edit the menu.";
  }
  return std::nullopt;
}

refusal why_not_colours(int menu, const std::vector<disc_button>& buttons) {
  if (const refusal why = why_not_colour_pairs(menu, buttons))
    return why;
  const std::vector<int> looks = looks_of(buttons);
  if (are_looks_too_slow(looks))
    return menu_named(menu) + " has " + std::to_string(buttons.size()) + " buttons in " +
           trimmed(count_of_looks(looks)) +
           " combinations of highlight and select, in an order in which the tool spumux would look "
           "too long for a way to show them all.  Please edit the menu: \"order by look\" in its "
           "menu \"buttons\" lets those of one combination follow each other, \"fewer looks\" "
           "gives "
           "a few buttons the look of others.";
  return std::nullopt;
}

refusal why_not_buttons(const disc_description& d, int menu, path_style style) {
  const std::vector<disc_button>& buttons = d.menu(menu).buttons;
  if (std::ssize(buttons) > most_buttons)
    return button_named(menu, most_buttons + 1) + " is one too many: the menu has " +
           std::to_string(buttons.size()) +
           " buttons, but a DVD menu holds at most 36.  Please edit the menu and delete some.";
  for (int number = 1; number <= static_cast<int>(buttons.size()); ++number) {
    const disc_button& b = buttons[static_cast<std::size_t>(number) - 1];
    if (const refusal why = why_not_edges(d, menu, number, b))
      return why;
    if (const refusal why = why_not_look(menu, number, b, style))
      return why;
  }
  return why_not_colours(menu, buttons);
}

}  // namespace

refusal why_not_menus(const disc_description& d, path_style style) {
  if (d.menu_count() > most_menus)
    return "The project has " + trimmed(d.menu_count()) +
           " menus, but a DVD holds at most 99.  Please remove some.";
  for (int menu = 1; menu <= d.menu_count(); ++menu) {
    if (const refusal why = why_not_menu_streams(d.menu(menu), menu, style))
      return why;
    if (const refusal why = why_not_options(d.menu(menu), menu))
      return why;
    if (const refusal why = why_not_buttons(d, menu, style))
      return why;
  }
  return std::nullopt;
}

}  // namespace corvane
