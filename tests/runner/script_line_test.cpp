#include "runner/script_line.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace corvane {
namespace {

using words = std::vector<std::string>;

script_command parsed(std::string_view line) {
  const result<script_command> command = parse_script_line(line);
  EXPECT_TRUE(command) << line << ": " << command.error;
  return command ? *command : script_command();
}

std::string refusal(std::string_view line) {
  const result<script_command> command = parse_script_line(line);
  EXPECT_FALSE(command) << line;
  return command.error;
}

TEST(ScriptLine, EmptyLinesAndEchoOffDoNothing) {
  for (const char* line : {"", " ", "\t", "\r", "@echo off", "@echo off\r", "@echo  off "})
    EXPECT_EQ(parsed(line).verb, script_verb::nothing) << line;
}

TEST(ScriptLine, EchoTakesEverythingAsItStands) {
  EXPECT_EQ(parsed("echo *process complete\r").text, "*process complete");
  EXPECT_EQ(parsed("echo  two  blanks ").text, " two  blanks ");
  EXPECT_EQ(parsed("echo a & b | c > d < e %PATH% $HOME `x` \"open ^ !").text,
            "a & b | c > d < e %PATH% $HOME `x` \"open ^ !");
  EXPECT_EQ(parsed("echo \xFF\xFE").text, "\xFF\xFE");
}

TEST(ScriptLine, BuiltInCommandsTakeTheirNames) {
  const script_command made = parsed("mkdir \"/my dvd/a & b\"");
  EXPECT_EQ(made.verb, script_verb::make_folder);
  EXPECT_EQ(made.operands, words{"/my dvd/a & b"});
  const script_command erased = parsed("erase \"/my dvd\"/*.mpg");
  EXPECT_EQ(erased.verb, script_verb::erase);
  EXPECT_EQ(erased.operands, words{"/my dvd/*.mpg"});
  const script_command renamed = parsed("rename \"C:\\my dvd\\title1.mpg\" presub.mpg\r");
  EXPECT_EQ(renamed.verb, script_verb::rename);
  EXPECT_EQ(renamed.operands, (words{"C:\\my dvd\\title1.mpg", "presub.mpg"}));
}

TEST(ScriptLine, ProgramTakesItsArgumentsByBlanks) {
  const script_command c = parsed(
      "\"/app/bin/mplex.exe\" -f 8 -O 0ms -o \"/out/title1.mpg\"  \"/a b.m2v\"  \"/c.ac3\" ");
  EXPECT_EQ(c.verb, script_verb::run);
  ASSERT_EQ(c.pipeline.size(), 1u);
  EXPECT_EQ(c.pipeline[0], (words{"/app/bin/mplex.exe", "-f", "8", "-O", "0ms", "-o",
                                  "/out/title1.mpg", "/a b.m2v", "/c.ac3"}));
  EXPECT_EQ(c.input + c.output, "");
}

TEST(ScriptLine, NothingIsExpandedOrEscaped) {
  EXPECT_EQ(parsed("x.exe & % $HOME `id` ! ^ # ' \\ ; ( ) ~ *").pipeline[0],
            (words{"x.exe", "&", "%", "$HOME", "`id`", "!", "^", "#", "'", "\\", ";", "(", ")", "~",
                   "*"}));
  EXPECT_EQ(parsed("x.exe \"C:\\dvd\\\" \"a\"").pipeline[0], (words{"x.exe", "C:\\dvd\\", "a"}));
}

TEST(ScriptLine, WordsMayBeQuotedInPartAndEmpty) {
  EXPECT_EQ(parsed("x.exe a\"b c\"d \"\" e\"\"f").pipeline[0], (words{"x.exe", "ab cd", "", "ef"}));
}

TEST(ScriptLine, DrawingOfAButtonIsOneArgument) {
  EXPECT_EQ(parsed("\"/b/gm.exe\" mogrify +antialias -fill #010101 -draw \"roundrectangle  1, 2  "
                   "3, 4, 2,3\" \"/a/h.png\"")
                .pipeline[0],
            (words{"/b/gm.exe", "mogrify", "+antialias", "-fill", "#010101", "-draw",
                   "roundrectangle  1, 2  3, 4, 2,3", "/a/h.png"}));
}

TEST(ScriptLine, RedirectionsNeedNoBlank) {
  for (const char* line :
       {"s.exe \"m.xml\" <\"in.mpg\" > \"out.mpg\"", "s.exe \"m.xml\"<\"in.mpg\">\"out.mpg\"",
        "s.exe >out.mpg m.xml < in.mpg"}) {
    const script_command c = parsed(line);
    ASSERT_EQ(c.pipeline.size(), 1u) << line;
    EXPECT_EQ(c.pipeline[0], (words{"s.exe", "m.xml"})) << line;
    EXPECT_EQ(c.input, "in.mpg") << line;
    EXPECT_EQ(c.output, "out.mpg") << line;
  }
}

TEST(ScriptLine, PipelineHoldsItsProgramsInOrder) {
  const script_command c =
      parsed("\"a.exe\" -n 1 -j \"x | y.jpg\" | \"b.exe\" -o \"o.m2v\"|c.exe>f");
  ASSERT_EQ(c.pipeline.size(), 3u);
  EXPECT_EQ(c.pipeline[0], (words{"a.exe", "-n", "1", "-j", "x | y.jpg"}));
  EXPECT_EQ(c.pipeline[1], (words{"b.exe", "-o", "o.m2v"}));
  EXPECT_EQ(c.pipeline[2], words{"c.exe"});
  EXPECT_EQ(c.output, "f");
}

TEST(ScriptLine, HostileLinesAreRefusedWithAReason) {
  const std::vector<std::pair<std::string, std::string>> table = {
      {"rm -rf /", "it is neither a command nor a program of the tools' folder"},
      {"echo", "it is neither a command nor a program of the tools' folder"},
      {"ECHO hello", "it is neither a command nor a program of the tools' folder"},
      {"@echo on", "it is neither a command nor a program of the tools' folder"},
      {"/bin/sh -c id", "it is neither a command nor a program of the tools' folder"},
      {".exe", "it is neither a command nor a program of the tools' folder"},
      {"x.exe | sh", "it is neither a command nor a program of the tools' folder"},
      {"x.exe |", "it is neither a command nor a program of the tools' folder"},
      {"| x.exe", "it is neither a command nor a program of the tools' folder"},
      {"x.exe || y.exe", "it is neither a command nor a program of the tools' folder"},
      {"< in", "it is neither a command nor a program of the tools' folder"},
      {"\"x.exe", "a double quote is not closed"},
      {"mkdir \"", "a double quote is not closed"},
      {"mkdir", "the number of names is wrong"},
      {"mkdir a b", "the number of names is wrong"},
      {"erase a b", "the number of names is wrong"},
      {"rename a", "the number of names is wrong"},
      {"rename a b c", "the number of names is wrong"},
      {"mkdir \"\"", "a name is empty"},
      {"mkdir a > b", "a redirection does not belong there"},
      {"erase a | x.exe", "a redirection does not belong there"},
      {"x.exe <", "a file name is missing after < or >"},
      {"x.exe > | y.exe", "a file name is missing after < or >"},
      {"x.exe >> y", "a file name is missing after < or >"},
      {"x.exe > \"\"", "a file name is missing after < or >"},
      {"x.exe < a < b", "a redirection stands twice"},
      {"x.exe > a > b", "a redirection stands twice"},
      {"x.exe > a | y.exe", "only the last program can write a file"},
      {"x.exe | y.exe < a", "only the first program can read a file"},
      {"x.exe \xFF", "it is not UTF-8 text"},
      {std::string("mkdir a\0b", 9), "it holds a NUL character"},
      {std::string("echo a\0b", 8), "it holds a NUL character"},
  };
  for (const auto& [line, reason] : table)
    EXPECT_EQ(refusal(line), reason) << line;
}

TEST(ScriptLine, LengthDoesNotMatter) {
  const std::string many(1u << 20, 'a');
  EXPECT_EQ(parsed("x.exe \"" + many + "\"").pipeline[0][1].size(), many.size());
  std::string pipes = "x.exe";
  for (int i = 0; i < 20000; ++i)
    pipes += "|x.exe";
  EXPECT_EQ(parsed(pipes).pipeline.size(), 20001u);
}

TEST(Wildcard, StarIsAnyCharactersAndQuestionMarkOne) {
  const std::vector<std::tuple<std::string, std::string, bool>> table = {
      {"*.mpg", "title1.mpg", true},
      {"*.mpg", ".mpg", true},
      {"*.mpg", "title1.mp", false},
      {"*.mpg", "mpg", false},
      {"title?.mpg", "title1.mpg", true},
      {"title?.mpg", "title12.mpg", false},
      {"*", "", true},
      {"", "", true},
      {"", "a", false},
      {"?", "", false},
      {"?", "\xC3\xA4", true},
      {"a*b*c", "a1b2bc", true},
      {"a*b*c", "a1c2b", false},
      {"**a", "bba", true},
      {"[ab]", "a", false},
      {"*.*", "name", false},
  };
  for (const auto& [pattern, name, expected] : table)
    EXPECT_EQ(matches_wildcard(pattern, name), expected) << pattern << ' ' << name;
}

TEST(Wildcard, ManyStarsTakeNoLongTime) {
  std::string pattern;
  for (int i = 0; i < 100; ++i)
    pattern += "*a";
  EXPECT_FALSE(matches_wildcard(pattern + "b", std::string(10000, 'a')));
}

}  // namespace
}  // namespace corvane
