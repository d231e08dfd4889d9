// That nothing but the file itself is opened, whatever it names: by the system's word.
#include "media/source_probe.h"
#include "media/sources.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>
#include <vector>

namespace corvane {
namespace {

using media_test::source;
using testing_support::temporary_folder;

/// Notes the names of the files in a folder that anybody opens.
class opened_files {
 public:
  explicit opened_files(const std::string& folder) : watch_(::inotify_init1(IN_NONBLOCK)) {
    EXPECT_GE(::inotify_add_watch(watch_, folder.c_str(), IN_OPEN), 0);
  }
  opened_files(const opened_files&) = delete;
  opened_files& operator=(const opened_files&) = delete;
  ~opened_files() { ::close(watch_); }

  std::vector<std::string> names() const {
    std::vector<std::string> names;
    alignas(inotify_event) std::array<char, 65536> events{};
    for (ssize_t count = 0; (count = ::read(watch_, events.data(), events.size())) > 0;) {
      for (ssize_t at = 0; at < count;) {
        inotify_event event{};
        std::memcpy(&event, events.data() + at, sizeof event);
        names.emplace_back(events.data() + at + sizeof event);
        at += static_cast<ssize_t>(sizeof event + event.len);
      }
    }
    return names;
  }

 private:
  int watch_;
};

class SourceOpens : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(copy_file(source("h264-aac.ts"), folder_.path("other.ts")));
    for (const char* const name : {"a1.png", "a2.png"})
      ASSERT_FALSE(copy_file(source("still.png"), folder_.path(name)));
  }

  /// Looks into a file of the folder, and gives the names of those that were opened for it.
  std::vector<std::string> opened_for(const std::string& name) const {
    const opened_files opened(folder_.path());
    probe_source(folder_.path(name));
    source_picture(folder_.path(name), 0, 50, 50);
    std::vector<std::string> others;
    for (const std::string& file : opened.names())
      if (file != name)
        others.push_back(file);
    return others;
  }

  temporary_folder folder_;
};

using none = std::vector<std::string>;

TEST_F(SourceOpens, TheFileItselfIsSeen) {
  const opened_files opened(folder_.path());
  EXPECT_TRUE(probe_source(folder_.path("other.ts")));
  ASSERT_FALSE(opened.names().empty());
}

TEST_F(SourceOpens, NoFileThatAPlaylistNames) {
  folder_.add("list.m3u8",
              "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\nother.ts\n"
              "#EXT-X-ENDLIST\n");
  EXPECT_EQ(opened_for("list.m3u8"), none());
  folder_.add("path.m3u8",
              "#EXTM3U\n#EXT-X-TARGETDURATION:1\n#EXTINF:1,\n" + folder_.path("other.ts") + "\n");
  EXPECT_EQ(opened_for("path.m3u8"), none());
}

TEST_F(SourceOpens, NoFileThatAListOfPiecesNames) {
  folder_.add("pieces.txt", "ffconcat version 1.0\nfile other.ts\n");
  EXPECT_EQ(opened_for("pieces.txt"), none());
}

TEST_F(SourceOpens, NoFileThatADescriptionNames) {
  folder_.add("a.mpd",
              "<?xml version=\"1.0\"?><MPD xmlns=\"urn:mpeg:dash:schema:mpd:2011\" "
              "profiles=\"urn:mpeg:dash:profile:isoff-on-demand:2011\" type=\"static\" "
              "mediaPresentationDuration=\"PT1S\"><Period><AdaptationSet><Representation "
              "id=\"1\" bandwidth=\"1\"><BaseURL>other.ts</BaseURL></Representation>"
              "</AdaptationSet></Period></MPD>");
  EXPECT_EQ(opened_for("a.mpd"), none());
}

TEST_F(SourceOpens, NoFileOfARowOfPictures) {
  ASSERT_FALSE(copy_file(source("still.png"), folder_.path("a%d.png")));
  ASSERT_FALSE(copy_file(source("still.png"), folder_.path("a*.png")));
  EXPECT_EQ(opened_for("a%d.png"), none());
  EXPECT_EQ(opened_for("a*.png"), none());
}

TEST_F(SourceOpens, NoFileThatADrawingShows) {
  folder_.add("a.svg",
              "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"8\">"
              "<image href=\"a1.png\" width=\"8\" height=\"8\"/></svg>");
  EXPECT_EQ(opened_for("a.svg"), none());
}

// Makes the sound of an MOV file lie in another file, as editing programs do: a longer entry in the
// table of places, and all that holds it longer.
std::string with_reference(std::string film, const std::string& path) {
  std::string entry(150, '\0');
  const auto text = [&](std::size_t at, const std::string& name) {
    entry[at] = static_cast<char>(name.size());
    entry.replace(at + 1, name.size(), name);
  };
  text(10, "disk");
  text(50, "other.ts");
  const auto big = [](std::size_t value, int bytes) {
    std::string written;
    for (int i = bytes - 1; i >= 0; --i)
      written += static_cast<char>(value >> 8 * i & 0xFF);
    return written;
  };
  entry +=
      big(2, 2) + big(path.size(), 2) + path + (path.size() % 2 != 0 ? std::string(1, '\0') : "");
  entry += big(0xFFFF, 2) + big(0, 2);
  const std::string box = big(12 + entry.size(), 4) + "alis" + big(0, 4) + entry;
  const std::size_t table = film.find("dref");
  EXPECT_NE(table, std::string::npos);
  const std::size_t old_entry = table + 12;
  const std::size_t grown = box.size() - 12;
  film.replace(old_entry, 12, box);
  for (const char* const name : {"dref", "dinf", "minf", "mdia", "trak", "moov"}) {
    const std::size_t at = film.rfind(name, table) - 4;
    std::size_t size = 0;
    for (std::size_t i = 0; i < 4; ++i)
      size = size << 8 | static_cast<unsigned char>(film[at + i]);
    film.replace(at, 4, big(size + grown, 4));
  }
  return film;
}

TEST_F(SourceOpens, NoFileThatAFilmSaysItsDataLieIn) {
  const auto film = read_file(source("h264-pcm.mov"), 1 << 20);
  ASSERT_TRUE(film);
  folder_.add("a.mov", with_reference(*film, folder_.path("other.ts")));
  EXPECT_TRUE(probe_source(folder_.path("a.mov")));
  EXPECT_EQ(opened_for("a.mov"), none());
}

}  // namespace
}  // namespace corvane
