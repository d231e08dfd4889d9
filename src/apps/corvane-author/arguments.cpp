#include "apps/corvane-author/arguments.h"

#include "project/project.h"

#include <algorithm>
#include <cstddef>

namespace corvane {
namespace {

using words = result<author_arguments>;

/// Takes one option in; a reason when it is none or does not go with those before it.
failure take_option(author_arguments& arguments, const std::string& word) {
  if (word == "--prepare") {
    arguments.prepare = true;
  } else if (word == "--replace") {
    arguments.replace = true;
  } else if (word == "--force") {
    arguments.force = true;
  } else if (word == "--skip-look") {
    arguments.skip_look = true;
  } else if (word == "--cleanup") {
    arguments.cleanup = true;
  } else if (word == "--check") {
    arguments.check = true;
  } else if (word == "--verify") {
    arguments.verify = true;
  } else if (word == "--json") {
    arguments.json = true;
  } else if (word == "--iso" || word == "--no-iso") {
    const bool wanted = word == "--iso";
    if (arguments.iso.value_or(wanted) != wanted)
      return "--iso and --no-iso exclude each other";
    arguments.iso = wanted;
  } else {
    return "there is no option \"" + word + "\"";
  }
  return std::nullopt;
}

/// A disc, and before it the project that it was made of, if there is one.
failure take_disc(author_arguments& arguments, const std::vector<std::string>& paths) {
  if (paths.empty() || paths.back().empty())
    return "DISC is missing";
  if (paths.size() > 2)
    return "\"" + paths[2] + "\" is one path too many";
  arguments.output = paths.back();
  if (paths.size() == 2)
    arguments.project = paths.front();
  return paths.size() == 2 && paths.front().empty() ? failure("PROJECT.cvp is missing")
                                                    : std::nullopt;
}

failure take_paths(author_arguments& arguments, const std::vector<std::string>& paths) {
  if (arguments.verify)
    return take_disc(arguments, paths);
  if (paths.empty() || paths[0].empty())
    return "PROJECT.cvp is missing";
  // A check may do without.
  const bool has_output = paths.size() > 1;
  if (has_output ? paths[1].empty() : !arguments.check)
    return "OUTPUT-FOLDER is missing";
  if (paths.size() > 2)
    return "\"" + paths[2] + "\" is one path too many";
  arguments.project = paths[0];
  if (has_output)
    arguments.output = paths[1];
  return std::nullopt;
}

// Options of a run say nothing to a check; taking them in silence would let a person believe that
// a disc was made.
failure why_not_together(const author_arguments& arguments) {
  if (arguments.json && !arguments.check && !arguments.verify)
    return "--json goes with --check and --verify";
  if (arguments.check && arguments.verify)
    return "--check and --verify exclude each other";
  if (!arguments.check && !arguments.verify)
    return std::nullopt;
  if (arguments.prepare || arguments.replace || arguments.cleanup || arguments.force ||
      arguments.skip_look || arguments.iso)
    return std::string(arguments.check ? "--check" : "--verify") +
           " authors nothing and goes with --json only";
  return std::nullopt;
}

}  // namespace

result<author_arguments> read_author_arguments(const std::vector<std::string>& given) {
  author_arguments arguments;
  const auto end_of_options = std::find(given.begin(), given.end(), "--");
  arguments.help = std::find(given.begin(), end_of_options, "--help") != end_of_options;
  arguments.version = std::find(given.begin(), end_of_options, "--version") != end_of_options;
  if (arguments.help || arguments.version)
    return words::ok(arguments);
  std::vector<std::string> paths;
  for (auto word = given.begin(); word != end_of_options; ++word) {
    if (!word->starts_with('-'))
      paths.push_back(*word);
    else if (const failure why = take_option(arguments, *word))
      return words::fail(*why);
  }
  if (end_of_options != given.end())
    paths.insert(paths.end(), end_of_options + 1, given.end());
  if (const failure why = why_not_together(arguments))
    return words::fail(*why);
  if (const failure why = take_paths(arguments, paths))
    return words::fail(*why);
  return words::ok(arguments);
}

std::string author_help() {
  return R"(Usage: corvane-author [OPTION]... PROJECT.cvp OUTPUT-FOLDER
       corvane-author --check [--json] PROJECT.cvp [OUTPUT-FOLDER]
       corvane-author --verify [--json] [PROJECT.cvp] DISC

Authors the DVD of a Corvane project into a folder, without a display. With
--check it reads all files of the project, says what would go wrong or look
wrong on the disc, or that there is no room for it where it is to go, and
authors nothing. With --verify it reads all of a disc, a folder or an image,
and says what is on it and what is wrong with it: by itself, or held against
what a project asks for.

Options:
  --prepare   write all files of the run, print their paths, run nothing
  --iso       also make a disc image, OUTPUT-FOLDER.iso
  --no-iso    make none (without either option the project decides)
  --replace   replace a disc that OUTPUT-FOLDER already holds
  --force     author although the project or its files have errors
  --skip-look do not read all of the files first, only how they begin; the log
              says so
  --cleanup   remove the files of the run when it succeeded (the log stays)
  --check     only say what is wrong with the project and its files
  --verify    only say what is wrong with a disc
  --json      say it as JSON
  --help      show this help
  --version   show the version
  --          end of the options

The folder is made when it does not exist. Questions that the window would ask
get the answer that loses nothing.

Exit status:
  0    the disc is authored, or the look at project or disc found no error
  1    a tool reported an error
  2    bad arguments, a project that cannot be loaded or authored as it stands,
       an error that the look at project or disc found, a folder that holds a
       disc, or files that cannot be written
  3    a tool is not installed
  130  stopped with Ctrl-C (128 + the signal's number for other signals)

Environment:
  CORVANE_HOME  the program folder, for the files of the run and the log
                (else $XDG_DATA_HOME/corvane or ~/.local/share/corvane;
                on Windows the folder of the program)
  PATH          where the tools are looked up (not on Windows)

Examples:
  corvane-author --check film.cvp
  corvane-author film.cvp /srv/dvd/film
  corvane-author --verify film.cvp /srv/dvd/film
  corvane-author --replace --iso --cleanup film.cvp film
)";
}

std::string author_version() {
  return "corvane-author (" + std::string(version_title) + ")\n";
}

}  // namespace corvane
