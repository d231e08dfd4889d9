// What the index says of streams of every build, right and wrong.
#include "formats/video_index.h"

#include "media/tiny_stream.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
namespace {

using media_test::tiny_picture;
using media_test::tiny_stream;

void feed(video_index_builder& builder, const std::string& bytes, std::size_t slice) {
  for (std::size_t at = 0; at < bytes.size(); at += slice)
    builder.feed(reinterpret_cast<const std::uint8_t*>(bytes.data()) + at,
                 std::min(slice, bytes.size() - at));
}

video_index index_of(const std::string& bytes, std::size_t slice = 100'000) {
  video_index_builder builder;
  feed(builder, bytes, slice);
  builder.finish();
  return builder.index();
}

std::vector<std::size_t> order(const video_index& index) {
  std::vector<std::size_t> coded;
  for (std::size_t shown = 0; shown < index.shown(); ++shown)
    coded.push_back(index.coded_of(shown));
  return coded;
}

using numbers = std::vector<std::size_t>;

// Kinds in the order of the stream.
tiny_stream& add(tiny_stream& stream, const std::string& kinds) {
  for (const char kind : kinds)
    stream.add(kind, 100);
  return stream;
}

TEST(VideoIndex, BPicturesAreShownBeforeTheReferenceAheadOfThem) {
  tiny_stream stream;
  add(stream.sequence().group(), "IPBBPBB");
  EXPECT_EQ(order(index_of(stream.bytes)), (numbers{0, 2, 3, 1, 5, 6, 4}));
}

TEST(VideoIndex, IsTheOrderOfTemporalReferenceInARightStream) {
  const int references[] = {2, 0, 1, 5, 3, 4, 8, 6, 7};
  tiny_stream stream;
  stream.sequence().group();
  for (std::size_t i = 0; i < std::size(references); ++i)
    stream.add(i == 0 ? 'I' : i % 3 == 0 ? 'P' : 'B', 100, references[i]);
  const video_index index = index_of(stream.bytes);
  ASSERT_EQ(index.shown(), std::size(references));
  for (std::size_t shown = 0; shown < index.shown(); ++shown)
    EXPECT_EQ(references[index.coded_of(shown)], static_cast<int>(shown));
}

TEST(VideoIndex, BrokenTemporalReferencesMakeNoHoles) {
  tiny_stream stream;
  stream.sequence().group();
  for (int i = 0; i < 30; ++i)
    stream.add(i == 0 ? 'I' : i % 3 == 0 ? 'P' : 'B', 100, i * 577);
  numbers coded = order(index_of(stream.bytes));
  ASSERT_EQ(coded.size(), 30u);
  std::sort(coded.begin(), coded.end());
  for (std::size_t i = 0; i < coded.size(); ++i)
    EXPECT_EQ(coded[i], i);
}

TEST(VideoIndex, AGroupOverThousandTwentyFourPicturesKeepsItsOrder) {
  tiny_stream stream;
  stream.sequence().group();
  for (int i = 0; i < 2500; ++i)
    stream.add(i == 0 ? 'I' : 'P', 100, i);
  const video_index index = index_of(stream.bytes);
  ASSERT_EQ(index.shown(), 2500u);
  EXPECT_EQ(index.groups().size(), 1u);
  for (std::size_t shown = 0; shown < index.shown(); ++shown)
    ASSERT_EQ(index.coded_of(shown), shown);
}

TEST(VideoIndex, SlicesOfAnySizeMakeTheSameIndex) {
  tiny_stream stream;
  add(stream.sequence().group(), "IPBB");
  add(stream.sequence().group(false), "IBBPBB").end();
  const video_index whole = index_of(stream.bytes);
  for (std::size_t slice = 1; slice < 60; ++slice) {
    const video_index sliced = index_of(stream.bytes, slice);
    ASSERT_EQ(order(sliced), order(whole)) << slice;
    ASSERT_EQ(sliced.shape(), whole.shape());
    for (std::size_t coded = 0; coded < whole.coded(); ++coded) {
      ASSERT_EQ(sliced.bytes_of(coded).position, whole.bytes_of(coded).position);
      ASSERT_EQ(sliced.bytes_of(coded).size, whole.bytes_of(coded).size);
    }
  }
}

TEST(VideoIndex, ThePicturesAreTheWholeStream) {
  tiny_stream stream;
  add(stream.sequence().group(), "IPBB");
  add(stream.sequence().group(), "IP").end();
  const video_index index = index_of(stream.bytes);
  std::uint64_t end = 0;
  for (std::size_t coded = 0; coded < index.coded(); ++coded) {
    EXPECT_EQ(index.bytes_of(coded).position, end);
    end += index.bytes_of(coded).size;
  }
  EXPECT_EQ(end, stream.bytes.size());
}

TEST(VideoIndex, WhileTheStreamIsReadOnlyWholePicturesAreKnown) {
  tiny_stream stream;
  add(stream.sequence().group(), "III");
  video_index_builder builder;
  feed(builder, stream.bytes, 7);
  EXPECT_LT(builder.index().coded(), 3u);
  EXPECT_LT(builder.index().shown(), builder.index().coded() + 1);
  builder.finish();
  EXPECT_EQ(builder.index().shown(), 3u);
}

TEST(VideoIndex, TwoFieldPicturesAreOnePicture) {
  using kind = picture_extension::structure_kind;
  tiny_stream stream;
  stream.sequence().group();
  for (const picture_kind type : {picture_kind::intra, picture_kind::predicted}) {
    stream.add({type, 50, 0, kind::top_field});
    stream.add({picture_kind::predicted, 200, 0, kind::bottom_field});
  }
  stream.add({picture_kind::predicted, 100, 0, kind::frame});
  const video_index index = index_of(stream.bytes);
  EXPECT_EQ(index.shown(), 3u);
  EXPECT_EQ(index.groups().size(), 1u);
  EXPECT_EQ(index.fields_before(3), 6u);
}

TEST(VideoIndex, AFieldWithoutItsOtherHalfIsAPictureOfItsOwn) {
  using kind = picture_extension::structure_kind;
  tiny_stream stream;
  stream.sequence().group();
  stream.add({picture_kind::intra, 50, 0, kind::top_field});
  stream.add({picture_kind::predicted, 50, 0, kind::top_field});
  stream.add({picture_kind::predicted, 50, 0, kind::bottom_field});
  stream.add({picture_kind::predicted, 50, 0, kind::bottom_field});
  stream.group().add({picture_kind::intra, 50, 0, kind::top_field});
  EXPECT_EQ(index_of(stream.bytes).shown(), 4u);
}

TEST(VideoIndex, LeadingBPicturesOfAnOpenFirstGroupAreNotShown) {
  tiny_stream stream;
  add(stream.sequence().group(false), "IBBPBB");
  add(stream.sequence().group(false), "IBBPBB");
  const video_index index = index_of(stream.bytes);
  EXPECT_EQ(order(index), (numbers{0, 4, 5, 3, 7, 8, 6, 10, 11, 9}));
  EXPECT_TRUE(index.leading(7));
  EXPECT_FALSE(index.leading(10));
}

TEST(VideoIndex, LeadingBPicturesOfAClosedFirstGroupAreShownFirst) {
  tiny_stream stream;
  add(stream.sequence().group(true), "IBBPBB");
  const video_index index = index_of(stream.bytes);
  EXPECT_EQ(order(index), (numbers{1, 2, 0, 4, 5, 3}));
  EXPECT_EQ(index.first_shown(0), 2u);
}

TEST(VideoIndex, PicturesBeforeTheFirstIPictureDoNotCount) {
  tiny_stream stream;
  add(stream.sequence(), "PBB");
  add(stream.group(), "IP");
  EXPECT_EQ(index_of(stream.bytes).shown(), 2u);
}

TEST(VideoIndex, StepsByGroupsLandOnIPictures) {
  tiny_stream stream;
  add(stream.sequence().group(false), "IPBB");
  add(stream.sequence().group(false), "IBBPBB");
  add(stream.sequence().group(false), "IBBPBB");
  const video_index index = index_of(stream.bytes);
  ASSERT_EQ(index.groups_shown(), 3u);
  for (std::size_t group = 0; group < 3; ++group) {
    const std::size_t shown = index.first_shown(group);
    EXPECT_EQ(index.kind_of(index.coded_of(shown)), picture_kind::intra);
    EXPECT_EQ(index.group_shown(shown), group);
    if (shown > 0) {
      EXPECT_EQ(index.group_shown(shown - 1), group - 1);
    }
  }
  EXPECT_EQ(index.group_shown(index.shown() - 1), 2u);
}

TEST(VideoIndex, AGroupWithoutItsOwnSequenceHeaderKnowsTheOneInForce) {
  tiny_stream stream;
  add(stream.sequence().group(), "IP");
  add(stream.group(), "IP");
  const auto second = stream.bytes.size();
  add(stream.resize(64, 64).sequence().group(), "IP");
  const video_index index = index_of(stream.bytes);
  ASSERT_EQ(index.groups().size(), 3u);
  EXPECT_TRUE(index.groups()[0].sequence_here);
  EXPECT_FALSE(index.groups()[1].sequence_here);
  EXPECT_EQ(index.groups()[1].sequence_position, 0u);
  EXPECT_TRUE(index.groups()[2].sequence_here);
  EXPECT_EQ(index.groups()[2].sequence_position, second);
  EXPECT_EQ(index.shape()->width, 32);
}

TEST(VideoIndex, AnIPictureWithoutHeadersBeginsAGroupToo) {
  tiny_stream stream;
  add(stream.sequence().group(true), "IBBPBB");
  add(stream, "IBBPBB");
  const video_index index = index_of(stream.bytes);
  ASSERT_EQ(index.groups_shown(), 2u);
  EXPECT_FALSE(index.groups()[1].sequence_here);
  EXPECT_FALSE(index.groups()[1].closed);
  // Its leading B pictures may need the group before.
  EXPECT_EQ(order(index), (numbers{1, 2, 0, 4, 5, 3, 7, 8, 6, 10, 11, 9}));
  EXPECT_TRUE(index.leading(7));
  EXPECT_EQ(index.begin_shown(1), 6u);
}

TEST(VideoIndex, AStreamWithoutFurtherHeadersHasAGroupForEachIPicture) {
  tiny_stream stream;
  add(stream.sequence(), std::string(200, 'I'));
  const video_index index = index_of(stream.bytes);
  EXPECT_EQ(index.shown(), 200u);
  EXPECT_EQ(index.groups().size(), 200u);
}

TEST(VideoIndex, APictureWithoutSlicesIsNone) {
  tiny_stream stream;
  stream.sequence().group();
  stream.add('I', 100);
  tiny_picture bare;
  bare.slices = 0;
  stream.add(bare).add(bare).add('P', 100).add(bare);
  EXPECT_EQ(index_of(stream.bytes).shown(), 2u);
}

TEST(VideoIndex, PicturesOfAnUnknownKindAreNone) {
  tiny_stream stream;
  add(stream.sequence().group(), "DIDPD");
  EXPECT_EQ(index_of(stream.bytes).shown(), 2u);
}

TEST(VideoIndex, PicturesWithoutASequenceHeaderAreNone) {
  tiny_stream stream;
  add(stream.group(), "IPP");
  const video_index index = index_of(stream.bytes);
  EXPECT_FALSE(index.shape());
  EXPECT_EQ(index.shown(), 0u);
}

TEST(VideoIndex, MpegOneIsKnownByTheMissingExtension) {
  tiny_stream one(false), two(true);
  add(one.sequence().group(), "IPBB");
  add(two.sequence().group(), "IPBB");
  EXPECT_FALSE(index_of(one.bytes).shape()->mpeg2);
  EXPECT_TRUE(index_of(two.bytes).shape()->mpeg2);
  EXPECT_EQ(order(index_of(one.bytes)), order(index_of(two.bytes)));
}

TEST(VideoIndex, RepeatedFieldsMakeTimesLater) {
  tiny_stream stream;
  stream.sequence(4).group();
  for (int i = 0; i < 8; ++i) {
    tiny_picture p;
    p.kind = i == 0 ? picture_kind::intra : picture_kind::predicted;
    p.top_field_first = i % 4 < 2;
    p.repeat_first_field = i % 2 != 0;
    stream.add(p);
  }
  const video_index index = index_of(stream.bytes);
  const std::uint64_t before[] = {0, 2, 5, 7, 10, 12, 15, 17, 20};
  for (std::size_t shown = 0; shown <= 8; ++shown)
    EXPECT_EQ(index.fields_before(shown), before[shown]) << shown;
  for (std::uint64_t field = 0; field < 20; ++field) {
    const std::size_t shown = index.shown_at_field(field);
    EXPECT_LE(before[shown], field);
    EXPECT_GT(before[shown + 1], field);
  }
  EXPECT_EQ(index.shown_at_field(20), 8u);
  EXPECT_EQ(index.shown_at_field(1'000'000), 8u);
}

TEST(VideoIndex, BytesThatAreNoVideoHaveNoPictures) {
  for (const std::string& bytes :
       {std::string(), std::string(100'000, '\0'), std::string(100'000, '\1'),
        std::string("an ordinary text"), std::string("\0\0\1", 3)})
    EXPECT_EQ(index_of(bytes).coded(), 0u);
}

TEST(VideoIndex, PicturesBeyondFourGibibytesAreFound) {
  constexpr std::uint64_t begin = (std::uint64_t{1} << 32) - 50;
  tiny_stream stream;
  add(stream.sequence().group(), "IP");
  const auto second = stream.bytes.size();
  add(stream.sequence().group(), "IPP");
  video_index_builder builder(begin);
  feed(builder, stream.bytes, 10);
  builder.finish();
  const video_index& index = builder.index();
  ASSERT_EQ(index.shown(), 5u);
  EXPECT_EQ(index.bytes_of(0).position, begin);
  EXPECT_EQ(index.bytes_of(2).position, begin + second);
  EXPECT_EQ(index.groups()[1].sequence_position, begin + second);
  EXPECT_EQ(index.bytes_of(4).position + index.bytes_of(4).size, begin + stream.bytes.size());
}

TEST(VideoIndex, TheCheapestPicturesThereAreDoNotCostMoreThanADayOfVideo) {
  // Headers and slices without contents, 8 bytes a picture.
  tiny_stream stream;
  stream.sequence().group();
  const std::string picture{0, 0, 1, 0, 0, 8, 0, 0, 1, 1};
  std::string many;
  for (int i = 0; i < 500'000; ++i)
    many += picture;
  video_index_builder builder;
  feed(builder, stream.bytes, 1000);
  for (int i = 0; i < 13; ++i)
    feed(builder, many, many.size());
  builder.finish();
  EXPECT_EQ(builder.index().coded(), video_index::most_pictures);
  EXPECT_EQ(builder.index().shown(), video_index::most_pictures);
}

}  // namespace
}  // namespace corvane
