#include "import/import_script.h"

#include "made_source.h"
#include "runner/script_line.h"
#include "support/golden.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using import_test::made_disc_video;
using import_test::made_sound;
using import_test::made_source;
using import_test::made_text;
using import_test::made_video;

constexpr path_style both[] = {path_style::windows, path_style::posix};

std::string native(path_style style, const std::string& windows, const std::string& posix) {
  return style == path_style::windows ? windows : posix;
}

import_job job_for(path_style style, const std::string& name, import_plan plan, video_bits bits) {
  import_job job;
  job.source = native(style, "D:\\my films\\" + name, "/home/me/my films/" + name);
  job.plan = std::move(plan);
  job.files = import_names(
      native(style, "C:\\dvd", "/srv/dvd"), job.source, job.plan,
      [](const std::string&) { return false; }, style);
  job.bits = bits;
  return job;
}

std::string script_of(path_style style, const std::vector<import_job>& jobs) {
  return import_script(jobs, native(style, "C:\\Corvane", "/opt/corvane"), style);
}

import_plan plan_of(const source_facts& file, const std::vector<sidecar>& beside = {},
                    const import_choices& choices = {}, const titleset_demands& demands = {}) {
  return import_plan_for(file, beside, demands, choices, video_standard::ntsc);
}

constexpr video_bits two_passes{import_quality::mean_rate, 6'000'000, 9'000'000, 4};
constexpr video_bits one_pass{import_quality::constant, 0, 9'000'000, 3};

// A phone's film, turned, with chapters, sound that begins late and text; then one that is only
// taken apart.
std::vector<import_job> two_films(path_style style) {
  source_stream phone = made_video(1920, 1080, {2997, 100});
  phone.video.turned = 90;
  phone.video.variable_rate = true;
  phone.start = 0.033;
  source_facts film = made_source(phone, made_sound("aac", 2, "eng", 44100),
                                  made_sound("aac", 6, "deu"), made_text("mov_text", "eng"));
  film.chapters = {{0, 20, ""}, {20.033, 40, ""}, {40.5, 60, ""}};
  const std::string sub =
      native(style, "D:\\my films\\film.fr.srt", "/home/me/my films/film.fr.srt");
  source_facts ready = made_source(made_disc_video(), made_sound("ac3"), made_sound("mp2"));
  return {job_for(style, "film.mp4", plan_of(film, {{sub, "fr"}}), two_passes),
          job_for(style, "50% ready.mpg", plan_of(ready), two_passes)};
}

// Film for PAL by speed, in constant quality; an interlaced picture that is scaled; HDR with alpha
// and without sound; fields that are kept.
std::vector<import_job> odd_films(path_style style) {
  import_choices fast;
  fast.film_by_speed = true;
  titleset_demands pal;
  pal.standard = video_standard::pal;
  const source_facts cinema = made_source(made_video(1920, 800, {24000, 1001}),
                                          made_sound("dts", 6), made_text("ass", "eng"));
  source_stream hd = made_video(1440, 1080, {30000, 1001}, source_ratio{4, 3});
  hd.video.fields = source_fields::top_first;
  source_stream hdr = made_video(3840, 2160, {60, 1});
  hdr.video.colours = {"bt2020", "smpte2084", "bt2020nc", false};
  source_stream dv = made_video(720, 480, {30000, 1001}, source_ratio{10, 11});
  dv.video.fields = source_fields::bottom_first;
  source_stream clear = made_video(640, 480, {24, 1});
  clear.video.alpha = true;
  clear.video.pixels = "yuva444p10le";
  import_choices loud;
  loud.even_loudness = true;
  loud.fit = picture_fit::cropped;
  import_job last =
      job_for(style, "loud.mov", plan_of(made_source(clear, made_sound("pcm_s16le", 1)), {}, loud),
              two_passes);
  last.even_loudness = true;
  return {job_for(style, "cinema.mkv", plan_of(cinema, {}, fast, pal), one_pass),
          job_for(style, "camera.mts", plan_of(made_source(hd, made_sound("ac3"))), one_pass),
          job_for(style, "hdr.mov", plan_of(made_source(hdr)), one_pass),
          job_for(style, "tape.avi", plan_of(made_source(dv, made_sound("pcm_s16le"))), one_pass),
          last};
}

