// Prompts where nobody is there to answer: every text goes to standard error, every question gets
// the answer that changes and loses nothing.
#pragma once

#include "apps/corvane-author/report.h"
#include "project/prompts.h"

#include <string>

namespace corvane {

class console_prompts : public prompts {
 public:
  /// `output`: what a save dialog gives, the output folder (native, absolute).
  console_prompts(report& out, std::string output);

  answer message(const message_box& box) override;
  std::string open_file(const file_dialog& dialog) override;
  std::string save_file(const file_dialog& dialog) override;
  std::string input(const input_box& box) override;

 private:
  report& report_;
  std::string output_;
};

}  // namespace corvane
