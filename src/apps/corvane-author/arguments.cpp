#include "apps/corvane-author/arguments.h"

#include "platform/files/paths.h"
#include "project/project.h"

#include <algorithm>
#include <charconv>
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
  } else if (word == "--import") {
    arguments.import = true;
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

/// One that only an import has. False when it is none.
bool take_import_option(author_arguments& arguments, const std::string& word) {
  if (word == "--pal")
    arguments.pal = true;
  else if (word == "--dvd9")
    arguments.choices.disc_bytes = double_layer_bytes;
  else if (word == "--crop")
    arguments.choices.fit = picture_fit::cropped;
  else if (word == "--no-silence")
    arguments.choices.silence = false;
  else if (word == "--all-sounds")
    arguments.choices.more_sounds = true;
  else if (word == "--mpeg-audio")
    arguments.choices.new_sound = disc_sound::mp2;
  else if (word == "--even-loudness")
    arguments.choices.even_loudness = true;
  else if (word == "--deinterlace")
    arguments.choices.deinterlace = true;
  else if (word == "--film-by-speed")
    arguments.choices.film_by_speed = true;
  else
    return false;
  return true;
}

bool is_of_menus(const std::string& word) {
  return word == "--film" || word == "--play-all";
}

bool wants_value(const std::string& word) {
  return word == "--to" || word == "--rate" || word == "--constant" || word == "--make-menus" ||
         word == "--film";
}

/// The whole number of a value; nullopt if it is none within these bounds.
std::optional<int> number_within(const std::string& value, int least, int most) {
  int number = 0;
  const auto read = std::from_chars(value.data(), value.data() + value.size(), number);
  const bool is_read = read.ec == std::errc() && read.ptr == value.data() + value.size();
  return is_read && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

/// One with a value, which imports and menus have.
failure take_value(author_arguments& arguments, const std::string& word, const std::string& value) {
  if (word == "--to" || word == "--make-menus" || word == "--film") {
    (word == "--to" ? arguments.to : word == "--film" ? arguments.film : arguments.design) = value;
    return value.empty() ? failure(word + " wants a value") : std::nullopt;
  }
  const bool constant = word == "--constant";
  const int least = constant ? 2 : 700, most = constant ? 31 : 8500;
  const auto number = number_within(value, least, most);
  if (!number)
    return word + " wants a whole number from " + std::to_string(least) + " to " +
           std::to_string(most);
  arguments.choices.quality = constant ? import_quality::constant : import_quality::mean_rate;
  if (constant)
    arguments.choices.quantizer = *number;
  else
    arguments.choices.mean_rate = std::int64_t{*number} * 1000;
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

/// Files, and behind them the project that they come into.
failure take_imported(author_arguments& arguments, const std::vector<std::string>& paths) {
  if (paths.size() < 2)
    return paths.empty() ? "FILE is missing" : "PROJECT.cvp is missing";
  if (std::find(paths.begin(), paths.end(), "") != paths.end())
    return "a path is empty";
  arguments.project = paths.back();
  arguments.imported.assign(paths.begin(), paths.end() - 1);
  // A film here would be replaced by a project.
  if (lower_extension_of(arguments.project) != "cvp")
    return "\"" + arguments.project + "\" is no project: the last path is PROJECT.cvp";
  return arguments.to.empty() ? failure("--to FOLDER is missing") : std::nullopt;
}

/// The project alone.
failure take_project_of_menus(author_arguments& arguments, const std::vector<std::string>& paths) {
  if (paths.empty() || paths.front().empty())
    return "PROJECT.cvp is missing";
  if (paths.size() > 1)
    return "\"" + paths[1] + "\" is one path too many";
  arguments.project = paths.front();
  return std::nullopt;
}

failure take_paths(author_arguments& arguments, const std::vector<std::string>& paths) {
  if (!arguments.design.empty())
    return take_project_of_menus(arguments, paths);
  if (arguments.import)
    return take_imported(arguments, paths);
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

bool has_options_of_a_run(const author_arguments& arguments) {
  return arguments.prepare || arguments.replace || arguments.cleanup || arguments.force ||
         arguments.skip_look || arguments.iso;
}

failure why_no_menus(const author_arguments& arguments) {
  if (arguments.import || arguments.check || arguments.verify)
    return "--make-menus goes with none of --import, --check and --verify";
  if (has_options_of_a_run(arguments))
    return "--make-menus authors nothing and has options of its own";
  return std::nullopt;
}

// Options of a run say nothing to a check; taking them in silence would let a person believe that
// a disc was made.
failure why_not_together(const author_arguments& arguments) {
  if (arguments.json && !arguments.check && !arguments.verify)
    return "--json goes with --check and --verify";
  if (arguments.check && arguments.verify)
    return "--check and --verify exclude each other";
  if (arguments.import && (arguments.check || arguments.verify))
    return "--import goes with neither --check nor --verify";
  if (!arguments.design.empty())
    return why_no_menus(arguments);
  if (!arguments.check && !arguments.verify && !arguments.import)
    return std::nullopt;
  if (has_options_of_a_run(arguments))
    return arguments.import ? failure("--import authors nothing and has options of its own")
                            : std::string(arguments.check ? "--check" : "--verify") +
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
  std::string of_import, of_menus;
  for (auto word = given.begin(); word != end_of_options; ++word) {
    const std::string option = *word;
    failure why;
    if (!option.starts_with('-')) {
      paths.push_back(option);
    } else if (wants_value(option)) {
      if (is_of_menus(option))
        of_menus = option;
      else if (option != "--make-menus")
        of_import = option;
      why = ++word == end_of_options ? option + " wants a value"
                                     : take_value(arguments, option, *word);
    } else if (take_import_option(arguments, option)) {
      of_import = option;
    } else if (is_of_menus(option)) {
      of_menus = option;
      arguments.play_all = true;
    } else {
      why = take_option(arguments, option);
    }
    if (why)
      return words::fail(*why);
  }
  const bool makes_menus = !arguments.design.empty();
  if (!of_import.empty() && !arguments.import && !(makes_menus && of_import == "--to"))
    return words::fail(of_import + " goes with --import");
  if (!of_menus.empty() && !makes_menus)
    return words::fail(of_menus + " goes with --make-menus");
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
       corvane-author --import FILE... --to FOLDER PROJECT.cvp
       corvane-author --make-menus DESIGN PROJECT.cvp

Authors the DVD of a Corvane project into a folder, without a display. With
--check it reads all files of the project, says what would go wrong or look
wrong on the disc, or that there is no room for it where it is to go, and
authors nothing. With --verify it reads all of a disc, a folder or an image,
and says what is on it and what is wrong with it: by itself, or held against
what a project asks for. With --import it makes titles of films in other forms
(MP4, MKV, AVI, MTS, MPEG and more) and adds them to the project, which is made
where there is none: what a disc takes as it is is copied, the rest encoded.
With --make-menus it makes menus of the project's titles and chapters, in the
place of those that it made before.

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
  --import    make titles of FILE... and add them to the project
  --to FOLDER where their streams go, or the menus' (without it: beside the
              project)
  --dvd9      fill a disc of two layers (without it: of one) with pictures as
              good as there is room for
  --rate N    instead: N kbit/s of video on average, 700 to 8500
  --constant N
              instead: all pictures equally good, 2 (best) to 31
  --crop      fill the picture and lose its edges, instead of black bars
  --no-silence
              a film without sound gets no sound stream
  --all-sounds
              also sound streams for which the project's first title has none
  --mpeg-audio
              sound becomes MPEG audio, not AC-3, where no title decides
  --even-loudness
              sound gets the loudness of television (EBU R 128)
  --deinterlace
              interlaced films become whole pictures
  --film-by-speed
              PAL: films of 24 pictures a second play with 25
  --pal       where neither project nor films decide, make PAL, not NTSC
  --make-menus DESIGN
              make menus that look as the design of this name says, or the one
              in this file
  --film FILE a film behind them, its first half minute with its sound
  --play-all  titles go on with the next one, and the menu offers all of them
  --help      show this help
  --version   show the version
  --          end of the options

The folder is made when it does not exist. Questions that the window would ask
get the answer that loses nothing.

Exit status:
  0    the disc is authored, the look at project or disc found no error, all
       files are imported, or the menus are made
  1    a tool reported an error, or a file was not imported
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
  corvane-author --import holiday.mp4 --to streams film.cvp
  corvane-author --make-menus amber film.cvp
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
