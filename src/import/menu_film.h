// A film behind a menu: its pictures become those of a disc as in an import, the menu's page is put
// over them, and they last no longer than is chosen. Its sound is made as an import makes sound.
//
// What is decided looks at facts alone; the arguments of ffmpeg are texts.
#pragma once

#include "formats/source_facts.h"
#include "import/encode_arguments.h"
#include "import/import_plan.h"
#include "platform/result.h"

#include <optional>
#include <string>

namespace corvane {

struct menu_film_choices {
  video_standard standard = video_standard::ntsc;
  disc_aspect aspect = disc_aspect::four_three;
  double begin = 0;    ///< seconds of the film
  double length = 30;  ///< seconds at most
  bool with_sound = true;
  disc_sound sound = disc_sound::ac3;
};

struct menu_film {
  std::string source;  ///< native path
  import_plan plan;    ///< of its picture, which is encoded; `seconds`: that it lasts
  double begin = 0;    ///< seconds of the file
  std::optional<sound_work> sound;
};

/// What becomes of a film (native path). It fills the picture, cut where its shape is another.
/// Fails, with a clause about it ("there is no video in it"), where nothing can.
result<menu_film> menu_film_of(const std::string& file, const source_facts& facts,
                               const menu_film_choices& choices);

/// What ffmpeg is told, without the program. `page` (native): a PNG file of the disc's size, put
/// over the film where it is not transparent. `video` and `sound` (native): what is made; no sound
/// is made where that is empty.
argument_list menu_film_arguments(const menu_film& film, const std::string& page,
                                  const std::string& video, const std::string& sound);

}  // namespace corvane
