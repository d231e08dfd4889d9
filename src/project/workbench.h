// What every command works on: the project, the user, the settings store.
#pragma once

#include "platform/settings/settings.h"
#include "project/project.h"
#include "project/prompts.h"

#include <optional>
#include <string>

namespace corvane {

class file_lookup;

struct workbench {
  project& p;
  prompts& ask;
  settings& prefs;
};

/// Guard of every command that changes the project's structure: 1 when there is no hand-edited XML
/// or the user agrees to discard it (it is then emptied), 2 otherwise.
int custom(workbench& w);

/// Shows the open dialog and gives the chosen file in stored form. Nothing when the user cancelled,
/// or when the name cannot be stored, which is told with a message.
std::optional<std::string> pick_file(workbench& w, const file_dialog& dialog);

/// A file that the user chose (native path), in stored form. Nothing when its name cannot be
/// stored, which is told with a message.
std::optional<std::string> stored_or_told(workbench& w, const std::string& native);

/// Refreshes the status text and the size estimate. A file that is missing gets one message, and
/// the status keeps its old text.
void dvdsize(workbench& w);

/// The same for a command that has looked at the project's files already.
void dvdsize(workbench& w, file_lookup& files);

/// What the status text reads before the first refresh.
extern const char* const start_up_dvdsizetext;

}  // namespace corvane
