#include "apps/corvane-author/arguments.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing::HasSubstr;

TEST(AuthorArguments, TwoPathsAreEnough) {
  const auto arguments = read_author_arguments({"a.cvp", "out"});
  ASSERT_TRUE(arguments) << arguments.error;
  EXPECT_EQ(arguments->project, "a.cvp");
  EXPECT_EQ(arguments->output, "out");
  EXPECT_FALSE(arguments->prepare || arguments->replace || arguments->cleanup || arguments->help ||
               arguments->version);
  EXPECT_EQ(arguments->iso, std::nullopt);
}

TEST(AuthorArguments, OptionsStandAnywhere) {
  const auto arguments =
      read_author_arguments({"--prepare", "a.cvp", "--replace", "out", "--cleanup", "--no-iso"});
  ASSERT_TRUE(arguments) << arguments.error;
  EXPECT_TRUE(arguments->prepare && arguments->replace && arguments->cleanup);
  EXPECT_EQ(arguments->iso, false);
  EXPECT_EQ(arguments->project, "a.cvp");
  EXPECT_EQ(arguments->output, "out");
  EXPECT_EQ(read_author_arguments({"--iso", "--iso", "a", "b"})->iso, true);
}

TEST(AuthorArguments, TwoDashesEndTheOptions) {
  const auto arguments = read_author_arguments({"--iso", "--", "--help", "-out"});
  ASSERT_TRUE(arguments) << arguments.error;
  EXPECT_FALSE(arguments->help);
  EXPECT_EQ(arguments->project, "--help");
  EXPECT_EQ(arguments->output, "-out");
}

TEST(AuthorArguments, WhatIsWrongIsNamed) {
  const auto why = [](const std::vector<std::string>& words) {
    return read_author_arguments(words).error;
  };
  EXPECT_EQ(why({}), "PROJECT.cvp is missing");
  EXPECT_EQ(why({"", "out"}), "PROJECT.cvp is missing");
  EXPECT_EQ(why({"a.cvp"}), "OUTPUT-FOLDER is missing");
  EXPECT_EQ(why({"a.cvp", ""}), "OUTPUT-FOLDER is missing");
  EXPECT_EQ(why({"a", "b", "c d"}), "\"c d\" is one path too many");
  EXPECT_EQ(why({"--isos", "a", "b"}), "there is no option \"--isos\"");
  EXPECT_EQ(why({"-", "a", "b"}), "there is no option \"-\"");
  EXPECT_EQ(why({"--iso", "a", "b", "--no-iso"}), "--iso and --no-iso exclude each other");
}

TEST(AuthorArguments, ACheckTakesTheProjectAndPerhapsAFolder) {
  const auto arguments = read_author_arguments({"--check", "a.cvp"});
  ASSERT_TRUE(arguments) << arguments.error;
  EXPECT_TRUE(arguments->check);
  EXPECT_FALSE(arguments->json);
  EXPECT_EQ(arguments->project, "a.cvp");
  EXPECT_EQ(arguments->output, "");
  EXPECT_TRUE(read_author_arguments({"--json", "--check", "a.cvp"})->json);
  EXPECT_EQ(read_author_arguments({"--check", "a.cvp", "out"})->output, "out");
}

TEST(AuthorArguments, ALookAtADiscTakesItAndItsProject) {
  const auto both = read_author_arguments({"--verify", "a.cvp", "disc"});
  ASSERT_TRUE(both) << both.error;
  EXPECT_TRUE(both->verify);
  EXPECT_EQ(both->project, "a.cvp");
  EXPECT_EQ(both->output, "disc");
  const auto alone = read_author_arguments({"--verify", "--json", "disc.iso"});
  ASSERT_TRUE(alone) << alone.error;
  EXPECT_TRUE(alone->json);
  EXPECT_EQ(alone->project, "");
  EXPECT_EQ(alone->output, "disc.iso");
}

TEST(AuthorArguments, ALookAtADiscDoesNotGoWithWhatARunIsTold) {
  const auto why = [](const std::vector<std::string>& words) {
    return read_author_arguments(words).error;
  };
  EXPECT_EQ(why({"--verify"}), "DISC is missing");
  EXPECT_EQ(why({"--verify", "a.cvp", ""}), "DISC is missing");
  EXPECT_EQ(why({"--verify", "", "disc"}), "PROJECT.cvp is missing");
  EXPECT_EQ(why({"--verify", "a", "b", "c"}), "\"c\" is one path too many");
  EXPECT_EQ(why({"--verify", "--check", "a"}), "--check and --verify exclude each other");
  for (const char* const option :
       {"--prepare", "--replace", "--cleanup", "--force", "--skip-look", "--iso"})
    EXPECT_EQ(why({"--verify", option, "a"}), "--verify authors nothing and goes with --json only");
}

