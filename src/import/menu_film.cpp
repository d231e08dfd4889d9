#include "import/menu_film.h"

#include "examine/measures.h"

#include <algorithm>

namespace corvane {
namespace {

constexpr int film_width = 720, film_lines_ntsc = 480, film_lines_pal = 576;

/// As good as a menu is worth, at a rate that leaves room for its sound.
constexpr int menu_quantizer = 3;
constexpr std::int64_t menu_peak = 8'000'000;

/// One that is shorter is no picture that moves.
constexpr double least_film = 0.5;

titleset_demands demands_of_menus(const menu_film_choices& choices) {
  titleset_demands demands;
  demands.standard = choices.standard;
  demands.size = picture_size{
      film_width, choices.standard == video_standard::pal ? film_lines_pal : film_lines_ntsc};
  demands.aspect = choices.aspect;
  demands.sounds = {titleset_sound{choices.sound, 2, {}}};
  return demands;
}

std::optional<sound_work> sound_for_menus(const import_plan& plan) {
  for (sound_work work : plan.sound.streams)
    if (work.stream) {
      encode_instead(work, 2, "it is heard with a menu", 2);
      return work;
    }
  return std::nullopt;
}

}  // namespace

result<menu_film> menu_film_of(const std::string& file, const source_facts& facts,
                               const menu_film_choices& choices) {
  using made = result<menu_film>;
  import_choices how;
  how.quality = import_quality::constant;
  how.fit = picture_fit::cropped;
  menu_film film{
      file, import_plan_for(facts, {}, demands_of_menus(choices), how, choices.standard), 0, {}};
  import_plan& plan = film.plan;
  if (!plan.problem.empty())
    return made::fail(plan.problem);
  const source_stream* const video = video_of(facts);
  if (video == nullptr || !video->decodes)
    return made::fail("its video cannot be decoded");
  // Its picture alone says how long it lasts; no last one is held for sound that goes on.
  const double lasts = plan.seconds - plan.video.work.held;
  if (plan.seconds <= 0)
    return made::fail("it does not say how long it lasts");
  if (lasts - choices.begin < least_film)
    return made::fail("it lasts " + seconds_text(lasts) + ", and was to begin " +
                      seconds_text(choices.begin) + " after its beginning");
  plan.video.fate = stream_fate::encoded;
  plan.video.work.held = 0;
  plan.seconds = std::min(choices.length, lasts - choices.begin);
  film.begin = plan.begin + choices.begin;
  if (choices.with_sound)
    film.sound = sound_for_menus(plan);
  return made::ok(std::move(film));
}

argument_list menu_film_arguments(const menu_film& film, const std::string& page,
                                  const std::string& video, const std::string& sound) {
  const import_plan& plan = film.plan;
  argument_list a = {"-nostdin", "-hide_banner",  "-y", "-v",           "warning",
                     "-stats",   "-stats_period", "1",  "-noautorotate"};
  const auto add = [&a](const argument_list& more) { a.insert(a.end(), more.begin(), more.end()); };
  if (film.begin > 0)
    add({"-ss", decimal_text(film.begin, 6)});
  add({"-t", decimal_text(plan.seconds, 6)});
  if (!plan.container.empty())
    add({"-f", plan.container});
  // The page's own kind of file: a name with "%d" would be taken for a row of pictures.
  add({"-i", film.source, "-f", "png_pipe", "-i", page});
  add({"-filter_complex",
       "[0:" + std::to_string(plan.video.stream) + "]" + picture_filter(plan.video.work) +
           "[film];[1:v]scale=flags=accurate_rnd+full_chroma_int:out_color_matrix=bt601:"
           "out_range=tv,format=yuva420p[page];[film][page]overlay=format=yuv420,"
           "format=yuv420p[menu]",
       "-map", "[menu]"});
  video_bits bits;
  bits.quality = import_quality::constant;
  bits.peak = menu_peak;
  bits.quantizer = menu_quantizer;
  add(video_encoder(plan.video.work, bits, {}));
  a.push_back(video);
  if (film.sound && !sound.empty()) {
    add({"-map", "0:" + std::to_string(*film.sound->stream), "-af",
         sound_filter(*film.sound, plan.video.work.speed, 0, plan.seconds, false)});
    add(sound_encoder(*film.sound));
    a.push_back(sound);
  }
  return a;
}

}  // namespace corvane
