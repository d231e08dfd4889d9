// The navigation XML editor `xmleditor` without its window: the text between a prepared run and its
// start, what closing it asks, and the switch that makes authoring stop for it.
//
// The window makes one when it opens and keeps it until it closes; project and equipment must live
// as long. While it is open the program folder's lock is held, so that no other run touches
// config.xml; declining lets it go.
#pragma once

#include "formats/xml_reader.h"
#include "platform/files/folder_lock.h"
#include "project/document.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace corvane {

struct xmleditor_equipment {
  std::string app;  ///< program folder, native and absolute; config.xml is there
  folder_lock& lock;
  std::function<std::string()> generated;  ///< config.xml as the project gives it, without an edit
};

/// What closing the editor comes to.
enum class xmleditor_end {
  stays_open,  ///< the user wants back to the text, or it could not be saved; nothing is changed
  declined,    ///< the files stay as they are; the lock is released
  proceed,     ///< the window is to close, and the prepared run to start; the lock is held
};

class xmleditor {
 public:
  /// Opens with the project's hand-edited XML; without one with config.xml, and empty when that
  /// cannot be read.
  xmleditor(document& doc, xmleditor_equipment e);

  /// The text, lines ended by CR LF.
  const std::string& Text1() const { return Text1_; }

  /// What the user has typed; whatever its line ends, they become CR LF.
  void set_Text1(std::string_view text);

  /// Nothing is typed, or all of it undone: the text is what was opened, also where a window cannot
  /// show it.
  void restore() { Text1_ = opened_; }

  /// Where the text is not well formed, for the window to lead there.
  std::optional<xml_fault> fault() const { return first_xml_fault(Text1_); }

  /// Asks whether to close with a fault, if there is one; then "Save changes?" and "Proceed with
  /// Authoring?"; the first of these closed without an answer leads back to the text, since its No
  /// would lose what was typed. Saving puts the text into config.xml and the project; a text
  /// without anything in it takes the edit back, and config.xml is what the project gives.
  xmleditor_end close();

  /// What was typed and not saved, into a copy of the project that is kept in case the
  /// program dies.
  void keep_in(project& copy) const;

 private:
  bool may_close_with_fault();
  bool save();

  document* doc_;
  xmleditor_equipment e_;
  std::string opened_;
  std::string Text1_;
};

/// `editxml`: toggles the check mark; tells what it is for before setting it.
void editxml_command(document& doc);

}  // namespace corvane
