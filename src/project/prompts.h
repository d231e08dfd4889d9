// How commands talk to the user: message boxes, file dialogs, the input box.
//
// Commands never call the toolkit. The windows implement this with it, the console program with
// text on standard error, tests with a script of answers.
#pragma once

#include "disc/finding.h"

#include <cstddef>
#include <string>
#include <vector>

namespace corvane {

enum class icon { none, information, exclamation, critical };
enum class buttons { ok, ok_cancel, yes_no, yes_no_cancel };
enum class answer { ok, cancel, yes, no };

/// Caption of a message box that names none.
inline constexpr const char* program_name = "Corvane";

struct message_box {
  std::string text;
  icon picture = icon::none;
  buttons choice = buttons::ok;
  std::string caption = program_name;
  bool enter_answers_yes = false;  ///< of a yes_no question in which No is what loses something
  bool enter_cancels = false;      ///< of an ok_cancel question in which OK loses something
};

struct file_dialog {
  std::string title;
  std::string filter;    ///< "text|*.a;*.b|text|*.c": what the user reads, then the patterns
  std::string preset;    ///< file name offered; empty: none
  std::string folder{};  ///< where it opens (native path); empty: where the user was last
};

struct input_box {
  std::string title;
  std::string prompt;
  std::string preset;
};

/// The question whether to author a disc although errors or warnings were found.
struct findings_question {
  std::string text;               ///< what would come of the worst, and the question
  std::vector<finding> findings;  ///< all that are asked about, errors first
  bool may_go_on = true;          ///< false: nothing is asked; `text` says why there is no run
};

/// The question about what was found, errors first; notes are not asked about.
findings_question question_about(const std::vector<finding>& findings);

/// The question where missing files of the project are now.
struct missing_question {
  std::vector<std::string> files;  ///< native paths
  std::string searched;   ///< the folder of the last answer; empty: it is the first question
  std::size_t found = 0;  ///< how many were found there
};

class prompts {
 public:
  virtual ~prompts() = default;

  /// Shows the box and waits. Closing it without a button is `cancel`, also for yes_no (`ok` for a
  /// box with OK alone).
  virtual answer message(const message_box& box) = 0;

  /// A native path, absolute; empty when the user cancelled. An open dialog gives existing files
  /// only; a save dialog does not ask about overwriting (the command does, where it should).
  virtual std::string open_file(const file_dialog& dialog) = 0;
  virtual std::string save_file(const file_dialog& dialog) = 0;

  /// The text; empty when the user cancelled or cleared it.
  virtual std::string input(const input_box& box) = 0;

  /// Shows all that was found before a run, and asks whether to author nonetheless, if that may be.
  /// False unless the user says so; without anybody to ask, always.
  virtual bool go_on_despite(const findings_question& /*question*/) { return false; }

  /// Files of the project are not there. The folder (native) to look for them in; empty when the
  /// user does not know any, and without anybody to ask.
  virtual std::string folder_of_missing(const missing_question& /*question*/) { return {}; }

  /// Opens a text file (native path) in the user's editor. False when that cannot be started. A
  /// program without windows opens none.
  virtual bool show_text_file(const std::string& /*path*/) { return true; }

  /// False once the program is ending: each question is then answered as if it was closed at once.
  /// Whoever asks until there is an answer looks here first.
  virtual bool can_ask() const { return true; }
};

}  // namespace corvane
