// Rules about single streams: what a disc allows of video and of sound.
#pragma once

#include "disc/disc_description.h"
#include "examine/audio_facts.h"
#include "examine/program_stream_facts.h"
#include "examine/rules.h"
#include "examine/video_facts.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace corvane {

std::span<const rule> video_rules();
std::span<const rule> audio_rules();

/// What a disc of this standard does not allow in a video stream. `packed`: the stream is inside a
/// program stream, where what mplex would stumble over does no harm.
std::vector<finding> video_findings(const video_facts& video, video_standard standard,
                                    finding_item item, const std::string& file, bool packed);

/// The same of a sound stream. `picture_seconds`: how long the video is that it is played with;
/// not set: not compared.
std::vector<finding> audio_findings(const audio_facts& audio, finding_item item,
                                    const std::string& file, bool packed,
                                    std::optional<double> picture_seconds);

/// The same of LPCM or DTS inside a program stream, of which only its packets tell.
std::vector<finding> packet_sound_findings(const inner_stream& sound, finding_item item,
                                           const std::string& file,
                                           std::optional<double> picture_seconds);

double bits_a_second(const lpcm_format& lpcm);
std::string lpcm_text(const lpcm_format& lpcm);  ///< "LPCM of 48 kHz, 16 bits, 2 channels"

/// The sound that is multiplexed with a video.
struct sounds_of_title {
  int count = 0;
  double rate = 0;   ///< of all of them, bits a second
  double delay = 0;  ///< seconds by which the picture comes later
};

/// Whether mplex can multiplex them: whether each picture is there before it is to be decoded.
std::vector<finding> multiplexing_findings(const video_facts& video, const sounds_of_title& sounds,
                                           finding_item item, const std::string& file);

/// Whether all streams of a ready title together are too many bits a second. `sound`: bits a second
/// of all its sound streams.
std::vector<finding> total_rate_findings(const video_facts& video, double sound, finding_item item,
                                         const std::string& file);

}  // namespace corvane
