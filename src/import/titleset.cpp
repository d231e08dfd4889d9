#include "import/titleset.h"

#include "examine/ready_rules.h"
#include "import/language_codes.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

const file_facts* facts_of(const std::string& stored, const facts_by_path& facts) {
  const auto found = facts.find(native_from_stored(stored));
  return found == facts.end() ? nullptr : found->second.get();
}

titleset_sound sound_of(const std::optional<audio_facts>& audio) {
  titleset_sound sound{disc_sound::other};
  if (!audio)
    return sound;
  if (audio->kind == audio_kind::ac3)
    sound.kind = disc_sound::ac3;
  else if (audio->kind == audio_kind::mpeg_layer_2)
    sound.kind = disc_sound::mp2;
  if (audio->first)
    sound.channels = audio->first->channels;
  return sound;
}

void ask_as_video(titleset_demands& demands, const std::optional<video_facts>& video) {
  if (!video || !video->shape)
    return;
  const video_shape& shape = *video->shape;
  demands.size = picture_size{shape.width, shape.height};
  // A stream that calls its pixels square is stated as 4:3.
  demands.aspect = shape.aspect_width == 16 ? disc_aspect::sixteen_nine : disc_aspect::four_three;
  if (!shape.mpeg2)
    demands.problem =
        "the first title's video is MPEG-1, which all titles of the disc would have to be";
}

void ask_as_ready_file(titleset_demands& demands, const program_stream_facts& program) {
  if (const inner_stream* video = program.video())
    ask_as_video(demands, video->video);
  demands.sounds.emplace();
  for (const inner_stream* sound : sounds_inside(program))
    demands.sounds->push_back(sound_of(sound->audio));
}

void ask_as_streams(titleset_demands& demands, const title_file& title,
                    const facts_by_path& facts) {
  if (const file_facts* video = facts_of(title.video(), facts))
    ask_as_video(demands, video->video);
  demands.sounds.emplace();
  for (std::size_t i = 1; i < title.streams.size(); ++i) {
    const file_facts* const sound = facts_of(title.streams[i], facts);
    // Of a file that is not there the usual kind is the best guess.
    demands.sounds->push_back(sound != nullptr ? sound_of(sound->audio) : titleset_sound{});
  }
}

void ask_as_tags(titleset_demands& demands, const disc_description& d) {
  std::size_t sounds = 0;
  for (const disc_language& tag : d.languages) {
    if (tag.titleset != 1)
      continue;
    const std::string code = language_code_of(tag.code);
    if (tag.kind == disc_language::stream_kind::subpicture)
      demands.subtitle_languages.push_back(code);
    else if (demands.sounds && sounds < demands.sounds->size())
      (*demands.sounds)[sounds++].language = code;
  }
}

/// Whether the rate is so many times `of`, or `of` so many times the rate.
bool is_multiple(double rate, double of, double tolerance) {
  const double times = rate > of ? rate / of : of / rate;
  return std::abs(times / std::round(times) - 1) <= tolerance;
}

}  // namespace

titleset_demands demands_of(const disc_description& d, const facts_by_path& facts) {
  titleset_demands demands;
  const auto first = std::find_if(d.titles.begin(), d.titles.end(),
                                  [](const disc_title& title) { return title.titleset == 1; });
  if (first != d.titles.end() || d.menu_count() != 0 || !d.disc_menus.empty())
    demands.standard =
        d.standard == video_standard::pal ? video_standard::pal : video_standard::ntsc;
  if (first == d.titles.end()) {
    ask_as_tags(demands, d);
    return demands;
  }
  if (first->is_multiplexed_here)
    ask_as_streams(demands, *first, facts);
  else if (const file_facts* ready = facts_of(first->video(), facts); ready && ready->program)
    ask_as_ready_file(demands, *ready->program);
  ask_as_tags(demands, d);
  return demands;
}

video_standard standard_for(const source_facts& file, video_standard preferred) {
  const source_stream* const video = video_of(file);
  if (video == nullptr || video->video.rate.over <= 0 || video->video.rate.under <= 0)
    return preferred;
  const double rate = video->video.rate.value();
  // The mean of times that vary is not exact; 24 and 25 are one in 25 apart.
  const double tolerance = video->video.variable_rate ? 0.015 : 0.005;
  const bool film = is_multiple(rate, 24, tolerance) || is_multiple(rate, 24 / 1.001, tolerance);
  const bool ntsc = film || is_multiple(rate, 30 / 1.001, tolerance);
  const bool pal = is_multiple(rate, 25, tolerance);
  if (ntsc == pal)
    return preferred;
  return pal ? video_standard::pal : video_standard::ntsc;
}

titleset_demands decided_by(const source_facts& file, titleset_demands demands,
                            video_standard preferred) {
  if (!demands.standard)
    demands.standard = standard_for(file, preferred);
  const source_stream* const video = video_of(file);
  if (!demands.aspect && video != nullptr)
    demands.aspect = nearest_aspect(shown_picture_of(video->video).shape());
  return demands;
}

std::vector<std::string> agreed_tags(std::vector<std::string> tags,
                                     const std::vector<std::string>& own) {
  for (std::size_t i = 0; i < std::min(tags.size(), own.size()); ++i)
    if (!own[i].empty() && tags[i] != own[i])
      tags[i].clear();
  for (std::size_t i = tags.size(); i < own.size(); ++i)
    tags.push_back(own[i]);
  return tags;
}

const source_stream* video_of(const source_facts& file) {
  const source_stream* first = nullptr;
  for (const source_stream& stream : file.streams) {
    if (stream.kind != source_kind::video)
      continue;
    if (stream.is_default)
      return &stream;
    if (first == nullptr)
      first = &stream;
  }
  return first;
}

}  // namespace corvane
