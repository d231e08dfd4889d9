#include "runner/run_log.h"

#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <filesystem>
#include <system_error>
#include <vector>

#ifndef _WIN32
#include <csignal>
#include <sys/resource.h>
#endif

namespace corvane {
namespace {

using testing_support::temporary_folder;

struct written_log {
  temporary_folder folder;
  run_log log;
  written_log() {
    log.begin(folder.path("CorvaneLOG.txt"));
    log.append("title\r\n");
    log.open();
  }
};

TEST(RunLog, HoldsEverythingAndALineBreakAfterIt) {
  written_log w;
  w.log.append("a \r\n b");
  EXPECT_FALSE(w.log.finish());
  EXPECT_EQ(w.folder.read("CorvaneLOG.txt"), "title\r\na \r\n b\r\n");
  EXPECT_EQ(files_in(w.folder.path()), std::vector<std::string>{"CorvaneLOG.txt"});
}

TEST(RunLog, EarlierLogStaysWholeUntilTheEndAndIsThenReplaced) {
  written_log w;
  w.folder.add("CorvaneLOG.txt", "an earlier log, much longer than the one that is written now");
  w.log.append("new");
  EXPECT_EQ(w.folder.read("CorvaneLOG.txt").substr(0, 10), "an earlier");
  EXPECT_FALSE(w.log.finish());
  EXPECT_EQ(w.folder.read("CorvaneLOG.txt"), "title\r\nnew\r\n");
}

TEST(RunLog, LogOfManyMegabytesIsWholeOnTheDisk) {
  written_log w;
  const std::string piece = std::string(65530, 'x').append(" \r\n ");
  for (int i = 0; i < 320; ++i)
    w.log.append(piece);
  EXPECT_LT(w.log.tail().size(), 200000u);
  EXPECT_FALSE(w.log.finish());
  EXPECT_EQ(file_size(w.folder.path("CorvaneLOG.txt")), 9 + 320 * piece.size());
}

TEST(RunLog, IsBeganAnewForEachRun) {
  written_log w;
  w.log.append("\r\n ERR:  x\r\n *process complete");
  w.log.begin(w.folder.path("CorvaneLOG.txt"));
  EXPECT_FALSE(w.log.holds_error());
  EXPECT_FALSE(w.log.holds_marker());
  EXPECT_EQ(w.log.tail(), "");
}

TEST(RunLog, ErrorLineIsFoundWhereverThePiecesAreSplit) {
  for (const std::string text : {"x \r\n ERR:  broken", "x \r\n  **ERROR: broken"})
    for (std::size_t i = 0; i <= text.size(); ++i) {
      written_log w;
      w.log.append(text.substr(0, i));
      w.log.append(text.substr(i));
      EXPECT_TRUE(w.log.holds_error()) << text << " split at " << i;
    }
}

TEST(RunLog, ErrorLineIsFoundWhenItComesACharacterAtATime) {
  written_log w;
  for (const char c : std::string("abc \r\n ERR"))
    w.log.append(std::string(1, c));
  EXPECT_TRUE(w.log.holds_error());
}

TEST(RunLog, ErrInTheMiddleOfALineIsNoErrorLine) {
  written_log w;
  w.log.append("ERR first \r\n  ERR after two blanks \r\n no ERR \r\n **WARN x**ERR");
  EXPECT_FALSE(w.log.holds_error());
}

TEST(RunLog, MarkerThatBeginsALineIsFoundWhereverThePiecesAreSplit) {
  const std::string text = "x \r\n *process complete";
  for (std::size_t i = 0; i <= text.size(); ++i) {
    written_log w;
    w.log.append(text.substr(0, i));
    EXPECT_EQ(w.log.holds_marker(), i == text.size());
    w.log.append(text.substr(i));
    EXPECT_TRUE(w.log.holds_marker()) << i;
  }
}

TEST(RunLog, MarkerWithinALineDoesNotCount) {
  written_log w;
  w.log.append("file /x/*process complete \r\n ");
  EXPECT_FALSE(w.log.holds_marker());
}

TEST(RunLog, KnowsWhetherALineBegins) {
  written_log w;
  EXPECT_TRUE(w.log.at_line_start());
  w.log.append("abc");
  EXPECT_FALSE(w.log.at_line_start());
  w.log.append(" \r\n ");
  EXPECT_TRUE(w.log.at_line_start());
}

TEST(RunLog, CopyHoldsWhatWasCollectedAndTheLastLine) {
  written_log w;
  w.log.append(std::string(100000, 'y'));
  EXPECT_FALSE(w.log.copy_to(w.folder.path("copy.txt"), "the end"));
  EXPECT_EQ(w.folder.read("copy.txt"), "title\r\n" + std::string(100000, 'y') + "\r\nthe end\r\n");
  w.log.append("z");
  EXPECT_FALSE(w.log.finish());
  EXPECT_EQ(file_size(w.folder.path("CorvaneLOG.txt")), 7u + 100000 + 1 + 2);
}

TEST(RunLog, CopyReplacesAnEarlierOneWhole) {
  written_log w;
  w.folder.add("copy.txt", "an earlier report");
  w.log.append(std::string(100000, 'y'));
  EXPECT_FALSE(w.log.copy_to(w.folder.path("copy.txt"), "the end"));
  EXPECT_EQ(w.folder.read("copy.txt"), "title\r\n" + std::string(100000, 'y') + "\r\nthe end\r\n");
}

TEST(RunLog, FolderThatCannotBeWrittenIsTold) {
  temporary_folder folder;
  run_log log;
  log.begin(folder.path("missing/CorvaneLOG.txt"));
  log.open();
  log.append("text");
  EXPECT_TRUE(log.finish());
  EXPECT_FALSE(folder_exists(folder.path("missing")));
}

TEST(RunLog, LogThatCannotTakeItsPlaceIsToldAndStaysBesideIt) {
  written_log w;
  ASSERT_FALSE(make_folders(w.folder.path("CorvaneLOG.txt")));
  w.log.append("text");
  const failure why = w.log.finish();
  ASSERT_TRUE(why);
  EXPECT_FALSE(w.log.is_in_place());
  EXPECT_EQ(w.log.left_beside(), w.folder.path("CorvaneLOG.txt.part"));
  EXPECT_EQ(w.folder.read("CorvaneLOG.txt.part"),
            "title\r\ntext\r\n*** this log could not be put in its place: " + *why + "\r\n");
  w.log.begin(w.folder.path("CorvaneLOG.txt"));
  EXPECT_EQ(w.log.left_beside(), "");
}

#ifndef _WIN32  // where no process has a limit of its own
TEST(RunLog, DiskThatIsFullIsToldAndWhatWasWrittenIsKept) {
  const temporary_folder folder;
  folder.add("CorvaneLOG.txt", "an earlier log");
  run_log log;
  log.begin(folder.path("CorvaneLOG.txt"));
  log.open();
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit full = before;
  full.rlim_cur = 8;
  EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
  log.append("so little that it is written at the end");
  const failure why = log.finish();
  EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(why, std::make_error_code(std::errc::file_too_large).message());
  EXPECT_TRUE(log.is_in_place());
  EXPECT_EQ(folder.read("CorvaneLOG.txt"), "so littl");
  EXPECT_EQ(files_in(folder.path()), std::vector<std::string>{"CorvaneLOG.txt"});
}

TEST(RunLog, LinksAreReplacedAndNotWrittenThrough) {
  const temporary_folder folder;
  for (const char* const name : {"CorvaneLOG.txt", "CorvaneLOG.txt.part", "copy.txt"})
    std::filesystem::create_symlink(path_of(folder.add(std::string("mine/") + name, "mine")),
                                    path_of(folder.path(name)));
  run_log log;
  log.begin(folder.path("CorvaneLOG.txt"));
  log.open();
  log.append("text");
  EXPECT_FALSE(log.copy_to(folder.path("copy.txt"), "the end"));
  EXPECT_FALSE(log.finish());
  EXPECT_EQ(folder.read("CorvaneLOG.txt"), "text\r\n");
  EXPECT_EQ(folder.read("copy.txt"), "text\r\nthe end\r\n");
  for (const char* const name : {"CorvaneLOG.txt", "CorvaneLOG.txt.part", "copy.txt"})
    EXPECT_EQ(folder.read(std::string("mine/") + name), "mine") << name;
}
#endif

}  // namespace
}  // namespace corvane
