// A test with the findings window, and projects whose streams are real.
#pragma once

#include "project/project.h"
#include "ui/window_fixture.h"

#include <string>
#include <vector>

class wxDataViewListCtrl;

namespace corvane::testing_support {

/// The window that asks whether to author although something was found.
inline constexpr const char* findings_question_name = "findingsquestion";

/// Waits for that question, which must show these rows ("error|title 1, video|first"), and clicks
/// on the button of that label.
void answer_findings(const std::vector<std::string>& rows, const std::string& button);

class findings_test : public window_test {
 protected:
  static constexpr const char* dialog = "findings";

  /// The list; only for use in the main thread, as `lists` is.
  static wxDataViewListCtrl& list(const std::string& window = dialog);
  /// Whether a row's severity, item or text begins so.
  static bool lists(const std::string& text);

  /// The rows as "error|title 1, video|first"; each has its picture.
  static std::vector<std::string> shown_rows(const std::string& window = dialog);
  static int selected_row(const std::string& window = dialog);
  static wxPoint middle_of_row(int row, const std::string& window = dialog);
  static std::string details(const std::string& window = dialog);
  static bool is_enabled(const std::string& name, const std::string& window = dialog);
  static bool is_shown(const std::string& name, const std::string& window);
  static bool has_focus(const std::string& name, const std::string& window);
  static std::string clipboard();

  /// Whether the window of that name has the keys, waited for.
  static bool is_active(const std::string& name);

  /// A project of one title with these streams (native paths), and one more.
  static project one_title(const std::string& video, const std::string& audio);
  static void add_title_to(project& p, const std::string& video, const std::string& audio);
};

}  // namespace corvane::testing_support
