// Files as people have them become titles that examination finds nothing on: planned by facts as a
// prober would give them, run by the interpreter of work scripts with the ffmpeg of this system,
// finished, and examined whole.
#include "examine/examination.h"
#include "import/copied_streams.h"
#include "import/disc_budget.h"
#include "import/encoder_complaints.h"
#include "import/finish_import.h"
#include "import/followed_video.h"
#include "import/import_bits.h"
#include "import/import_script.h"
#include "import/short_film.h"
#include "made_source.h"
#include "runner/script_interpreter.h"
#include "support/full_disk_posix.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace corvane {
namespace {

using import_test::made_disc_video;
using import_test::made_sound;
using import_test::made_source;
using import_test::made_text;
using import_test::made_video;

namespace fs = std::filesystem;

/// What scripts print is kept.
class quiet_host final : public system_script_host {
 public:
  using system_script_host::system_script_host;
  void print(std::string_view text) override { printed += text; }
  std::string printed;
};

std::string source_path(const std::string& name) {
  return std::string(CORVANE_IMPORT_SOURCES "/") + name;
}

class RealImport : public testing::Test {
 protected:
  RealImport() {
    fs::create_directories(path_of(folder_.path("app/bin")));
    fs::create_directories(path_of(folder_.path("out")));
    fs::create_symlink(CORVANE_FFMPEG, path_of(folder_.path("app/bin/ffmpeg.exe")));
  }

  /// The facts were made as those of a Matroska file.
  static source_facts as_stored(source_facts facts, const std::string& source) {
    const std::string ending = source.substr(source.rfind('.') + 1);
    for (const auto& [of, container] :
         {std::pair("mp4", "mov,mp4,m4a"), {"ts", "mpegts"}, {"avi", "avi"}, {"mpg", "mpeg"}})
      if (ending == of)
        facts.container = container;
    return facts;
  }

  /// The facts of a file whose sound ends with its picture (else the last picture would be held).
  template <typename... Others>
  static source_facts made_film(const source_stream& video, source_stream sound,
                                const Others&... others) {
    sound.length = *video.start + *video.length - *sound.start;
    return made_source(video, sound, others...);
  }

  static file_facts facts_of_made(const import_job& job) {
    return followed_video(temporary_name(job.files.video)).facts();
  }

  import_job job_for(const std::string& source, const source_facts& facts,
                     const import_choices& choices = {}, const titleset_demands& demands = {}) {
    import_job job;
    job.source = source_path(source);
    job.plan =
        import_plan_for(as_stored(facts, source), {}, demands, choices, video_standard::ntsc);
    EXPECT_EQ(job.plan.problem, "");
    job.files = import_names(folder_.path("out"), job.source, job.plan, entry_exists);
    job.bits = {choices.quality, choices.mean_rate, 9'000'000, choices.quantizer};
    return job;
  }

  bool run(const import_job& job) {
    quiet_host host(folder_.path("app/bin"));
    const bool well = run_script(import_script({job}, folder_.path("app")), host);
    EXPECT_TRUE(well) << host.printed;
    return well;
  }

  void import(const import_job& job) {
    ASSERT_TRUE(run(job));
    EXPECT_EQ(finish_import(job), std::nullopt);
    for (const std::string& file : job.files.all())
      EXPECT_TRUE(file_exists(file)) << file;
    // No temporary names, no notes.
    EXPECT_EQ(files_in(folder_.path("out")).size(), job.files.all().size());
  }

  /// What is found about the title that the files make, each as "rule: what".
  std::vector<std::string> findings(const import_job& job) {
    disc_description d;
    d.standard = *job.plan.demands.standard;
    disc_title title;
    title.is_multiplexed_here = true;
    title.streams = {stored_from_native(job.files.video)};
    for (const std::string& sound : job.files.sounds)
      title.streams.push_back(stored_from_native(sound));
    title.delay = number_of(std::to_string(job.plan.sound.delay()));
    d.titles.push_back(title);
    examination look(d, examination::depth::whole_files, store_);
    while (look.step(1000)) {
    }
    std::vector<std::string> found;
    for (const finding& f : look.findings())
      found.push_back(f.rule + ": " + f.found);
    return found;
  }

