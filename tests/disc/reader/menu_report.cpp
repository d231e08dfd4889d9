#include "menu_report.h"

#include "drawn_colours.h"
#include "platform/files/paths.h"

#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>

namespace corvane::disc {

namespace {

/// How far a colour may be off after its way through luma and chroma.
constexpr int colour_tolerance = 6;

std::string name_of(const dot& d) {
  for (const named_colour& c : drawn_colours)
    if (std::abs(d.red - c.red) <= colour_tolerance &&
        std::abs(d.green - c.green) <= colour_tolerance &&
        std::abs(d.blue - c.blue) <= colour_tolerance)
      return c.name;
  std::array<char, 40> text{};
  std::snprintf(text.data(), text.size(), "#%02x%02x%02x", static_cast<unsigned>(d.red),
                static_cast<unsigned>(d.green), static_cast<unsigned>(d.blue));
  return text.data();
}

/// The colours that are seen within a button in one state: "yellow", "orange and white", "nothing".
std::string look_of(const overlay& shown, const button& b, button_state state) {
  std::map<std::string, int> seen;
  for (int y = b.y0; y <= b.y1; ++y)
    for (int x = b.x0; x <= b.x1; ++x)
      if (const dot d = shown.at(x, y, &b, state); d.opacity != 0)
        ++seen[name_of(d)];
  std::string text;
  for (const auto& [name, dots] : seen)
    text += (text.empty() ? "" : " and ") + name;
  return text.empty() ? "nothing" : text;
}

std::string name_in(const std::string& native) {
  return std::string(file_name_of(stored_from_native(native)));
}

bool is_file(const std::string& look) {
  return look.find_first_of("/\\") != std::string::npos;
}

std::string place_text(int x0, int y0, int x1, int y1) {
  std::ostringstream text;
  text << x0 << ',' << y0 << " to " << x1 << ',' << y1;
  return text.str();
}

std::optional<std::string> menu_place(int menu, const asked_disc& asked) {
  const auto index = static_cast<std::size_t>(menu) - 1;
  if (menu < 1 || index >= asked.menus.size() || asked.menus[index].buttons.empty())
    return std::nullopt;
  return "menu " + std::to_string(menu);
}

/// Numbers of a command, all of which must match the pattern. Patterns end in "%n".
template <typename... Number>
bool matches(const std::string& command, const char* pattern, Number*... numbers) {
  int used = -1;
  std::sscanf(command.c_str(), pattern, numbers..., &used);
  return used == static_cast<int>(command.size());
}

class menu_reporter {
 public:
  menu_reporter(const contents& on_disc, const asked_disc* asked) : disc_(on_disc), asked_(asked) {}

  std::vector<report_row> rows() {
    std::size_t found = 0;
    for (const menu& m : disc_.menus)
      found += m.chain.seconds > 0 ? 1 : 0;
    add("menus", asked_ ? std::to_string(asked_->menus.size()) : "", std::to_string(found),
        asked_ && found == asked_->menus.size());
    std::size_t n = 0;
    for (const menu& m : disc_.menus)
      if (m.chain.seconds > 0)  // not the chain without pictures that leads to the first menu
        add_menu(m, ++n);
    return std::move(rows_);
  }

 private:
  void add(std::string name, std::string asked, std::string found, std::optional<bool> agrees) {
    verdict says = verdict::not_compared;
    if (agrees && asked_ != nullptr && !asked_->hand_edited)
      says = *agrees ? verdict::agrees : verdict::differs;
    rows_.push_back({std::move(name), std::move(asked), std::move(found), says});
  }

  void add_menu(const menu& m, std::size_t n) {
    const asked_menu* const a =
        asked_ && n <= asked_->menus.size() ? &asked_->menus[n - 1] : nullptr;
    add_stream(m, a, n);
    add("    buttons", a ? std::to_string(a->buttons.size()) : "", std::to_string(m.buttons.size()),
        a && a->buttons.size() == m.buttons.size());
    if (!m.shown && !m.buttons.empty())
      add("    picture", "one of the buttons", "none", false);
    for (std::size_t i = 0; i < m.buttons.size(); ++i)
      add_button(m, i, a && i < a->buttons.size() ? &a->buttons[i] : nullptr);
  }

