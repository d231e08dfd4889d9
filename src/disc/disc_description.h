// A disc as somebody asks for it, foresees it or finds it: titles, menus with their buttons, what
// follows what. One type, so that two of them can be held against each other.
//
// The project fills it from its rows (project/disc_of.h), hand-edited navigation XML is read into
// it (disc/read_navigation.h). Every number, time and command stands in it twice: as the text that
// it was given as, which builders write, and as its value, which rules read. What is not known is
// not set.
//
// Nothing here is looked up or checked: files may be missing, numbers out of every range.
#pragma once

#include "disc/disc_command.h"
#include "disc/subtitle_settings.h"

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// A number and its text.
struct text_number {
  std::string text;
  double value = 0;        ///< the number that the text begins with; 0 if it begins with none
  bool is_number = false;  ///< whether the text is a number and nothing else
  bool operator==(const text_number&) const = default;
};

/// A position and its text.
struct text_time {
  std::string text;
  std::optional<double> seconds;  ///< not set if the text is not up to three numbers between ":"
  bool operator==(const text_time&) const = default;
};

/// The line system of all video of a disc.
enum class video_standard { other, ntsc, pal };

/// Subtitles and subpicture streams that a title can have.
inline constexpr std::size_t most_subpictures = 32;

/// A text subtitle of a title, which becomes a subpicture stream.
struct disc_subtitle {
  std::string file;  ///< stored path

  /// Never null. Subtitles that one settings row serves share it: a file from a stranger may name
  /// very many. Of fewer fields the missing ones are empty.
  std::shared_ptr<const subtitle_settings> settings = std::make_shared<subtitle_settings>();

  std::size_t field_count = subtitle_field_count;  ///< how many fields its settings row has

  bool operator==(const disc_subtitle& other) const {
    return file == other.file && *settings == *other.settings && field_count == other.field_count;
  }
};

/// A file that a title plays.
struct title_file {
  /// Stored paths: the video, then its audio streams. Of a ready file its one path.
  std::vector<std::string> streams;
  bool is_multiplexed_here = false;  ///< the run multiplexes the streams; else a ready file is used
  text_number delay;                 ///< of the audio, in milliseconds
  std::string chapters_text;         ///< the chapter times, from its beginning, "," between them
  std::vector<text_time> chapters;   ///< its pieces, in their order, also those that are blank
  std::vector<disc_subtitle> subtitles;
  /// Hand-edited XML takes it apart into cells: which parts of it are played, with which chapters,
  /// is not described.
  bool has_cells = false;
  bool operator==(const title_file&) const = default;

  const std::string& video() const;
};

struct disc_title : title_file {
  int titleset = 1;                  ///< 1-based
  std::string name;                  ///< as lists show it: "title1:movie.m2v/movie.ac3"
  std::optional<disc_command> post;  ///< what it ends with; not set: the next title, or the end
  // Only of hand-edited XML, where it states them.
  std::vector<title_file> further;  ///< played behind the first one
  std::optional<disc_command> pre;  ///< what it begins with
  std::vector<disc_command> cell_commands;
  std::string pause;   ///< after its end: seconds, or "inf"
  std::string aspect;  ///< of its titleset: "16:9"
  bool operator==(const disc_title&) const = default;

  /// All files, in their order. The title must outlive what is given.
  std::vector<const title_file*> files() const;
};

/// What a button shows while it is highlighted or selected.
struct disc_look {
  std::string text;        ///< colour name, or stored path of a bitmap
  bool is_bitmap = false;  ///< the text contains "\"
  bool operator==(const disc_look&) const = default;
};

/// A button of a menu. Edges in pixels of the full picture: x 0 to 719, y 0 to 479 (NTSC) or 575
/// (PAL).
struct disc_button {
  text_number x0, y0, x1, y1;
  disc_command action;
  disc_look highlight, select;
  bool operator==(const disc_button&) const = default;
};

