#include "import/picture_plan.h"

#include "examine/measures.h"
#include "import/codec_names.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace corvane {
namespace {

constexpr std::int64_t most_video_rate = 9'800'000;
constexpr source_ratio film_rate{24000, 1001};

bool is_near(double a, double b, double tolerance) {
  return std::abs(a / b - 1) <= tolerance;
}

bool is_size_of_a_disc(const source_video& v, bool pal) {
  const int height = pal ? 576 : 480;
  const bool full = v.height == height && (v.width == 720 || v.width == 704 || v.width == 352);
  return full || (v.height == height / 2 && v.width == 352);
}

/// Repeated fields make the times of MPEG-2's pictures vary, and their mean anything from that of
/// film up.
bool is_rate_of_a_disc(const source_video& v, bool pal) {
  const double rate = v.rate.under > 0 ? v.rate.value() : 0;
  const double whole = rate_of(pal ? video_standard::pal : video_standard::ntsc).value();
  if (is_near(rate, whole, 0.0002))
    return true;
  if (!pal && is_near(rate, film_rate.value(), 0.0002))
    return true;
  return v.variable_rate && rate >= 0.79 * whole && rate <= 1.0002 * whole;
}

std::string size_of(const source_video& v) {
  return std::to_string(v.width) + "x" + std::to_string(v.height);
}

std::string name_of(disc_aspect aspect) {
  return aspect == disc_aspect::four_three ? "4:3" : "16:9";
}

std::string name_of(video_standard standard) {
  return standard == video_standard::pal ? "PAL" : "NTSC";
}

std::optional<std::string> why_not_this_size(const source_video& v,
                                             const titleset_demands& demands) {
  const video_standard standard = *demands.standard;
  if (!is_size_of_a_disc(v, standard == video_standard::pal))
    return "its size, " + size_of(v) + ", is none that a disc of " + name_of(standard) + " takes";
  if (demands.size && *demands.size != picture_size{v.width, v.height})
    return "its size is " + size_of(v) + ", that of the first title " +
           std::to_string(demands.size->width) + "x" + std::to_string(demands.size->height);
  return std::nullopt;
}

std::optional<std::string> why_not_this_shape(const source_video& v,
                                              const titleset_demands& demands) {
  const double shape = shown_picture_of(v).shape().value();
  const double wanted = ratio_of(*demands.aspect).value();
  if (!is_near(shape, wanted, 0.01))
    return "its picture is not " + name_of(*demands.aspect);
  if (*demands.aspect == disc_aspect::sixteen_nine && v.width < 704)
    return "wide pictures of a disc are at least 704 pixels wide";
  return std::nullopt;
}

bool is_interlaced(const source_video& v) {
  return v.fields == source_fields::top_first || v.fields == source_fields::bottom_first;
}

bool is_film(const source_video& v, double rate) {
  const double tolerance = v.variable_rate ? 0.02 : 0.003;
  return is_near(rate, 24, tolerance) || is_near(rate, film_rate.value(), tolerance);
}

/// Whether each picture is shown the same number of times, or nearly.
bool is_even(const source_video& v, double rate, double of_disc) {
  const double times = of_disc / rate;
  return times > 0.9 && is_near(times, std::round(times), v.variable_rate ? 0.04 : 0.005);
}

/// Pictures of 24 a second are not brought to 24000/1001: one in a thousand would be left out, and
/// the others up to half a picture early or late.
source_ratio rate_of_film(const source_video& v, double rate) {
  return !v.variable_rate && is_near(rate, 24, 0.0004) ? source_ratio{24, 1} : film_rate;
}

/// 24 becomes 25 as 24000/1001 does, by its own factor, so that sound can be resampled exactly.
source_ratio speed_of_film(double rate) {
  return is_near(rate, 24, 0.0004) ? source_ratio{25, 24} : source_ratio{25025, 24000};
}

void plan_motion(picture_work& work, const source_video& v, video_standard standard,
                 const import_choices& choices) {
  const double of_disc = rate_of(standard).value();
  double rate = v.rate.over > 0 && v.rate.under > 0 ? v.rate.value() : of_disc;
  work.rate = rate_of(standard);
  if (is_interlaced(v)) {
    work.source_top_first = v.fields == source_fields::top_first;
    const bool stays = work.geometry.keeps_lines() && v.turned == 0 && !v.variable_rate;
    if (choices.deinterlace) {
      work.deinterlace = deinterlacing::to_pictures;
    } else if (stays && is_near(rate, of_disc, 0.005)) {
      work.motion = picture_motion::kept_fields;
      work.top_first = work.source_top_first;
      return;
    } else {
      work.deinterlace = deinterlacing::to_fields;
      rate *= 2;
    }
  }
  if (choices.film_by_speed && standard == video_standard::pal && is_film(v, rate))
    work.speed = speed_of_film(rate);
  else if (standard == video_standard::ntsc && is_film(v, rate)) {
    work.motion = picture_motion::film;
    work.rate = rate_of_film(v, rate);
  } else if (!is_even(v, rate, of_disc)) {
    work.motion = picture_motion::made_fields;
  }
  work.is_dense = rate > work.rate.value() * (work.has_fields() ? 2 : 1) * 1.5;
}

void plan_colours(picture_work& work, const source_video& v) {
  const source_colours& colours = v.colours;
  work.alpha = v.alpha;
  work.full_range = colours.full_range;
  if (colours.transfer == "smpte2084" || colours.transfer == "arib-std-b67")
    work.colours = colour_work::tone_map;
  work.transfer = colours.transfer;
  const bool rgb = v.pixels.starts_with("rgb") || v.pixels.starts_with("bgr") ||
                   v.pixels.starts_with("gbr") || v.pixels.starts_with("pal8") ||
                   v.pixels.starts_with("argb") || v.pixels.starts_with("abgr");
  if (rgb)
    work.matrix = "rgb";
  else if (!colours.matrix.empty())
    work.matrix = colours.matrix;
  else  // what files that do not say mean: television's, or that of larger pictures, however they
        // stand
    work.matrix = std::max(v.width, v.height) > 1024 || std::min(v.width, v.height) > 576
                      ? "bt709"
                      : "smpte170m";
}

}  // namespace

