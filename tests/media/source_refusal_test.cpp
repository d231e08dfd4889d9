// Files that are not what they should be, or want other files opened: all end with a sentence, none
// with a word on standard error.
#include "media/source_probe.h"
#include "media/source_reader.h"
#include "media/sources.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <random>
#include <string>
#include <thread>
#include <vector>

namespace corvane {
namespace {

using namespace std::string_literals;
using media_test::probed;
using media_test::source;
using testing::HasSubstr;
using testing_support::temporary_folder;

const std::string no_film = "it is not a file with video or sound";
const std::string only_lists =
    "it only lists other files, or places on a network: choose the files themselves";
const std::string is_cut = "it ends in the middle: what is needed to read it stood in the rest";

class SourceRefusal : public testing::Test {
 protected:
  void SetUp() override { testing::internal::CaptureStderr(); }
  void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

  /// Why neither facts nor a picture are told of a file with these bytes.
  std::string refusal(const std::string& name, const std::string& bytes) const {
    return refusal_of(folder_.add(name, bytes));
  }
  static std::string refusal_of(const std::string& path) {
    const auto facts = probe_source(path);
    EXPECT_FALSE(facts) << facts->container;
    EXPECT_EQ(source_picture(path, 0, 100, 100).error, facts.error);
    return facts.error;
  }

