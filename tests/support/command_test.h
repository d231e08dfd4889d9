// What the tests of commands share: a project, a script of answers, settings, a folder of files.
#pragma once

#include "project/document.h"
#include "project/title_rows.h"
#include "support/scripted_prompts.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane {

/// So that a failed comparison prints the text and not bytes.
inline void PrintTo(const message_box& box, std::ostream* out) {
  *out << box.text;
}

namespace testing_support {

using rows = std::vector<std::string>;

inline const char* const video_filter =
    "mpeg elementry stream(*.m2v, *.m1v,*.mpv)|*.m2v;*.m1v;*.mpv|mpeg with NAV packets(*.vob, "
    "*.mpg, *.mpeg)|*.vob; *.mpg; *.mpeg";
inline const char* const audio_filter = "audio stream(*.ac3, *.mp2, *.mpa)|*.ac3;*.mp2;*.mpa";
inline const char* const cvp_filter = "corvane project file(*.cvp)|*.cvp";

class command_test : public testing::Test {
 protected:
  /// The question that guards hand-edited XML.
  void expect_guard(answer reply) {
    expect_loss("You have edited the XML manually, do you want to discard these changes?",
                icon::exclamation, reply);
  }
  /// A question in which OK loses something, so that Enter cancels.
  void expect_loss(const std::string& text, icon picture, answer reply) {
    message_box question = box(text, picture, buttons::ok_cancel);
    question.enter_cancels = true;
    ask.expect(question, reply);
  }
  void expect_video(const std::string& native) {
    ask.expect_open({"select video stream", video_filter, ""}, native);
  }
  void expect_audio(const std::string& native) {
    ask.expect_open({"select audio stream", audio_filter, ""}, native);
  }
  void expect_refusal(const std::string& text) { ask.expect(box(text, icon::exclamation)); }
  void expect_error(const std::string& text) { ask.expect(box(text, icon::critical)); }
  void expect_missing(const std::string& native) {
    expect_error(native + " appears to be missing");
  }

  static message_box box(std::string text, icon picture, buttons choice = buttons::ok) {
    return {std::move(text), picture, choice, "Corvane"};
  }

  /// Makes the files `a.m2v` and `b.ac3`, ... and a title of them; gives its List11 row.
  std::string add_files_and_title(const std::vector<std::string>& names) {
    std::string row;
    for (const std::string& name : names) {
      folder.add(name);
      if (!row.empty())
        row += '/';
      row += folder.stored(name);
    }
    add_title(p, row);
    return row;
  }

  testing_support::temporary_folder folder;
  testing_support::scripted_prompts ask;
  memory_settings prefs;
  document doc{ask, prefs};
  project& p = doc.p;
};

/// A block as a program stream with navigation packets begins.
inline std::string nav_block(std::size_t first_packet_at = 14) {
  using namespace std::string_view_literals;
  std::string block(first_packet_at, '\x55');
  block += "\x00\x00\x01\xBF\x03\xD4"sv;
  block += std::string(980, '\0');
  block += "\x00\x00\x01\xBF\x03\xFA"sv;
  block += std::string(1018, '\0');
  return block;
}

}  // namespace testing_support
}  // namespace corvane
