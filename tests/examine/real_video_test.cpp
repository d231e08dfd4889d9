// The facts of streams by other programs' encoders: they agree with what ffprobe says and with the
// index of the player, and nothing of a good stream is called wrong. Then the same streams cut,
// joined and damaged.
#include "examine/video_facts.h"
#include "formats/video_index.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace std::string_literals;

std::string file_text(const std::string& name) {
  std::ifstream file(CORVANE_VIDEO_STREAMS "/"s + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

const std::uint8_t* data_of(const std::string& bytes) {
  return reinterpret_cast<const std::uint8_t*>(bytes.data());
}

video_facts video_file_facts(const std::string& stream, std::size_t slice = 100'000) {
  video_scanner scanner;
  for (std::size_t at = 0; at < stream.size(); at += slice)
    scanner.feed(data_of(stream) + at, std::min(slice, stream.size() - at));
  scanner.finish();
  return scanner.facts();
}

video_index index_of(const std::string& stream) {
  video_index_builder builder;
  builder.feed(data_of(stream), stream.size());
  builder.finish();
  return builder.index();
}

/// What both know of any stream, however damaged.
void expect_as_the_index(const video_facts& facts, const std::string& stream) {
  const video_index index = index_of(stream);
  EXPECT_EQ(facts.shape, index.shape());
  EXPECT_EQ(facts.pictures, index.coded());
  EXPECT_EQ(facts.pictures - facts.hidden_pictures, index.shown());
  EXPECT_EQ(facts.fields, index.fields_before(index.shown()));
  EXPECT_EQ(facts.intra_pictures, index.groups().size());
}

std::vector<std::string> all_streams() {
  std::vector<std::string> names;
  for (const auto& entry : std::filesystem::directory_iterator(CORVANE_VIDEO_STREAMS))
    if (entry.path().extension() == ".m2v" || entry.path().extension() == ".m1v")
      names.push_back(entry.path().filename().string());
  std::sort(names.begin(), names.end());
  return names;
}

class RealVideo : public testing::TestWithParam<std::string> {
 protected:
  std::string stream = file_text(GetParam());
  video_facts facts = video_file_facts(stream);
};

std::map<std::string, std::string> probed_values(const std::string& name) {
  std::map<std::string, std::string> values;
  std::ifstream file(CORVANE_VIDEO_STREAMS "/"s + name + ".probe");
  for (std::string line; std::getline(file, line);)
    values[line.substr(0, line.find('='))] = line.substr(line.find('=') + 1);
  return values;
}

std::string ratio(int a, int b) {
  return std::to_string(a) + "/" + std::to_string(b);
}

TEST_P(RealVideo, IsAsFfprobeSaysItIs) {
  auto probe = probed_values(GetParam());
  ASSERT_TRUE(facts.shape);
  const video_shape& shape = *facts.shape;
  EXPECT_EQ(probe["codec_name"], shape.mpeg2 ? "mpeg2video" : "mpeg1video");
  EXPECT_EQ(probe["width"], std::to_string(shape.width));
  EXPECT_EQ(probe["height"], std::to_string(shape.height));
  if (facts.repeated_fields == 0) {  // else it tells the rate of fields
    EXPECT_EQ(probe["r_frame_rate"], ratio(shape.rate_numerator, shape.rate_denominator));
  }
  if (shape.aspect_width != 0) {
    EXPECT_EQ(probe["display_aspect_ratio"],
              std::to_string(shape.aspect_width) + ":" + std::to_string(shape.aspect_height));
  }
  if (shape.mpeg2) {
    EXPECT_EQ(facts.profile_and_level >> 4, probe["profile"] == "Main" ? 4 : -1);
    EXPECT_EQ(probe["level"], std::to_string(facts.profile_and_level & 15));
  }
  EXPECT_EQ(probe["packets"], std::to_string(facts.pictures));
  EXPECT_EQ(probe["frames"], std::to_string(facts.pictures - facts.hidden_pictures));
  EXPECT_EQ(probe["fields"], std::to_string(facts.fields));
  EXPECT_EQ(probe["intra"], std::to_string(facts.intra_pictures));
  // A decoder takes an end code for a part of the last picture.
  const std::uint64_t largest = std::stoull("0" + probe["largest"]);
  EXPECT_GE(largest, facts.largest_picture);
  EXPECT_LE(largest, facts.largest_picture + 4);
}

TEST_P(RealVideo, IsAsTheIndexSaysItIs) {
  expect_as_the_index(facts, stream);
  const video_index index = index_of(stream);
  std::uint64_t longest = 0, begin = 0, fields = 0;
  for (std::size_t group = 0; group < index.groups().size(); ++group) {
    const std::uint64_t from = index.fields_before(index.begin_shown(group));
    const std::size_t next =
        group + 1 < index.groups().size() ? index.begin_shown(group + 1) : index.shown();
    if (index.fields_before(next) - from <= longest)
      continue;
    longest = index.fields_before(next) - from;
    begin = index.bytes_of(index.groups()[group].first_coded).position;
    fields = from;
  }
  EXPECT_EQ(facts.groups, index.groups().size());
  ASSERT_TRUE(facts.longest_group);
  EXPECT_EQ(facts.longest_group->fields, longest);
  EXPECT_EQ(facts.longest_group->place.byte, begin);
  const video_shape& shape = *index.shape();
  const auto seconds = [&](std::uint64_t n) {
    return static_cast<double>(n) * shape.rate_denominator / (2.0 * shape.rate_numerator);
  };
  EXPECT_DOUBLE_EQ(facts.longest_group->place.seconds, seconds(fields));
  EXPECT_DOUBLE_EQ(facts.seconds, seconds(index.fields_before(index.shown())));
}

TEST_P(RealVideo, NothingOfItIsCalledWrong) {
  EXPECT_EQ(facts.kind, video_kind::elementary);
  EXPECT_EQ(facts.damage, counted_list<video_damage>{});
  EXPECT_EQ(facts.stray_bytes.count, 0u);
  EXPECT_EQ(facts.system_codes.count, 0u);
  EXPECT_EQ(facts.middle_end_codes.count, 0u);
  // For anything but discs mpeg2enc writes the sequence header once.
  const bool once = GetParam() == "open.m2v";
  EXPECT_EQ(facts.groups_without_sequence_header.count, once ? facts.groups - 1 : 0);
  EXPECT_EQ(facts.intra_without_group_header.count, 0u);
  EXPECT_EQ(facts.broken_links.count, 0u);
  EXPECT_EQ(facts.size_changes.count + facts.rate_changes.count + facts.aspect_changes.count +
                facts.coding_changes.count + facts.standard_changes.count,
            0u);
  EXPECT_EQ(facts.pictures_before_intra, 0u);
}

TEST_P(RealVideo, SlicesMakeNoDifference) {
  for (const std::size_t slice : {997u, 65536u})
    EXPECT_TRUE(video_file_facts(stream, slice) == facts) << slice;
}

TEST_P(RealVideo, IsCutAnywhere) {
  for (std::size_t percent = 7; percent < 100; percent += 30) {
    const std::size_t at = stream.size() * percent / 100;
    const std::string begin = stream.substr(0, at), end = stream.substr(at);
    const video_facts first = video_file_facts(begin), second = video_file_facts(end);
    expect_as_the_index(first, begin);
    expect_as_the_index(second, end);
    EXPECT_LE(first.pictures, facts.pictures);
    if (second.kind == video_kind::elementary) {
      EXPECT_EQ(second.stray_bytes.count, 1u) << percent;
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Examine, RealVideo, testing::ValuesIn(all_streams()),
                         [](const testing::TestParamInfo<std::string>& tested) {
                           std::string name = tested.param;
                           std::replace_if(
                               name.begin(), name.end(),
                               [](char c) { return c == '.' || c == '-'; }, '_');
                           return name;
                         });

TEST(RealVideoFacts, OfDifferentEncoders) {
  const video_facts pal = video_file_facts(file_text("pal.m2v"));
  EXPECT_EQ(pal.standard, video_standard::pal);
  EXPECT_EQ(pal.shape->aspect_code, 3);
  EXPECT_FALSE(pal.shape->progressive_sequence);
  EXPECT_EQ(pal.open_groups, 2u);  // all but the first

  EXPECT_EQ(video_file_facts(file_text("closed.m2v")).open_groups, 0u);
  const video_facts ntsc = video_file_facts(file_text("ntsc.m2v"));
  EXPECT_EQ(ntsc.standard, video_standard::ntsc);
  EXPECT_EQ(ntsc.vbv_bytes, 112u * 2048);
  EXPECT_EQ(ntsc.bit_rate, 8'000'000u);
  EXPECT_TRUE(video_file_facts(file_text("low-delay.m2v")).low_delay);
  EXPECT_FALSE(ntsc.low_delay);

  const video_facts pulldown = video_file_facts(file_text("pulldown.m2v"));
  EXPECT_EQ(pulldown.shape->rate_numerator, 30000);
  EXPECT_EQ(pulldown.pictures, 16u);
  EXPECT_EQ(pulldown.repeated_fields, 8u);
  EXPECT_DOUBLE_EQ(pulldown.seconds, 20 * 1001.0 / 30000);

  const video_facts still = video_file_facts(file_text("still.m2v"));
  EXPECT_EQ(still.pictures, 1u);
  EXPECT_TRUE(still.end_code);
  EXPECT_DOUBLE_EQ(still.seconds, 1001.0 / 30000);

  EXPECT_FALSE(video_file_facts(file_text("vcd.m1v")).shape->mpeg2);
  EXPECT_EQ(video_file_facts(file_text("film.m2v")).shape->rate_numerator, 24000);
}

TEST(RealVideoFacts, GroupsOfFortyFields) {
  const video_facts facts = video_file_facts(file_text("long.m2v"));
  EXPECT_EQ(facts.longest_group->fields, 40u);
  EXPECT_EQ(facts.groups_by_fields[40], 2u);
  EXPECT_EQ(facts.groups_by_fields[38], 1u);  // nothing shown before its first
  EXPECT_EQ(facts.long_groups.count, 3u);
}

TEST(RealVideoFacts, ABitRateThatIsTooHigh) {
  EXPECT_GT(video_file_facts(file_text("loud.m2v")).peak_rate, 9'800'000);
  EXPECT_LT(video_file_facts(file_text("pal.m2v")).peak_rate, 9'800'000);
}

TEST(RealVideoFacts, TwoStreamsWithAnEndCodeBetweenThem) {
  const std::string first = file_text("closed.m2v"), end = "\0\0\1\xB7"s;
  const video_facts facts = video_file_facts(first + end + first + end);
  EXPECT_EQ(facts.middle_end_codes.kept,
            (std::vector<video_place>{{first.size(), 50 * 1001.0 / 30000}}));
  EXPECT_EQ(facts.missing_sequence_headers.count, 0u);
  EXPECT_TRUE(facts.end_code);
  EXPECT_EQ(facts.pictures, 100u);
  EXPECT_DOUBLE_EQ(facts.seconds, 100 * 1001.0 / 30000);
}

TEST(RealVideoFacts, AStreamOfAnotherStandardGoesOn) {
  const std::string first = file_text("ntsc.m2v"), second = file_text("pal.m2v");
  const video_facts facts = video_file_facts(first + second);
  const video_place where{first.size(), 32 * 1001.0 / 30000};
  ASSERT_EQ(facts.standard_changes.count, 1u);
  EXPECT_EQ(facts.standard_changes.kept[0].place, where);
  EXPECT_EQ(facts.size_changes.kept[0].place, where);
  EXPECT_EQ(facts.rate_changes.kept[0].after.rate_numerator, 25);
  EXPECT_EQ(facts.aspect_changes.kept[0].after.aspect_code, 3);
  EXPECT_DOUBLE_EQ(facts.seconds, 32 * 1001.0 / 30000 + 30 / 25.0);
}

TEST(RealVideoFacts, BytesThatAreLostInAPicture) {
  const std::string whole = file_text("ntsc.m2v");
  const video_index index = index_of(whole);
  const byte_range picture = index.bytes_of(20);
  std::string damaged = whole;
  damaged.erase(picture.position + picture.size / 3, picture.size / 3);
  const video_facts facts = video_file_facts(damaged);
  ASSERT_EQ(facts.damage.count, 1u);
  EXPECT_EQ(facts.damage.kept[0].kind, video_damage_kind::missing_rows);
  EXPECT_GT(facts.damage.kept[0].place.byte, picture.position);
  EXPECT_LT(facts.damage.kept[0].place.byte, picture.position + picture.size);
  EXPECT_NEAR(facts.damage.kept[0].place.seconds, 20 * 1001.0 / 30000, 1e-9);
  EXPECT_EQ(facts.pictures, 32u);
}

TEST(RealVideoFacts, AStreamThatEndsWithinAPicture) {
  const std::string whole = file_text("ntsc.m2v");
  const std::string cut = whole.substr(0, whole.size() - 2000);
  const video_facts facts = video_file_facts(cut);
  ASSERT_EQ(facts.damage.count, 1u);
  EXPECT_EQ(facts.damage.kept[0].kind, video_damage_kind::cut_at_end);
}

}  // namespace
}  // namespace corvane
