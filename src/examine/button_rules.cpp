#include "examine/button_rules.h"

#include "examine/button_neighbours.h"
#include "examine/colour_groups.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <set>
#include <string>
#include <utility>

namespace corvane {
namespace {

using severity = finding_severity;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

constexpr std::size_t most_buttons = most_menu_buttons;
constexpr int picture_width = 720;

constexpr std::string_view dvd_video_highlights =
    "DVD Forum, book of the DVD-Video format: highlight information";
constexpr std::string_view spumux_measured = "spumux 0.7.2, measured";
constexpr std::string_view move_button =
    "move the button in \"edit existing titleset menu\" (\"left position\", \"y position\", "
    "\"width\", \"height\")";
constexpr std::string_view run_fails_at_menu = "nothing: the run fails at this menu";

constexpr std::array button_rules_table = {
    rule{"button-edge-not-number", severity::error, "The edges of a button are numbers",
         "four numbers of pixels", run_fails_at_menu, move_button, spumux_measured},
    rule{"button-edge-not-whole", severity::error, "The edges of a button are whole pixels",
         "whole numbers of pixels, without a sign or a fraction", run_fails_at_menu, move_button,
         spumux_measured},
    rule{"button-without-area", severity::error,
         "A button's right and lower edges are behind its left and upper ones",
         "a right edge greater than the left one and a lower edge greater than the upper one",
         run_fails_at_menu, move_button, "spumux 0.7.2 and GraphicsMagick 1.3.40, measured"},
    rule{"button-too-small", severity::error, "A button is large enough to be drawn",
         "at least 6 by 2 or 4 by 3 pixels", "a menu without this button", move_button,
         "GraphicsMagick 1.3.40, measured"},
    rule{"button-outside-picture", severity::error, "Buttons stand in the picture",
         "edges within the picture of 720 by 480 (NTSC) or 576 (PAL) pixels", run_fails_at_menu,
         move_button, spumux_measured},
    rule{"button-outside-safe-area", severity::note,
         "Buttons stand where every television shows them",
         "5 % of the picture or more from each of its sides",
         "perhaps only a part of the button: many televisions cut the picture's margin off",
         move_button, "action-safe area of 90 % (SMPTE RP 27.3)"},
    rule{"button-odd-line", severity::note, "Buttons begin and end on even lines",
         "an even number for the upper and the lower edge",
         "perhaps a button whose first or last line flickers", move_button,
         "interlaced pictures; a warning of spumux"},
    rule{"button-overlap", severity::warning, "Buttons do not overlap", "a place of its own",
         "buttons of which one hides a part of the other; with a mouse, the wrong one may be hit, "
         "and no arrow key leads from one to the other",
         move_button, "spumux 0.7.2, its choice of neighbours"},
    rule{"button-not-reachable", severity::warning, "The arrow keys lead to each button",
         "a place to which the arrow keys lead from the first button on",
         "a button that only number keys or a mouse get to",
         "move the button in line with another one, or change the order of the buttons",
         "spumux 0.7.2, its choice of neighbours"},
    rule{"menu-too-many-buttons", severity::error, "A menu has at most 36 buttons",
         "at most 36 buttons in a menu",
         "nothing: the run fails when everything has been multiplexed",
         "delete buttons in \"edit existing titleset menu\", or make a second menu",
         dvd_video_highlights},
    rule{"menu-too-many-wide-buttons", severity::error, "A menu of 16:9 has at most 12 buttons",
         "at most 12 buttons in a menu of 16:9: the disc has each of them three times, for wide "
         "displays and for the two ways in which narrow ones show the menu",
         "buttons behind the 12th that stand where the first ones are and lead where these lead",
         "spread the buttons over two menus, or give the menus pictures of 4:3",
         "DVD Forum, book of the DVD-Video format: highlight information; dvdauthor 0.7.2, "
         "measured"},
    rule{"button-colour-unknown", severity::error, "The colours of a button are offered ones",
         "one of the colours that the menu editor offers", run_fails_at_menu,
         "choose another colour in \"edit existing titleset menu\"",
         "the colours that this program draws with"},
    rule{"menu-too-many-colours", severity::error,
         "A menu's buttons have at most nine pairs of highlight and select colour",
         "at most nine pairs of a highlight and a select colour in a menu",
         "a menu whose buttons cannot be seen",
         "give buttons of the menu the same colours: \"fewer looks\" in the menu editor, in its "
         "menu "
         "\"buttons\"",
         "DVD Forum, book of the DVD-Video format: three groups of colours; "
         "spumux 0.7.2, measured"},
    rule{
        "menu-colours-too-slow", severity::error,
        "spumux finds in time how a player can show the menu's colours",
        "fewer looks (pairs of highlight and select), or buttons of one look behind each other, so "
        "that spumux is done in about ten seconds",
        "nothing: the run does not get past this menu",
        "\"order by look\" or \"fewer looks\" in the menu editor, in its menu \"buttons\"",
        spumux_measured},
    rule{"menu-frame-thickness", severity::error, "The frame around a button has a thickness",
         "a thickness of 0 or more", "a button without its middle",
         "set \"box thickness\" in \"edit existing titleset menu\"", "what this program draws"},
    rule{"menu-button-time", severity::error, "The times of a menu's buttons can be read",
         "a time such as 00:00:00.0", run_fails_at_menu,
         "set the times again under \"advanced\" in \"edit existing titleset menu\"",
         spumux_measured},
    rule{"menu-button-time-order", severity::error, "A menu's buttons end after they begin",
         "an end after the beginning, or 0 for buttons that stay",
         "a menu whose buttons cannot be seen",
         "set the times again under \"advanced\" in \"edit existing titleset menu\"",
         spumux_measured},
    rule{"menu-button-time-late", severity::error,
         "A menu's buttons come up before the menu has ended",
         "a beginning before the end of the menu's stream", "a menu whose buttons cannot be seen",
         "let the buttons begin earlier, under \"advanced\" in \"edit existing titleset menu\"",
         spumux_measured},
    rule{"menu-buttons-vanish", severity::warning, "The buttons of a menu that stays do so too",
         "no end time for the buttons of a menu that does not loop",
         "a menu whose buttons go after a time and do not come back",
         "set the end time to 0, or \"loop menu\", in \"edit existing titleset menu\"",
         "DVD Forum, book of the DVD-Video format: still after the last cell"},
    rule{"menu-sound-ends", severity::note, "A menu with sound begins again at its end",
         "\"loop menu\" for a menu with sound",
         "a menu that is silent when its sound has been played once",
         "set \"loop menu\" in \"edit existing titleset menu\", if the sound shall go on",
         "DVD Forum, book of the DVD-Video format: still after the last cell"},
};

/// spumux takes digits, perhaps behind blanks, and nothing else; no picture has a million pixels.
bool is_whole(const std::string& text) {
  const std::string_view digits = trim_left(text);
  return !digits.empty() && digits.size() <= 6 &&
         digits.find_first_not_of("0123456789") == std::string_view::npos;
}

/// Of a menu of another program nothing is known of its buttons but what they do.
bool is_of_another_program(const disc_menu& m) {
  return m.files.size() == 1 &&
         std::all_of(m.buttons.begin(), m.buttons.end(), [](const disc_button& b) {
           return b.x0.text.empty() && b.y0.text.empty() && b.x1.text.empty() && b.y1.text.empty();
         });
}

/// "3", "3 and 4", "3, 4 and 7".
std::string listed(const std::vector<int>& numbers) {
  std::string text;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    if (i > 0)
      text += i + 1 == numbers.size() ? " and " : ", ";
    text += trimmed(numbers[i]);
  }
  return text;
}

/// Where edges stand as spumux gets them: the upper one is rounded before.
button_edges edges_of(const disc_button& b) {
  return {static_cast<int>(b.x0.value), static_cast<int>(std::nearbyint(b.y0.value)),
          static_cast<int>(b.x1.value), static_cast<int>(b.y1.value)};
}

bool overlap(const button_edges& a, const button_edges& b) {
  return a.x0 < b.x1 && b.x0 < a.x1 && a.y0 < b.y1 && b.y0 < a.y1;
}

/// Of rounded rectangles as small as these GraphicsMagick draws nothing.
bool is_too_small_to_draw(const button_edges& e) {
  const int width = e.x1 - e.x0, height = e.y1 - e.y0;
  return width < 4 || height < 2 || (width < 6 && height < 3);
}

class menu_examiner {
 public:
  /// `copies`: how often the disc has each button of the menu.
  menu_examiner(const disc_description& d, int menu, std::optional<double> seconds, int copies,
                std::vector<finding>& findings)
      : disc_(d),
        menu_(d.menu(menu)),
        number_(menu),
        seconds_(seconds),
        copies_(copies),
        findings_(findings) {}