TEST(AuthorArguments, ACheckDoesNotGoWithWhatARunIsTold) {
  const auto why = [](const std::vector<std::string>& words) {
    return read_author_arguments(words).error;
  };
  EXPECT_EQ(why({"--check"}), "PROJECT.cvp is missing");
  EXPECT_EQ(why({"--check", "a.cvp", ""}), "OUTPUT-FOLDER is missing");
  EXPECT_EQ(why({"--check", "a.cvp", "out", "b"}), "\"b\" is one path too many");
  EXPECT_EQ(why({"--json", "a.cvp", "out"}), "--json goes with --check and --verify");
  for (const char* option :
       {"--prepare", "--replace", "--cleanup", "--skip-look", "--iso", "--no-iso"})
    EXPECT_EQ(why({"--check", option, "a.cvp"}),
              "--check authors nothing and goes with --json only");
}

TEST(AuthorArguments, AnImportTakesFilesAFolderAndTheProject) {
  const auto arguments =
      read_author_arguments({"--import", "a.mp4", "b.mkv", "--to", "streams", "c.cvp"});
  ASSERT_TRUE(arguments) << arguments.error;
  EXPECT_TRUE(arguments->import);
  EXPECT_EQ(arguments->imported, (std::vector<std::string>{"a.mp4", "b.mkv"}));
  EXPECT_EQ(arguments->to, "streams");
  EXPECT_EQ(arguments->project, "c.cvp");
  EXPECT_EQ(arguments->choices.quality, import_quality::fill_disc);
  EXPECT_EQ(arguments->choices.disc_bytes, single_layer_bytes);
}

TEST(AuthorArguments, AnImportHasOptionsOfItsOwn) {
  const auto read = [](std::vector<std::string> options) {
    options.insert(options.end(), {"--import", "a.mp4", "--to", "s", "c.cvp"});
    return *read_author_arguments(options);
  };
  EXPECT_EQ(read({"--rate", "4500"}).choices.mean_rate, 4'500'000);
  EXPECT_EQ(read({"--rate", "4500"}).choices.quality, import_quality::mean_rate);
  EXPECT_EQ(read({"--constant", "6"}).choices.quantizer, 6);
  EXPECT_EQ(read({"--constant", "6"}).choices.quality, import_quality::constant);
  EXPECT_EQ(read({"--dvd9"}).choices.disc_bytes, double_layer_bytes);
  EXPECT_EQ(read({"--crop"}).choices.fit, picture_fit::cropped);
  EXPECT_FALSE(read({"--no-silence"}).choices.silence);
  EXPECT_TRUE(read({"--all-sounds"}).choices.more_sounds);
  EXPECT_EQ(read({"--mpeg-audio"}).choices.new_sound, disc_sound::mp2);
  EXPECT_TRUE(read({"--even-loudness"}).choices.even_loudness);
  EXPECT_TRUE(read({"--deinterlace"}).choices.deinterlace);
  EXPECT_TRUE(read({"--film-by-speed"}).choices.film_by_speed);
  EXPECT_TRUE(read({"--pal"}).pal);
}

TEST(AuthorArguments, WhatIsWrongWithAnImportIsNamed) {
  const auto why = [](const std::vector<std::string>& words) {
    return read_author_arguments(words).error;
  };
  EXPECT_EQ(why({"--import"}), "FILE is missing");
  EXPECT_EQ(why({"--import", "a.mp4", "--to", "s"}), "PROJECT.cvp is missing");
  EXPECT_EQ(why({"--import", "a.mp4", "c.cvp"}), "--to FOLDER is missing");
  EXPECT_EQ(why({"--import", "a.mp4", "c.cvp", "--to"}), "--to wants a value");
  EXPECT_EQ(why({"--import", "a.mp4", "b.mp4", "--to", "s"}),
            "\"b.mp4\" is no project: the last path is PROJECT.cvp");
  EXPECT_EQ(why({"--import", "", "c.cvp", "--to", "s"}), "a path is empty");
  EXPECT_EQ(why({"--import", "a", "c.cvp", "--to", "s", "--rate", "10000"}),
            "--rate wants a whole number from 700 to 8500");
  EXPECT_EQ(why({"--import", "a", "c.cvp", "--to", "s", "--constant", "two"}),
            "--constant wants a whole number from 2 to 31");
  EXPECT_EQ(why({"--to", "s", "c.cvp", "out"}), "--to goes with --import");
  EXPECT_EQ(why({"--crop", "c.cvp", "out"}), "--crop goes with --import");
  EXPECT_EQ(why({"--import", "--check", "a", "c.cvp"}),
            "--import goes with neither --check nor --verify");
  for (const char* option : {"--prepare", "--replace", "--cleanup", "--force", "--iso"})
    EXPECT_EQ(why({"--import", option, "a", "c.cvp", "--to", "s"}),
              "--import authors nothing and has options of its own");
}

