// What the tools' messages mean: for each that is known, which item it is about, what a viewer
// would see and what to do.
//
// The texts that are looked for are those of mjpegtools 2.1.0, dvdauthor 0.7.2 and genisoimage
// 1.1.11. Each tool's table stands in a file of its own (known_mplex_messages.cpp, ...).
#pragma once

#include "disc/finding.h"
#include "runner/script_line.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// What a message is about.
enum class message_about {
  stream,  ///< the title, menu or subtitle that the tool works on, or the file that it reads
  disc,
};

struct known_message {
  std::string_view
      rule;  ///< identifier that stays: "mplex-underrun"; several messages can share it

  /// How the line begins, without blanks before it. "~" and "%" stand for any characters, as few as
  /// will do; at the end for all the rest.
  std::string_view pattern;

  /// An error makes the run a failure. One of which the tool only warns leaves a disc that is wrong
  /// for certain.
  finding_severity severity = finding_severity::warning;

  // Sentences without their full stop. "{1}" is what the first "~" stood for; "{1+}" is one more
  // than that number, "{1s}" the seconds of that many ticks of 90 kHz; "{1^}" is it in capitals.
  std::string_view found, consequence, remedy;

  message_about about = message_about::stream;
  finding_item::part_kind part = finding_item::part_kind::whole;
  int part_from = 0;  ///< the "~" with the part's number, counted from 0; 0: none
  int byte_from = 0;  ///< the "~" with a place in the file, decimal or "0x..."; 0: none
};

/// The messages of the tool of this file name ("mplex.exe"); none of one that is not known.
std::span<const known_message> known_messages_of(std::string_view tool);

/// Whether a line is that message; `parts` are then what its "~" stood for.
bool is_message(std::string_view line, std::string_view pattern,
                std::vector<std::string_view>& parts);

/// The title or menu that a call is about, by the names of its files (runner/run_files.h).
finding_item item_of_call(const script_words& words, const std::string& output);

/// Looks for known messages, and other errors and warnings, in what one call of a tool prints.
class message_reader {
 public:
  /// What was found, and how often it was said of that item.
  struct told {
    finding what;
    int times = 1;
    bool known = true;  ///< not so, of what is told in the tool's own words
  };

  message_reader(std::string_view tool, finding_item item);

  /// A line, without its end.
  void look_at(std::string_view line);

  /// In the order in which they first came. A tool that says very much is cut short.
  const std::vector<told>& found() const { return found_; }

 private:
  void add(const known_message& message, const std::vector<std::string_view>& parts);
  void add_unknown(std::string_view rule, std::string_view line);
  told* find(const finding& f);

  std::string tool_;
  std::span<const known_message> messages_;
  finding_item item_;
  std::string file_;  ///< the one that is read now, where that is none of the run's own
  std::vector<told> found_;
};

/// The finding with how often it was said in its text.
finding counted(finding f, int times);

/// How the log tells it: "ERR:  title 1, audio 2, 00:00:12: ...". In one line.
std::string log_line(const finding& f, int times = 1);

}  // namespace corvane