  void examine() {
    look_at_count();
    if (is_of_another_program(menu_))
      return;
    look_at_options();
    look_at_times();
    for (std::size_t i = 0; i < menu_.buttons.size(); ++i)
      look_at_button(static_cast<int>(i) + 1, menu_.buttons[i]);
    look_at_colours();
    // More buttons than a menu holds would take the square of their number.
    if (all_have_a_place_ && menu_.buttons.size() <= most_buttons)
      look_at_places();
  }

 private:
  void add(std::string_view rule, int button, std::string found, std::string wanted = {}) {
    const finding_item item{whole::menu, number_, button == 0 ? part::whole : part::button, button};
    findings_.push_back(
        finding_of(button_rules_table, rule, item, std::move(found), std::move(wanted)));
  }

  // The menu --------------------------------------------------------------------------------------

  void look_at_count() {
    const std::string count = "the menu has " + std::to_string(menu_.buttons.size()) + " buttons";
    const int most = most_menu_buttons / copies_;
    if (menu_.buttons.size() > most_buttons)
      add("menu-too-many-buttons", 0, count);
    else if (std::ssize(menu_.buttons) > most)
      add("menu-too-many-wide-buttons", 0, count + " and is 16:9 on the disc");
  }

  void look_at_options() {
    if (menu_.thickness.value < 0)
      add("menu-frame-thickness", 0,
          "the frames around buttons are " + sanitized_quoted(menu_.thickness.text) +
              " pixels thick");
    if (!menu_.audio().empty() && !menu_.loop)
      add("menu-sound-ends", 0, "the menu has sound and does not loop");
  }

