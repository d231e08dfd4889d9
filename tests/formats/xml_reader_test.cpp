// What a text of XML holds; what is a fault, and its line and column.
#include "formats/xml_reader.h"

#include "authoring/navigation_xml.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// "LINE:COLUMN what", or "(fine)".
std::string fault_of(std::string_view text) {
  const auto fault = first_xml_fault(text);
  return fault
             ? std::to_string(fault->line) + ":" + std::to_string(fault->column) + " " + fault->what
             : "(fine)";
}

TEST(XmlReader, GeneratedTextsAreWellFormed) {
  for (const path_style style : {path_style::windows, path_style::posix})
    for (const testing_support::sample& s : testing_support::all_samples(style))
      EXPECT_EQ(fault_of(testing_support::config_xml(s.p, s.where)), "(fine)") << s.name;
}

TEST(XmlReader, AcceptsWhatXmlAllows) {
  for (const char* const text :
       {"<a/>", "<a></a>", "<a ></a >", "<a b='1' c = \"2\"\n/>", "<a><b/>text &amp; more<b/></a>",
        "<?xml version=\"1.0\"?><a/>",
        "<?xml version='1.0' encoding='utf-8' standalone='yes' ?>\r\n<a/>",
        "\xEF\xBB\xBF<?xml version=\"1.0\"?><a/>",
        "<!-- one --><?note?><a/><!-- - two --><?x y?>\n", "<a><![CDATA[ <b> & ]] ]]></a>",
        "<a b='&#65;&#x1F4C0;&lt;&gt;&quot;&apos;'/>", "<a>> ]] ></a>", "<_a.b-c:d9/>",
        "<\xC3\xA9t\xC3\xA9 \xC3\xA0='1'/>", "<?xml-stylesheet x?><a/>", "<a b='>'/>",
        "<a\tb='1'\r\nc='\xF0\x9F\x93\x80'/>"})
    EXPECT_EQ(fault_of(text), "(fine)") << text;
}

TEST(XmlReader, NamesTheFirstFaultWithLineAndColumn) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "1:1 there is no element"},
      {"\r\n<!-- -->\r\n", "3:1 there is no element"},
      {"x<a/>", "1:1 there is text before the first element"},
      {"<a/>\r\nx", "2:1 there is text after the end of the document"},
      {"&amp;<a/>", "1:1 there is text before the first element"},
      {"<a/><b/>", "1:5 there is a second element outside of the first"},
      {"<a>\r\n  <b>\r\n</a>",
       "3:1 the end tag is that of \"a\", but \"b\", opened in line 2, is still open"},
      {"<a>\n<b>\n</b>", "3:5 the element \"a\", opened in line 1, is not closed"},
      {"<a/></a>", "1:5 nothing is open that \"a\" could close"},
      {"<a></a b>", "1:4 the end tag is not well formed"},
      {"<a></ a>", "1:4 the end tag is not well formed"},
      {"<a", "1:1 the tag of \"a\" is not closed"},
      {"<a b='1'", "1:1 the tag of \"a\" is not closed"},
      {"<a b='1'c='2'/>", "1:9 the tag of \"a\" is not well formed"},
      {"<a / >", "1:4 there is no attribute where one should be"},
      {"<a b/>", "1:5 the attribute \"b\" has no value"},
      {"<a b=1/>", "1:6 the value of \"b\" does not stand in quotes"},
      {"<a b=\"1/>", "1:6 the value of \"b\" is not closed"},
      {"<a b='<'/>", "1:7 a \"<\" stands in the value of \"b\""},
      {"<a b='1' c='' b='2'/>", "1:15 the attribute \"b\" stands twice"},
      {"<a>R&D</a>", "1:5 a \"&\" begins no reference; a plain one is written \"&amp;\""},
      {"<a b='x & y'/>", "1:9 a \"&\" begins no reference; a plain one is written \"&amp;\""},
      {"<a>&nbsp;</a>", "1:4 the entity \"nbsp\" is not defined"},
      {"<a>&#0;</a>", "1:4 the character reference is not that of a character"},
      {"<a>&#xD800;</a>", "1:4 the character reference is not that of a character"},
      {"<a>&#99999999999;</a>", "1:4 the character reference is not that of a character"},
      {"<a>&#x;</a>", "1:4 the character reference is not that of a character"},
      {"<a>1 < 2</a>", "1:6 a \"<\" begins no tag; a plain one is written \"&lt;\""},
      {"<a>]]></a>", "1:4 \"]]>\" stands in the text"},
      {"<a><!-- x -- y --></a>", "1:11 \"--\" stands in a comment"},
      {"<a><!-- x --->", "1:11 \"--\" stands in a comment"},
      {"<a>\n<!-- x ->", "2:1 the comment is not closed"},
      {"<a><![CDATA[ ]]</a>", "1:4 the CDATA section is not closed"},
      {"<![CDATA[]]><a/>", "1:1 a CDATA section stands outside of the document's element"},
      {"<!DOCTYPE a><a/>", "1:1 declarations such as \"<!DOCTYPE\" cannot be authored"},
      {"<a><?x</a>", "1:7 the processing instruction is not well formed"},
      {"<a><?x </a>", "1:4 the processing instruction is not closed"},
      {"<a><? x?></a>", "1:4 the processing instruction has no name"},
      {"\n<?xml version=\"1.0\"?><a/>",
       "2:1 the XML declaration does not stand at the very beginning"},
      {"<?xml encoding=\"UTF-8\"?><a/>", "1:6 the XML declaration does not name version 1.0"},
      {"<?xml version=\"1.0\" encoding=\"UTF-16\"?><a/>", "1:20 the encoding is not UTF-8"},
      {"<?xml version=\"1.0\" standalone=\"maybe\"?><a/>",
       "1:20 \"standalone\" is neither \"yes\" nor \"no\""},
      {"<?xml version=\"1.0\" x?><a/>", "1:21 the XML declaration is not well formed"},
      {"<a>\r\n\xC3\xA9\xE2\x82\xAC<</a>",
       "2:3 a \"<\" begins no tag; a plain one is written \"&lt;\""},
      {"<a>\r<b>\r</a>",
       "3:1 the end tag is that of \"a\", but \"b\", opened in line 2, is still open"},
      {"\xEF\xBB\xBF<a", "1:1 the tag of \"a\" is not closed"},
      {"<1a/>", "1:1 a \"<\" begins no tag; a plain one is written \"&lt;\""},
      {"<a \xC3\x97='1'/>", "1:4 there is no attribute where one should be"},
  };
  for (const auto& [text, fault] : cases)
    EXPECT_EQ(fault_of(text), fault) << text;
}

