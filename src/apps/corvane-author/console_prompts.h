// Prompts where nobody is there to answer: every text goes to standard error, every question gets
// the answer that changes and loses nothing.
#pragma once

#include "apps/corvane-author/report.h"
#include "project/prompts.h"

#include <string>
#include <vector>

namespace corvane {

class console_prompts : public prompts {
 public:
  /// `output`: what a save dialog gives, the output folder (native, absolute).
  /// `force`: authors whatever is found.
  console_prompts(report& out, std::string output, bool force);

  answer message(const message_box& box) override;
  std::string open_file(const file_dialog& dialog) override;
  std::string save_file(const file_dialog& dialog) override;
  std::string input(const input_box& box) override;

  /// Tells all that was found. Warnings do not keep a run from going on; errors do without `force`.
  bool go_on_despite(const findings_question& question) override;

 private:
  report& report_;
  std::string output_;
  bool force_;
};

}  // namespace corvane
