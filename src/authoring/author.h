// The authoring driver: from "author dvd..." to the started script.
#pragma once

#include "authoring/material_check.h"
#include "authoring/run_paths.h"
#include "authoring/run_record.h"
#include "platform/files/folder_lock.h"
#include "project/document.h"
#include "runner/shelled.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

enum class author_result {
  started,            ///< the runner has the script
  editing,            ///< all files are written, and the XML editor is open: it starts the run
  prepared,           ///< all files are written, nothing was asked to run
  nothing_to_author,  ///< no title
  cancelled,          ///< no output folder chosen
  refused,            ///< something cannot be authored as it stands; told with a message
  holds_disc,         ///< the folder holds a disc and the user does not want it replaced
  tool_missing,       ///< a tool the run needs is not installed; told with a message
  folder_in_use,      ///< another run uses the program or the output folder; told with a message
  not_written,        ///< a file of the run could not be written; told with a message
  not_started,        ///< the script could not be started; told with a message
};

/// What a run needs of the program around it.
struct author_equipment {
  std::string app;  ///< program folder, native and absolute
  folder_lock& lock;
  shelled& runner;
  std::function<void()> edit_xml;  ///< opens the XML editor; called instead of starting when
                                   ///< `editxml` is on and this is set
  /// Whether an earlier disc in the output folder is replaced, decided beforehand. With it the
  /// driver neither asks nor tells (`false` gives `holds_disc` in silence); without it, it asks.
  std::optional<bool> replace_earlier_disc;
  /// The fonts that text subtitles can be drawn in; asked when there are any.
  std::function<font_list()> fonts = system_fonts;
  material_equipment material = {};
};

/// What a run wrote and will do, from the driver to the start.
struct prepared_run {
  run_paths where;
  std::vector<std::string> files;  ///< native paths of all files written, the script first
  std::string looked_at_xml;       ///< the hand-edited XML whose disc was looked at, or empty
  bool material_unseen = false;    ///< the user skipped the look at the material
  std::vector<finding> told;       ///< what he was asked about
  std::vector<finding> accepted;   ///< errors that were found in it, and the user goes on
  std::vector<std::string>
      replace;        ///< folders and files of an earlier disc, put aside at the start
  run_record record;  ///< what the run makes; what it replaces is seen at the start
};

/// Asks for the output folder, checks, and writes every file of a run into the program folder. On
/// `prepared` the lock is held. Questions and refusals go through the document's prompts.
author_result prepare_run(document& doc, author_equipment& e, prepared_run& run);

/// Puts the earlier disc aside, shows the log window and starts the prepared script. At its end the
/// earlier disc goes or comes back (authoring/earlier_disc.h). Where the XML editor has left other
/// XML than the run was prepared with, the disc of that is looked at first, and asked about as it
/// is then.
author_result authordvd(document& doc, author_equipment& e, prepared_run run);

/// "author dvd...": the two above, or the XML editor in between.
author_result author_command(document& doc, author_equipment& e, prepared_run& run);

}  // namespace corvane