  void add_stream(const menu& m, const asked_menu* a, std::size_t n) {
    std::string wanted, found = clock_text(m.chain.seconds);
    const std::string sound = a ? lower_extension_of(name_in(a->audio)) : "";
    const double seconds = a ? measured_seconds(a->video) : 0;
    if (a)
      wanted = name_in(a->video) + (sound.empty() ? "" : ", " + sound) +
               (a->loop ? ", loops" : ", stays");
    for (const std::string& format : m.sounds)
      found += ", " + format;
    found += m.chain.still_seconds == 255
                 ? ", stays"
                 : ", again after " + std::to_string(m.chain.still_seconds) + " s";
    const std::vector<std::string> sounds =
        sound.empty() ? std::vector<std::string>() : std::vector{sound == "mpa" ? "mp2" : sound};
    add("  menu " + std::to_string(n), wanted, found,
        a && m.sounds == sounds && m.chain.still_seconds == (a->loop ? 5 : 255) &&
            std::fabs(seconds - m.chain.seconds) < 0.3);
  }

  void add_button(const menu& m, std::size_t i, const asked_button* a) {
    const button& b = m.buttons[i];
    add("    button " + std::to_string(i + 1), a ? place_text(a->x0, a->y0, a->x1, a->y1) : "",
        place_text(b.x0, b.y0, b.x1, b.y1),
        a && a->x0 == b.x0 && a->y0 == b.y0 && a->x1 == b.x1 && a->y1 == b.y1);
    if (m.shown)
      add_look(*m.shown, b, a);
    add_way(m, b, a);
  }

  void add_look(const overlay& shown, const button& b, const asked_button* a) {
    const std::string lit = look_of(shown, b, button_state::highlighted);
    const std::string pressed = look_of(shown, b, button_state::pressed);
    const auto agree = [](const std::string& asked, const std::string& found) {
      return is_file(asked) ? found != "nothing" : found == asked;
    };
    add("      looks", a ? name_in(a->highlight) + ", pressed " + name_in(a->select) : "",
        lit + ", pressed " + pressed, a && agree(a->highlight, lit) && agree(a->select, pressed));
  }

  void add_way(const menu& m, const button& b, const asked_button* a) {
    if (b.leads_to.empty()) {
      add("      goes to", a ? a->action : "", b.command.text(), std::nullopt);
      return;
    }
    const auto expected = a ? place_after(a->action, m.number, *asked_) : std::nullopt;
    add("      goes to", a ? a->action : "", b.leads_to,
        expected ? std::optional(*expected == b.leads_to) : std::nullopt);
    int title = 0, chapter = 0;
    if (b.then.empty() || !matches(b.leads_to, "title %d chapter %d%n", &title, &chapter))
      return;
    const std::string post = post_of(title);
    const auto after = a ? place_after(post, m.number, *asked_) : std::nullopt;
    add("      then", post, b.then, after ? std::optional(*after == b.then) : std::nullopt);
  }

  std::string post_of(int title) const {
    const auto index = static_cast<std::size_t>(title) - 1;
    if (asked_ == nullptr || index >= asked_->titles.size())
      return "";
    return post_command(*asked_, title);
  }

  const contents& disc_;
  const asked_disc* asked_;
  std::vector<report_row> rows_;
};

}  // namespace

std::optional<std::string> place_after(const std::string& command, int menu,
                                       const asked_disc& asked) {
  int number = 0, chapter = 1;
  if (command == "exit")
    return "stopped";
  if (matches(command, "jump title %d%n", &number) ||
      matches(command, "jump title %d chapter %d%n", &number, &chapter))
    return "title " + std::to_string(number) + " chapter " + std::to_string(chapter);
  if (matches(command, "jump menu %d%n", &number))
    return menu_place(number, asked);
  if (asked.jumptable && matches(command, "call menu %d%n", &number))
    return menu_place(number, asked);
  // With the jump table, the first menu forwards to the one remembered.
  if (command == "jump titleset 1 menu" || (asked.jumptable && command == "call last menu"))
    return menu_place(asked.jumptable ? menu : 1, asked);
  if (!asked.jumptable && command == "call menu")
    return menu_place(1, asked);
  return std::nullopt;
}

std::vector<report_row> menu_rows(const contents& on_disc, const asked_disc* asked) {
  return menu_reporter(on_disc, asked).rows();
}

}  // namespace corvane::disc
