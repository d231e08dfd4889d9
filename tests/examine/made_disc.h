// Discs for the tests of rules that need no files.
#pragma once

#include "disc/disc_description.h"
#include "disc/finding.h"

#include <optional>
#include <string>
#include <vector>

namespace corvane::testing_support {

/// A title of a video and one sound stream.
inline disc_title made_title(const std::string& post = {}) {
  disc_title t;
  t.streams = {"\\m\\movie.m2v", "\\m\\movie.ac3"};
  t.is_multiplexed_here = true;
  t.delay = number_of("0");
  t.chapters_text = "00:00:00.00";
  t.chapters = {time_of("00:00:00.00")};
  if (!post.empty())
    t.post = command_of(post);
  return t;
}

inline disc_button made_button(const std::string& x0, const std::string& y0, const std::string& x1,
                               const std::string& y1, const std::string& action = "exit",
                               const std::string& highlight = "white",
                               const std::string& select = "grey") {
  return {number_of(x0),
          number_of(y0),
          number_of(x1),
          number_of(y1),
          command_of(action),
          {highlight, highlight.find('\\') != std::string::npos},
          {select, select.find('\\') != std::string::npos}};
}

/// A menu with a button for each action, one below the other.
inline disc_menu made_menu(const std::vector<std::string>& actions) {
  disc_menu m;
  m.files = {"\\m\\menu.m2v", ""};
  m.spu_begin = time_of("00:00:00.0");
  m.spu_end = time_of("00:00:00.0");
  m.thickness = number_of("1");
  int y = 50;
  for (const std::string& action : actions) {
    m.buttons.push_back(
        made_button("100", std::to_string(y), "300", std::to_string(y + 20), action));
    y += 40;
  }
  return m;
}

inline disc_description made_disc(std::vector<disc_title> titles, std::vector<disc_menu> menus = {},
                                  const std::string& first_play = {}) {
  disc_description d;
  d.standard_text = "NTSC";
  d.standard = video_standard::ntsc;
  d.titles = std::move(titles);
  d.menus = std::move(menus);
  if (!first_play.empty()) {
    d.first_play_text = first_play;
    d.first_play = command_of(first_play);
  }
  return d;
}

/// "rule @ place" of each finding, in their order.
inline std::vector<std::string> told(const std::vector<finding>& findings) {
  std::vector<std::string> texts;
  for (const finding& f : findings)
    texts.push_back(f.rule + " @ " + place_text(f));
  return texts;
}

}  // namespace corvane::testing_support
