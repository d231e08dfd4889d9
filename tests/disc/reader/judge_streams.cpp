#include "judgement.h"

#include <algorithm>

namespace corvane::disc {

namespace {

/// libdvdread has the size of the picture in two bits lower than where dvdauthor and the format
/// have three, so the whole byte is compared.
void judge_video(judgement& j, const std::string& what, const video_attributes& ours,
                 const video_attr_t& theirs) {
  j.same(what + " coding", ours.coding, theirs.mpeg_version);
  j.same(what + " standard", ours.standard_code, theirs.video_format);
  j.same(what + " aspect", ours.aspect_code, theirs.display_aspect_ratio);
  j.same(what + " displays", ours.no_pan_scan * 2 + ours.no_letterbox, theirs.permitted_df);
  const int ours_byte = ours.line21_field1 << 7 | ours.line21_field2 << 6 | ours.size_code << 3 |
                        ours.letterboxed << 2 | static_cast<int>(ours.film);
  const int theirs_byte = theirs.line21_cc_1 << 7 | theirs.line21_cc_2 << 6 | theirs.unknown1 << 5 |
                          theirs.bit_rate << 4 | theirs.picture_size << 2 |
                          theirs.letterboxed << 1 | theirs.film_mode;
  j.same(what + " second byte", ours_byte, theirs_byte);
}

void judge_audio(judgement& j, const std::string& what, const audio_attributes& ours,
                 const audio_attr_t& theirs) {
  j.same(what + " coding", ours.coding, theirs.audio_format);
  j.same(what + " extension", ours.multichannel_extension, theirs.multichannel_extension);
  j.same(what + " language type", ours.language_type, theirs.lang_type);
  j.same(what + " application", ours.application, theirs.application_mode);
  j.same(what + " quantization", ours.quantization, theirs.quantization);
  j.same(what + " rate", ours.rate_code, theirs.sample_frequency);
  j.same(what + " channels", ours.channels - 1, theirs.channels);
  j.same(what + " language", ours.language,
         theirs.lang_type == 1 ? language_of(theirs.lang_code) : std::string());
  j.same(what + " code extension", ours.code_extension, theirs.code_extension);
}

void judge_subpicture(judgement& j, const std::string& what, const subpicture_attributes& ours,
                      const subp_attr_t& theirs) {
  j.same(what + " coding", ours.coding, theirs.code_mode);
  j.same(what + " language type", ours.language_type, theirs.type);
  j.same(what + " language", ours.language,
         theirs.type == 1 ? language_of(theirs.lang_code) : std::string());
  j.same(what + " code extension", ours.code_extension, theirs.code_extension);
}

}  // namespace

void judge_title_streams(judgement& j, const std::string& what, const stream_attributes& ours,
                         const video_attr_t& picture, int sounds, const audio_attr_t* sound,
                         int pictures, const subp_attr_t* shown) {
  judge_video(j, what + " video", ours.video, picture);
  if (j.same(what + " audio streams", ours.audio.size(), sounds))
    for (std::size_t i = 0; i < ours.audio.size(); ++i)
      judge_audio(j, what + " audio " + std::to_string(i), ours.audio[i], sound[i]);
  if (j.same(what + " subpicture streams", ours.subpictures.size(), pictures))
    for (std::size_t i = 0; i < ours.subpictures.size(); ++i)
      judge_subpicture(j, what + " subpicture " + std::to_string(i), ours.subpictures[i], shown[i]);
}

void judge_menu_streams(judgement& j, const std::string& what, const stream_attributes& ours,
                        const video_attr_t& picture, int sounds, const audio_attr_t& sound,
                        int pictures, const subp_attr_t& shown) {
  judge_title_streams(j, what, ours, picture, std::min(sounds, 1), &sound, pictures, &shown);
}

}  // namespace corvane::disc
