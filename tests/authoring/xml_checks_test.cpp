#include "authoring/checks.h"
#include "authoring/navigation_xml.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::testing_support {
namespace {

using ::testing::HasSubstr;

/// Hand-edited XML with `more` in its titleset.
std::string edited(const std::string& more,
                   const std::string& first = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>",
                   const std::string& second = "<dvdauthor dest=\"/home/anna/dvd\">") {
  return first + "\r\n" + second + "\r\n<vmgm>  \r\n</vmgm><titleset>" + more +
         "</titleset></dvdauthor>\r\n";
}

std::string refusal_of(const std::string& xml) {
  return why_not_safe_xml(xml).value_or("(safe)");
}

TEST(XmlChecks, GeneratedTextsAreSafe) {
  for (const path_style style : {path_style::windows, path_style::posix})
    for (const sample& s : all_samples(style))
      EXPECT_EQ(refusal_of(config_xml(s.p, s.where)), "(safe)") << s.name;
}

TEST(XmlChecks, EditsOfOneselfAreSafe) {
  for (const char* more :
       {"", "<vob file='/a/b.mpg' chapters = \"0\" />", "<pgc\n  entry=\"root\"\tpause='0'>x</pgc>",
        "<button name=\"a\"> if (g1 eq 1 || g2 gt 3) jump title 1; </button>",
        "<!-- <vob file=\"x|\"> & anything -->", "<![CDATA[ <vob file=\"x|\"> ]]>",
        "<post>{ g1 = 1 | 2; call menu; }</post>", "<audio lang=\"en\"/>", "<?note x|?>",
        "<vob file=\"/a|b.mpg\"/>", "<vob file=\"/a &amp; b&#46;mpg\"/>"})
    EXPECT_EQ(refusal_of(edited(more)), "(safe)") << more;
}

TEST(XmlChecks, FileNamesThatWouldRunAsCommands) {
  for (const char* more :
       {"<vob file=\"touch /tmp/x|\"/>", "<vob file='touch /tmp/x|'/>",
        "<vob file=\"touch x&#124;\"/>", "<vob file=\"touch x&#x7c;\"/>",
        "<vob file=\"touch x&#x7C;\"/>", "<vob file=\"touch x&#0000124;\"/>",
        "<vob file=\"touch x&#x000000007c;\"/>", "<vob file = \n\"touch x|\"/>",
        "<vob file=\"touch x| \"/>", "<vob file=\"touch x|&#32;\"/>", "<vob file=\"|\"/>",
        "<VOB FILE=\"touch x|\"/>", "<pgc palette=\"touch x|\"/>", "<v:vob v:file=\"x|\"/>",
        "<vob pause=\"0\" file=\"x|\"/>", "<!-- --><vob file=\"x|\"/>",
        "<!--> <vob file=\"a\"/> --><vob file=\"x|\"/>",
        "<![CDATA[<!--]]><vob file=\"x|\"/><!-- -->", "<?note <!-- ?><vob file=\"x|\"/><!-- -->"})
    EXPECT_THAT(refusal_of(edited(more)), HasSubstr("run it as a command")) << more;
}

// dvdauthor prints file names as they are.
TEST(XmlChecks, ControlCharactersThatCouldEndTheRunBeforeItsTime) {
  for (const char* more :
       {"<vob file=\"/a&#10;*process complete&#10;\"/>", "<vob file='/a&#xA;*process complete'/>",
        "<vob file=\"/a&#13;b\"/>", "<vob file=\"/a&#9;b\"/>", "<vob file=\"/a&#x7f;b\"/>",
        "<pgc pause=\"&#10;\"/>", "<v:vob v:file=\"&#0010;\"/>", "<vob file=\"&#10;x|\"/>"})
    EXPECT_THAT(refusal_of(edited(more)), HasSubstr("contains a control character")) << more;
  EXPECT_EQ(refusal_of(edited("\n<vob file=\"/a&#10;*process complete&#10;\"/>")),
            "The hand-edited XML cannot be authored: in line 5, the attribute \"file\" of \"vob\", "
            "\"/a?*process complete?\", contains a control character, which no name can have.  "
            "Please edit the XML again, or discard the edit by changing the project.");
  for (const char* more :
       {"<vob\n file=\"/a\tb\"/>", "<vob file=\"/a\nb\"/>", "<post>jump title 1;&#10;exit;</post>",
        "<vob file=\"*process complete\"/>"})
    EXPECT_EQ(refusal_of(edited(more)), "(safe)") << more;
}

TEST(XmlChecks, DeclarationsThatCouldHideThem) {
  for (const char* first : {"<!DOCTYPE dvdauthor [<!ENTITY x \"touch y|\">]>",
                            "<?xml version=\"1.0\"?><!DOCTYPE d SYSTEM \"http://x/y\">",
                            "<!ENTITY x \"|\">", "<!ATTLIST vob file CDATA \"x|\">"})
    EXPECT_THAT(refusal_of(edited("", first)), HasSubstr("declarations such as \"<!DOCTYPE\""))
        << first;
  EXPECT_THAT(refusal_of(edited("<vob file=\"&x;\"/>")), HasSubstr("entity"));
  for (const char* more :
       {"<vob file=\"x&#124\"/>", "<vob file=\"x&#xd800;\"/>", "<vob file=\"x&#99999999999;\"/>"})
    EXPECT_THAT(refusal_of(edited(more)), HasSubstr("reference is not that of a character"))
        << more;
}

TEST(XmlChecks, EncodingsThatCouldHideThem) {
  for (const char* first :
       {"<?xml version=\"1.0\" encoding=\"UTF-7\"?>", "<?xml version=\"1.0\" encoding='utf-16'?>",
        "<?xml version=\"1.0\" encoding=\"UTF-8-not\"?>"})
    EXPECT_THAT(refusal_of(edited("", first)), HasSubstr("encoding is not UTF-8")) << first;
  EXPECT_THAT(refusal_of(edited("", "<?xml version=\"1.0\" encoding = EBCDIC ?>")),
              HasSubstr("declaration is not well formed"));
  EXPECT_THAT(refusal_of(edited("", "<?xml version=\"encoding='utf-8'\" encoding=\"UTF-7\"?>")),
              HasSubstr("does not name version 1.0"));
  for (const char* first :
       {"<?xml version='1.0' encoding='utf-8'?>", "<?xml version='1.0'?>",
        "<?xml version='1.0'?><?xml-stylesheet href=\"a\" encoding=\"utf-16\"?>"})
    EXPECT_EQ(refusal_of(edited("", first)), "(safe)") << first;
  for (const std::string& more : {std::string("\xff"), std::string(1, '\0'), std::string("\x1b")})
    EXPECT_THAT(refusal_of(edited(more)), HasSubstr("character or byte that XML does not allow"));
}

TEST(XmlChecks, WhatIsNotWellFormedIsRefusedWithItsLine) {
  for (const char* more :
       {"<vob file=\"x", "<vob file=x|>", "<vob file>", "<vob file=\"a\"file=\"b\"/>", "<",
        "< vob>", "<!-- open", "<![CDATA[ open", "<? open", "<vob \"x\">", "<vob file=\"a<b\"/>",
        "<vob / file=\"x|\">", "<vob =\"x\">", "<=\"\">", "<a><b></a></b>", "&foo;",
        "<vob file=\"a\" file=\"b\"/>", "a & b", "</pgc>"})
    EXPECT_THAT(refusal_of(edited(more)),
                HasSubstr("The hand-edited XML cannot be authored: in line 4, "))
        << more;
  EXPECT_EQ(refusal_of(edited("<vob>")),
            "The hand-edited XML cannot be authored: in line 4, the end tag is that of "
            "\"titleset\", but \"vob\", opened in line 4, is still open.  Please edit the XML "
            "again, or discard the edit by changing the project.");
}

TEST(XmlChecks, ScriptAndDvdauthorMustMeanTheSameFolder) {
  const std::string xml = "<?xml version=\"1.0\"?>";
  for (const char* second :
       {"<dvdauthor jumppad=\"1\" dest=\"/dvd\">", "<dvdauthor dest='/a' x=\"/b\">", "<dvdauthor>",
        "<dvdauthor dest=\"/d&#118;d\">", "<dvdauthor dest=\"/a&quot;b\">",
        "<dvdauthor dest=\"/a\tb\">", "<!-- x --><dvdauthor dest=\"/dvd\">"})
    EXPECT_THAT(refusal_of(edited("", xml, second)), HasSubstr("second line is not")) << second;
  for (const char* rest : {"<other dest=\"/dvd\"/>", "\r\n<dvdauthor dest=\"/dvd\"/>",
                           "<vmgm>\r\n<dvdauthor dest=\"/dvd\"/></vmgm>"})
    EXPECT_THAT(refusal_of(xml + "\r\n" + rest), HasSubstr("second line is not")) << rest;
  EXPECT_THAT(refusal_of(edited("", xml + "<!--",
                                "<dvdauthor dest=\"/dvd\">-->\r\n"
                                "<dvdauthor dest=\"/home\">")),
              HasSubstr("second line is not"));
  EXPECT_THAT(refusal_of(edited("<dvdauthor dest=\"/home\"/>")), HasSubstr("more than one output"));
  EXPECT_EQ(refusal_of(edited("", xml, "  <dvdauthor dest=\"/a&amp;b\" jumppad=\"1\">")), "(safe)");
  EXPECT_EQ(refusal_of(xml + "\n<dvdauthor dest=\"/a\"/>\n"), "(safe)");
}

}  // namespace
}  // namespace corvane::testing_support
