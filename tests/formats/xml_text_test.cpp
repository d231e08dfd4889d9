#include "formats/xml_text.h"

#include "formats/xml_reader.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

/// What the reader gets of it.
std::string read_back(const std::string& text) {
  const xml_reading read = read_xml("<a b=\"" + xml_attribute_text(text) + "\"/>");
  if (read.fault)
    return "fault: " + read.fault->what;
  return *attribute_of(read.elements.front(), "b");
}

TEST(XmlText, AttributeComesBackAsItWas) {
  for (const std::string text : {"", "plain", "\"'<>&amp;]]>", " a  b ", "a\tb\nc\rd\r\ne",
                                 "\xC3\xBC\xE5\xAD\x97\xF0\x9F\x8E\xAC"})
    EXPECT_EQ(read_back(text), text);
}

TEST(XmlText, EachByteOfWhatXmlDoesNotAllowIsAQuestionMark) {
  EXPECT_EQ(read_back(std::string("a\0b", 3)), "a?b");
  EXPECT_EQ(read_back("\x1B[31m\x7F"), "?[31m\x7F");
  EXPECT_EQ(read_back("\xFF\xFE\xC3"), "???");
  EXPECT_EQ(read_back("\xEF\xBF\xBE<"),
            "??"
            "?<");
  EXPECT_EQ(read_back("\xED\xA0\x80"), "???");
}

}  // namespace
}  // namespace corvane
