#include "import/import_plan.h"

#include "examine/measures.h"
#include "import/codec_names.h"
#include "import/language_codes.h"
#include "import/picture_still.h"

#include <algorithm>

namespace corvane {
namespace {

constexpr std::size_t most_chapters = 99;

/// Nobody sees whether a picture stays for half a second, and hardly any sound ends so abruptly.
constexpr double near_enough_to_the_end = 0.5;

/// `seconds` are those of the source still.
void hold_last_picture(import_plan& plan, source_ratio speed) {
  plan.video.work.shown = plan.seconds / speed.value();
  plan.video.work.held = plan.sound.left_out / speed.value();
  plan.seconds += plan.sound.left_out;
  plan.sound.left_out = 0;
}

class planner {
 public:
  planner(const source_facts& file, const std::vector<sidecar>& beside,
          const titleset_demands& demands, const import_choices& choices, video_standard preferred)
      : file_(file), beside_(beside), choices_(choices) {
    plan_.demands = decided_by(file, demands, preferred);
    plan_.source_bytes = file.bytes;
    plan_.joined = file.joined;
    plan_.container = file.container.substr(0, file.container.find(','));
  }

  import_plan plan() {
    video_ = video_of(file_);
    plan_.problem = why_not();
    if (!plan_.problem.empty())
      return std::move(plan_);
    plan_times();
    plan_video();
    plan_.sound = sound_plan_for(file_, plan_.demands, choices_, speed());
    plan_.problem = plan_.sound.problem;
    plan_end();
    // Nobody knows how much silence there would have to be.
    if (plan_.seconds <= 0)
      std::erase_if(plan_.sound.streams, [](const sound_work& work) { return !work.stream; });
    plan_texts();
    plan_chapters();
    plan_.seconds /= speed().value();
    for (const source_stream& stream : file_.streams)
      plan_.streams.push_back(fate_of(stream));
    plan_.sound_tags = sound_tags_beside(plan_.demands, plan_);
    return std::move(plan_);
  }

 private:
  source_ratio speed() const { return plan_.video.work.speed; }

  std::string why_not() const {
    if (!plan_.demands.problem.empty())
      return plan_.demands.problem;
    if (video_ == nullptr)
      return is_picture_alone(file_)
                 ? "it is a picture; \"create m2v still\" in the menu \"menus\" makes a still of it"
                 : "there is no video in it";
    if (!video_->decodes && why_not_copied(*video_, plan_.demands))
      return "its video, " + codec_name(video_->codec) + ", cannot be decoded";
    return {};
  }

  void plan_times() {
    if (video_->start)
      plan_.begin = *video_->start - file_.start.value_or(0);
    if (video_->length)
      plan_.seconds = *video_->length;
    else if (file_.length)
      plan_.seconds = std::max(0.0, *file_.length - plan_.begin);
    plan_.may_end_earlier = !video_->length || video_->length_is_files;
  }

  void plan_video() {
    plan_.video.stream = video_->index;
    plan_.video.work = picture_work_for(*video_, plan_.demands, choices_);
    plan_.video.codec = video_->codec;
    plan_.video.size = {video_->video.width, video_->video.height};
    if (const auto why = why_not_copied(*video_, plan_.demands)) {
      why_encoded_ = *why + "; it becomes MPEG-2, " + work_text(video_->video, plan_.video.work);
    } else {
      plan_.video.fate = stream_fate::copied;
      plan_.video.work.speed = {1, 1};
      plan_.video.may_need_pulldown = may_lack_pulldown(*video_);
    }
  }

  /// Sound that goes on after the picture is heard over the last one, which an encoder repeats.
  /// Nothing can be put behind a copy, and mplex would go on without pictures.
  void plan_end() {
    const double longer = plan_.sound.end - plan_.seconds;
    if (plan_.seconds <= 0 || longer <= near_enough_to_the_end)
      return;
    plan_.sound.left_out = longer;
    if (plan_.video.fate == stream_fate::encoded)
      hold_last_picture(plan_, speed());
  }

  void plan_texts() {
    for (const source_stream& stream : file_.streams)
      if (stream.kind == source_kind::text && stream.decodes)
        plan_.texts.push_back({stream.index, {}, language_code_of(stream.language)});
    for (const sidecar& file : beside_)
      if (file.problem.empty())
        plan_.texts.push_back({std::nullopt, file, file.language});
    const std::vector<std::string>& tags = plan_.demands.subtitle_languages;
    const auto place = [&](const text_plan& text) {
      return text.language.empty()
                 ? tags.end() - tags.begin()
                 : std::find(tags.begin(), tags.end(), text.language) - tags.begin();
    };
    std::stable_sort(plan_.texts.begin(), plan_.texts.end(),
                     [&](const text_plan& a, const text_plan& b) { return place(a) < place(b); });
    if (plan_.texts.size() > most_subpictures)
      plan_.texts.resize(most_subpictures);
    std::vector<std::string> own;
    for (const text_plan& text : plan_.texts)
      own.push_back(text.language);
    plan_.subtitle_tags = subtitle_tags_beside(plan_.demands, own);
  }