TEST(XmlReader, CharactersThatXmlDoesNotAllowAreFaults) {
  const std::string what = "there is a character or byte that XML does not allow";
  EXPECT_EQ(fault_of(std::string("<a>\0</a>", 8)), "1:4 " + what);
  EXPECT_EQ(fault_of("<a>\n \x1B</a>"), "2:2 " + what);
  EXPECT_EQ(fault_of("<a>caf\xE9</a>"), "1:7 " + what);
  EXPECT_EQ(fault_of("<a>\xEF\xBF\xBE</a>"), "1:4 " + what);
  EXPECT_EQ(fault_of("<a>\xED\xA0\x80</a>"), "1:4 " + what);
  EXPECT_EQ(fault_of("<a b='\x01'/><<"), "1:7 " + what);
}

TEST(XmlReader, AnEarlierFaultHidesALaterCharacter) {
  EXPECT_THAT(fault_of("<a><b></a>\x01"), HasSubstr("1:7 the end tag"));
}

// A reader that takes the square of a text's length would not end in the time that a test program
// has.
TEST(XmlReader, HostileTextsTakeNeitherStackNorTime) {
  std::string deep;
  std::string attributes = "<a";
  for (int i = 0; i < 200000; ++i) {
    deep += "<a>";
    attributes += " a" + std::to_string(i) + "=''";
  }
  EXPECT_THAT(fault_of(deep), HasSubstr("1:600001 the element \"a\""));
  EXPECT_EQ(fault_of(attributes + "/>"), "(fine)");
  EXPECT_THAT(fault_of("<a>" + std::string(1000000, '&')), HasSubstr("1:4 "));
  EXPECT_THAT(fault_of("<" + std::string(1000000, 'n')), HasSubstr("1:1 the tag of \"nnn"));
}

TEST(XmlReader, ElementsOfHostileTextsTakeNeitherStackNorTime) {
  std::string deep, ends, lines = "<a>";
  for (int i = 0; i < 50000; ++i) {
    deep += "<a>";
    ends += "</a>";
    lines += "\n<b/>";
  }
  EXPECT_EQ(read_xml(deep + ends).elements.back().parent, 49998u);
  EXPECT_EQ(read_xml(lines + "</a>").elements.back().line, 50001);
}

TEST(XmlReader, LongNamesAreShortenedInWhatIsTold) {
  EXPECT_LT(fault_of("<" + std::string(1000000, 'n')).size(), 120u);
}

