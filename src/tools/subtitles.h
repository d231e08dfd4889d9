// The dialog `Subtitles` without its window: the text subtitle files of a title, and for each of
// them how its text is drawn.
//
// The window makes one with open() and keeps it until it closes; the project and the prompts must
// live as long. The project's row of files changes at once, that of the settings with
// accept() alone.
#pragma once

#include "project/document.h"
#include "project/font_list.h"
#include "project/subtitle_rows.h"

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

// What the drop-downs offer; for the alignments see project/subtitle_rows.h.
inline constexpr std::array<std::string_view, 3> mfps_items = {"23.976", "25", "29.97"};
extern const std::array<std::string_view, 23> charact_items;

class Subtitles {
 public:
  /// "add/edit subtitles", for the selected title. Returns nullopt if hand-edited XML is to stay,
  /// or when none is selected or the title is an already multiplexed file (a message was shown).
  static std::optional<Subtitles> open(document& doc, font_list fonts);

  std::string label() const;                  ///< "Subtitles for: title1:movie.m2v/movie.ac3"
  std::vector<std::string> list1() const;     ///< names of the files, or "<none>"
  int selected() const { return selected_; }  ///< row of `list1`, 0-based
  const subtitle_settings& shown() const { return shown_; }  ///< the twelve controls' texts
  const font_list& fonts() const { return fonts_; }          ///< rows of `fontface`

  /// Rows of `charact`: the 23, and below them the set that the selected file itself tells
  /// ("UTF-8"), where it does.
  std::vector<std::string> character_sets() const;
  std::optional<std::size_t> fontface() const;  ///< the row that is selected; nothing: none

  // For the preview, paths native.
  std::optional<std::string> file() const;  ///< of the selected row; nothing: "<none>"
  std::string video() const;                ///< of the title
  const std::string& region() const;        ///< "NTSC" or "PAL"

  /// The settings rows, of each file one; one when there is no file.
  const std::vector<std::string>& suboptions() const { return suboptions_; }

  /// `list1`: shows a file's settings. A row that is not there is no change.
  void select(int row);

  /// A field typed or picked: stored for the selected row. A text that would break the settings row
  /// is refused with a message; the field keeps what it had.
  void change(subtitle_field field, const std::string& text);

  /// `fontface`: the font's file becomes the font of the selected row.
  void pick_font(std::size_t row);

  /// `Command1`, "add text subtitle": asks for a file. The first one takes the settings that are
  /// there, a further one a copy of the last ones. A file that is UTF-8 or UTF-16 is asked about
  /// ("Read it as UTF-8 instead of ISO-8859-1?"); with yes that becomes its character set. The
  /// added file is selected.
  void add_file();

  /// `Command2`, "reset subtitles to none": the last settings stay, for the next file.
  void reset();

  /// `accept`: the settings become the project's; the window closes. A missing file of the project
  /// is told and keeps nothing back.
  void accept();

  /// What stands here and was not accepted, into a copy of the project that is kept in case the
  /// program dies.
  void keep_in(project& copy) const;

 private:
  Subtitles(document& doc, std::size_t title, font_list fonts);
  std::string& files_row();
  void look_at_file();

  document* doc_;
  std::size_t title_;  // row of the title, 0-based
  font_list fonts_;
  std::vector<std::string> suboptions_;
  subtitle_settings shown_;
  int selected_ = 0;
  std::string told_set_;  ///< by the selected file; empty: none
};

}  // namespace corvane
