// The document: it owns the project that is open, with the prompts that ask about it and the
// preferences.
//
// Whoever changes the project takes a step first and gives it back when he is done; from the last
// one that comes back follow what can be undone, the mark that the project is not saved, and what
// is kept in case the program dies.
#pragma once

#include "platform/settings/settings.h"
#include "project/project.h"
#include "project/project_history.h"
#include "project/prompts.h"
#include "project/prompts_relay.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>

namespace corvane {

class file_lookup;
class recovery;

class document {
 public:
  /// Both must outlive it.
  document(prompts& user, settings& preferences) : ask(user), prefs(preferences) { forget_file(); }
  document(const document&) = delete;
  document& operator=(const document&) = delete;

  project p;
  prompts_relay ask;
  settings& prefs;

  /// Files (stored paths) that are missing and that the user does not know where to find.
  std::set<std::string> given_up_files;

  /// What is done to the project as long as it lives, to be undone as one. Within another step it
  /// is part of that one.
  class [[nodiscard]] step {
   public:
    step(document& doc, std::string name);
    step(step&& other) noexcept : doc_(std::exchange(other.doc_, nullptr)) {}
    step& operator=(step&&) = delete;
    ~step();

   private:
    document* doc_;
  };

  /// The names of the steps that are next to be undone and redone, as menus name them; nullopt if
  /// there is none. There is none while a step is on.
  std::optional<std::string> undo_name() const;
  std::optional<std::string> redo_name() const;

  /// Does so. Preferences stay, and so do files.
  void undo();
  void redo();

  /// The project's file (native path); empty if it has none.
  const std::string& file() const { return origin_->file; }

  /// What the file held when it was loaded or saved last, as this program would write it; of a
  /// project without a file, what is nothing that one would save.
  const std::string& text_of_file() const { return origin_->text; }

  /// Whether the project is another than the one in its file, or than a new one.
  bool is_unsaved() const;

  /// The project has been saved to this file (native path).
  void saved_to(const std::string& file);

  /// The project belongs to this file now, which holds `text`.
  void set_file(const std::string& file, std::string text);

  /// The project has no file, and as it is nothing that one would save.
  void forget_file();

  /// Where the project is kept from now on, as long as it is not saved. Must outlive the document.
  void keep_in(recovery* keeper) { keeper_ = keeper; }

  /// Keeps the project as it is, or nothing if it is saved.
  void keep();

  /// Keeps the project as a window (its caption) would leave it that is open now.
  void keep_draft(const project& draft, const std::string& editor);

  /// The program ends: what is not saved stays kept, unless the user gave it up. Nothing that comes
  /// later is kept.
  void end(bool given_up);

 private:
  void begin_step(std::string name);
  void end_step();
  void restore(const project_state& state, const std::shared_ptr<const project_origin>& origin);

  std::shared_ptr<const project_origin> origin_;
  project_history history_;
  int steps_on_ = 0;
  std::string step_name_;
  std::optional<project_state> before_;
  std::shared_ptr<const project_origin> origin_before_;
  std::string kept_;  ///< the text of what is kept; empty: nothing
  recovery* keeper_ = nullptr;
};

/// Guard of every command that changes the project's structure: 1 when there is no hand-edited XML
/// or the user agrees to discard it (it is then emptied), 2 otherwise.
int custom(document& doc);

/// Refreshes the status text and the size estimate. A file that is missing gets one message, and
/// the status keeps its old text.
void dvdsize(document& doc);

/// The same for a command that has looked at the project's files already.
void dvdsize(document& doc, file_lookup& files);

/// Refreshes both from the files that are there, without a word about those that are not.
void show_size_of_what_is_there(project& p);

/// What the status text reads before the first refresh.
extern const char* const start_up_dvdsizetext;

}  // namespace corvane