TEST(AuthorArguments, MenusTakeADesignAndTheProject) {
  const auto arguments = read_author_arguments(
      {"--make-menus", "amber", "--to", "menus", "--film", "a.mp4", "--play-all", "c.cvp"});
  ASSERT_TRUE(arguments) << arguments.error;
  EXPECT_EQ(arguments->design, "amber");
  EXPECT_EQ(arguments->to, "menus");
  EXPECT_EQ(arguments->film, "a.mp4");
  EXPECT_TRUE(arguments->play_all);
  EXPECT_EQ(arguments->project, "c.cvp");
  EXPECT_EQ(read_author_arguments({"c.cvp", "--make-menus", "x"})->design, "x");
}

TEST(AuthorArguments, WhatIsWrongWithMenusIsNamed) {
  const auto why = [](const std::vector<std::string>& words) {
    return read_author_arguments(words).error;
  };
  EXPECT_EQ(why({"--make-menus"}), "--make-menus wants a value");
  EXPECT_EQ(why({"--make-menus", "", "c.cvp"}), "--make-menus wants a value");
  EXPECT_EQ(why({"--make-menus", "amber"}), "PROJECT.cvp is missing");
  EXPECT_EQ(why({"--make-menus", "amber", "c.cvp", "out"}), "\"out\" is one path too many");
  EXPECT_EQ(why({"--make-menus", "amber", "--rate", "5000", "c.cvp"}), "--rate goes with --import");
  EXPECT_EQ(why({"--film", "a.mp4", "c.cvp", "out"}), "--film goes with --make-menus");
  EXPECT_EQ(why({"--play-all", "c.cvp", "out"}), "--play-all goes with --make-menus");
  EXPECT_EQ(why({"--make-menus", "amber", "--json", "c.cvp"}),
            "--json goes with --check and --verify");
  for (const char* option : {"--import", "--check", "--verify"})
    EXPECT_EQ(why({"--make-menus", "amber", option, "c.cvp"}),
              "--make-menus goes with none of --import, --check and --verify");
  for (const char* option : {"--prepare", "--replace", "--cleanup", "--force", "--iso"})
    EXPECT_EQ(why({"--make-menus", "amber", option, "c.cvp"}),
              "--make-menus authors nothing and has options of its own");
}

TEST(AuthorArguments, HelpAndVersionComeFirst) {
  EXPECT_TRUE(read_author_arguments({"--nonsense", "--help"})->help);
  EXPECT_TRUE(read_author_arguments({"--version"})->version);
}

TEST(AuthorArguments, HelpNamesEveryOptionAndFitsATerminal) {
  const std::string help = author_help();
  for (const char* const option :
       {"--prepare",     "--iso",           "--no-iso",     "--replace",    "--cleanup",
        "--import",      "--to FOLDER",     "--dvd9",       "--rate",       "--constant",
        "--crop",        "--no-silence",    "--all-sounds", "--mpeg-audio", "--even-loudness",
        "--deinterlace", "--film-by-speed", "--pal",        "--help",       "--version",
        "PROJECT.cvp",   "OUTPUT-FOLDER"})
    EXPECT_THAT(help, HasSubstr(option));
  std::size_t column = 0;
  for (const char c : help) {
    column = c == '\n' ? 0 : column + 1;
    EXPECT_LE(column, 80u);
  }
  EXPECT_EQ(help.back(), '\n');
}

TEST(AuthorArguments, TheVersionIsTheProgramsOwn) {
  EXPECT_EQ(author_version(), "corvane-author (Corvane 0.997 - 1/2/2005)\n");
}

}  // namespace
}  // namespace corvane
