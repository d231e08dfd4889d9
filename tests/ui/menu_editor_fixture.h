// A test with the menu editor's window over the main window, on a project of its own.
#pragma once

#include "platform/settings/settings.h"
#include "project/document.h"
#include "support/scripted_prompts.h"
#include "ui/lent_project.h"
#include "ui/window_fixture.h"
#include "ui/wx_prompts.h"

#include <memory>
#include <string>
#include <vector>

namespace corvane::testing_support {

class menu_editor_test : public window_test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Gives the project a menu with these records of buttons.
  void add_menu(const std::string& native_video, const std::vector<std::string>& records = {},
                const std::string& native_audio = {});

  /// Opens the editor for the menu added last and waits until it is there. With buttons, it recalls
  /// them.
  void open();
  /// The same without waiting for more than that it was made.
  void start();
  static bool is_open();
  /// Closes it without a question.
  void close();
  /// Closes it and answers the question about what was changed; waits until that is gone.
  void close_and_answer(const std::string& button);
  static void answer_keep_question(const std::string& button);
  /// Closes it and discards what was changed.
  void discard();
  void accept();

  /// The screen's place of a menu pixel.
  wxPoint on_picture(int x, int y) const;
  /// Picks an entry (0-based) of a drop-down list; by the chooser, a button.
  static void pick(const std::string& list, int index);
  static void choose(int number);
  /// Replaces the text of a field and leaves it with the key.
  static void type_into(const std::string& name, const std::string& text,
                        const std::string& leave = "Return");
  static std::string text_of(const std::string& name);
  static bool is_shown(const std::string& name);
  static bool is_enabled(const std::string& name);
  static int slider(const std::string& name);
  static int scroll_bar(const std::string& name);
  /// "x y width height" as the fields show it, without blanks.
  static std::string place();
  /// The button records that the project holds of the menu, joined by "|".
  std::string stored() const;

  int closed_ = 0;
  memory_settings prefs_;

 private:
  std::unique_ptr<wx_prompts> ask_;
  scripted_prompts nobody_;
  document bench_{nobody_, prefs_};
  std::unique_ptr<prompts_relay::answered_by> answers_;
  lent_project::draft draft_;

 protected:
  project& p_ = bench_.p;
};

/// Records of as many buttons as a menu can have, six beside each other and six below, each of 100
/// x 50 pixels, the first at 20, 20. By turns their places are followed by `odd` and `even`.
std::vector<std::string> thirty_six_buttons(const std::string& odd, const std::string& even);

/// A Windows bitmap of one colour (0xRRGGBB) with so many bits a pixel, as bytes.
std::string bmp(int width, int height, int bits, unsigned colour = 0x2060e0);

}  // namespace corvane::testing_support