  video_facts video_of_job(const import_job& job) {
    const auto facts = store_.find(job.files.video, true);
    return facts != nullptr && facts->video ? *facts->video : video_facts{};
  }
  audio_facts sound_of_job(const import_job& job, std::size_t number = 0) {
    const auto facts = store_.find(job.files.sounds.at(number), true);
    return facts != nullptr && facts->audio ? *facts->audio : audio_facts{};
  }

  testing_support::temporary_folder folder_;
  fact_store store_;
};

const std::vector<std::string> nothing;

// In step ----------------------------------------------------------------------------------------

class InStep : public RealImport {
 protected:
  /// When the picture becomes white, by its number and so many pictures a second, in seconds.
  std::vector<double> flashes(const import_job& job, double rate) {
    const std::string bytes =
        decoded(job.files.video, "-vf scale=16:16 -pix_fmt gray -fps_mode passthrough -f rawvideo");
    std::vector<double> times;
    bool was_white = false;
    for (std::size_t at = 0; at + 256 <= bytes.size(); at += 256) {
      const bool white = static_cast<unsigned char>(bytes[at + 136]) > 100;  // the middle
      if (white && !was_white)
        times.push_back(static_cast<double>(at) / 256.0 / rate);
      was_white = white;
    }
    return times;
  }

