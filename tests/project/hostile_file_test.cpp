// Project files from strangers: loaded or refused with a message, never a crash, never a wait.
#include "formats/text.h"
#include "project/project_file.h"
#include "sample_project.h"
#include "support/command_test.h"

#include <filesystem>
#include <random>

namespace corvane {
namespace {

using testing_support::contents_of;
using testing_support::sample_project_text;

/// Takes every message down and agrees to everything.
class patient_user : public prompts {
 public:
  answer message(const message_box& box) override {
    messages.push_back(box.text);
    return answer::ok;
  }
  std::string open_file(const file_dialog&) override { return {}; }
  std::string save_file(const file_dialog&) override { return {}; }
  std::string input(const input_box&) override { return {}; }

  std::vector<std::string> messages;
};

class HostileFile : public testing_support::command_test {
 protected:
  /// Loads bytes into a project with something in it. Checks what holds for every file: a message
  /// for one that is refused, and then the project as it was.
  bool load(std::string_view bytes) {
    const std::string file = folder.add("hostile.cvp", bytes);
    p = testing_support::random_project(11);
    p.List11.clear();  // nothing of the old project is missing
    p.menulist.clear();
    const loaded_project before = contents_of(p);
    user.messages.clear();
    const prompts_relay::answered_by patient(doc.ask, user);
    const bool loaded = loadprojectf(doc, file);
    EXPECT_EQ(loaded, user.messages.empty());
    const bool taken_back = !loaded && p.saved == 1;
    if (!loaded && !taken_back) {
      EXPECT_EQ(user.messages.size(), 1u);
      EXPECT_EQ(contents_of(p), before);
    }
    for (const std::string& text : user.messages)
      EXPECT_LT(text.size(), 8192u);
    return loaded;
  }
  std::string only_message() const { return user.messages.size() == 1 ? user.messages[0] : ""; }

