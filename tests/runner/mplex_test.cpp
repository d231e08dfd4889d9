// What mplex hides: a sound that it stopped reading, and a font that was not there.
#include "runner/tools/mplex.h"

#include "noting_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing_support::noting_host;

/// The lines that count of a call with AC-3 and MPEG sound that stops (mplex 2.1.0).
const std::string printed =
    "   INFO: [mplex.exe] Scanning for header info: Video stream e0 (/f/v.m2v) \n"
    "   INFO: [mplex.exe] Bit rate        : 6000000 bits/sec\n"
    "   INFO: [mplex.exe] Scanning for header info: Audio stream bd (/f/a.ac3)\n"
    "   INFO: [mplex.exe] Bit rate       :    24576 bytes/sec ( 192 kbit/sec)\n"
    "   INFO: [mplex.exe] Scanning for header info: Audio stream c0 (/f/b (2).mp2)\n"
    "   INFO: [mplex.exe] Bit rate       :    24576 bytes/sec (192 kbit/sec)\n"
    "++ WARN: [mplex.exe] Data follows end of last recogniseable MPEG audio frame - bad stream?\n"
    "   INFO: [mplex.exe] AUDIO_STATISTICS: bd\n"
    "   INFO: [mplex.exe] Audio stream length 144384 bytes.\n"
    "   INFO: [mplex.exe] AUDIO_STATISTICS: c0\n"
    "   INFO: [mplex.exe] Audio stream length 72000 bytes.\n"
    "   INFO: [mplex.exe] MUX STATUS: no under-runs detected.\n";

const std::string call = "bin/mplex.exe -f 8 -o /o/title3.mpg /f/v.m2v /f/a.ac3 \"/f/b (2).mp2\"\n";

std::string behind_the_output(const noting_host& host) {
  const std::string last = "no under-runs detected.\n";
  return host.notes.substr(host.notes.find(last) + last.size());
}

TEST(MplexAudio, IsReadOffItsMessages) {
  const std::vector<muxed_audio> streams = muxed_audio_in(printed);
  ASSERT_EQ(streams.size(), 2u);
  EXPECT_EQ(streams[0].file, "/f/a.ac3");
  EXPECT_EQ(streams[0].bytes, 144384u);
  EXPECT_EQ(streams[1].id, "c0");
  EXPECT_EQ(streams[1].file, "/f/b (2).mp2");
  EXPECT_EQ(streams[1].bytes, 72000u);
  EXPECT_EQ(streams[1].bit_rate, 192000);
  EXPECT_TRUE(muxed_audio_in("").empty());
  EXPECT_TRUE(muxed_audio_in("   INFO: [mplex.exe] Audio stream length 1e99 bytes.\n").empty());
}

TEST(MplexAudio, ThatStopsBeforeItsFilesEndIsAnErrorWithItsPlace) {
  noting_host host;
  host.printed = {printed};
  host.sizes = {{"/f/a.ac3", 144384}, {"/f/b (2).mp2", 144001}};
  EXPECT_FALSE(run_script(call, host));
  EXPECT_EQ(behind_the_output(host),
            "\nERR:  title 3, audio 2, 00:00:03: /f/b (2).mp2: mplex stopped reading the sound at "
            "byte 72000, where something stands that is no frame of it; 72001 bytes follow. From "
            "there on it is silent. Encode the sound again, or cut it with a tool that keeps "
            "frames whole.\n");
}

TEST(MplexAudio, ThatATagFollowsIsNoError) {
  noting_host host;
  host.printed = {printed};
  host.sizes = {{"/f/a.ac3", 144384}, {"/f/b (2).mp2", 72128}};
  EXPECT_TRUE(run_script(call, host));
  EXPECT_EQ(behind_the_output(host),
            "INFO: title 3, audio 2: /f/b (2).mp2: 128 bytes follow the last frame of the sound, "
            "as a tag does. Nothing: they are left out. Nothing need be done.\n");
  host = {};
  host.printed = {printed};
  host.sizes = {{"/f/b (2).mp2", 72000 + 24000}};
  EXPECT_FALSE(run_script(call, host)) << "a second of it";
}

TEST(MplexAudio, OfWhichNothingIsKnownIsAWarning) {
  noting_host host;
  host.printed = {printed};
  EXPECT_TRUE(run_script(call, host));
  EXPECT_THAT(behind_the_output(host), HasSubstr("WARN: title 3, audio: mplex stopped reading a "
                                                 "sound before its file's end."));
}

TEST(MplexAudio, ThatIsWholeGivesNoLine) {
  noting_host host;
  const std::size_t warning = printed.find("++ WARN");
  host.printed = {printed.substr(0, warning) + printed.substr(printed.find('\n', warning) + 1)};
  host.sizes = {{"/f/a.ac3", 144385}, {"/f/b (2).mp2", 144001}};
  EXPECT_TRUE(run_script(call, host));
  EXPECT_EQ(behind_the_output(host), "");
}

const std::string subtitle_call = "bin/spumux.exe -s 1 /app/sub3-2.xml < /o/presub.mpg > /o/t\n";

std::string notes_with_font(const std::string& name, const std::string& file,
                            const std::vector<std::string>& names) {
  noting_host host;
  host.printed = {"STAT: 0:00:01.000INFO: font name \"" + name + "\" matches font file " + file +
                  "\r\nINFO: 5 subtitles added, 0 subtitles skipped, stream: 33\n"};
  host.fonts = names;
  EXPECT_TRUE(run_script(subtitle_call, host));
  return host.notes;
}

TEST(SubtitleFont, ThatIsNotInstalledIsNamedWithWhatStandsInForIt) {
  EXPECT_THAT(notes_with_font("arial.ttf", "/fonts/DejaVuSans.ttf", {"DejaVu Sans"}),
              HasSubstr("\nINFO: title 3, subtitle 2: the font \"arial.ttf\" is not installed, so "
                        "DejaVuSans.ttf stands in for it. The text looks otherwise than was "
                        "chosen. Choose a font that is installed, or the font's own file.\n"));
  EXPECT_THAT(notes_with_font("Arial", "/fonts/NimbusSans.otf", {"Nimbus Sans"}),
              HasSubstr("the font \"Arial\" is not installed"));
}

TEST(SubtitleFont, ThatIsTheOneAskedForGivesNoLine) {
  for (const std::string name : {"DejaVu Sans", "dejavusans", "DejaVu Sans-28", "DejaVu Sans:bold",
                                 "Arial,DejaVu Sans", "Sans", "sans-serif", "monospace"})
    EXPECT_THAT(notes_with_font(name, "/fonts/x.ttf", {"DejaVu Sans", "DejaVu Sans Bold"}),
                Not(HasSubstr("is not installed")))
        << name;
  EXPECT_THAT(notes_with_font("Arial.TTF", "/fonts/arial.ttf", {"Arial"}),
              Not(HasSubstr("is not installed")));
  EXPECT_THAT(notes_with_font("Odd", "/fonts/odd.pfa", {}), Not(HasSubstr("is not installed")))
      << "nobody can say";
}

}  // namespace
}  // namespace corvane
