// The command line of corvane-author.
#pragma once

#include "import/import_choices.h"
#include "platform/result.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane {

struct author_arguments {
  bool help = false;
  bool version = false;
  bool prepare = false;    ///< write the files of a run and run nothing
  bool replace = false;    ///< replace an earlier disc
  bool force = false;      ///< author whatever is found in the material
  bool skip_look = false;  ///< of the material look at the files' beginnings only
  bool cleanup = false;    ///< remove the files of the run when it succeeded
  bool check = false;      ///< examine the project and author nothing
  bool verify = false;     ///< look at a disc and author nothing
  bool json = false;       ///< what a check or a look at a disc finds, as JSON
  bool import = false;     ///< make titles of files and author nothing
  bool pal = false;  ///< an import into a project without titles makes PAL where it may choose
  std::optional<bool> iso;  ///< make an image or not; without it as the project says
  std::string project;      ///< native path as given; empty: a disc is looked at without one
  std::vector<std::string> imported;  ///< files to be imported, as given
  std::string to;                     ///< where their streams go, as given
  import_choices choices;             ///< for them
  std::string design;  ///< make menus that look so, and author nothing; a name or a file, as given
  std::string film;    ///< behind them, as given; empty: none
  bool play_all = false;  ///< their titles go on with the next one
  std::string output;     ///< likewise; the disc that is looked at; empty if only to be checked
};

/// Reads the arguments (without the program's name). With --help or --version nothing else is
/// looked at. "--" ends the options.
result<author_arguments> read_author_arguments(const std::vector<std::string>& words);

/// What --help prints; lines end in a line feed.
std::string author_help();

/// What --version prints.
std::string author_version();

}  // namespace corvane
