// The button records of a menu on their way between the project and the menu editor.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {

struct project;

/// Joins the rows of `buttondata` with "|" into the element of menu `indexed` (1-based) and clears
/// `buttondata`. No rows give the empty element. A menu below 1 has no element: nothing is stored.
void storebuttondata(project& p, const std::int16_t& indexed);

/// The records of menu `indexed` as they stand between "|", also those that describe no button;
/// clears `buttondata`. None for the empty element and for that of one blank, which is how project
/// files write a menu whose buttons are all gone.
std::vector<std::string> recallbuttondata(project& p, std::int16_t indexed);

/// What the editor's accept writes back for menu `indexed`: the records and the options row.
/// Without records the options row keeps its text.
void store_edited_menu(project& p, std::int16_t indexed, const std::vector<std::string>& records,
                       const std::string& options_row);

}  // namespace corvane
