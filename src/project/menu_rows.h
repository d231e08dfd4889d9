// The row formats of menus: button records, options rows, menu rows. Built and split here only.
//
// A record is seven fields joined by "/": x0, y0, x1, y1 (pixels, x 0-719, y 0-479 NTSC or 0-575
// PAL; leading-blank number texts), action, highlight, select. An element of
// project::menubuttons is a menu's records joined by "|".
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct project;

struct button_record {
  std::string x0, y0, x1, y1;     ///< as stored; read with leading_whole (formats/numbers.h)
  std::string action;             ///< "jump title 1", "exit", ...
  std::string highlight, select;  ///< colour name, or stored path of a bitmap
};

/// The pieces of an element between "|", also those that describe no button, and the fields of a
/// record between "/", however many.
std::vector<std::string> pieces_of(std::string_view element);
std::vector<std::string> fields_of(std::string_view record);

/// Splits a record; fields that are not there are empty.
button_record parse_button(std::string_view record);
std::string button_text(const button_record& button);

/// The edges as number texts of a record, each with its leading blank.
button_record button_with_edges(int x0, int y0, int x1, int y1);

/// Why a typed text cannot be a field of a record ("contains "/""); nullopt if it can.
/// "/" and "|" would cut the record, a control character the project file's line, and every field
/// with "\" counts as the path of a bitmap when a project is loaded.
std::optional<std::string> why_not_a_field(std::string_view text);

/// Whether a highlight or select value names a bitmap: it contains "\".
bool is_bitmap(std::string_view value);

/// The first button a menu gets.
inline constexpr const char* first_button = " 0/0/100/3/exit/black/black";

/// The ten colour names, in the order in which they are offered.
extern const std::vector<std::string> button_colours;

struct menu_options {
  bool loop = false;  ///< only a flag of 1 loops
  std::string spu_begin = "00:00:00.0";
  std::string spu_end = "00:00:00.0";
  int thickness = 1;
  std::string thickness_text = "1";  ///< as the row has it
};

/// A new menu's options row.
inline constexpr const char* new_menu_options = "0\t00:00:00.0\t00:00:00.0\t1";
menu_options parse_menu_options(std::string_view row);

/// The row of an edited menu: " 1" TAB "00:00:00.0" TAB "00:00:00.0" TAB " 2".
std::string menu_options_text(const menu_options& options);

struct menu_streams {
  std::string video;  ///< stored path
  std::string audio;  ///< stored path; empty: none
};
/// All pieces of a row: the video, the audio, and what a hand-made row has behind it.
std::vector<std::string> menu_files(std::string_view row);
menu_streams parse_menu_row(std::string_view row);
std::string menu_row_text(const menu_streams& streams);

/// The button records of menu `menu` (1-based) that describe a button, in order. The element " " (a
/// menu whose buttons are all gone) describes none.
std::vector<std::string> button_records(const project& p, int menu);

/// How many pieces the menu's element has between "|"; 0 for the empty element.
int buttoncount(const project& p, int menu);

}  // namespace corvane
