// Chapter points: their texts, and the dialog `chapter` in which a title's chapter times are typed,
// without its window.
//
// A chapter time is "HH:MM:SS.ss", the separators at characters 3, 6 and 9. A title's chapter
// string (project::chapters) is its times joined by ","; the chapter text that a person edits is
// one time a line, in the person's order: nothing is sorted and nothing removed.
#pragma once

#include "project/document.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// The chapter time of a position in seconds, "01:02:05.50" for 3725.5. The seconds are rounded to
/// hundredths as they are written and not carried: 59.999 gives "00:00:60.00".
std::string chapter_time(double seconds);

/// The position in seconds of a chapter time; nullopt if it is not three numbers between ":".
std::optional<double> chapter_seconds(std::string_view time);

/// The lines of a chapter text. Lines end in CR LF, and a LF alone ends one too.
std::vector<std::string> chapter_lines(std::string_view text);

/// Chapter string to chapter text: each time followed by CR LF.
std::string chapter_text(std::string_view chapter_string);

/// What becomes of a line of a chapter text when it is accepted.
enum class chapter_line_fate {
  blank,     ///< nothing stands in it
  left_out,  ///< too short for a time: dropped
  typo,      ///< no chapter time: nothing is accepted as long as it stands
  cut,       ///< stored up to its 12th character; more stands behind it
  stored
};
struct chapter_line {
  chapter_line_fate fate;
  std::string time;          ///< as it is stored; empty when it is not
  bool completable = false;  ///< it is "HH:MM:SS", a time without its hundredths
};

/// The fate of one line, without its line break.
chapter_line judged_chapter_line(std::string_view line);

/// The fates of all lines of a chapter text.
std::vector<chapter_line> judged_chapter_lines(std::string_view text);

/// What acceptance would do with these lines, a sentence each ("3 lines are too short for a time
/// (00:12:30.50) and will be left out."): first how many times are stored, then what is not.
std::vector<std::string> chapter_notes(const std::vector<chapter_line>& lines);

/// The text with ".00" behind each time that lacks its hundredths; nothing else changes.
std::string completed_chapter_text(std::string_view text);

/// Chapter text to chapter string. Of a line its first 12 characters count, without blanks at both
/// ends; what is shorter than 9 is dropped. Returns nullopt if a line is no chapter time: a
/// separator is not in its place, or it holds a character that the chapter string cannot (a comma,
/// a control character). The digits are not looked at. A text without times gives the empty string.
std::optional<std::string> chapter_string(std::string_view text);

/// The dialog. The window makes one with open() and keeps it until it closes; the project and the
/// prompts must live as long. The project is written by accept() alone.
class chapter {
 public:
  /// For the selected title. Returns nullopt if hand-edited XML is to stay, or if no title is
  /// selected (a message was shown).
  static std::optional<chapter> open(document& doc);

  const std::string& Label2() const { return Label2_; }  ///< title number
  const std::string& Label3() const { return Label3_; }  ///< the title's row
  const std::string& RichTextBox1() const { return RichTextBox1_; }
  void set_text(const std::string& text) { RichTextBox1_ = text; }

  /// Native path of the title's video, which the visual editor plays.
  std::string video() const;

  /// `Command2`: stores the times; true: the window closes. False: a line has a typing error, which
  /// is told; nothing is stored. A missing file of the project is told and keeps nothing back.
  bool accept();

  /// What stands here and was not accepted, into a copy of the project that is kept in case the
  /// program dies: every line that a row can hold, also one that is no time.
  void keep_in(project& copy) const;

 private:
  chapter(document& doc, std::size_t row);

  document* doc_;
  std::string Label2_, Label3_, RichTextBox1_;
};

}  // namespace corvane
