#include "films.h"

namespace corvane::imported {
namespace {

constexpr const char* pal = "PAL";
constexpr const char* ntsc = "NTSC";
constexpr double tv = 4.0 / 3, wide = 16.0 / 9;
constexpr unsigned picture = is_round | coloured;
constexpr unsigned all = in_step | picture;

film refused(const char* file, const char* why) {
  film f{file};
  f.refusal = why;
  return f;
}

/// Of a file of a film of 8 seconds, 90 % of its bytes; it says itself that it was larger.
film cut_off(const char* file, double seconds) {
  film f{file, seconds, picture, pal, tv};
  f.said = "\n  The file ends before its own end: a part of it is missing.\n";
  return f;
}

std::vector<film> all_films() {
  return {
      // A minute, in what phones, cameras, televisions and the net have.
      {"phone-h264-aac.mp4", 60, all, ntsc, wide},
      {"camera-h264-pcm.mov", 60, all, pal, tv},
      {"film-h264-ac3.mkv", 60, all, ntsc, wide},
      {"cinema-24.mp4", 60, all, ntsc, wide},
      {"pal-film-h264-dts.mkv", 60, all, pal, wide},
      {"hevc-eac3.mkv", 60, all, ntsc, wide},
      {"vp9-opus.webm", 60, all, pal, wide},
      {"divx-mp3.avi", 60, all, pal, tv},
      {"uneven-minute.mp4", 60, all, ntsc, tv},
      {"uneven-minute.mkv", 60, all, pal, tv},
      {"television.ts", 60, all, pal, tv},
      {"cut-in-front.mp4", 60, all, pal, tv},

      // Containers and codecs.
      {"h264-alac.mov", 6, all, pal, tv},
      {"h264-ac3.m4v", 6, all, pal, tv},
      {"hevc-aac.mp4", 6, all, pal, tv},
      {"av1-opus.mp4", 6, all, pal, tv},
      {"av1-opus.webm", 6, all, pal, tv},
      {"vp8-vorbis.webm", 6, all, pal, tv},
      {"theora-vorbis.ogv", 6, all, pal, tv},
      {"mpeg4-aac.mp4", 6, all, pal, tv},
      {"xvid-ac3.avi", 6, all, pal, tv},
      {"h264-mp3.avi", 6, all, pal, tv},
      {"mjpeg-pcm.avi", 6, all, ntsc, tv},
      {"mjpeg-pcm.mov", 6, all, ntsc, tv},
      {"prores-pcm24.mov", 6, all, pal, tv},
      {"dnxhd-pcm.mxf", 6, all, pal, wide},
      {"mpeg2-intra.mxf", 6, all | top_first, pal, tv},
      {"ffv1-flac.mkv", 6, all, pal, tv},
      {"huffyuv-pcm.avi", 6, all, pal, tv},
      {"raw-pcm.avi", 6, all, pal, tv},
      {"screen.avi", 6, all, ntsc, tv},
      {"wmv2-wma.wmv", 6, all, pal, tv},
      {"old-wmv1.asf", 6, all, ntsc, tv},
      {"sorenson-mp3.flv", 6, all, pal, tv},
      {"h264-aac.flv", 6, all, pal, tv},
      {"h263-aac.3gp", 6, all, ntsc, tv},
      {"h264-truehd.mkv", 6, all, pal, tv},
      {"h264-bluray.m2ts", 6, all, ntsc, wide},
      {"mpeg4.nut", 6, all, pal, tv},
      {"stream.h264", 6, marked | picture, pal, tv},
      {"frames.y4m", 6, marked | picture, pal, tv},
      {"dance.gif", 6, marked | picture, ntsc, tv},

      // What other programs make.
      {"x264-flac-by-mkvmerge.mkv", 6, all, pal, tv},
      {"x265-opus-by-mkvmerge.mkv", 6, all, ntsc, tv},
      {"mp3-by-lame.mkv", 6, all, pal, tv},
      {"vorbis-by-oggenc-late.mkv", 6.68, all, pal, tv, 1, {}, false, {}, 0.68},
      {"video-cd.mpg", 6, all, pal, tv},
      {"super-video-cd.mpg", 6, all, ntsc, tv},
      {"by-mpeg2enc.mpg", 6, all, pal, tv, 1, {}, true},
      {"from-a-disc.vob", 6, all, ntsc, tv, 1, {}, true},

      // Colours and shapes. What is brought from a high dynamic range has other colours.
      {"ten-bit.mkv", 6, all, pal, wide},
      {"four-four-four.mkv", 6, all, pal, tv},
      {"four-two-two-ten.mov", 6, all, pal, wide},
      {"red-green-blue.mkv", 6, all, pal, tv},
      {"alpha-prores.mov", 6, all, pal, tv},
      {"alpha-vp8.webm", 6, all, pal, tv},
      {"full-range.mp4", 6, all, pal, wide},
      {"bt709-small.mp4", 6, all, pal, wide},
      {"hd-untagged.mp4", 6, all, pal, wide},
      {"hdr-pq.mkv", 6, in_step | is_round, pal, wide},
      {"hdr-hlg.mp4", 6, in_step | is_round, pal, wide},
      {"one-pixel.mkv", 6, 0, pal, 1},
      {"odd-size.mkv", 6, all, pal, 1919.0 / 1081},
      {"eight-k.mp4", 1, picture, pal, wide},
      {"upright.mp4", 6, all, ntsc, 9.0 / 16},
      {"very-wide.mkv", 6, all, pal, 5},
      {"anamorphic.mp4", 6, all, pal, wide},
      {"television-size.mp4", 6, all, ntsc, tv},
      {"turned-90.mp4", 6, all, ntsc, wide},
      {"turned-180.mov", 6, all, ntsc, wide},
      {"turned-270.mp4", 6, all, ntsc, wide},

      // Fields.
      {"dv-pal.avi", 6, all | bottom_first, pal, tv},
      {"dv-ntsc.dv", 6, all | bottom_first, ntsc, tv},
      {"dv-pal.mov", 6, all | bottom_first, pal, tv},
      {"avchd-1080i.mts", 6, all | top_first, pal, wide},
      {"hdtv-1080i-30.ts", 6, all | top_first, ntsc, wide},
      {"television-576i.mpg", 6, all | top_first, pal, tv, 1, {}, true},
      {"recorder-480i.mkv", 6, all | bottom_first, ntsc, tv},
      {"fifty.mp4", 6, all, pal, wide},
      {"sixty.mp4", 6, all, ntsc, wide},
      {"hundred-and-twenty.mp4", 6, all, ntsc, wide},
      {"five.mp4", 6, all, ntsc, tv},

      // Times.
      {"uneven.webm", 6, all, pal, tv},
      {"sound-late.mp4", 6, all, pal, tv},
      {"sound-early.mkv", 6, all, pal, tv},
      {"sound-with-a-gap.mkv", 6, all, pal, tv},
      {"sound-ends-early.mp4", 6, all, pal, tv},
      {"picture-ends-early.mkv", 6, all, ntsc, tv},
      {"picture-ends-early.mp4", 6, all, pal, tv},
      {"picture-ends-early.avi", 6, all | bottom_first, pal, tv},
      {"picture-ends-early.mpg", 5, picture, pal, tv, 1, {}, true},
      {"large-start.ts", 6, all, pal, tv},
      {"counter-turns-over.ts", 6, all, pal, tv},
      {"joined-back.ts", 8, all, pal, tv},
      {"joined-forwards.ts", 8, all, pal, tv},
      {"joined-where-the-counter-turns.ts", 8, all, pal, tv},
      {"joined-mpeg2.ts", 8, all, pal, tv, 1, {}, true},
      {"joined-ac3.vob", 8, all, pal, tv, 1, {}, true},
      {"second-of-a-set.vob", 6, all, ntsc, tv, 1, {}, true},
      {"begins-at-7.mkv", 6, all, pal, tv},
      {"begins-before-0.mp4", 6, all, pal, tv},
      {"in-fragments.mp4", 6, all, pal, tv},

      // Sound.
      {"sixteen-sounds.mkv", 6, all, pal, tv, 8},
      {"six-channels.mkv", 6, all, pal, tv},
      {"eight-channels.mkv", 6, all, pal, tv},
      {"silent.mp4", 6, marked | picture, pal, tv},

      // Broken ends. Of a stream nobody can say that there was more.
      cut_off("broken.mkv", 7.0),
      cut_off("broken.avi", 7.4),
      {"broken.ts", 6.9, picture, pal, tv},
      cut_off("broken-in-front.mp4", 6.0),
      refused("broken.mp4", "it ends in the middle: what is needed to read it stood in the rest"),

      // No films.
      refused("empty.mp4", "the file is empty"),
      refused("text.mkv", "it is not a file with video or sound"),
      refused("sound.mp3", "there is no video in it"),
      refused("sound.m4a", "there is no video in it"),
      refused("picture.png",
              "it is a picture; \"create m2v still\" in the menu \"menus\" makes a still of it"),
      refused("zeros.mpg", "it is not a file with video or sound"),
  };
}

}  // namespace

const std::vector<film>& films() {
  static const std::vector<film> all = all_films();
  return all;
}

}  // namespace corvane::imported