  temporary_folder folder_;
};

TEST_F(SourceRefusal, OfWhatIsNoFile) {
  EXPECT_EQ(refusal_of(folder_.path("missing.mp4")), "the file does not exist");
  EXPECT_EQ(refusal_of(folder_.path()), "it is a folder, not a file");
}

TEST_F(SourceRefusal, OfEmptyFiles) {
  EXPECT_EQ(refusal("empty.mp4", ""), "the file is empty");
}

TEST_F(SourceRefusal, OfTexts) {
  EXPECT_EQ(refusal("text.mp4", "An ordinary text.\n"), no_film);
  EXPECT_EQ(refusal("words.srt", "1\n00:00:00,100 --> 00:00:00,400\nGood evening\n"), no_film);
  EXPECT_EQ(refusal("page.html", "<!DOCTYPE html><html><img src=\"a.png\"></html>"), no_film);
}

TEST_F(SourceRefusal, OfRandomBytes) {
  std::mt19937 random(7);
  for (int i = 0; i < 20; ++i) {
    std::string bytes(std::size_t{1} << (i % 17), ' ');
    for (char& byte : bytes)
      byte = static_cast<char>(random());
    const auto facts = probe_source(folder_.add("random", bytes));
    EXPECT_FALSE(facts) << facts->container << ", " << bytes.size() << " bytes";
  }
}

TEST_F(SourceRefusal, OfZeros) {
  EXPECT_EQ(refusal("zeros", std::string(300'000, '\0')), no_film);
}

TEST_F(SourceRefusal, OfPicturesThatAreNotPutTogether) {
  EXPECT_THAT(refusal("a.heic", "\0\0\0\x18"s + "ftypheic" + "\0\0\0\0mif1heic"s),
              HasSubstr("HEIC or AVIF): save it as JPEG or PNG"));
}

TEST_F(SourceRefusal, OfDrawings) {
  EXPECT_EQ(refusal("a.svg",
                    "<?xml version=\"1.0\"?><svg xmlns=\"http://www.w3.org/2000/svg\" "
                    "width=\"8\" height=\"8\"><image href=\"/etc/passwd\"/></svg>"),
            no_film);
}

// What names other files, or places on a network. Each would lead somewhere.
std::vector<std::pair<std::string, std::string>> lists_of(const std::string& other) {
  return {
      {"list.m3u8", "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + other + "\n"},
      {"file.m3u8", "#EXTM3U\n#EXTINF:1,\nfile://" + other + "\n#EXT-X-ENDLIST\n"},
      {"passwd.m3u8", "#EXTM3U\n#EXT-X-MEDIA-SEQUENCE:0\n#EXTINF:1,\n/etc/passwd\n"},
      {"net.m3u8", "#EXTM3U\n#EXT-X-MEDIA-SEQUENCE:0\n#EXTINF:1,\nhttp://127.0.0.1:9/a.ts\n"},
      {"concat.txt", "ffconcat version 1.0\nfile '" + other + "'\n"},
      {"dash.mpd",
       "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" "
       "profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\" type=\"static\" "
       "mediaPresentationDuration=\"PT1S\"><Period><AdaptationSet><Representation id=\"1\" "
       "bandwidth=\"1\"><BaseURL>" +
           other + "</BaseURL></Representation></AdaptationSet></Period></MPD>"},
      {"a.m3u", "\xEF\xBB\xBF#EXTM3U\n" + other + "\n"},
      {"a.pls", "[playlist]\nFile1=" + other + "\n"},
      {"a.asx", "<asx version=\"3\"><entry><ref href=\"" + other + "\"/></entry></asx>"},
      {"a.sdp",
       "v=0\no=- 0 0 IN IP4 127.0.0.1\ns=x\nc=IN IP4 127.0.0.1\nt=0 0\n"
       "m=video 9 RTP/AVP 96\na=rtpmap:96 H264/90000\n"},
  };
}

TEST_F(SourceRefusal, OfListsOfOtherFiles) {
  for (const auto& [name, text] : lists_of(source("h264-aac.ts")))
    EXPECT_EQ(refusal(name, text), only_lists) << name;
}

TEST_F(SourceRefusal, OfListsWithTheNameOfAFilm) {
  for (const auto& [name, text] : lists_of(source("h264-aac.ts")))
    EXPECT_EQ(refusal(name + ".mp4", text), only_lists) << name;
}

TEST_F(SourceRefusal, OfFilesThatEndBeforeTheirTable) {
  EXPECT_EQ(refusal_of(source("cut-h264-aac.mp4")), is_cut);
}

TEST_F(SourceRefusal, OfHeadsWithoutABody) {
  EXPECT_FALSE(refusal_of(source("head.mkv")).empty());
}

TEST_F(SourceRefusal, OfPicturesOfWhichHalfIsMissing) {
  const auto facts = probe_source(source("cut-still.png"));
  EXPECT_THAT(facts.error, HasSubstr("it is damaged"));
}

TEST_F(SourceRefusal, IsNotForCutFilesThatBeginWell) {
  for (const char* const name :
       {"cut-front.mp4", "cut-h264-ac3.mkv", "cut-mpeg4-mp3.avi", "cut-sound.wav"})
    EXPECT_TRUE(probed(name).cut_short) << name;
  EXPECT_EQ(probed("cut-mpeg2-ac3.ts").streams.size(), 2u);
  EXPECT_EQ(probed("cut-still.jpg").streams.size(), 1u);
}

// Its head, which stands in front, promises all of 0.6 s.
TEST_F(SourceRefusal, IsNotForACutFileWhichIsAsLongAsWhatIsThere) {
  const source_facts whole = probed("front.mp4"), cut = probed("cut-front.mp4");
  ASSERT_EQ(whole.streams.size(), 2u);
  ASSERT_EQ(cut.streams.size(), 2u);
  ASSERT_TRUE(whole.length && cut.length);
  for (std::size_t i = 0; i < 2; ++i) {
    ASSERT_TRUE(whole.streams[i].length && cut.streams[i].length) << i;
    EXPECT_LT(*cut.streams[i].length, *whole.streams[i].length - 0.03) << i;
    EXPECT_GT(*cut.streams[i].length, 0.2) << i;
  }
  EXPECT_LT(*cut.length, *whole.length - 0.03);
}

TEST_F(SourceRefusal, OfAPictureOfSoundAlone) {
  EXPECT_EQ(source_picture(source("sound.mp3"), 0, 100, 100).error, "it has no picture");
}

// Bytes that are made when they are read.
class made_bytes : public source_bytes {
 public:
  explicit made_bytes(std::int64_t size) : size_(size) {}

  std::int64_t size() const override { return size_; }
  std::optional<std::size_t> read(std::int64_t position, std::uint8_t* to,
                                  std::size_t count) override {
    if (position >= size_)
      return 0;
    count = static_cast<std::size_t>(
        std::min<std::int64_t>(static_cast<std::int64_t>(count), size_ - position));
    total_ += static_cast<std::int64_t>(count);
    make(position, to, count);
    return count;
  }
  std::int64_t total() const { return total_; }

 protected:
  virtual void make(std::int64_t position, std::uint8_t* to, std::size_t count) = 0;

 private:
  std::int64_t size_;
  std::int64_t total_ = 0;
};

/// The same few bytes again and again.
class repeated_bytes : public made_bytes {
 public:
  repeated_bytes(std::string piece, std::int64_t size, std::chrono::milliseconds wait = {})
      : made_bytes(size), piece_(std::move(piece)), wait_(wait) {}

 protected:
  void make(std::int64_t position, std::uint8_t* to, std::size_t count) override {
    std::this_thread::sleep_for(wait_);
    for (std::size_t i = 0; i < count; ++i)
      to[i] = static_cast<std::uint8_t>(
          piece_[(static_cast<std::size_t>(position) + i) % piece_.size()]);
  }

 private:
  std::string piece_;
  std::chrono::milliseconds wait_;
};

class EndlessSource : public SourceRefusal {
 protected:
  void SetUp() override {
    SourceRefusal::SetUp();
    auto reader = make_source_reader();
    ASSERT_TRUE(reader) << reader.error;
    reader_ = std::move(*reader);
  }
  static std::string bytes_of(const std::string& name) {
    const auto bytes = read_file(source(name), 64 << 20);
    EXPECT_TRUE(bytes) << bytes.error;
    return bytes ? *bytes : std::string("x");
  }

  std::unique_ptr<source_reader> reader_;
};

constexpr std::int64_t terabyte = std::int64_t{1} << 40;

TEST_F(EndlessSource, IsGivenUpWhenItsBytesAreSpent) {
  const source_limits limits{std::int64_t{8} << 20, std::chrono::minutes(5)};
  for (const std::string& piece :
       {"\0"s, bytes_of("mpeg2-ac3.ts"), bytes_of("mpeg2-mp2.mpg"), bytes_of("sound.mp3"),
        bytes_of("h264.264"), bytes_of("sound.ac3"), "\xFF\xFB\x90\x64"s, "\0\0\1\xBA"s}) {
    repeated_bytes bytes(piece, terabyte);
    reader_->facts(bytes, limits);
    EXPECT_LE(bytes.total(), limits.bytes + (1 << 20)) << piece.size();
  }
}

TEST_F(EndlessSource, IsGivenUpWhenItsTimeIsSpent) {
  const auto began = std::chrono::steady_clock::now();
  repeated_bytes nothing("\0"s, terabyte, std::chrono::milliseconds(20));
  EXPECT_EQ(reader_->facts(nothing, {terabyte, std::chrono::milliseconds(50)}).error,
            "it could not be looked through in the time that there is for it");
  // What is known by then is enough.
  repeated_bytes film(bytes_of("mpeg2-ac3.ts"), terabyte, std::chrono::milliseconds(20));
  const auto facts = reader_->facts(film, {terabyte, std::chrono::milliseconds(500)});
  EXPECT_TRUE(facts) << facts.error;
  EXPECT_LT(std::chrono::steady_clock::now() - began, std::chrono::seconds(20));
}

TEST_F(EndlessSource, IsLookedIntoAtItsBeginningAlone) {
  repeated_bytes bytes(bytes_of("mpeg2-ac3.ts"), terabyte);
  const auto facts = reader_->facts(bytes, source_limits());
  ASSERT_TRUE(facts) << facts.error;
  EXPECT_EQ(facts->container, "mpegts");
  EXPECT_LT(bytes.total(), std::int64_t{160} << 20);
}

class unreadable_bytes : public source_bytes {
 public:
  std::int64_t size() const override { return 1'000'000; }
  std::optional<std::size_t> read(std::int64_t, std::uint8_t*, std::size_t) override {
    return std::nullopt;
  }
};

TEST_F(EndlessSource, ThatCannotBeReadIsTold) {
  unreadable_bytes bytes;
  EXPECT_EQ(reader_->facts(bytes, source_limits()).error, "the file cannot be read");
}

class bytes_in_memory : public made_bytes {
 public:
  explicit bytes_in_memory(const std::string& bytes)
      : made_bytes(static_cast<std::int64_t>(bytes.size())), bytes_(bytes) {}

 protected:
  void make(std::int64_t position, std::uint8_t* to, std::size_t count) override {
    std::memcpy(to, bytes_.data() + position, count);
  }

 private:
  const std::string& bytes_;
};

class DamagedSource : public EndlessSource {
 protected:
  // Both must end; what they tell is for the next ones to doubt.
  void look_into(const std::string& bytes) {
    bytes_in_memory read(bytes);
    const auto facts = reader_->facts(read, source_limits());
    EXPECT_NE(facts.value.has_value(), !facts.error.empty());
    reader_->picture_at(read, source_limits(), 0.3, 40, 40);
    ++looked_into_;
  }

  int looked_into_ = 0;
};

const std::vector<std::string> all_kinds = {
    "h264-aac.mp4",   "h264-ac3.mkv", "mpeg4-mp3.avi", "h264-aac.ts", "mpeg2-mp2.mpg",
    "h264-aac.flv",   "wmv2-wma.asf", "vp9-opus.webm", "gif.gif",     "theora-vorbis.ogv",
    "prores-pcm.mov", "named.mkv",    "named.mp4",     "sound.mp3",   "sound.flac",
    "still.png",      "still.jpg",    "cover.mp3",     "still.tiff",  "sound.wav"};

TEST_F(DamagedSource, OfEveryKindEndsWellWhereverItIsCut) {
  for (const std::string& name : all_kinds) {
    const std::string whole = bytes_of(name);
    for (std::size_t i = 1; i < 16; ++i)
      look_into(whole.substr(0, whole.size() * i / 16));
  }
  EXPECT_EQ(looked_into_, 300);
}

TEST_F(DamagedSource, OfEveryKindEndsWellWithWrongBytes) {
  std::mt19937 random(11);
  for (const std::string& name : all_kinds) {
    const std::string whole = bytes_of(name);
    for (int i = 0; i < 20; ++i) {
      std::string damaged = whole;
      // Heads are short, and most of what can go wrong is in them.
      for (int hit = 0; hit < 12; ++hit)
        damaged[random() % std::min<std::size_t>(whole.size(), hit % 2 == 0 ? 600 : 60'000)] =
            static_cast<char>(random());
      look_into(damaged);
    }
  }
  EXPECT_EQ(looked_into_, 400);
}

}  // namespace
}  // namespace corvane
