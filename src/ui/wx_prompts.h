// The user prompts with the toolkit's own boxes and dialogs.
#pragma once

#include "project/prompts.h"

#include <string>

class wxWindow;

namespace corvane {

class wx_prompts : public prompts {
 public:
  /// Boxes stand over `owner` (or over the log window while that is the active one). File dialogs
  /// open in `folder` (native) first, then in the one used last.
  wx_prompts(wxWindow& owner, std::string folder);

  answer message(const message_box& box) override;
  std::string open_file(const file_dialog& dialog) override;
  std::string save_file(const file_dialog& dialog) override;
  std::string input(const input_box& box) override;

 private:
  wxWindow* parent() const;
  std::string choose(const file_dialog& dialog, long style);

  wxWindow& owner_;
  std::string last_folder_;
};

}  // namespace corvane
