// Prompts that hand every question on, to the user or to whoever answers in his place for a while.
#pragma once

#include "project/prompts.h"

namespace corvane {

class prompts_relay : public prompts {
 public:
  explicit prompts_relay(prompts& user) : to_(&user) {}
  prompts_relay(const prompts_relay&) = delete;
  prompts_relay& operator=(const prompts_relay&) = delete;

  answer message(const message_box& box) override { return to_->message(box); }
  std::string open_file(const file_dialog& dialog) override { return to_->open_file(dialog); }
  std::string save_file(const file_dialog& dialog) override { return to_->save_file(dialog); }
  std::string input(const input_box& box) override { return to_->input(box); }
  bool go_on_despite(const findings_question& question) override {
    return to_->go_on_despite(question);
  }
  std::string folder_of_missing(const missing_question& question) override {
    return to_->folder_of_missing(question);
  }
  bool show_text_file(const std::string& path) override { return to_->show_text_file(path); }
  bool can_ask() const override { return to_->can_ask(); }

  /// Who is asked now.
  prompts& asked() const { return *to_; }

  /// For its life, others answer.
  class answered_by {
   public:
    answered_by(prompts_relay& relay, prompts& others) : relay_(relay), before_(relay.to_) {
      relay_.to_ = &others;
    }
    ~answered_by() { relay_.to_ = before_; }
    answered_by(const answered_by&) = delete;
    answered_by& operator=(const answered_by&) = delete;

   private:
    prompts_relay& relay_;
    prompts* before_;
  };

 private:
  prompts* to_;
};

}  // namespace corvane