/// "NAME(PARENT) at BYTE in line LINE" of each element.
std::vector<std::string> elements_of(std::string_view text) {
  std::vector<std::string> told;
  const xml_reading xml = read_xml(text);
  for (const xml_element& e : xml.elements)
    told.push_back(e.name + "(" +
                   (e.parent == no_xml_parent ? std::string() : xml.elements.at(e.parent).name) +
                   ") at " + std::to_string(e.at) + " in line " + std::to_string(e.line));
  return told;
}

/// The first element's text.
std::string text_of(std::string_view text) {
  const xml_reading xml = read_xml(text);
  return xml.fault ? xml.fault->what : xml.elements.at(0).text;
}

/// The first element's attribute x.
std::string value_of(std::string_view quoted_value) {
  const xml_reading xml = read_xml("<a x=" + std::string(quoted_value) + "/>");
  return xml.fault ? xml.fault->what : *attribute_of(xml.elements.at(0), "x");
}

TEST(XmlReader, ElementsHaveParentsAndPlaces) {
  EXPECT_THAT(elements_of("<?xml version='1.0'?>\r\n<a><b/>\r<c><d></d>\n\n</c\n><v:e/></a>"),
              ElementsAre("a() at 23 in line 2", "b(a) at 26 in line 2", "c(a) at 31 in line 3",
                          "d(c) at 34 in line 3", "v:e(a) at 48 in line 6"));
  EXPECT_THAT(elements_of("\xEF\xBB\xBF<a/>"), ElementsAre("a() at 3 in line 1"));
}

TEST(XmlReader, AFaultLeavesNoElements) {
  EXPECT_THAT(elements_of("<a><b/><c></a>"), IsEmpty());
}

TEST(XmlReader, TextIsThatOfTheElementItself) {
  EXPECT_EQ(text_of("<a> if (g1 &lt; 2) <b>not this</b>x<!-- nor this --><?nor this?>&#228; </a>"),
            " if (g1 < 2) x\xC3\xA4 ");
  EXPECT_EQ(text_of("<a>1<![CDATA[ <b> &amp; ]] ]]>2</a>"), "1 <b> &amp; ]] 2");
  EXPECT_EQ(text_of("<a>1\r\n2\r3\n\t4&#13;\n<![CDATA[\r\n]]></a>"), "1\n2\n3\n\t4\r\n\n");
  EXPECT_EQ(text_of("<a/>"), "");
}

TEST(XmlReader, AttributesAreDecodedAndNormalized) {
  EXPECT_EQ(value_of("\"1 &lt;&gt;&apos;&quot;&amp;\""), "1 <>'\"&");
  EXPECT_EQ(value_of("'&#228;&#x20ac;&#x1F4C0;&#0000124;'"),
            "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x93\x80|");
  EXPECT_EQ(value_of("'&amp;lt;'"), "&lt;");
  EXPECT_EQ(value_of("'1\t2\n3\r4\r\n5'"), "1 2 3 4 5");
  EXPECT_EQ(value_of("'1&#9;2&#10;3&#xD;4&#13;\n5'"), "1\t2\n3\r4\r 5");
  EXPECT_EQ(value_of("'\"'"), "\"");
  EXPECT_EQ(value_of("''"), "");
}

TEST(XmlReader, AttributesAreFoundByName) {
  const xml_reading xml = read_xml("<a x='1' y=\"2\" X=''><b/></a>");
  ASSERT_EQ(xml.elements.size(), 2u);
  EXPECT_EQ(*attribute_of(xml.elements[0], "y"), "2");
  EXPECT_EQ(*attribute_of(xml.elements[0], "X"), "");
  EXPECT_EQ(attribute_of(xml.elements[0], "z"), nullptr);
  EXPECT_EQ(attribute_of(xml.elements[1], "x"), nullptr);
  EXPECT_EQ(xml.elements[0].attributes[2].name, "X");
}

TEST(XmlReader, AnyTextCutAnywhereIsReadOrRefused) {
  const std::string text =
      "<?xml version='1.0'?><r><!-- c --><![CDATA[ d ]]><?p i?><vob file='/a&amp;b' "
      "chapters=\"0\"/><x y=\"&#x7c;\n\">\xC3\xA9\r</x></r>";
  EXPECT_EQ(fault_of(text), "(fine)");
  for (std::size_t end = 0; end <= text.size(); ++end)
    for (std::size_t begin = 0; begin < end; ++begin) {
      const std::string_view cut = std::string_view(text).substr(begin, end - begin);
      const xml_reading xml = read_xml(cut);
      EXPECT_EQ(xml.fault.has_value(), xml.elements.empty()) << cut;
    }
}

}  // namespace
}  // namespace corvane