  void plan_chapters() {
    for (const source_chapter& chapter : file_.chapters) {
      const double at = std::max(0.0, chapter.start - plan_.begin) / speed().value();
      const bool is_behind = plan_.seconds > 0 && at >= plan_.seconds / speed().value();
      if (!is_behind && plan_.chapters.size() < most_chapters)
        plan_.chapters.push_back(at);
    }
    std::sort(plan_.chapters.begin(), plan_.chapters.end());
    plan_.chapters.erase(std::unique(plan_.chapters.begin(), plan_.chapters.end()),
                         plan_.chapters.end());
  }

  planned_stream fate_of(const source_stream& stream) const {
    planned_stream planned{stream.index, stream_fate::left_out, {}};
    if (stream.index == plan_.video.stream) {
      planned.fate = plan_.video.fate;
      planned.reason =
          planned.fate == stream_fate::copied ? "MPEG-2 that a disc takes as it is" : why_encoded_;
      return planned;
    }
    if (stream.kind == source_kind::audio)
      return fate_of_sound(stream);
    if (std::any_of(plan_.texts.begin(), plan_.texts.end(),
                    [&](const text_plan& text) { return text.stream == stream.index; })) {
      planned.fate = stream_fate::encoded;
      planned.reason = "it becomes a SubRip file in UTF-8";
      return planned;
    }
    planned.reason = why_left_out(stream);
    return planned;
  }

  planned_stream fate_of_sound(const source_stream& stream) const {
    for (const sound_work& work : plan_.sound.streams)
      if (work.stream == stream.index)
        return {
            stream.index, work.fate,
            work.fate == stream_fate::copied ? work.reason : work.reason + "; " + sound_text(work)};
    if (!stream.decodes)
      return {stream.index, stream_fate::left_out,
              "its kind, " + codec_name(stream.codec) + ", cannot be decoded"};
    const bool is_full = plan_.sound.streams.size() >= most_sounds;
    return {stream.index, stream_fate::left_out,
            is_full ? "a title has at most eight sound streams"
                    : "the first title has no such sound stream"};
  }

  static std::string sound_text(const sound_work& work) {
    return "it becomes " +
           std::string(work.kind == disc_sound::mp2 ? "MPEG audio layer II" : "AC-3") +
           (work.channels == 6   ? ", 5.1, "
            : work.channels == 1 ? ", mono, "
                                 : ", stereo, ") +
           std::to_string(work.bit_rate / 1000) + " kb/s";
  }

  static std::string why_left_out(const source_stream& stream) {
    switch (stream.kind) {
      case source_kind::video:
        return "a title has one video";
      case source_kind::picture:
        return "it is a picture, as covers are";
      case source_kind::text:
        return stream.decodes ? "a title has at most 32 subtitles"
                              : "its kind, " + codec_name(stream.codec) + ", cannot be read";
      case source_kind::bitmap_text:
        return "its subtitles are pictures (" + codec_name(stream.codec) +
               "), and a title's are made of text";
      default:
        return "it is neither picture nor sound nor text";
    }
  }

  const source_facts& file_;
  const std::vector<sidecar>& beside_;
  const import_choices& choices_;
  const source_stream* video_ = nullptr;
  std::string why_encoded_;
  import_plan plan_;
};

}  // namespace

std::vector<std::string> sound_tags_beside(const titleset_demands& demands,
                                           const import_plan& plan) {
  std::vector<std::string> tags, own;
  if (demands.sounds)
    for (const titleset_sound& sound : *demands.sounds)
      tags.push_back(sound.language);
  for (const sound_work& work : plan.sound.streams)
    own.push_back(work.language);
  return agreed_tags(tags, own);
}

std::vector<std::string> subtitle_tags_beside(const titleset_demands& demands,
                                              const std::vector<std::string>& languages) {
  return agreed_tags(demands.subtitle_languages, languages);
}

void hold_for_what_is_left_out(import_plan& plan) {
  hold_last_picture(plan, {1, 1});
}

std::string end_text(const import_plan& plan) {
  if (plan.video.work.held > 0)
    return "the picture ends " + seconds_text(plan.video.work.held) +
           " before the sound: its last picture is held";
  if (plan.sound.left_out > 0)
    return "the sound goes on for " + seconds_text(plan.sound.left_out) +
           " after the picture, which is left out";
  return {};
}

import_plan import_plan_for(const source_facts& file, const std::vector<sidecar>& beside,
                            const titleset_demands& demands, const import_choices& choices,
                            video_standard preferred) {
  return planner(file, beside, demands, choices, preferred).plan();
}

}  // namespace corvane