source_stream lasting(source_stream stream, double seconds) {
  stream.length = seconds;
  return stream;
}

// Sound that goes on for eleven seconds after the picture: of film for NTSC, of fields that are
// kept and that are made, of film for PAL by speed; and where the video is copied.
std::vector<import_job> films_with_longer_sound(path_style style) {
  source_stream dv = made_video(720, 480, {30000, 1001}, source_ratio{10, 11});
  dv.video.fields = source_fields::bottom_first;
  import_choices fast;
  fast.film_by_speed = true;
  titleset_demands pal;
  pal.standard = video_standard::pal;
  const auto plan = [](source_stream video, source_stream sound, const import_choices& choices = {},
                       const titleset_demands& demands = {}) {
    return plan_of(made_source(lasting(std::move(video), 49), std::move(sound)), {}, choices,
                   demands);
  };
  const source_stream film = made_video(1920, 800, {24000, 1001});
  return {job_for(style, "film.mkv", plan(film, made_sound("aac")), one_pass),
          job_for(style, "tape.avi", plan(dv, made_sound("ac3")), one_pass),
          job_for(style, "fifty.mp4", plan(made_video(1280, 720, {50, 1}), made_sound("aac")),
                  two_passes),
          job_for(style, "fast.mkv", plan(film, made_sound("aac"), fast, pal), one_pass),
          job_for(style, "ready.mkv", plan(made_disc_video(), made_sound("ac3")), two_passes),
          job_for(style, "other.mkv", plan(made_disc_video(), made_sound("aac")), two_passes)};
}

TEST(ImportScript, IsByteForByteTheGoldenOne) {
  for (const path_style style : both)
    testing_support::expect_golden(
        std::string(CORVANE_GOLDEN_FOLDER "/") + native(style, "windows", "linux"),
        {{"two-films.bat", script_of(style, two_films(style))},
         {"odd-films.bat", script_of(style, odd_films(style))},
         {"longer-sound.bat", script_of(style, films_with_longer_sound(style))}});
}

// What conspawn reads is what was meant.
TEST(ImportScript, EachLineIsReadAsItWasMeant) {
  for (const path_style style : both) {
    std::vector<import_job> jobs = odd_films(style);
    for (import_job& job : two_films(style))
      jobs.push_back(job);
    for (const import_job& job : jobs) {
      EXPECT_FALSE(why_not_in_script(job, style));
      const std::string script = script_of(style, {job});
      const argument_list wanted = import_arguments(job, false);
      bool found = false;
      for (std::size_t begin = 0; begin < script.size();) {
        const std::size_t end = script.find('\n', begin);
        const auto line = parse_script_line(script.substr(begin, end - begin));
        ASSERT_TRUE(line) << line.error;
        if (line->verb == script_verb::run)
          found = found ||
                  argument_list(line->pipeline[0].begin() + 1, line->pipeline[0].end()) == wanted;
        begin = end + 1;
      }
      EXPECT_TRUE(found) << job.source;
    }
  }
}

TEST(ImportScript, NamesThatNoScriptHoldsAreRefused) {
  import_job job = two_films(path_style::posix)[0];
  EXPECT_FALSE(why_not_in_script(job, path_style::posix));
  job.source = "/home/me/a\"b.mp4";
  EXPECT_TRUE(why_not_in_script(job, path_style::posix));
  job = two_films(path_style::posix)[0];
  job.plan.texts.back().file.file = "/home/me/a\nb.srt";
  job.plan.texts.back().stream.reset();
  EXPECT_TRUE(why_not_in_script(job, path_style::posix));
}

TEST(ImportNames, AreTheSources) {
  const import_plan plan =
      plan_of(made_source(made_disc_video(), made_sound("ac3", 2, "deu"),
                          made_sound("mp2", 2, "eng"), made_sound("aac", 2, "eng"),
                          made_sound("aac"), made_text("subrip"), made_text("ass", "fra")));
  const auto free = [](const std::string&) { return false; };
  const import_files files =
      import_names("/out", "/in/a film.de.mkv", plan, free, path_style::posix);
  EXPECT_EQ(files.all(), (std::vector<std::string>{"/out/a film.de.m2v", "/out/a film.de.de.ac3",
                                                   "/out/a film.de.2.mp2", "/out/a film.de.3.ac3",
                                                   "/out/a film.de.4.ac3", "/out/a film.de.1.srt",
                                                   "/out/a film.de.fr.srt"}));
  const import_plan one =
      plan_of(made_source(made_disc_video(), made_sound("ac3", 2, "deu"), made_text("subrip")));
  EXPECT_EQ(import_names("/out", "/in/f.mpg", one, free, path_style::posix).all(),
            (std::vector<std::string>{"/out/f.m2v", "/out/f.ac3", "/out/f.srt"}));
}