int picture_work::group() const {
  if (motion == picture_motion::film)
    return 12;
  return rate.under == 1 ? 12 : 15;
}

source_ratio rate_of(video_standard standard) {
  return standard == video_standard::pal ? source_ratio{25, 1} : source_ratio{30000, 1001};
}

std::optional<std::string> why_not_copied(const source_stream& video,
                                          const titleset_demands& demands) {
  const source_video& v = video.video;
  const bool pal = *demands.standard == video_standard::pal;
  if (video.codec != "mpeg2video")
    return "it is " + codec_name(video.codec);
  if (!v.pixels.empty() && v.pixels != "yuv420p")
    return "its colours are stored in another way than a disc's (4:2:0)";
  if (!video.profile.empty() && video.profile != "Main" && video.profile != "Simple")
    return "its profile is " + video.profile + ", a disc's Main";
  if (v.turned != 0 || v.mirrored)
    return "it is to be turned";
  if (auto why = why_not_this_size(v, demands))
    return why;
  if (!is_rate_of_a_disc(v, pal))
    return "it has " + decimal_text(v.rate.under > 0 ? v.rate.value() : 0, 3) +
           " pictures a second, a disc of " + name_of(*demands.standard) + (pal ? " 25" : " 29.97");
  if (auto why = why_not_this_shape(v, demands))
    return why;
  if (video.bit_rate && *video.bit_rate > most_video_rate)
    return "it has more than the 9.8 Mb/s of a disc";
  return std::nullopt;
}

bool may_lack_pulldown(const source_stream& video) {
  return video.video.height % 240 == 0 && video.video.rate.under > 0 &&
         is_near(video.video.rate.value(), film_rate.value(), 0.0002);
}

picture_work picture_work_for(const source_stream& video, const titleset_demands& demands,
                              const import_choices& choices) {
  const shown_picture source = shown_picture_of(video.video);
  picture_work work;
  const picture_size disc = disc_size_for(source, *demands.standard, *demands.aspect, demands.size);
  work.geometry = fit_picture(source, disc, *demands.aspect, choices.fit);
  work.turned = video.video.turned;
  work.mirrored = video.video.mirrored;
  work.cropped = work.geometry.is_cropped(source);
  plan_motion(work, video.video, *demands.standard, choices);
  plan_colours(work, video.video);
  return work;
}

std::string work_text(const source_video& source, const picture_work& work) {
  const picture_geometry& g = work.geometry;
  std::string text =
      std::to_string(g.disc.width) + "x" + std::to_string(g.disc.height) + ", " + name_of(g.aspect);
  if (work.turned != 0 || work.mirrored)
    text += ", turned as the file says";
  if (work.cropped)
    text += ", cut to that shape";
  if (g.has_bars())
    text += ", with black bars";
  if (work.deinterlace == deinterlacing::to_pictures)
    text += ", deinterlaced";
  if (work.motion == picture_motion::film)
    text += ", film by repeated fields (pulldown)";
  else if (work.motion == picture_motion::kept_fields)
    text += work.top_first ? ", interlaced, top field first" : ", interlaced, bottom field first";
  else if (work.motion == picture_motion::made_fields)
    text += ", interlaced, fields made of " + decimal_text(source.rate.value(), 3) +
            (work.deinterlace == deinterlacing::to_fields ? " interlaced" : "") +
            " pictures a second";
  if (work.speed != source_ratio{1, 1})
    text += ", " + decimal_text((work.speed.value() - 1) * 100, 1) + " % faster";
  if (work.colours == colour_work::tone_map)
    text += ", HDR brought to what a disc shows";
  return text;
}

}  // namespace corvane