  patient_user user;
};

TEST_F(HostileFile, BinaryFileGetsTheVersionMessageAndNothingElse) {
  std::mt19937 numbers(1);
  for (int round = 0; round < 50; ++round) {
    std::string bytes;
    for (int i = 0; i < 20000; ++i)
      bytes += static_cast<char>(numbers() & 0xff);
    EXPECT_FALSE(load(bytes));
    EXPECT_EQ(only_message(),
              "Sorry, but this project file is from Corvane 0 and is incompatible with the lastest "
              "version.");
  }
}

TEST_F(HostileFile, BinaryAfterAGoodFirstLineIsRefused) {
  EXPECT_FALSE(
      load(std::string_view("Corvane 0.997\r\n\x7f"
                            "ELF\0\0",
                            21)));
  EXPECT_TRUE(only_message().ends_with("line 2 contains a control character."));
}

TEST_F(HostileFile, OneLineOfAGigabyteIsRefusedUnread) {
  const std::string file = folder.add("huge.cvp", "Corvane 0.997 - 1/2/2005");
  std::filesystem::resize_file(path_of(file), 1u << 30);
  expect_error("\"" + file + "\" is not a project file that can be loaded: the file is too large.");
  EXPECT_FALSE(loadprojectf(doc, file));
}

TEST_F(HostileFile, EmptyFileGetsTheVersionMessage) {
  EXPECT_FALSE(load(""));
  EXPECT_TRUE(only_message().starts_with("Sorry"));
}

TEST_F(HostileFile, OneLongLineIsRefused) {
  EXPECT_FALSE(load("Corvane 0.997\r\n" + std::string(16u << 20, 'x')));
  EXPECT_TRUE(only_message().ends_with("it ends inside section 2 (titles)."));
  EXPECT_FALSE(load("Corvane -0." + std::string(16u << 20, '1')));
  EXPECT_TRUE(only_message().starts_with("Sorry"));
}

TEST_F(HostileFile, MillionsOfRowsOrOfFieldsAreRefusedBeforeTheyTakeTheMemory) {
  const std::size_t most = 8u << 20;
  const std::string buttons = "Corvane 0.997\r\n***\r\n***\r\n***\r\n***\r\n***\r\n***\r\nmenu01:";
  for (const std::string& text :
       {"Corvane 0.997\n" + std::string(most, '\n'), "Corvane 0.997\n" + std::string(most, '/'),
        buttons + std::string(most, '|')}) {
    EXPECT_FALSE(load(text));
    EXPECT_TRUE(only_message().ends_with(" is beyond the 200000 fields that a project may have."))
        << only_message();
  }
}

TEST_F(HostileFile, MillionsOfTimesOrOfSettingsAreRefusedBeforeTheyTakeTheMemory) {
  for (const std::string& text :
       {"Corvane 0.997\n***\n***\n" + std::string(8u << 20, ','),
        "Corvane 0.997\n***\n***\n***\n***\n***\n***\n" + std::string(8u << 20, '\t')}) {
    EXPECT_FALSE(load(text));
    EXPECT_TRUE(only_message().ends_with(
        " is beyond the 1000000 times and settings that a project may have."))
        << only_message();
  }
}

TEST_F(HostileFile, AFileThatNamesAlmostAsManyFilesAsThereMayBeIsAnswered) {
  std::string names;  // all of them missing
  for (int i = 0; i < 190000; ++i)
    names += "/" + std::to_string(i);
  project many;
  add_title(many, "C:\\a.m2v" + names);
  EXPECT_FALSE(load(project_text(many)));
  EXPECT_EQ(user.messages.size(), 101u);
}

TEST_F(HostileFile, ManySubtitlesOfOneLongSettingsRowAreLoaded) {
  project many;
  add_title(many, "C:\\a.m2v");
  many.List11[0].clear();  // no stream, so none is missing
  many.subtitledata[0] = "a";
  for (int i = 0; i < 150000; ++i)
    many.subtitledata[0] += "/a";
  many.subtitleoptions[0] = std::string(4u << 20, 'x') + "|";
  EXPECT_TRUE(load(project_text(many)));
  EXPECT_EQ(p.subtitledata, many.subtitledata);
}

TEST_F(HostileFile, LongCommandsAndTimesAreLoaded) {
  std::string words;
  for (int i = 0; i < 4'000'000; ++i)
    words += "a ";
  for (const std::string& text : {std::string(8u << 20, ' '), words, std::string(8u << 20, ':')}) {
    project one;
    add_title(one, "C:\\a.m2v");
    one.List11[0].clear();
    one.firstplay = text;
    one.postinfo = {text};
    one.chapters = {text};
    one.languagetags = {"Audio tag:\t" + text};
    EXPECT_TRUE(load(project_text(one)));
    EXPECT_TRUE(p.firstplay == one.firstplay);
  }
}

TEST_F(HostileFile, NoSectionEndsAreRefused) {
  EXPECT_FALSE(load(replace_all(sample_project_text("C:\\dvd"), "***", "**")));
}

TEST_F(HostileFile, ThousandsOfMenusAreRefused) {
  project many;
  many.menulist.assign(20000, "C:\\m.m2v/");
  many.moremenuoptions.assign(20000, "0\t00:00:00.0\t00:00:00.0\t1");
  many.menubuttons.assign(20000, "a");
  EXPECT_FALSE(load(project_text(many)));
  EXPECT_TRUE(only_message().ends_with("it has 20000 menus, and a project holds at most 99."));
}

TEST_F(HostileFile, ThousandsOfMissingTitlesDoNotKeepTheUserClicking) {
  project many;
  for (int i = 0; i < 20000; ++i)
    add_title(many, "C:\\nowhere\\a.vob");
  EXPECT_FALSE(load(project_text(many)));
  EXPECT_EQ(user.messages.size(), 101u);
}

TEST_F(HostileFile, CommandsAndQuotesInRowsAreOnlyText) {
  project odd;
  odd.delay = {"0 & calc", "$(reboot)"};
  odd.firstplay = "\"; rm -rf ~ |";
  EXPECT_TRUE(load(project_text(odd)));
  EXPECT_EQ(p.delay, odd.delay);
  EXPECT_EQ(p.firstplay, odd.firstplay);

  add_title(odd, "\\\"a\" & calc.m2v/\\`b`.ac3");
  odd.delay.resize(1);
  EXPECT_FALSE(load(project_text(odd)));
  EXPECT_EQ(user.messages.size(), 2u);  // two files that are missing
}

TEST_F(HostileFile, LineBreaksCannotStandInPaths) {
  project odd;
  add_title(odd, "C:\\a\rb.vob");
  EXPECT_FALSE(load(project_text(odd)));
  EXPECT_TRUE(only_message().ends_with("line 2 contains a control character."));
}

TEST_F(HostileFile, CutOffAnywhereItLoadsOrIsRefused) {
  const std::string text = sample_project_text("C:\\dvd");
  for (std::size_t length = 0; length < text.size(); ++length)
    load(std::string_view(text).substr(0, length));
}

TEST_F(HostileFile, OneByteChangedAnywhereItLoadsOrIsRefused) {
  const std::string text = sample_project_text("C:\\dvd");
  std::mt19937 numbers(2);
  for (std::size_t at = 0; at < text.size(); ++at) {
    std::string changed = text;
    changed[at] = static_cast<char>(numbers() & 0xff);
    load(changed);
  }
}

TEST_F(HostileFile, OneLineMissingOrDoubledItLoadsOrIsRefused) {
  const auto lines = split(sample_project_text("C:\\dvd"), "\r\n");
  for (std::size_t i = 0; i < lines.size(); ++i) {
    auto fewer = lines;
    fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(i));
    load(join(fewer, "\r\n"));
    auto more = lines;
    more.insert(more.begin() + static_cast<std::ptrdiff_t>(i), lines[i]);
    load(join(more, "\r\n"));
  }
}

}  // namespace
}  // namespace corvane
