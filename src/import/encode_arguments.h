// What ffmpeg is told to do with a picture and with sound. Texts only; they are measured against
// ffmpeg 5.1.
#pragma once

#include "import/import_plan.h"

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

using argument_list = std::vector<std::string>;

/// How many bits the video gets.
struct video_bits {
  import_quality quality = import_quality::mean_rate;
  std::int64_t mean = 0;  ///< bits a second; of `constant`: not used
  std::int64_t peak = 0;
  int quantizer = 4;  ///< of `constant`
};

/// The chain of filters from the source's pictures to those that are coded. The pictures' times
/// must begin at 0.
std::string picture_filter(const picture_work& work);

/// The encoder and its settings, within what a disc allows, with a key picture at each chapter.
argument_list video_encoder(const picture_work& work, const video_bits& bits,
                            const std::vector<double>& chapters);

/// The chain of filters of a sound stream. `begin`, `end`: seconds of the picture at which it
/// begins and ends; an end of 0 is that of the sound.
std::string sound_filter(const sound_work& work, source_ratio speed, double begin, double end,
                         bool even_loudness);

argument_list sound_encoder(const sound_work& work);

}  // namespace corvane
