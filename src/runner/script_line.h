// The grammar of work scripts: what conspawn understands, and all that it understands.
//
//   script    = lines ended by LF or CR LF; the last one need not be ended. UTF-8.
//   line      = nothing but blanks
//             | "@echo off"                    no effect: lines are never echoed
//             | "echo " TEXT                   prints TEXT, all of it, and a line end
//             | "mkdir" word                   makes the folder and those above it; there already
//                                              is no error
//             | "erase" word                   removes a file, or those that match: "*" (any
//                                              characters) and "?" (one) in the last component
//             | "rename" word word             gives a file another name, in the same folder
//             | program { "|" program }        runs programs, each reading what the one before
//                                              writes
//   program   = word { word | "<" word | ">" word }
//
// Only the first program of a pipeline may read a file ("<"), only the last may write one (">"),
// each at most once; blanks beside "<", ">" and "|" are optional. The first word of a program is a
// path whose file name ends in ".exe"; which folder it must be in is the interpreter's matter.
//
//   word      = one or more characters and double-quoted runs, up to a blank, TAB, "<", ">" or "|"
//               outside of quotes: "C:\my dvd"\*.mpg is one word.
//
// Nothing is expanded and nothing else means anything: "&", "%", "$", "^", "!", "#", "`" and "'"
// are ordinary, a backslash quotes nothing, a double quote cannot be part of a word. The commands'
// names are lower-case. Everything else is an error of that line.
#pragma once

#include "platform/result.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

enum class script_verb { nothing, echo, make_folder, erase, rename, run };

/// A program of a pipeline: its path, then its arguments.
using script_words = std::vector<std::string>;

struct script_command {
  script_verb verb = script_verb::nothing;
  std::string text;                    ///< echo: what to print, without the line end
  script_words operands;               ///< mkdir, erase, rename
  std::vector<script_words> pipeline;  ///< run: at least one program, each with its path at least
  std::string input;                   ///< run: file the first one reads; empty: none
  std::string output;                  ///< run: file the last one writes; empty: none
};

/// One line, without its LF; a CR at its end is not part of it. The error is a clause: "a double
/// quote is not closed". It never holds text of the line.
result<script_command> parse_script_line(std::string_view line);

/// Whether `name` matches `pattern`, where "*" stands for any characters and "?" for one (UTF-8)
/// character. Case matters but on Windows, where that of the letters A to Z does not.
bool matches_wildcard(std::string_view pattern, std::string_view name);

}  // namespace corvane
