// What a project file asks for, read on its own.
//
// The disc is compared with the text of the project file itself, not with what the program under
// test made of it; hence a reader of its own here, a plain one for files that are in order.
#pragma once

#include "platform/result.h"

#include <string>
#include <vector>

namespace corvane::disc {

struct asked_subtitle {
  std::string file;                  ///< native path
  std::string horizontal, vertical;  ///< where its text stands: "center", "bottom"
  double begins = 0, ends = 0;       ///< of its first subtitle, seconds; 0: not known
};

struct asked_title {
  std::vector<std::string> files;  ///< native paths, video first; one alone: ready as it is
  std::vector<double> chapters;    ///< seconds, as asked
  std::vector<asked_subtitle> subtitles;
  int delay_ms = 0;
  std::string post;    ///< command, blanks trimmed; empty: not set
  double seconds = 0;  ///< length of its video, measured; 0: could not be
  bool is_ready() const { return files.size() == 1; }
};

struct asked_button {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
  std::string action;
  std::string highlight, select;  ///< colour, or native path of a bitmap
};

struct asked_menu {
  std::string video, audio;  ///< native paths; no audio: empty
  bool loop = false;
  std::vector<asked_button> buttons;
};

struct asked_disc {
  std::vector<asked_title> titles;
  std::vector<std::string> audio_languages;     ///< two letters, lower case, per audio stream
  std::vector<std::string> subtitle_languages;  ///< the same, per subtitle stream
  std::vector<asked_menu> menus;
  std::string firstplay, region;
  bool iso = false, jumptable = false, hand_edited = false;
};

result<asked_disc> read_asked(const std::string& native_project_path);

/// Seconds of a chapter time "HH:MM:SS.ss".
double seconds_of_chapter(const std::string& time);

/// Length of an MPEG video elementary stream by its pictures and frame rate, or of a DVD program
/// stream by its navigation packets. 0 when it is neither.
double measured_seconds(const std::string& native_path);

}  // namespace corvane::disc
