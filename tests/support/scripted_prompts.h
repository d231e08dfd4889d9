// Prompts for tests: a script of expected questions with their answers. Anything unasked or
// unexpected fails the test.
#pragma once

#include "project/prompts.h"

#include <gtest/gtest.h>

#include <deque>
#include <string>
#include <utility>
#include <vector>

namespace corvane::testing_support {

class scripted_prompts : public prompts {
 public:
  ~scripted_prompts() override {
    for (const step& s : steps_)
      ADD_FAILURE() << "never asked: " << s.what << " \"" << s.text << '"';
  }

  /// The next message box must be exactly this one.
  void expect(const message_box& box, answer reply = answer::ok) {
    step s;
    s.what = "message";
    s.text = box.text;
    s.box = box;
    s.choice = reply;
    steps_.push_back(std::move(s));
  }
  void expect_open(const file_dialog& dialog, std::string path) {
    push_file("open dialog", dialog, std::move(path));
  }
  void expect_save(const file_dialog& dialog, std::string path) {
    push_file("save dialog", dialog, std::move(path));
  }
  void expect_input(const input_box& box, std::string text) {
    step s;
    s.what = "input box";
    s.text = box.prompt;
    s.input = box;
    s.reply = std::move(text);
    steps_.push_back(std::move(s));
  }
  /// The question whether to author although something was found must be this one, as `words_of`
  /// gives it.
  void expect_findings(const std::string& words, bool go_on) {
    step s;
    s.what = "findings";
    s.text = words;
    s.choice = go_on ? answer::yes : answer::no;
    steps_.push_back(std::move(s));
  }
  /// Its text, then a line for each finding.
  static std::string words_of(const findings_question& question) {
    std::string words = question.text + (question.may_go_on ? "" : " (no run)");
    for (const finding& f : question.findings)
      words += "\n" + line_of(f);
    return words;
  }
  /// After the last expected question the program is ending, and nobody answers any more.
  void leave_after_last() { leaves_ = true; }
  std::vector<std::string> shown;  ///< text files
  bool shows = true;               ///< whether they can be
  bool all_asked() const { return steps_.empty(); }

  answer message(const message_box& box) override {
    const step s = next("message", box.text);
    EXPECT_EQ(s.box.text, box.text);
    EXPECT_EQ(s.box.picture, box.picture) << box.text;
    EXPECT_EQ(s.box.choice, box.choice) << box.text;
    EXPECT_EQ(s.box.caption, box.caption) << box.text;
    EXPECT_EQ(s.box.enter_answers_yes, box.enter_answers_yes) << box.text;
    EXPECT_EQ(s.box.enter_cancels, box.enter_cancels) << box.text;
    return s.choice;
  }
  std::string open_file(const file_dialog& dialog) override { return file("open dialog", dialog); }
  std::string save_file(const file_dialog& dialog) override { return file("save dialog", dialog); }
  bool show_text_file(const std::string& path) override {
    shown.push_back(path);
    return shows;
  }
  std::string input(const input_box& box) override {
    const step s = next("input box", box.prompt);
    EXPECT_EQ(s.input.title, box.title);
    EXPECT_EQ(s.input.prompt, box.prompt);
    EXPECT_EQ(s.input.preset, box.preset);
    return s.reply;
  }
  bool go_on_despite(const findings_question& question) override {
    const step s = next("findings", words_of(question));
    EXPECT_EQ(s.text, words_of(question));
    return s.choice == answer::yes;
  }
  bool can_ask() const override { return !leaves_ || !steps_.empty(); }

 private:
  struct step {
    std::string what, text;
    message_box box;
    file_dialog dialog;
    input_box input;
    answer choice = answer::cancel;
    std::string reply;
  };

  void push_file(const char* what, const file_dialog& dialog, std::string path) {
    step s;
    s.what = what;
    s.text = dialog.title;
    s.dialog = dialog;
    s.reply = std::move(path);
    steps_.push_back(std::move(s));
  }
  std::string file(const char* what, const file_dialog& dialog) {
    const step s = next(what, dialog.title);
    EXPECT_EQ(s.dialog.title, dialog.title);
    EXPECT_EQ(s.dialog.filter, dialog.filter);
    EXPECT_EQ(s.dialog.preset, dialog.preset);
    return s.reply;
  }
  step next(const std::string& what, const std::string& text) {
    if (steps_.empty() || steps_.front().what != what) {
      ADD_FAILURE() << "unexpected " << what << ": \"" << text << '"'
                    << (steps_.empty() ? ""
                                       : ", expected " + steps_.front().what + " \"" +
                                             steps_.front().text + '"');
      return {};
    }
    step s = std::move(steps_.front());
    steps_.pop_front();
    return s;
  }

  std::deque<step> steps_;
  bool leaves_ = false;
};

}  // namespace corvane::testing_support
