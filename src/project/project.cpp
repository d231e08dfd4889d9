#include "project/project.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "platform/files/paths.h"
#include "project/title_rows.h"

namespace corvane {

int UUBound(const std::vector<std::string>& array) {
  return static_cast<int>(array.size()) - 1;
}

std::string row_of(const std::vector<std::string>& list, int number, std::string_view missing) {
  const auto index = static_cast<std::size_t>(number) - 1;
  return number >= 1 && index < list.size() ? list[index] : std::string(missing);
}

std::string& row_to_write(std::vector<std::string>& list, int number, const std::string& missing) {
  const auto rows = static_cast<std::size_t>(number);
  if (list.size() < rows)
    list.resize(rows, missing);
  return list[rows - 1];
}

int title_count(const project& p) {
  return static_cast<int>(p.List11.size());
}

int menu_count(const project& p) {
  return static_cast<int>(p.menulist.size());
}

void ArrayRemoveItem(project& p, int index) {
  auto& elements = p.menubuttons;
  if (index < 0 || index > UUBound(elements) || elements.size() == 1)
    elements.assign(1, std::string());
  else
    elements.erase(elements.begin() + index);
}

void rebuild_List1(project& p) {
  p.List1.clear();
  int number = 0;
  for (const std::string& row : p.List11)
    p.List1.push_back(List1_row(++number, row));
}

std::string List1_row(int number, const std::string& List11_row) {
  std::vector<std::string> names = streams_of(List11_row);
  for (std::string& name : names)
    name = std::string(file_name_of(name));
  return "title" + trimmed(number) + ":" + join(names, "/");
}

bool is_muxed(const std::string& row) {
  return row.find('/') == std::string::npos;
}

void show_title_count(project& p) {
  p.Frame1 = trimmed(static_cast<std::int64_t>(p.List1.size())) + " titles loaded";
}

}  // namespace corvane
