// What the script runner knows of single tools, beyond starting them and telling how they ended:
// what takes long or is left out without a word, and what their exit status does not say.
//
// A tool with such ways has a file of its own here.
#pragma once

#include "disc/finding.h"
#include "platform/processes/spawn.h"
#include "platform/result.h"
#include "runner/script_line.h"
#include "runner/tools/still_pictures.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// A program that a script starts.
struct tool_call {
  const script_words& words;              ///< its path, then its arguments
  const std::string& output;              ///< the file that takes its standard output; empty: none
  const std::vector<script_words>& line;  ///< all programs of the line, itself first
};

/// What came of it.
struct tool_result {
  std::vector<program_end> ends;  ///< of each program of the line; none if nothing was started
  /// What they printed, or of more its first MiB and its last lines, up to 64 KiB.
  std::string printed;
  /// The file that the line makes (`tool_ways::makes`) was there before and was not written.
  bool left_alone = false;
};

/// What the ways look at besides the call. A test answers in place of the files.
class tool_files {
 public:
  virtual ~tool_files() = default;

  /// The text of a control file; empty when it cannot be read.
  virtual std::string control_text(const std::string& control_file) = 0;

  /// How many buttons a control file asks for (runner/tools/spumux_buttons.h).
  virtual int buttons_asked_for(const std::string& control_file) = 0;

  /// Why the buttons of the menu in a stream would not be seen (runner/tools/spumux_buttons.h).
  virtual std::string why_no_buttons_seen(const std::string& menu_stream) = 0;

  /// How many bytes a file has; nullopt when there is none.
  virtual std::optional<std::uintmax_t> size_of(const std::string& file) = 0;

  /// Why a still video is not as it was asked for (runner/tools/still_pictures.h).
  virtual std::string why_not_this_still(const std::string& m2v, const still_form& asked) = 0;

  /// Sets the proportions that a still video states (formats/aspect_code.h). Returns why not, as a
  /// clause.
  virtual failure set_aspect_code(const std::string& m2v, int code) = 0;

  /// The names of a font (formats/font_names.h).
  virtual std::vector<std::string> font_names_in(const std::string& font_file) = 0;
};

/// The ways of one tool; as they stand here, those of a tool about which there is nothing to know.
class tool_ways {
 public:
  virtual ~tool_ways() = default;

  /// Why it is not started once something has gone wrong in the run, as a line for the user; empty
  /// if it is started nonetheless, as scripts do.
  virtual std::string why_not_after_errors() const { return {}; }

  /// What the user should know before it runs, a line each.
  virtual std::vector<std::string> announce(const tool_call& /*call*/,
                                            tool_files& /*files*/) const {
    return {};
  }

  /// The file that the line makes, where one of an earlier run can be there before. Empty when
  /// there is none.
  virtual std::string makes(const tool_call& /*call*/) const { return {}; }

  /// Whether an end that looks like a failure is none.
  virtual bool forgives(const program_end& /*end*/, std::string_view /*printed*/) const {
    return false;
  }

  /// What went wrong that its end does not tell, errors all; the log's line of each is what was
  /// found, as it stands. What the tool never does as a disc needs it is put right before.
  virtual std::vector<finding> judge(const tool_call& /*call*/, const tool_result& /*result*/,
                                     tool_files& /*files*/) const {
    return {};
  }

  /// What is to be said of the disc by what it printed, besides its known messages
  /// (runner/tools/known_messages.h).
  virtual std::vector<finding> explain(const tool_call& /*call*/, const tool_result& /*result*/,
                                       tool_files& /*files*/) const {
    return {};
  }
};

/// The ways of the tool of this file name ("spumux.exe").
const tool_ways& ways_of(std::string_view name);

/// What can stand between the components of a path on this system.
#ifdef _WIN32
inline constexpr std::string_view path_separators = "\\/";
#else
inline constexpr std::string_view path_separators = "/";
#endif

/// The last component of a path on this system.
std::string name_in_path(const std::string& path);

/// What went wrong with a program, after "ERR:  ": "mplex.exe ended with status 1". Returns
/// an empty text if nothing did.
std::string complaint_about(const std::string& name, const program_end& end);

}  // namespace corvane
