// A finding as windows, console, log and JSON show it.
#include "disc/finding.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

finding gap() {
  finding f;
  f.rule = "audio-gap";
  f.item = {whole::title, 2, part::audio, 1};
  f.file = "/home/u/a \"b\".mp2";
  f.seconds = 65.999;
  f.byte = 12345;
  f.found = "1 byte belongs to no frame";
  f.wanted = "frames without a byte between them";
  f.consequence = "the sound stops here";
  f.remedy = "encode the sound again";
  return f;
}

TEST(Finding, PlaceNamesTitlePartAndTimeCutToSeconds) {
  EXPECT_EQ(place_text(gap()), "title 2, audio 1, 00:01:05");
}

TEST(Finding, PlaceOfTheWholeDiscIsDisc) {
  EXPECT_EQ(place_text(finding{}), "disc");
}

TEST(Finding, PlaceOfAPartThatThereIsOneOfHasNoNumber) {
  finding f;
  f.item = {whole::menu, 1, part::video, 0};
  EXPECT_EQ(place_text(f), "menu 1, video");
}

TEST(Finding, PlaceBeyondAnyVideoIsHeldAtTheLatestTime) {
  finding f;
  f.seconds = 1e300;
  EXPECT_EQ(place_text(f), "disc, 32767:00:00");
}

TEST(Finding, LineHasSeverityPlaceAndWhatWasFound) {
  EXPECT_EQ(line_of(gap()), "error: title 2, audio 1, 00:01:05: 1 byte belongs to no frame.");
  finding f = gap();
  f.severity = finding_severity::warning;
  EXPECT_EQ(line_of(f).substr(0, 9), "warning: ");
  f.severity = finding_severity::note;
  EXPECT_EQ(line_of(f).substr(0, 6), "note: ");
}

TEST(Finding, LineStaysOneLineWhateverANameHolds) {
  finding f = gap();
  f.found = "\"a\n*process complete\n\" is not there";
  EXPECT_EQ(line_of(f).find('\n'), std::string::npos);
  EXPECT_EQ(line_of(f).find('\r'), std::string::npos);
}

TEST(Finding, TextGivesEachFieldALine) {
  EXPECT_EQ(text_of(gap()),
            "error: title 2, audio 1, 00:01:05: 1 byte belongs to no frame.\n"
            "    file: /home/u/a \"b\".mp2\n"
            "    must be: frames without a byte between them\n"
            "    a viewer would see: the sound stops here\n"
            "    what to do: encode the sound again\n"
            "    rule: audio-gap");
}

TEST(Finding, JsonHasAllFieldsAndEscapesThem) {
  EXPECT_EQ(
      json_of({gap()}),
      "[\n  {\"rule\": \"audio-gap\", \"severity\": \"error\", \"item\": {\"of\": \"title\", "
      "\"number\": 2, \"part\": \"audio\", \"partNumber\": 1}, \"place\": \"title 2, audio 1, "
      "00:01:05\", \"file\": \"/home/u/a \\\"b\\\".mp2\", \"seconds\": 65.999, \"byte\": "
      "12345, \"found\": \"1 byte belongs to no frame\", \"wanted\": \"frames without a byte "
      "between them\", \"consequence\": \"the sound stops here\", \"remedy\": \"encode the "
      "sound again\"}\n]");
}

TEST(Finding, JsonLeavesOutWhatIsNotSet) {
  finding f;
  f.rule = "disc-size";
  f.found = "a\nb\x80";
  EXPECT_EQ(json_of({f}),
            "[\n  {\"rule\": \"disc-size\", \"severity\": \"error\", \"item\": {\"of\": \"disc\"}, "
            "\"place\": \"disc\", \"found\": \"a\\u000ab\xEF\xBF\xBD\"}\n]");
}

TEST(Finding, JsonOfNoFindingsIsAnEmptyArray) {
  EXPECT_EQ(json_of({}), "[]");
}

}  // namespace
}  // namespace corvane
