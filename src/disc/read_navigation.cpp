#include "disc/read_navigation.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/xml_reader.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

constexpr std::string_view white = " \t\r\n";

std::string_view without_white(std::string_view text) {
  const auto first = text.find_first_not_of(white);
  if (first == std::string_view::npos)
    return {};
  return text.substr(first, text.find_last_not_of(white) + 1 - first);
}

/// The command of an element's text: "<post> jump menu 1; </post>".
std::string command_in(std::string_view text) {
  text = without_white(text);
  if (text.ends_with(';'))
    text.remove_suffix(1);
  return std::string(without_white(text));
}

/// "root, ptt" in its words.
std::vector<std::string> words_in(std::string_view list) {
  std::vector<std::string> words;
  for (const std::string& word : split(list, ','))
    if (std::string only(without_white(word)); !only.empty())
      words.push_back(std::move(only));
  return words;
}

/// "g1=3; jump menu 3" in two: "3" and "jump menu 3".
struct remembered {
  std::string menu, command;
};

std::optional<remembered> remembered_in(std::string_view command) {
  constexpr std::string_view sets_register = "g1=", then = "; ";
  const auto end = command.find(then);
  if (!command.starts_with(sets_register) || end == std::string_view::npos)
    return std::nullopt;
  return remembered{std::string(command.substr(sets_register.size(), end - sets_register.size())),
                    std::string(command.substr(end + then.size()))};
}

bool is_remembered_button(const remembered& r, int menu) {
  if (r.command.starts_with(jump_menu_words))
    return r.command == std::string(jump_menu_words) + " " + r.menu;
  return r.command.starts_with(jump_title_words) && r.menu == trimmed(menu);
}

class navigation_reader {
 public:
  navigation_reader(const std::vector<xml_element>& elements, path_style style)
      : elements_(elements), style_(style) {}

  disc_description read() {
    disc_.has_jump_pad = has(0, "jumppad");
    disc_.has_other_paths = disc_.has_jump_pad;
    for (const std::size_t child : children(0)) {
      if (elements_[child].name == "vmgm")
        read_manager(child);
      else if (elements_[child].name == "titleset")
        read_titleset(child);
    }
    restore_calls();
    return std::move(disc_);
  }

 private:
  std::vector<std::size_t> children(std::size_t parent) const {
    std::vector<std::size_t> found;
    for (std::size_t i = parent + 1; i < elements_.size(); ++i) {
      if (elements_[i].parent == parent)
        found.push_back(i);
      else if (elements_[i].parent == no_xml_parent || elements_[i].parent < parent)
        break;
    }
    return found;
  }

  std::string value_of(std::size_t element, std::string_view name) const {
    const std::string* value = attribute_of(elements_[element], name);
    return value == nullptr ? std::string() : *value;
  }

  bool has(std::size_t element, std::string_view name) const {
    return attribute_of(elements_[element], name) != nullptr;
  }

  std::string file_of(std::size_t vob) const {
    return stored_from_native(value_of(vob, "file"), style_);
  }

  void read_manager(std::size_t manager) {
    int language = 0;
    for (const std::size_t child : children(manager))
      if (elements_[child].name == "fpc") {
        disc_.first_play_text = command_in(elements_[child].text);
        disc_.first_play = command_of(disc_.first_play_text);
      } else if (elements_[child].name == "menus") {
        disc_.has_other_paths = true;
        read_menus(child, disc_.disc_menus, 0, language++);
      }
  }

  void read_titleset(std::size_t titleset) {
    ++titleset_;
    int language = 0;
    for (const std::size_t child : children(titleset)) {
      const std::string& name = elements_[child].name;
      if (name == "menus") {
        disc_.has_other_paths = disc_.has_other_paths || language > 0;
        read_menus(child, disc_.menus, titleset_, language++);
      } else if (name == "titles") {
        read_titles(child);
      }
    }
  }

  /// The menus of one language.
  void read_menus(std::size_t menus, std::vector<disc_menu>& all, int titleset, int language) {
    std::string aspect;
    int number = 0;
    bool has_subpictures = false;
    const std::size_t before = all.size();
    for (const std::size_t part : children(menus)) {
      has_subpictures = has_subpictures || elements_[part].name == "subpicture";
      if (elements_[part].name == "video" && has(part, "aspect"))
        aspect = value_of(part, "aspect");
      if (elements_[part].name != "pgc")
        continue;
      disc_menu& menu = all.emplace_back();
      menu.titleset = titleset;
      menu.language = language;
      menu.is_ready = true;
      read_menu(part, ++number, menu);
    }
    for (std::size_t i = before; i < all.size(); ++i) {
      all[i].aspect = aspect;
      all[i].has_other_looks = all[i].has_other_looks || has_subpictures;
    }
  }

  void read_titles(std::size_t titles) {
    std::string aspect;
    const std::size_t before = disc_.titles.size();
    for (const std::size_t part : children(titles)) {
      const std::string& name = elements_[part].name;
      if (name == "pgc") {
        read_title(part);
      } else if (name == "video") {
        if (has(part, "format"))
          read_standard(part);
        aspect = has(part, "aspect") ? value_of(part, "aspect") : aspect;
      } else if (name == "audio" || name == "subpicture") {
        read_language(part);
      }
    }
    for (std::size_t i = before; i < disc_.titles.size(); ++i)
      disc_.titles[i].aspect = aspect;
  }