  static bool is_time(const text_time& time) {
    return !time.text.empty() && time.text.find_first_not_of("0123456789:.") == std::string::npos &&
           time.seconds;
  }

  void look_at_times() {
    bool are_times = true;
    for (const text_time& time : {menu_.spu_begin, menu_.spu_end})
      if (!is_time(time)) {
        are_times = false;
        add("menu-button-time", 0,
            "the buttons have the time " + sanitized_quoted(time.text) + ", which is none");
      }
    if (!are_times || menu_.buttons.empty())
      return;
    const double begin = *menu_.spu_begin.seconds, end = *menu_.spu_end.seconds;
    if (end > 0 && end <= begin)
      add("menu-button-time-order", 0,
          "the buttons begin at " + time_text(begin) + " and end at " + time_text(end));
    else if (seconds_ && begin >= *seconds_)
      add("menu-button-time-late", 0,
          "the buttons begin at " + time_text(begin) + ", but the menu ends at " +
              time_text(*seconds_));
    else if (end > 0 && !menu_.loop)
      add("menu-buttons-vanish", 0,
          "the buttons end at " + time_text(end) + ", but the menu stays");
  }

  // One button ------------------------------------------------------------------------------------

  void look_at_button(int number, const disc_button& b) {
    look_at_look(number, b);
    if (!look_at_numbers(number, b)) {
      all_have_a_place_ = false;
      return;
    }
    const button_edges e = edges_of(b);
    const int height = disc_.picture_height();
    const std::string place =
        trimmed(e.x0) + "," + trimmed(e.y0) + " to " + trimmed(e.x1) + "," + trimmed(e.y1);
    if (e.x1 <= e.x0 || e.y1 <= e.y0) {
      all_have_a_place_ = false;
      add("button-without-area", number, "the button reaches from " + place);
    } else if (e.x1 > picture_width || e.y1 > height) {
      add("button-outside-picture", number,
          "the button reaches from " + place + ", but the picture only to 720," + trimmed(height));
    } else {
      look_at_inside(number, b, e, place);
    }
  }

  bool look_at_numbers(int number, const disc_button& b) {
    bool all_whole = true;
    const std::pair<const char*, const text_number*> edges[] = {
        {"left", &b.x0}, {"upper", &b.y0}, {"right", &b.x1}, {"lower", &b.y1}};
    for (const auto& [name, edge] : edges) {
      const bool is_rounded = edge == &b.y0 && edge->is_number && edge->value >= 0;
      if (is_whole(edge->text) || is_rounded)
        continue;
      all_whole = false;
      add(edge->is_number ? "button-edge-not-whole" : "button-edge-not-number", number,
          std::string("the ") + name + " edge is " + sanitized_quoted(edge->text));
    }
    return all_whole && b.y0.value < 1e6;
  }

