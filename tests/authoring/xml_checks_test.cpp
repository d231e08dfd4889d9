#include "authoring/checks.h"
#include "authoring/navigation_xml.h"
#include "authoring/sample_projects.h"
#include "formats/xml_tags.h"

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
        "<VOB FILE=\"touch x|\"/>", "<pgc palette=\"touch x|\">", "<v:vob v:file=\"x|\"/>",
        "<vob pause=\"0\" file=\"x|\"/>", "<!-- --><vob file=\"x|\"/>",
        "<!--> <vob file=\"a\"/> --><vob file=\"x|\"/>",
        "<![CDATA[<!--]]><vob file=\"x|\"/><!-- -->", "<?note <!-- ?><vob file=\"x|\"/><!-- -->"})
    EXPECT_THAT(refusal_of(edited(more)), HasSubstr("run it as a command")) << more;
}

TEST(XmlChecks, DeclarationsThatCouldHideThem) {
  for (const char* first : {"<!DOCTYPE dvdauthor [<!ENTITY x \"touch y|\">]>",
                            "<?xml version=\"1.0\"?><!DOCTYPE d SYSTEM \"http://x/y\">",
                            "<!ENTITY x \"|\">", "<!ATTLIST vob file CDATA \"x|\">"})
    EXPECT_THAT(refusal_of(edited("", first)), HasSubstr("has a declaration")) << first;
  EXPECT_THAT(refusal_of(edited("<vob file=\"&x;\"/>")), HasSubstr("entity"));
  EXPECT_THAT(refusal_of(edited("<vob file=\"x&#124\"/>")), HasSubstr("entity"));
  EXPECT_THAT(refusal_of(edited("<vob file=\"x&#xd800;\"/>")), HasSubstr("entity"));
  EXPECT_THAT(refusal_of(edited("<vob file=\"x&#99999999999;\"/>")), HasSubstr("entity"));
}

TEST(XmlChecks, EncodingsThatCouldHideThem) {
  for (const char* first :
       {"<?xml version=\"1.0\" encoding=\"UTF-7\"?>", "<?xml version=\"1.0\" encoding='utf-16'?>",
        "<?xml version=\"1.0\" encoding=\"UTF-8-not\"?>",
        "<?xml version=\"1.0\" encoding = EBCDIC ?>",
        "<?xml version=\"encoding='utf-8'\" encoding=\"UTF-7\"?>"})
    EXPECT_THAT(refusal_of(edited("", first)), HasSubstr("encoding is not UTF-8")) << first;
  EXPECT_EQ(refusal_of(edited("", "<?xml version='1.0' encoding='utf-8'?>")), "(safe)");
  EXPECT_EQ(refusal_of(edited("", "<?xml version='1.0'?>")), "(safe)");
  EXPECT_THAT(refusal_of(edited("\xff")), HasSubstr("not UTF-8"));
  EXPECT_THAT(refusal_of(edited(std::string(1, '\0'))), HasSubstr("control character"));
  EXPECT_THAT(refusal_of(edited("\x1b")), HasSubstr("control character"));
}

TEST(XmlChecks, WhatIsNotWellFormedIsRefusedWithItsLine) {
  for (const char* more :
       {"<vob file=\"x", "<vob file=x|>", "<vob file>", "<vob file=\"a\"file=\"b\"/>", "<",
        "< vob>", "<!-- open", "<![CDATA[ open", "<? open", "<vob \"x\">", "<vob file=\"a<b\"/>",
        "<vob / file=\"x|\">", "<vob =\"x\">", "<=\"\">"})
    EXPECT_THAT(refusal_of(edited(more)), HasSubstr(" in line 4")) << more;
}

TEST(XmlChecks, ScriptAndDvdauthorMustMeanTheSameFolder) {
  const std::string xml = "<?xml version=\"1.0\"?>";
  for (const char* second :
       {"<dvdauthor jumppad=\"1\" dest=\"/dvd\">", "<dvdauthor dest='/a' x=\"/b\">", "<dvdauthor>",
        "<other dest=\"/dvd\">", "<dvdauthor dest=\"/d&#118;d\">", "<dvdauthor dest=\"/a&quot;b\">",
        "", "<!-- x --><dvdauthor dest=\"/dvd\">", "<vmgm/><dvdauthor dest=\"/dvd\">"})
    EXPECT_THAT(refusal_of(edited("", xml, second)), HasSubstr("second line is not")) << second;
  EXPECT_THAT(refusal_of(edited("", xml + "<!--",
                                "<dvdauthor dest=\"/dvd\">-->\r\n"
                                "<dvdauthor dest=\"/home\">")),
              HasSubstr("second line is not"));
  EXPECT_THAT(refusal_of(edited("<dvdauthor dest=\"/home\"/>")), HasSubstr("more than one output"));
  EXPECT_EQ(refusal_of(edited("", xml, "  <dvdauthor dest=\"/a&amp;b\" jumppad=\"1\">")), "(safe)");
  EXPECT_EQ(refusal_of(xml + "\n<dvdauthor dest=\"/a\">\n"), "(safe)");
}

TEST(XmlTags, GivesNamesValuesAndPlaces) {
  const auto tags =
      xml_start_tags("<a x=\"1 &lt;&gt;&apos;&quot;&amp;\" y='&#228;&#x20ac;'/>\n<b>");
  ASSERT_TRUE(tags) << tags.error;
  ASSERT_EQ(tags->size(), 2u);
  EXPECT_EQ((*tags)[0].name, "a");
  ASSERT_EQ((*tags)[0].attributes.size(), 2u);
  EXPECT_EQ((*tags)[0].attributes[0].value, "1 <>'\"&");
  EXPECT_EQ((*tags)[0].attributes[1].value, "ä€");
  EXPECT_EQ((*tags)[1].name, "b");
  EXPECT_EQ((*tags)[1].at, 56u);
}

TEST(XmlTags, AnyTextCutAnywhereIsReadOrRefused) {
  const std::string text = edited(
      "<!-- c --><![CDATA[ d ]]><?p i?><vob file='/a&amp;b' chapters=\"0\"/></vob><x "
      "y=\"&#x7c;\">");
  for (std::size_t end = 0; end <= text.size(); ++end)
    for (std::size_t begin = 0; begin < end; begin += 7)
      xml_start_tags(text.substr(begin, end - begin));
}

}  // namespace
}  // namespace corvane::testing_support
