#include "side/made_report.h"

#include "project/title_rows.h"

#include <string_view>
#include <utility>

namespace corvane::side {
namespace {

const std::vector<std::string> name_pieces = {"a",
                                              "Z9",
                                              "<",
                                              ">",
                                              "&",
                                              "\"",
                                              "'",
                                              "<b",
                                              "<b>",
                                              "&amp;",
                                              "<!--",
                                              "-->",
                                              "&lt",
                                              "&#0;",
                                              "&#x41;",
                                              "<ul>",
                                              "<li>",
                                              "<script>",
                                              "<p>",
                                              "<img src=x onerror=alert(1)>",
                                              "<![CDATA[",
                                              "<title>",
                                              "ü",
                                              "Größe",
                                              "ß",
                                              "Þórr",
                                              "漢字",
                                              "映画",
                                              "한국어",
                                              "עברית",
                                              "€",
                                              "📀",
                                              "\xC2\xA0",
                                              "\xC2\x80",
                                              "\xC2\x85",
                                              "\xC2\x9F",
                                              "\x01",
                                              "\x1B",
                                              "\x7F",
                                              "\ty",
                                              " y",
                                              "  y",
                                              "(3 chapters)",
                                              "  (2 buttons)",
                                              "\xEF\xBF\xBE",
                                              "\xE2\x80\xAE",
                                              "%41"};
const std::vector<std::string> closing_pieces = {"</ul>", "</li>", "</script>", "</b>", "</html>"};

}  // namespace

std::string as_shown(std::string text) {
  const std::string replacement = "\xEF\xBF\xBD";
  std::string shown;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    const bool high_control = byte == 0xC2 && static_cast<unsigned char>(text[i + 1]) < 0xA0;
    const bool control = (byte < 0x20 && byte != '\t') || byte == 0x7F || high_control;
    shown += control ? replacement : text.substr(i, 1);
    i += high_control ? 1 : 0;
  }
  return shown;
}

std::string made_report::name() {
  std::string made = "n";
  for (int pieces = 1 + number(5); pieces > 0; --pieces)
    made += one_of(name_pieces);
  return made;
}

std::string made_report::text() {
  return one_of({"jump title ", "jump menu ", "call ", ""}) + name() +
         (number(3) == 0 ? one_of(closing_pieces) : "");
}

void made_report::add_title() {
  const std::string video = name() + ".m2v", audio = name() + ".ac3";
  corvane::add_title(p, "\\v\\" + video + "/\\sound\\" + audio);
  const int chapters = number(5);
  p.chapters.back() = chapters == 0 ? "" : "00:00:00.00";
  for (int i = 1; i < chapters; ++i)
    p.chapters.back() += ",00:0" + std::to_string(i) + ":00.00";
  expected.titles.push_back(
      {as_shown("title" + std::to_string(p.List1.size()) + ":" + video + "/" + audio), chapters});
}

std::string made_report::add_button(std::vector<shown_button>& shown) {
  const shown_button b{number(360), number(240), 360 + number(360), 240 + number(240), text()};
  std::string target = b.target;
  // A "/" would end the field.
  for (std::size_t at; (at = target.find('/')) != std::string::npos;)
    target.erase(at, 1);
  shown.push_back({b.x0, b.y0, b.x1, b.y1, as_shown(target)});
  return " " + std::to_string(b.x0) + "/ " + std::to_string(b.y0) + "/ " + std::to_string(b.x1) +
         "/ " + std::to_string(b.y1) + "/" + target + "/red/blue";
}

void made_report::add_menu() {
  const std::string video = name() + ".m2v", audio = number(2) == 0 ? "" : name() + ".mp2";
  p.menulist.push_back("\\m\\" + video + "/" + (audio.empty() ? "" : "\\m\\" + audio));
  auto& shown = expected.buttons.emplace_back();
  std::string buttons;
  const int count = number(5);
  for (int b = 0; b < count; ++b)
    buttons += (b == 0 ? "" : "|") + add_button(shown);
  p.menubuttons.push_back(buttons);
  expected.menus.push_back({as_shown("menu" + std::to_string(p.menulist.size()) + ":" + video +
                                     (audio.empty() ? "" : "/" + audio)),
                            count});
}

made_report::made_report(unsigned seed) : dice_(seed) {
  const int titles = number(6), menus = number(4);
  for (int i = 0; i < titles; ++i)
    add_title();
  for (int i = 0; i < titles; ++i) {
    const std::string command = text();
    p.postinfo.push_back(command + std::string(5, ' '));
    expected.post_commands.push_back(as_shown(command));
  }
  if (menus > 0)
    p.menubuttons.clear();
  for (int i = 0; i < menus; ++i)
    add_menu();
  if (number(2) == 0)
    p.firstplay = text();
  expected.first = p.firstplay != "<default>" ? as_shown(p.firstplay)
                   : menus > 0                ? "Menu 1"
                                              : "Title 1";
}

}  // namespace corvane::side