  void look_at_inside(int number, const disc_button& b, const button_edges& e,
                      const std::string& place) {
    const bool is_drawn = !b.highlight.is_bitmap || !b.select.is_bitmap;
    if (is_drawn && is_too_small_to_draw(e))
      add("button-too-small", number,
          "the button is " + trimmed(e.x1 - e.x0) + " pixels wide and " + trimmed(e.y1 - e.y0) +
              " high");
    if (e.y0 % 2 != 0 || e.y1 % 2 != 0)
      add("button-odd-line", number,
          "the button's upper edge is " + trimmed(e.y0) + " and its lower edge " + trimmed(e.y1));
    const int height = disc_.picture_height();
    const int side = picture_width / 20, top = (height + 19) / 20;
    if (e.x0 < side || e.x1 > picture_width - side || e.y0 < top || e.y1 > height - top)
      add("button-outside-safe-area", number, "the button reaches from " + place,
          "within " + trimmed(side) + "," + trimmed(top) + " to " + trimmed(picture_width - side) +
              "," + trimmed(height - top));
  }

  void look_at_look(int number, const disc_button& b) {
    const std::pair<const char*, const disc_look*> looks[] = {{"highlight", &b.highlight},
                                                              {"select", &b.select}};
    for (const auto& [name, look] : looks) {
      const bool known = look->is_bitmap || std::find(button_colours.begin(), button_colours.end(),
                                                      look->text) != button_colours.end();
      if (!known)
        add("button-colour-unknown", number,
            std::string("the ") + name + " colour is " + sanitized_quoted(look->text));
    }
  }

  // All of them
  // -------------------------------------------------------------------------------------

  void look_at_colours() {
    std::set<std::pair<std::string, std::string>> pairs;
    for (const disc_button& b : menu_.buttons)
      if (!b.highlight.is_bitmap && !b.select.is_bitmap)
        pairs.emplace(b.highlight.text, b.select.text);
    if (std::ssize(pairs) > most_looks)
      add("menu-too-many-colours", 0,
          "the buttons have " + std::to_string(pairs.size()) +
              " pairs of highlight and select colour");
    else if (menu_.buttons.size() <= most_buttons)
      look_at_time_for_looks();
  }

  void look_at_time_for_looks() {
    const std::vector<int> looks = looks_of(menu_.buttons);
    if (are_looks_too_slow(looks))
      add("menu-colours-too-slow", 0,
          "the menu has " + std::to_string(looks.size()) + " buttons in " +
              trimmed(count_of_looks(looks)) +
              " looks: in this order spumux does not find in time how a player can show them");
  }

  void look_at_places() {
    std::vector<button_edges> edges;
    edges.reserve(menu_.buttons.size());
    for (const disc_button& b : menu_.buttons)
      edges.push_back(edges_of(b));
    for (std::size_t a = 0; a < edges.size(); ++a) {
      std::vector<int> others;
      for (std::size_t b = a + 1; b < edges.size(); ++b)
        if (overlap(edges[a], edges[b]))
          others.push_back(static_cast<int>(b) + 1);
      if (!others.empty())
        add("button-overlap", static_cast<int>(a) + 1,
            std::string("the button overlaps with button") + (others.size() > 1 ? "s " : " ") +
                listed(others));
    }
    for (const int button : buttons_out_of_reach(edges))
      add("button-not-reachable", button,
          "no arrow keys lead from button 1 to button " + trimmed(button));
  }

  const disc_description& disc_;
  const disc_menu& menu_;
  int number_;
  std::optional<double> seconds_;
  int copies_;
  std::vector<finding>& findings_;
  bool all_have_a_place_ = true;
};

}  // namespace

std::span<const rule> button_rules() {
  return button_rules_table;
}

std::vector<finding> button_findings(const disc_description& d, std::span<const menu_facts> facts) {
  std::vector<finding> findings;
  for (int menu = 1; menu <= d.menu_count(); ++menu) {
    const auto i = static_cast<std::size_t>(menu) - 1;
    const std::optional<double> seconds = i < facts.size() ? facts[i].seconds : std::nullopt;
    const int copies = copies_of_buttons(d.menus, d.menu(menu).titleset, facts);
    menu_examiner(d, menu, seconds, copies, findings).examine();
  }
  return findings;
}

}  // namespace corvane
