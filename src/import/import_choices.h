// What a person chooses for an import; the rest follows from the file and the titleset.
#pragma once

#include "examine/space_rules.h"
#include "import/picture_shape.h"
#include "import/titleset.h"

#include <cstdint>

namespace corvane {

enum class import_quality {
  fill_disc,  ///< the room that is left on the disc, shared by length; two passes
  mean_rate,  ///< two passes
  constant,   ///< as many bits as each picture needs; one pass
};

struct import_choices {
  import_quality quality = import_quality::fill_disc;
  std::uint64_t disc_bytes = single_layer_bytes;  ///< of fill_disc
  std::int64_t mean_rate = 6'000'000;             ///< of mean_rate: video, bits a second
  int quantizer = 4;                              ///< of constant: 2 (best) to 31
  picture_fit fit = picture_fit::bars;
  bool silence = true;         ///< a file without sound gets silence; else no sound stream
  bool deinterlace = false;    ///< interlaced material becomes whole pictures
  bool film_by_speed = false;  ///< PAL: film of 24 pictures a second is played with 25
  bool even_loudness = false;  ///< sound is brought to the loudness of television (EBU R 128)
  bool more_sounds = false;    ///< also sound streams beyond those of the first title
  disc_sound new_sound = disc_sound::ac3;  ///< what sound is encoded as where no title asks for it
};

}  // namespace corvane
