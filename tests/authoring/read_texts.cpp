#include "authoring/read_texts.h"

#include "disc/read_navigation.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/xml_reader.h"

#include <stdexcept>
#include <vector>

namespace corvane::testing_support {
namespace {

using lines = std::vector<std::string>;

/// What stands between double quotes in a line, in order.
lines quoted_in(const std::string& line) {
  lines found;
  const lines pieces = split(line, '"');
  for (std::size_t i = 1; i < pieces.size(); i += 2)
    found.push_back(pieces[i]);
  return found;
}

std::string between(const std::string& line, const std::string& before, const std::string& after) {
  const auto at = line.find(before);
  if (at == std::string::npos)
    return {};
  const auto begin = at + before.size();
  return line.substr(begin, line.find(after, begin) - begin);
}

bool names_tool(const std::string& line, const std::string& tool) {
  return line.starts_with('"') && quoted_in(line)[0].ends_with(tool + ".exe");
}

class texts_reader {
 public:
  texts_reader(const run_texts& texts, const run_paths& where) : texts_(texts), where_(where) {
    auto read = read_navigation(texts.at("config.xml"), where.style);
    if (!read)
      throw std::runtime_error(read.error);
    disc_ = std::move(*read);
    script_ = split(texts.at("process.bat"), crlf);
  }

  disc_description read() {
    for (int title = 1; title <= disc_.title_count(); ++title)
      read_title(title);
    for (int menu = 1; menu <= disc_.menu_count(); ++menu)
      read_menu(menu);
    for (const std::string& line : script_)
      disc_.image = disc_.image || names_tool(line, "mkisofs");
    return std::move(disc_);
  }

 private:
  std::string stored(const std::string& native) const {
    return stored_from_native(native, where_.style);
  }

  /// The line of the script that writes a file of the output folder with mplex; empty if none does.
  std::string multiplexing(const std::string& name) const {
    const std::string file = replace_all(where_.in_out(name), "%", "%%");
    for (const std::string& line : script_)
      if (names_tool(line, "mplex") && line.find("-o \"" + file + "\"") != std::string::npos)
        return line;
    return {};
  }

  void read_title(int number) {
    disc_title& title = disc_.titles[static_cast<std::size_t>(number) - 1];
    const std::string name = "title" + std::to_string(number) + ".mpg";
    title.is_multiplexed_here = title.video() == stored(where_.in_out(name));
    if (title.is_multiplexed_here) {
      const std::string line = multiplexing(name);
      title.delay = {between(line, " -O ", "ms -o "), 0, true};
      title.delay.value = leading_number(title.delay.text);
      lines files = quoted_in(line);
      files.erase(files.begin(), files.begin() + 2);  // the tool and its output
      title.streams.clear();
      for (const std::string& file : files)
        title.streams.push_back(stored(file));
    }
    for (int subtitle = 1;; ++subtitle) {
      const auto text =
          texts_.find("sub" + std::to_string(number) + "-" + std::to_string(subtitle) + ".xml");
      if (text == texts_.end())
        break;
      title.subtitles.push_back(subtitle_of(text->second));
    }
  }

  disc_subtitle subtitle_of(const std::string& text) const {
    static const std::vector<std::string> names = {
        "horizontal-alignment", "vertical-alignment", "left-margin", "right-margin",
        "top-margin",           "bottom-margin",      "fontsize",    "font",
        "movie-width",          "movie-height",       "movie-fps",   "characterset"};
    disc_subtitle subtitle;
    const xml_reading xml = read_xml(text);
    for (const xml_element& element : xml.elements)
      if (element.name == "textsub") {
        subtitle.file = stored(*attribute_of(element, "filename"));
        subtitle_settings settings;
        for (std::size_t i = 0; i < names.size(); ++i)
          settings.fields[i] = *attribute_of(element, names[i]);
        subtitle.settings = std::make_shared<subtitle_settings>(settings);
      }
    return subtitle;
  }

  void read_menu(int number) {
    disc_menu& menu = disc_.menus[static_cast<std::size_t>(number) - 1];
    const std::string n = std::to_string(number);
    lines files = quoted_in(multiplexing("menu" + n + ".mpg"));
    menu.files.clear();
    for (std::size_t i = 2; i < files.size(); ++i)
      menu.files.push_back(stored(files[i]));
    if (menu.files.size() == 1)
      menu.files.emplace_back();
    const xml_reading xml = read_xml(texts_.at("menu" + n + ".xml"));
    std::size_t button = 0;
    for (const xml_element& element : xml.elements) {
      if (element.name == "spu") {
        menu.spu_begin = time_of(*attribute_of(element, "start"));
        menu.spu_end = time_of(*attribute_of(element, "end"));
      } else if (element.name == "button") {
        disc_button& b = menu.buttons.at(button++);
        b.x0 = number_of(*attribute_of(element, "x0"));
        b.y0 = number_of(*attribute_of(element, "y0"));
        b.x1 = number_of(*attribute_of(element, "x1"));
        b.y1 = number_of(*attribute_of(element, "y1"));
      }
    }
    read_looks(n, "highlight", menu, &disc_button::highlight);
    read_looks(n, "select", menu, &disc_button::select);
  }

  void read_looks(const std::string& menu_number, const std::string& kind, disc_menu& menu,
                  disc_look disc_button::*look) {
    for (std::size_t i = 0; i < script_.size(); ++i)
      for (std::size_t b = 0; b < menu.buttons.size(); ++b)
        if (script_[i] == "echo *generating " + kind + " button " + std::to_string(b + 1) +
                              " for menu " + menu_number) {
          menu.buttons[b].*look = look_in(script_[i + 1]);
          read_thickness(script_[i + 1], script_[i + 2], menu);
        }
  }

  disc_look look_in(const std::string& line) const {
    const bool bitmap = line.find(" composite ") != std::string::npos;
    return bitmap ? disc_look{stored(quoted_in(line)[1]), true}
                  : disc_look{between(line, " -fill ", " -draw "), false};
  }

  /// A frame's inside begins one pixel and the thickness behind its outside.
  void read_thickness(const std::string& outside, const std::string& inside, disc_menu& menu) {
    const std::string from = between(outside, "roundrectangle ", ",");
    const std::string to = between(inside, "roundrectangle ", ",");
    if (inside.find("-fill #010101") == std::string::npos || from.empty())
      return;
    menu.thickness =
        number_of(std::to_string(static_cast<int>(leading_number(to) - leading_number(from)) - 1));
  }

  const run_texts& texts_;
  const run_paths& where_;
  disc_description disc_;
  lines script_;
};

}  // namespace

disc_description read_texts(const run_texts& texts, const run_paths& where) {
  return texts_reader(texts, where).read();
}

}  // namespace corvane::testing_support