  void read_standard(std::size_t video) {
    std::string format = value_of(video, "format");
    std::transform(format.begin(), format.end(), format.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    disc_.standard_text = format;
    disc_.standard = standard_named(format);
  }

  void read_language(std::size_t element) {
    using kind = disc_language::stream_kind;
    const bool audio = elements_[element].name == "audio";
    disc_.languages.push_back(
        {audio ? kind::audio : kind::subpicture, {}, value_of(element, "lang"), titleset_});
  }

  void read_menu(std::size_t pgc, int number, disc_menu& menu) {
    menu.pause = value_of(pgc, "pause");
    menu.entries = words_in(value_of(pgc, "entry"));
    menu.has_other_looks = has(pgc, "palette");
    bool leaves = menu.pause != "inf";
    for (const std::size_t child : children(pgc)) {
      const xml_element& element = elements_[child];
      if (element.name == "button") {
        menu.buttons.push_back(button_of(element.text, number));
        menu.has_parts = menu.has_parts || has(child, "name");
      } else if (element.name == "vob") {
        read_menu_vob(child, menu);
      } else if (element.name == "post") {
        read_menu_post(element.text, number, menu, leaves);
      } else if (element.name == "pre") {
        read_menu_pre(element.text, menu);
      }
    }
    disc_.has_other_paths =
        disc_.has_other_paths || !menu.entries.empty() || (leaves && !menu.loop);
  }

  void read_menu_vob(std::size_t vob, disc_menu& menu) {
    menu.has_parts = menu.has_parts || !menu.files.empty();
    if (menu.files.empty())
      menu.files.push_back(file_of(vob));  // a second one would be no audio
    menu.has_parts = read_cells(vob, menu.cell_commands) || menu.has_parts;
  }

  void read_menu_post(std::string_view text, int number, disc_menu& menu, bool& leaves) {
    const disc_command command = command_of(command_in(text));
    const bool again = command.form == command_form{verb::jump_menu, number, {}};
    menu.loop = menu.loop || again;
    leaves = leaves || !again;
    if (!again)
      menu.post = command;
  }

  void read_menu_pre(std::string_view text, disc_menu& menu) {
    if (text.find("g1==") != std::string_view::npos) {
      disc_.jump_table = true;
    } else {
      disc_.has_other_paths = true;
      menu.pre = command_of(command_in(text));
    }
  }

  /// Cells have commands, and chapters that the file's attribute does not tell. Whether there are
  /// any.
  bool read_cells(std::size_t vob, std::vector<disc_command>& commands) {
    bool has_cells = false;
    for (const std::size_t child : children(vob)) {
      if (elements_[child].name != "cell")
        continue;
      has_cells = disc_.has_other_paths = true;
      if (std::string command = command_in(elements_[child].text); !command.empty())
        commands.push_back(command_of(command));
    }
    return has_cells;
  }

  disc_button button_of(std::string_view text, int menu) {
    disc_button button;
    const std::string command = command_in(text);
    const auto r = remembered_in(command);
    const bool undone = r && is_remembered_button(*r, menu);
    disc_.jump_table = disc_.jump_table || undone;
    button.action = command_of(undone ? r->command : command);
    return button;
  }

  void read_title(std::size_t pgc) {
    disc_title title;
    title.titleset = titleset_;
    title.pause = value_of(pgc, "pause");
    bool is_first = true;
    for (const std::size_t child : children(pgc)) {
      const xml_element& element = elements_[child];
      if (element.name == "vob") {
        title_file& file = std::exchange(is_first, false) ? title : title.further.emplace_back();
        read_vob(child, file);
        file.has_cells = read_cells(child, title.cell_commands);
      } else if (element.name == "post") {
        title.post = post_of(element.text);
      } else if (element.name == "pre") {
        disc_.has_other_paths = true;
        title.pre = command_of(command_in(element.text));
      }
    }
    disc_.titles.push_back(std::move(title));
  }

  void read_vob(std::size_t vob, title_file& file) {
    file.streams.push_back(file_of(vob));
    file.chapters_text = value_of(vob, "chapters");
    for (const std::string& time : split(file.chapters_text, ','))
      file.chapters.push_back(time_of(time));
  }

  disc_command post_of(std::string_view text) {
    const std::string command = command_in(text);
    const auto r = remembered_in(command);
    if (!r || r->command != call_menu_words)
      return command_of(command);
    disc_.jump_table = true;
    return command_of(std::string(call_menu_words) + " " + r->menu);
  }

  /// With the jump table a call without a number is one of the last menu.
  void restore_calls() {
    if (!disc_.jump_table)
      return;
    for (disc_title& title : disc_.titles)
      if (title.post && title.post->text == call_menu_words)
        title.post = command_of(call_last_menu_words);
  }

  const std::vector<xml_element>& elements_;
  path_style style_;
  disc_description disc_;
  int titleset_ = 0;
};

}  // namespace

result<disc_description> read_navigation(std::string_view xml, path_style style) {
  using read = result<disc_description>;
  const xml_reading reading = read_xml(xml);
  if (reading.fault)
    return read::fail("in line " + std::to_string(reading.fault->line) + ", " +
                      reading.fault->what);
  if (reading.elements[0].name != "dvdauthor")
    return read::fail("its document is not a \"dvdauthor\" element");
  return read::ok(navigation_reader(reading.elements, style).read());
}

}  // namespace corvane
