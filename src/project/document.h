// The document: the project that is open, with the prompts that ask about it and the preferences.
#pragma once

#include "platform/settings/settings.h"
#include "project/project.h"
#include "project/prompts.h"

#include <optional>
#include <string>

namespace corvane {

class file_lookup;

struct document {
  project& p;
  prompts& ask;
  settings& prefs;
};

/// Guard of every command that changes the project's structure: 1 when there is no hand-edited XML
/// or the user agrees to discard it (it is then emptied), 2 otherwise.
int custom(document& doc);

/// Shows the open dialog and gives the chosen file in stored form. Returns nullopt if the user
/// cancelled, or if the name cannot be stored (a message was shown).
std::optional<std::string> pick_file(document& doc, const file_dialog& dialog);

/// A file that the user chose (native path), in stored form. Returns nullopt if its name cannot be
/// stored (a message was shown).
std::optional<std::string> stored_or_told(document& doc, const std::string& native);

/// Refreshes the status text and the size estimate. A file that is missing gets one message, and
/// the status keeps its old text.
void dvdsize(document& doc);

/// The same for a command that has looked at the project's files already.
void dvdsize(document& doc, file_lookup& files);

/// What the status text reads before the first refresh.
extern const char* const start_up_dvdsizetext;

}  // namespace corvane
