#include "examine/xml_commands.h"

#include "disc/command_reading.h"
#include "formats/xml_reader.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>

namespace corvane {
namespace {

using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

std::string without_white(const std::string& text) {
  constexpr std::string_view white = " \t\r\n";
  const auto first = text.find_first_not_of(white);
  if (first == std::string::npos)
    return {};
  return text.substr(first, text.find_last_not_of(white) + 1 - first);
}

bool holds_commands(const std::string& name) {
  constexpr std::array names = {"fpc", "pre", "post", "button", "cell"};
  return std::find(names.begin(), names.end(), name) != names.end();
}

/// Elements come in the order of their start tags, so that an element's item is known when what is
/// in it comes.
class command_collector {
 public:
  explicit command_collector(const std::vector<xml_element>& elements) : elements_(elements) {}

  std::vector<xml_command_fault> faults() {
    for (std::size_t i = 0; i < elements_.size(); ++i) {
      if (elements_[i].name == "pgc")
        begin_chain(elements_[i]);
      else if (holds_commands(elements_[i].name))
        look_at(elements_[i]);
    }
    return std::move(faults_);
  }

 private:
  const std::string& name_at(std::size_t element) const {
    static const std::string none;
    return element == no_xml_parent ? none : elements_[element].name;
  }

  void begin_chain(const xml_element& pgc) {
    const std::string& around = name_at(pgc.parent);
    const bool of_disc =
        pgc.parent != no_xml_parent && name_at(elements_[pgc.parent].parent) == "vmgm";
    buttons_ = 0;
    chain_ = {};
    if (around == "titles")
      chain_ = {whole::title, ++titles_, part::whole, 0};
    else if (around == "menus" && of_disc)
      chain_ = {whole::disc_menu, ++disc_menus_, part::whole, 0};
    else if (around == "menus")
      chain_ = {whole::menu, ++menus_, part::whole, 0};
  }

  finding_item item_of(const xml_element& element) {
    finding_item item = chain_;
    if (element.name == "fpc")
      return {whole::disc, 0, part::command, 0};
    item.part = part::command;
    if (element.name == "button") {
      item.part = part::button;
      item.part_number = ++buttons_;
    }
    return item;
  }

  void look_at(const xml_element& element) {
    const finding_item item = item_of(element);
    const std::string command = without_white(element.text);
    if (command.empty())
      return;  // which is no command, for dvdauthor too
    const command_reading reading = read_commands(command);
    if (reading.fault)
      faults_.push_back({item, command, element.line, *reading.fault});
  }

  const std::vector<xml_element>& elements_;
  std::vector<xml_command_fault> faults_;
  finding_item chain_;
  int titles_ = 0, menus_ = 0, disc_menus_ = 0, buttons_ = 0;
};

}  // namespace

std::vector<xml_command_fault> xml_command_faults(std::string_view customxml) {
  const xml_reading reading = read_xml(customxml);
  if (reading.fault)
    return {};
  return command_collector(reading.elements).faults();
}

}  // namespace corvane