TEST(ImportNames, OfWhatIsThereAreNotUsed) {
  const import_plan plan = plan_of(made_source(made_disc_video(), made_sound("ac3")));
  for (const std::string taken :
       {"/out/f.ac3", "/out/f.m2v", "/out/f.m2v.part", "/out/f.pass-0.log"}) {
    const auto is_taken = [&](const std::string& path) {
      return path == taken || path == "/out/f (2).m2v";
    };
    const import_files files = import_names("/out", "/in/f.mpg", plan, is_taken, path_style::posix);
    EXPECT_EQ(files.all(), (std::vector<std::string>{"/out/f (3).m2v", "/out/f (3).ac3"})) << taken;
    EXPECT_EQ(files.notes, "/out/f (3).pass");
  }
}

// Where the film lies in the folder that it is imported to, so do its subtitles.
TEST(ImportNames, OfATextThatIsThereChangesTheOtherFilesNot) {
  const import_plan plan =
      plan_of(made_source(made_disc_video(), made_sound("ac3"), made_text("subrip", "deu"),
                          made_text("subrip", "eng")));
  const auto names = [&](const std::vector<std::string>& taken) {
    return import_names(
               "/out", "/in/f.mpg", plan,
               [&](const std::string& path) {
                 return std::ranges::find(taken, path) != taken.end();
               },
               path_style::posix)
        .all();
  };
  EXPECT_EQ(
      names({"/out/f.de.srt"}),
      (std::vector<std::string>{"/out/f.m2v", "/out/f.ac3", "/out/f (2).de.srt", "/out/f.en.srt"}));
  EXPECT_EQ(
      names({"/out/f.de.srt.part", "/out/f (2).de.srt"}),
      (std::vector<std::string>{"/out/f.m2v", "/out/f.ac3", "/out/f (3).de.srt", "/out/f.en.srt"}));
  EXPECT_EQ(names({"/out/f.m2v", "/out/f (2).en.srt"}),
            (std::vector<std::string>{"/out/f (2).m2v", "/out/f (2).ac3", "/out/f (2).de.srt",
                                      "/out/f (3).en.srt"}));
}

TEST(ImportNames, HoldNothingThatAProjectCannot) {
  const import_plan plan = plan_of(made_source(made_disc_video(), made_sound("ac3")));
  const auto free = [](const std::string&) { return false; };
  const auto video = [&](const std::string& source, path_style style) {
    const import_files files =
        import_names(native(style, "C:\\out", "/out"), source, plan, free, style);
    EXPECT_FALSE(why_not_storable(files.video, style));
    return files.video;
  };
  EXPECT_EQ(video("/in/a\"b|c\\d\n.mpg", path_style::posix), "/out/a_b_c_d_.m2v");
  EXPECT_EQ(video("D:\\in\\CON.mpg", path_style::windows), "C:\\out\\import.m2v");
  EXPECT_EQ(video("/in/.mpg", path_style::posix), "/out/import.m2v");
  EXPECT_EQ(video("/in/\xFF.mpg", path_style::posix), "/out/import.m2v");
}

// A list of other people's files with the name of a film must not be opened as one.
TEST(ImportArguments, OpenAFileAsWhatItWasFoundToBe) {
  import_job job;
  job.source = "/films/a%d.mp4";
  job.plan.container = "mov";
  const argument_list arguments = import_arguments(job, false);
  const auto input = std::find(arguments.begin(), arguments.end(), "-i");
  ASSERT_NE(input, arguments.end());
  EXPECT_EQ(*(input - 2), "-f");
  EXPECT_EQ(*(input - 1), "mov");
}

}  // namespace
}  // namespace corvane