  std::vector<double> tones(const import_job& job) {
    const std::string bytes = decoded(job.files.sounds.at(0), "-ac 1 -ar 48000 -f s16le");
    std::vector<double> times;
    std::size_t last = 0;
    for (std::size_t at = 0; at + 2 <= bytes.size(); at += 2) {
      const int upper = static_cast<unsigned char>(bytes[at + 1]);  // with the sign
      if (upper < 8 || upper > 0xFF - 8)
        continue;
      if (times.empty() || at - last > 96'000)
        times.push_back(static_cast<double>(at) / 96'000);
      last = at;
    }
    return times;
  }

  void expect_marks(const import_job& job, double rate, double speed) {
    const std::vector<double> seen = flashes(job, rate), heard = tones(job);
    ASSERT_EQ(seen.size(), 3u);
    ASSERT_EQ(heard.size(), 3u);
    for (std::size_t mark = 0; mark < 3; ++mark) {
      const double at = (1 + 5 * static_cast<double>(mark)) / speed;
      EXPECT_NEAR(seen[mark], at, 0.021);
      EXPECT_NEAR(heard[mark], at, 0.008);
    }
  }

  source_facts facts(double picture, double sound, const std::string& codec) {
    source_stream video = made_video(320, 240, {24, 1});
    video.start = picture;
    video.length = 12;
    source_stream tone = made_sound(codec, 1, {}, 44100);
    tone.start = sound;
    return made_film(video, tone);
  }

 private:
  std::string decoded(const std::string& file, const std::string& how) {
    quiet_host host(folder_.path("app/bin"));
    EXPECT_TRUE(run_script("\"" + folder_.path("app/bin/ffmpeg.exe") +
                               "\" -nostdin -v error -y -i \"" + file + "\" " + how + " \"" +
                               folder_.path("decoded") + "\"\r\n",
                           host))
        << host.printed;
    return folder_.read("decoded");
  }
};

TEST_F(InStep, SoundThatBeginsBeforeThePicture) {
  titleset_demands pal;
  pal.standard = video_standard::pal;
  const import_job job = job_for("early.mkv", facts(2, 0, "pcm_s16le"), {}, pal);
  EXPECT_EQ(job.plan.video.work.motion, picture_motion::made_fields);
  import(job);
  EXPECT_EQ(findings(job), nothing);
  expect_marks(job, 25, 1);
}

TEST_F(InStep, SoundThatBeginsAfterThePicture) {
  const import_job job = job_for("late.mp4", facts(0, 0.5, "aac"));
  EXPECT_EQ(job.plan.video.work.motion, picture_motion::film);
  import(job);
  EXPECT_EQ(findings(job), nothing);
  expect_marks(job, 24 / 1.001, 1);
}

TEST_F(InStep, FilmThatIsMadeFaster) {
  import_choices choices;
  choices.film_by_speed = true;
  titleset_demands pal;
  pal.standard = video_standard::pal;
  const import_job job = job_for("early.mkv", facts(2, 0, "pcm_s16le"), choices, pal);
  import(job);
  EXPECT_EQ(findings(job), nothing);
  expect_marks(job, 25, 25.0 / 24);
}

TEST_F(RealImport, APhonesTurnedFilm) {
  source_stream video = made_video(640, 360, {30, 1});
  video.video.turned = 90;
  video.length = 4;
  source_stream sound = made_sound("aac", 1, "eng", 44100);
  sound.start = 0.376;
  const import_job job = job_for("phone.mp4", made_film(video, sound));
  import(job);
  EXPECT_EQ(findings(job), nothing);
  const video_facts facts = video_of_job(job);
  EXPECT_EQ(facts.standard, video_standard::ntsc);
  EXPECT_EQ(facts.shape->width, 704);
  EXPECT_EQ(facts.shape->aspect_code, 2);
  EXPECT_EQ(facts.pictures, 120u);
  EXPECT_TRUE(facts.end_code);
  EXPECT_NEAR(seconds_of(sound_of_job(job).length), 4, 0.04);
}

TEST_F(RealImport, CinemaWithPulldownChaptersAndText) {
  source_stream video = made_video(960, 400, {24000, 1001});
  video.codec = "hevc";
  video.video.pixels = "yuv420p10le";
  video.length = 4.004;
  source_facts facts = made_film(video, made_sound("flac", 6), made_text("ass"));
  facts.chapters = {{0, 1.3, ""}, {1.3, 4, ""}};
  const import_job job = job_for("film.mkv", facts);
  import(job);
  EXPECT_EQ(findings(job), nothing);
  const video_facts made = video_of_job(job);
  EXPECT_EQ(made.pictures, 96u);
  EXPECT_EQ(made.repeated_fields, 48u);
  EXPECT_NEAR(made.seconds, 4.004, 1e-6);
  EXPECT_EQ(made.shape->rate_numerator, 30000);
  EXPECT_EQ(made.shape->aspect_code, 3);
  // The chapter begins a unit: picture 31, the nearest, at 1.293 s of display.
  EXPECT_TRUE(std::any_of(made.unit_begins.begin(), made.unit_begins.end(),
                          [](double at) { return std::abs(at - 1.3) < 0.021; }));
  EXPECT_EQ(sound_of_job(job).first->channels, 6);
  const auto text = read_file(job.files.texts.at(0), 1000);
  ASSERT_TRUE(text);
  EXPECT_NE(text->find("00:00:00,500 --> 00:00:02,000"), std::string::npos) << *text;
  EXPECT_NE(text->find("f\xC3\xBCr"), std::string::npos);
}

TEST_F(RealImport, FilmBySpeedForPal) {
  source_stream video = made_video(960, 400, {24000, 1001});
  video.length = 4.004;
  import_choices choices;
  choices.film_by_speed = true;
  titleset_demands pal;
  pal.standard = video_standard::pal;
  const import_job job =
      job_for("film.mkv", made_film(video, made_sound("flac", 6), made_text("ass")), choices, pal);
  import(job);
  EXPECT_EQ(findings(job), nothing);
  EXPECT_EQ(video_of_job(job).pictures, 96u);
  EXPECT_NEAR(video_of_job(job).seconds, 3.84, 1e-6);
  EXPECT_NEAR(seconds_of(sound_of_job(job).length), 3.84, 0.04);
  const auto text = read_file(job.files.texts.at(0), 1000);
  EXPECT_NE(text->find("00:00:00,480 --> 00:00:01,918"), std::string::npos) << *text;
}

TEST_F(RealImport, PicturesAtUnevenTimesInConstantQuality) {
  source_stream video = made_video(640, 480, {26, 1});
  video.video.variable_rate = true;
  video.start = 0.007;
  video.length = 4;
  source_stream sound = made_sound("opus", 1);
  sound.start = -0.007;
  source_facts facts = made_film(video, sound);
  facts.start = -0.007;
  import_choices choices;
  choices.quality = import_quality::constant;
  const import_job job = job_for("uneven.mkv", facts, choices);
  import(job);
  EXPECT_EQ(findings(job), nothing);
  EXPECT_NEAR(static_cast<double>(video_of_job(job).pictures), 120, 1);
  EXPECT_NEAR(seconds_of(sound_of_job(job).length), 4, 0.04);
}

TEST_F(RealImport, ACamerasFieldsBecomeFields) {
  source_stream video = made_video(720, 540, {25, 1}, source_ratio{4, 3});
  video.codec = "mpeg2video";
  video.video.fields = source_fields::top_first;
  video.start = 1.44;
  video.length = 4;
  source_stream sound = made_sound("mp2", 1);
  sound.bit_rate = 384'000;
  sound.start = 1.429978;
  source_facts facts = made_film(video, sound);
  facts.start = 1.429978;
  const import_job job = job_for("camera.ts", facts);
  import(job);
  EXPECT_EQ(findings(job), nothing);
  const video_facts made = video_of_job(job);
  EXPECT_EQ(made.pictures, 100u);
  EXPECT_EQ(made.shape->rate_numerator, 25);
  EXPECT_FALSE(made.shape->progressive_sequence);
  EXPECT_EQ(made.shape->aspect_code, 3);
  EXPECT_EQ(job.plan.sound.delay(), 10);
}

TEST_F(RealImport, ATapesFieldsStayInTheirOrder) {
  source_stream video = made_video(720, 480, {30000, 1001}, source_ratio{8, 9});
  video.codec = "dvvideo";
  video.video.pixels = "yuv411p";
  video.video.fields = source_fields::bottom_first;
  video.length = 4.004;
  const import_job job = job_for("tape.avi", made_film(video, made_sound("pcm_s16le", 1)));
  import(job);
  EXPECT_EQ(findings(job), nothing);
  const video_facts made = video_of_job(job);
  EXPECT_EQ(made.shape->width, 720);
  EXPECT_EQ(made.pictures, 120u);
  EXPECT_FALSE(made.shape->progressive_sequence);
}

// Hard to code, at the highest rates that are ever asked for.
TEST_F(RealImport, NoiseStaysWithinWhatPlayersRead) {
  source_stream video = made_video(704, 480, {30000, 1001}, source_ratio{10, 11});
  video.length = 5.005;
  for (const import_quality quality : {import_quality::mean_rate, import_quality::constant}) {
    import_choices choices;
    choices.quality = quality;
    choices.quantizer = 2;
    choices.mean_rate = most_mean_rate;
    import_job job = job_for("noise.mkv", made_film(video, made_sound("flac", 6)), choices);
    job.bits.peak = peak_rate_beside(448'000);
    import(job);
    EXPECT_EQ(findings(job), nothing);
    EXPECT_GT(video_of_job(job).average_rate, 5e6);
    for (const std::string& file : job.files.all())
      EXPECT_FALSE(remove_all(file));
  }
}

// The encoder writes none.
const std::string end_code("\0\0\1\xB7", 4);

TEST_F(RealImport, WhatADiscTakesComesOutByteForByteWithItsEnd) {
  const std::string video_bytes = *read_file(source_path("ready.m2v"), 1u << 30);
  const std::string sound_bytes = *read_file(source_path("ready.ac3"), 1u << 30);
  for (const char* const name : {"ready.mpg", "ready.mkv"}) {
    SCOPED_TRACE(name);
    source_stream video = made_disc_video(), sound = made_sound("ac3");
    source_facts facts = made_film(video, sound);
    if (name == std::string("ready.mpg"))  // navigation comes first there
      for (source_stream& stream : facts.streams)
        ++stream.index;
    const import_job job = job_for(name, facts);
    EXPECT_EQ(job.plan.video.fate, stream_fate::copied);
    ASSERT_TRUE(run(job));
    EXPECT_EQ(finish_import(job), std::nullopt);
    EXPECT_TRUE(*read_file(job.files.video, 1u << 30) == video_bytes + end_code);
    EXPECT_TRUE(*read_file(job.files.sounds.at(0), 1u << 30) == sound_bytes);
    EXPECT_EQ(findings(job), nothing);
  }
}

// What is behind the gap comes when it did in the source.
TEST_F(RealImport, GapsInWhatWouldBeCopiedAreFilled) {
  for (const bool both : {false, true}) {
    SCOPED_TRACE(both);
    source_stream video = made_disc_video(), sound = made_sound("ac3");
    video.start = sound.start = 1.4;
    video.length = 4.004;
    sound.length = 4.0;
    source_facts facts = made_film(video, sound);
    facts.start = 1.4;
    import_job job = job_for(both ? "lost-both.ts" : "lost-sound.ts", facts);
    ASSERT_EQ(job.plan.video.fate, stream_fate::copied);
    ASSERT_EQ(job.plan.sound.streams.at(0).fate, stream_fate::copied);
    ASSERT_TRUE(run(job));
    EXPECT_TRUE(encode_what_cannot_stay(job, facts_of_made(job)));
    EXPECT_EQ(job.plan.video.fate, both ? stream_fate::encoded : stream_fate::copied);
    EXPECT_EQ(job.plan.sound.streams.at(0).fate, stream_fate::encoded);
    EXPECT_NE(job.plan.streams.at(1).reason.find(" are missing inside it"), std::string::npos);
    ASSERT_TRUE(run(job));
    EXPECT_FALSE(encode_what_cannot_stay(job, facts_of_made(job)));
    EXPECT_EQ(finish_import(job), std::nullopt);
    EXPECT_EQ(findings(job), nothing);
    EXPECT_NEAR(video_of_job(job).seconds, 4.004, 0.04);
    EXPECT_NEAR(seconds_of(sound_of_job(job).length), 4.0, 0.04);
    for (const std::string& file : job.files.all())
      remove_all(file);
  }
}

TEST_F(RealImport, VideoThatOnlyItsBytesShowToBeBeyondADiscIsEncoded) {
  for (const std::string name : {"buffer.mkv", "groups.mkv"}) {
    SCOPED_TRACE(name);
    source_stream video = made_disc_video(), sound = made_sound("ac3");
    video.length = sound.length = 4.004;
    import_job job = job_for(name, made_source(video, sound));
    ASSERT_EQ(job.plan.video.fate, stream_fate::copied);
    ASSERT_TRUE(run(job));
    EXPECT_TRUE(encode_what_cannot_stay(job, facts_of_made(job)));
    EXPECT_EQ(job.plan.video.fate, stream_fate::encoded);
    EXPECT_EQ(job.plan.sound.streams.at(0).fate, stream_fate::copied);
    EXPECT_NE(job.plan.streams.at(0).reason, "");
    // As many bits as it had, since those are counted of the disc.
    EXPECT_EQ(job.bits.quality, import_quality::mean_rate);
    const file_facts copied = facts_of_made(job);
    EXPECT_NEAR(
        static_cast<double>(job.bits.mean),
        std::clamp(static_cast<double>(copied.size) * 8 / copied.video->seconds, 7e5, 8.5e6), 1);
    ASSERT_TRUE(run(job));
    EXPECT_FALSE(encode_what_cannot_stay(job, facts_of_made(job)));
    EXPECT_EQ(finish_import(job), std::nullopt);
    EXPECT_EQ(findings(job), nothing);
    for (const std::string& file : job.files.all())
      remove_all(file);
  }
}

TEST_F(RealImport, WhatHasNoGapsStaysCopied) {
  source_stream video = made_disc_video(), sound = made_sound("ac3");
  video.length = sound.length = 4;
  source_facts facts = made_film(video, sound);
  for (source_stream& stream : facts.streams)
    ++stream.index;
  import_job job = job_for("ready.mpg", facts);
  ASSERT_EQ(job.plan.video.fate, stream_fate::copied);
  ASSERT_EQ(job.plan.sound.streams.at(0).fate, stream_fate::copied);
  ASSERT_TRUE(run(job));
  EXPECT_FALSE(encode_what_cannot_stay(job, facts_of_made(job)));
  // Of other containers nobody knows it so well.
  job.plan.seconds += 1;
  job.plan.container = "matroska";
  EXPECT_FALSE(encode_what_cannot_stay(job, facts_of_made(job)));
}

TEST_F(RealImport, VideoThatHasItsEndStaysAsItIs) {
  const std::string file = folder_.add("ended.m2v", *read_file(source_path("ready.m2v"), 1u << 30));
  const video_finish what = finish_of({});
  for (int turn = 0; turn < 2; ++turn)
    EXPECT_EQ(finish_video_file(file, what), std::nullopt);
  EXPECT_TRUE(folder_.read("ended.m2v") ==
              *read_file(source_path("ready.m2v"), 1u << 30) + end_code);
  EXPECT_NE(finish_video_file(folder_.path("missing.m2v"), what), std::nullopt);
}

class RealTexts : public RealImport {
 protected:
  /// What becomes of a file of these bytes beside a film; nullopt if it gets none.
  std::optional<std::string> made(const std::string& bytes, const std::string& language = {},
                                  const std::string& ending = "srt") {
    sidecar beside{folder_.add("film." + ending, bytes), language};
    look_into_text(beside);
    EXPECT_EQ(beside.problem, "");
    import_job job;
    job.source = source_path("ready.mkv");
    job.plan = import_plan_for(made_source(made_disc_video(), made_sound("ac3")), {beside}, {}, {},
                               video_standard::ntsc);
    job.files = import_names(folder_.path("out"), job.source, job.plan, entry_exists);
    EXPECT_TRUE(run(job));
    EXPECT_EQ(finish_import(job), std::nullopt);
    EXPECT_EQ(files_in(folder_.path("out")).size(), has_text(job, 0) ? 3u : 2u);
    const auto text = read_file(job.files.texts.at(0), 1u << 20);
    for (const std::string& file : job.files.all())
      remove_all(file);
    return text ? std::optional(*text) : std::nullopt;
  }
  static std::string cue(const std::string& text) {
    return "1\n00:00:01,000 --> 00:00:02,000\n" + text + "\n\n";
  }
};

TEST_F(RealTexts, OfAnyCharactersBecomeUtf8) {
  EXPECT_EQ(made(cue("f\xFCr \x84uns\x93"), "de"), cue("f\xC3\xBCr \xE2\x80\x9Euns\xE2\x80\x9C"));
  EXPECT_EQ(made(cue("\xEC\xE8\xF0"), "ru"), cue("\xD0\xBC\xD0\xB8\xD1\x80"));
  EXPECT_EQ(made(cue("\x93\xFA\x96\x7B"), "ja"), cue("\xE6\x97\xA5\xE6\x9C\xAC"));
  EXPECT_EQ(made(cue("f\xC3\xBCr")), cue("f\xC3\xBCr"));
  EXPECT_EQ(made("\xEF\xBB\xBF" + cue("f\xC3\xBCr")), cue("f\xC3\xBCr"));
  std::string wide = "\xFF\xFE";
  for (const char c : cue("plain"))
    wide += std::string{c, '\0'};
  EXPECT_EQ(made(wide), cue("plain"));
}

// spumux would draw it.
TEST_F(RealTexts, LoseTheirMarkup) {
  EXPECT_EQ(made(cue("<i>one</i> <font color=\"#ff0000\">two</font>")), cue("one two"));
  EXPECT_EQ(made(cue("{\\an8}above &amp; {\\b1}bold{\\b0}")), cue("above & bold"));
  EXPECT_EQ(made("WEBVTT\n\n00:01.000 --> 00:02.000\n<v Anna>a &lt; b</v>\n", {}, "vtt"),
            cue("a \xE2\x80\xB9 b"));
  EXPECT_EQ(made("[Script Info]\nScriptType: v4.00+\n\n[Events]\nFormat: Layer, Start, End, Style, "
                 "Name, MarginL, MarginR, MarginV, Effect, Text\nDialogue: "
                 "0,0:00:01.00,0:00:02.00,Default,,0,0,0,,{\\i1}one{\\i0}\\Ntwo\n",
                 {}, "ass"),
            cue("one\ntwo"));
}

TEST_F(RealTexts, WithNothingToSayGetNoFile) {
  EXPECT_EQ(made("there are no times in this\n"), std::nullopt);
  EXPECT_EQ(made("WEBVTT\n\n", {}, "vtt"), std::nullopt);
}

TEST_F(RealImport, AFilmWithoutSoundGetsSilence) {
  source_stream video = made_disc_video();
  video.index = 0;
  video.length = 4;
  source_facts facts = made_source(video);
  titleset_demands two;
  two.standard = video_standard::ntsc;
  two.sounds = {{disc_sound::mp2, 2, ""}, {disc_sound::ac3, 1, ""}};
  const import_job job = job_for("ready.mkv", facts, {}, two);
  import(job);
  EXPECT_EQ(findings(job), nothing);
  EXPECT_EQ(sound_of_job(job, 0).kind, audio_kind::mpeg_layer_2);
  EXPECT_EQ(sound_of_job(job, 1).first->channels, 1);
  EXPECT_NEAR(seconds_of(sound_of_job(job, 1).length), 4, 0.04);
}

TEST_F(RealImport, WhatFailsLeavesNothing) {
  folder_.add("out/damaged.mp4", "no medium");
  source_stream video = made_video(640, 480, {25, 1});
  import_job job = job_for("phone.mp4", made_source(video, made_sound("aac")));
  job.source = folder_.path("out/damaged.mp4");
  quiet_host host(folder_.path("app/bin"));
  EXPECT_FALSE(run_script(import_script({job}, folder_.path("app")), host));
  EXPECT_EQ(finish_import(job), job.files.video + " was not made");
  EXPECT_EQ(files_in(folder_.path("out")), std::vector<std::string>{"damaged.mp4"});
}

TEST_F(RealImport, WhatHasComeMeanwhileIsNotReplaced) {
  const import_job job = job_for("ready.mkv", made_source(made_disc_video(), made_sound("ac3")));
  ASSERT_TRUE(run(job));
  folder_.add("out/ready.ac3", "another's");
  const failure why = finish_import(job);
  ASSERT_TRUE(why);
  EXPECT_NE(why->find("ready.ac3: "), std::string::npos) << *why;
  EXPECT_EQ(files_in(folder_.path("out")), std::vector<std::string>{"ready.ac3"});
  EXPECT_EQ(folder_.read("out/ready.ac3"), "another's");
}

// What cannot be read or written ------------------------------------------------------------------

// ffmpeg is content with what it gets.
TEST_F(InStep, ASourceThatIsCutOffMakesAShorterTitle) {
  titleset_demands pal;
  pal.standard = video_standard::pal;
  import_job job = job_for("early.mkv", facts(2, 0, "pcm_s16le"), {}, pal);
  const std::string whole = *read_file(job.source, 1u << 30);
  job.source = folder_.add("cut.mkv", whole.substr(0, whole.size() / 2));
  job.plan.chapters = {0, 11};
  ASSERT_TRUE(run(job));
  const double missing = missing_seconds(job, facts_of_made(job));
  EXPECT_GT(missing, 3);
  EXPECT_LT(missing, 9);
  ASSERT_EQ(end_earlier(job, missing), std::nullopt);
  EXPECT_EQ(job.plan.chapters, std::vector<double>{0});
  ASSERT_EQ(finish_import(job), std::nullopt);
  EXPECT_EQ(findings(job), nothing);
  EXPECT_NEAR(video_of_job(job).seconds, 12 - missing, 0.001);
  EXPECT_NEAR(seconds_of(sound_of_job(job).length), 12 - missing, 0.04);
}

TEST_F(InStep, AWholeFilmLacksNothing) {
  const import_job job = job_for("late.mp4", facts(0, 0.5, "aac"));
  ASSERT_TRUE(run(job));
  EXPECT_EQ(missing_seconds(job, facts_of_made(job)), 0);
  remove_unfinished(job);
}

// Only root can have a disk of its own. Where the very last bytes do not fit, ffmpeg says so and
// may end with status 0.
TEST_F(RealImport, AFullDiskIsNoticedHoweverLittleIsMissing) {
  source_stream video = made_video(640, 360, {30, 1});
  video.length = 4;
  import_choices choices;
  choices.quality = import_quality::constant;
  import_job job = job_for("phone.mp4", made_source(video, made_sound("aac", 1)), choices);
  import(job);
  std::uintmax_t bytes = 0;
  for (const std::string& file : job.files.all())
    bytes += file_size(file).value_or(0);
  for (const unsigned lacking : {2u, 10u, 30u, 300u}) {
    const testing_support::temporary_folder small;
    const testing_support::disk_of_its_own disk(small,
                                                static_cast<unsigned>(bytes / 1024) - lacking);
    if (!disk.is_there())
      GTEST_SKIP() << "no disk of its own can be made for the test";
    job.files = import_names(small.path(), job.source, job.plan, entry_exists);
    quiet_host host(folder_.path("app/bin"));
    run_script(import_script({job}, folder_.path("app")), host);
    EXPECT_EQ(writing_trouble_in(host.printed), "the disk is full") << host.printed;
    remove_unfinished(job);
    EXPECT_EQ(files_in(small.path()), nothing);
  }
}

// A disc that is filled
// -----------------------------------------------------------------------------

class FilledDisc : public RealImport {
 protected:
  /// Authors the titles and gives the bytes of their VOBs.
  double bytes_of_vobs(const std::vector<import_job>& jobs) {
    std::string xml = "<dvdauthor><vmgm/><titleset><titles><video format=\"ntsc\"/>";
    for (const import_job& job : jobs) {
      const std::string stream = job.files.video + ".mpg";
      command("mplex -v 0 -f 8 -o '" + stream + "' '" + job.files.video + "' '" +
              job.files.sounds.at(0) + "'");
      xml += "<pgc><vob file=\"" + stream + "\"/></pgc>";
    }
    command("VIDEO_FORMAT=NTSC dvdauthor -o '" + folder_.path("disc") + "' -x '" +
            folder_.add("disc.xml", xml + "</titles></titleset></dvdauthor>") + "'");
    double bytes = 0;
    for (const auto& file : fs::directory_iterator(path_of(folder_.path("disc/VIDEO_TS"))))
      if (file.path().extension() == ".VOB")
        bytes += static_cast<double>(file.file_size());
    return bytes;
  }

 private:
  void command(const std::string& line) {
    const std::string whole = line + " >'" + folder_.path("printed") + "' 2>&1";
    EXPECT_EQ(std::system(whole.c_str()), 0) << folder_.read("printed");
  }
};

// Pictures of a quarter of the usual size, at a rate that is high for them. The tables are counted
// as 2 MB, which is nothing on a disc and much of this one: what they do not take is left free.
TEST_F(FilledDisc, TwoTitlesComeWithinTwoPercentOfItAndNotAbove) {
  constexpr std::uint64_t tables = 2'000'000, capacity = 45'000'000;
  titleset_demands quarter;
  quarter.standard = video_standard::ntsc;
  quarter.size = picture_size{352, 240};
  source_stream video = made_video(352, 240, {30000, 1001}, source_ratio{10, 11});
  video.length = 60;
  std::vector<import_job> jobs;
  for (int i = 0; i < 2; ++i) {
    jobs.push_back(job_for("filling.mkv", made_source(video, made_sound("ac3")), {}, quarter));
    jobs.back().files = import_names(folder_.path("out"), std::to_string(i) + ".mkv",
                                     jobs.back().plan, entry_exists);
  }
  import_choices choices;
  choices.disc_bytes = capacity;
  ASSERT_EQ(settle_bits(jobs, choices, 0), std::nullopt);
  for (const import_job& job : jobs) {
    ASSERT_TRUE(run(job));
    ASSERT_EQ(finish_import(job), std::nullopt);
  }
  const double bytes = bytes_of_vobs(jobs);
  RecordProperty("bytes", static_cast<int>(bytes));
  EXPECT_LE(bytes, static_cast<double>(capacity - tables));
  EXPECT_GE(bytes, 0.98 * static_cast<double>(capacity - tables));
}

}  // namespace
}  // namespace corvane