struct disc_menu {
  int titleset = 1;  ///< 1-based; 0: of the whole disc
  /// Stored paths: the video, then its audio, which is empty if the menu has none. Hand-made
  /// projects can have more, which no text of a run names.
  std::vector<std::string> files;
  bool loop = false;             ///< pauses for five seconds and begins again, instead of staying
  text_time spu_begin, spu_end;  ///< when the buttons come up and go; an end of 0: never
  text_number thickness;         ///< of the frame around a button, in pixels; whole
  std::vector<disc_button> buttons;
  // Only of hand-edited XML, where it states them.
  bool is_ready = false;  ///< its file is none that the run makes of streams
  int language = 0;       ///< in which of its languages the menu is shown, in their order, 0-based
  std::vector<std::string> entries;  ///< keys and commands that lead here: "root"
  std::optional<disc_command> pre;   ///< what it begins with; not the jump table
  std::optional<disc_command> post;  ///< what it ends with, unless that is `loop`
  std::vector<disc_command> cell_commands;
  std::string pause;   ///< after its end: seconds, or "inf"
  std::string aspect;  ///< of the menus of its titleset: "16:9"
  /// Several files, cells, or buttons by their names: how long it is and which buttons it has, is
  /// not described.
  bool has_parts = false;
  bool has_other_looks = false;  ///< its buttons need not look as the run draws them
  bool operator==(const disc_menu&) const = default;

  const std::string& video() const;
  const std::string& audio() const;  ///< empty: none
};

/// A language that streams are labelled with: the n-th one of a kind labels the n-th stream of it,
/// in each title of its titleset.
struct disc_language {
  enum class stream_kind { audio, subpicture };
  stream_kind kind = stream_kind::audio;
  std::string text;  ///< the tag row
  std::string code;  ///< two letters, unless somebody wrote the row by hand; empty: no language
  int titleset = 1;  ///< 1-based
  bool operator==(const disc_language&) const = default;
};

struct disc_description {
  std::string standard_text;  ///< "NTSC" or "PAL"
  video_standard standard = video_standard::other;
  std::vector<disc_title> titles;
  std::vector<disc_menu> menus;
  std::vector<disc_menu> disc_menus;  ///< of the whole disc (VMGM); only of hand-edited XML
  std::vector<disc_language> languages;
  std::string first_play_text = "<default>";  ///< that, or a command
  std::optional<disc_command> first_play;     ///< not set: the first menu, or title
  bool jump_table = false;                    ///< menus are remembered in general register g1
  bool image = false;                         ///< an ISO image of the folder is wanted as well
  /// Hand-edited XML has ways through the disc that the editors have no words for: menus of the
  /// whole disc, commands around a title or menu or in a cell, entries, a jump pad. What a viewer
  /// can reach is then not looked at.
  bool has_other_paths = false;
  bool has_jump_pad = false;  ///< dvdauthor puts commands of its own before those of the XML
  bool operator==(const disc_description&) const = default;

  int title_count() const { return static_cast<int>(titles.size()); }
  int menu_count() const { return static_cast<int>(menus.size()); }
  const disc_title& title(int number) const;  ///< 1-based; must exist, as must the menu
  const disc_menu& menu(int number) const;
  int picture_height() const { return standard == video_standard::pal ? 576 : 480; }
};

/// Whether there is a command: an empty element of hand-edited XML is none.
bool is_given(const std::optional<disc_command>& command);

/// Whether hand-edited XML takes any of the title's files apart into cells.
bool is_cut(const disc_title& title);

/// The standard that is called so: "NTSC", "PAL"; anything else is `other`.
video_standard standard_named(const std::string& name);

/// A number text; what counts as a number and nothing else: an optional sign, digits, an optional
/// fraction, blanks around.
text_number number_of(const std::string& text);

/// A time text, read as formats/time_text.h's typed_time does.
text_time time_of(const std::string& text);

/// Whether any title has a text subtitle.
bool has_subtitles(const disc_description& d);

}  // namespace corvane
