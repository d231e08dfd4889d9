// The names of the files of a run: builders write them, the script runner and the clean-up know
// them again. Each stands here and nowhere else.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane::run_file {

// In the program folder -------------------------------------------------------------------------

inline constexpr const char* script = "process.bat";
inline constexpr const char* navigation = "config.xml";
inline constexpr const char* log = "CorvaneLOG.txt";

/// The picture of a still while it is made of one that had to be made right.
inline constexpr const char* still_picture = "still.jpg";

/// What the disc should be, for the look at it before the run ends.
inline constexpr const char* foreseen = "foreseen.xml";

/// What the run has found, by what its tools said and by the look at its disc
/// (disc/finding_file.h).
inline constexpr const char* findings = "findings.xml";

/// The variable of conspawn's environment that says, by not being empty, that the script makes a
/// disc which must be looked at, and of which `findings` are wanted. A script that somebody runs by
/// hand, or that makes a still, is run without it.
inline constexpr const char* makes_disc_variable = "CORVANE_MAKES_DISC";

/// How fast this machine does the work of a run (runner/run_speeds.h).
inline constexpr const char* speeds = "speeds.txt";

/// The script of an import, the log of the last imports, and how fast this machine imports
/// (import/import_speeds.h).
inline constexpr const char* import_script = "import.bat";
inline constexpr const char* import_log = "CorvaneIMPORT.txt";
inline constexpr const char* import_speeds = "import-speeds.txt";

/// What an import that goes on has made so far (import/unfinished_imports.h).
inline constexpr const char* unfinished_import = "unfinished-import.txt";

/// The script that makes the backgrounds of menus, its log, and the folder with the pages that they
/// are made of.
inline constexpr const char* menus_script = "menus.bat";
inline constexpr const char* menus_log = "CorvaneMENUS.txt";
inline constexpr const char* menu_pages = "menu-pages";

/// What had been printed when the runner met an unexpected error, and the error.
inline constexpr const char* unexpected_error = "updatecodelog.txt";

/// Where the runs are kept whose output folders are still to be set in order: what they replace was
/// put aside, and what they make is not complete.
inline constexpr const char* unfinished = "unfinished.txt";

/// Copies of the script that the clean-up makes and removes.
inline constexpr const char* copies_of_script[] = {"fake.png", "fake.xml"};

/// The page that the layout report writes, and the copy of hand-edited XML beside it.
inline constexpr const char* layout_page = "layout.html";
inline constexpr const char* layout_xml = "layoutconfig.xml";

std::string menu_control(int menu);  ///< "menu<m>.xml": the menu's buttons, for spumux
std::string highlight_picture(int menu);
std::string select_picture(int menu);
std::string subtitle_control(int title, int subtitle);  ///< "sub<t>-<s>.xml", for spumux

/// The number in the name of a menu's control file, or of one of the pictures of its buttons, as it
/// stands there; nullopt for every other name.
std::optional<std::string> menu_of_control(std::string_view name);
std::optional<std::string> menu_of_picture(std::string_view name);

/// A text subtitle as the name of its control file has it.
struct subtitle_name {
  std::string title, number;
};
std::optional<subtitle_name> subtitle_of_control(std::string_view name);

// In the output folder --------------------------------------------------------------------------

/// A title's stream while spumux puts a subtitle into it.
inline constexpr const char* before_subtitle = "presub.mpg";

std::string title_stream(int title);      ///< "title<t>.mpg"
std::string menu_stream(int menu);        ///< "menu<m>.mpg", without its buttons
std::string menu_with_buttons(int menu);  ///< "menusub<m>.mpg"

/// The number in the name of a title's stream, or of a menu's with its buttons or without, as it
/// stands there; nullopt for every other name.
std::optional<std::string> title_of_stream(std::string_view name);
std::optional<std::string> menu_of_stream(std::string_view name);

/// Whether the script itself makes files of such names in the output folder.
bool is_stream(std::string_view name);

}  // namespace corvane::run_file
