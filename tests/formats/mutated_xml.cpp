#include "mutated_xml.h"

#include <algorithm>
#include <random>
#include <string_view>

namespace corvane::testing_support {
namespace {

using namespace std::string_literals;

std::string repeated(std::string_view text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i)
    all += text;
  return all;
}

std::vector<std::string> hand_made() {
  return {
      "<a/>",
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"/dvd\">\r\n<vmgm/>\r\n"
      "<titleset><titles><pgc><vob file='/a&amp;b.mpg' chapters=\"0,5:00\"/>\r\n"
      "<post>if (g1 &lt; 2 || g2 &gt;= 3) jump title 1;</post></pgc></titles></titleset>\r\n"
      "</dvdauthor>\r\n",
      "<!-- one --><?note?><a b = '1'\tc=\"2\"\r\n>text<!-- - two --><?x y?></a ><!-- end -->\n",
      "<a><![CDATA[ <b> & ]] > ]]]><b x='&#65;&#x1F4C0;&lt;&gt;&quot;&apos;&amp;'/>]] &gt;</a>",
      "\xEF\xBB\xBF<?xml version='1.0' encoding='utf-8' standalone='yes' ?><a>\xEF\xBB\xBF</a>",
      "<\xC3\xA9t\xC3\xA9 \xC3\xA0='\xE2\x82\xAC'>\xF0\x9F\x93\x80\xED\x9F\xBF\xEE\x80\x80"
      "\xEF\xBF\xBD\xF4\x8F\xBF\xBF\xC2\x80</\xC3\xA9t\xC3\xA9>",
      "<_a.b-c:d9 xmlns:_a.b-c='x' xml:space='preserve'><:b/><c: :d='1'/></_a.b-c:d9>",
      "<v:a v:b='1'><x:y/></v:a>",
      "<a b='1' b2='1' B='1'/>",
      "<?xml-stylesheet href='a' encoding=\"utf-16\"?><?xmlish?><a/><?XMLish z?>",
      "<?xml version='1.1'?><a/>",
      "<?xml version=\"1.0\" standalone='no'?><a><b><c><d/></c></b>\r\r\n\n</a>",
      "<?xml version='1.0' encoding='UTF8'?><a/>",
      "<?xml version='1.0' encoding='ISO-8859-1'?><a>caf\xE9</a>",
      "<?xml version='1.0' encoding='US-ASCII'?><a/>",
      "<!DOCTYPE a><a/>",
      "<!DOCTYPE a [<!ENTITY x 'y'><!ATTLIST a b CDATA '1'>]><a>&x;</a>",
      "<a b='\t\n\r&#9;&#10;&#13;'>&#x10FFFF;&#xD7FF;&#xE000;&#xFFFD;&#x20;&#0038;</a>",
      "<a>&#xD800;</a>",
      "<a>&#xFFFE;</a>",
      "<a>&#0;</a>",
      "<a>&#4294967361;</a>",
      "<a>&#x110000;</a>",
      "<?xml version='1.0' encoding='UTF-8'standalone='yes'?><a/>",
      "<?xml version='1.0'encoding='UTF-8'?><a/>",
      "<a xml:id='1 2'/>",
      "<a/>\0"s,
      "<a/>\0<"s,
      "<a>\0</a>"s,
      "<a>\x01</a>",
      "<a>\x7F</a>",
      "<a>\xC0\x80\xED\xA0\x80</a>",
      "<a>\xEF\xBF\xBE</a>",
      "<a>\xF4\x90\x80\x80</a>",
      "\xFE\xFF\0<\0a\0/\0>"s,
      "\xFF\xFE<\0a\0/\0>\0"s,
      "<\0a\0/\0>\0"s,
      "",
      " ",
      "\xEF\xBB\xBF",
      repeated("<a>", 250) + repeated("</a>", 250),
      repeated("<a>", 300) + repeated("</a>", 300),
      "<" + std::string(50'001, 'n') + "/>",
      "<a>" + std::string(20'000, 'x') + "</a>",
  };
}

const std::vector<std::string>& pieces() {
  static const std::vector<std::string> all = {"<",
                                               ">",
                                               "/",
                                               "=",
                                               "'",
                                               "\"",
                                               "&",
                                               ";",
                                               "-",
                                               "--",
                                               "!",
                                               "?",
                                               "[",
                                               "]",
                                               "]]>",
                                               " ",
                                               "\t",
                                               "\n",
                                               "\r",
                                               "\r\n",
                                               "\0"s,
                                               "\x01",
                                               "\x7F",
                                               ":",
                                               "#",
                                               "x",
                                               "a",
                                               "1",
                                               "|",
                                               "\xC3",
                                               "\xA9",
                                               "\xC3\xA9",
                                               "\xE2\x82\xAC",
                                               "\xF0\x9F\x93\x80",
                                               "\xED\xA0\x80",
                                               "\xEF\xBF\xBF",
                                               "\xEF\xBB\xBF",
                                               "\xC0\x80",
                                               "\xCC\x81",
                                               "\xC3\x97",
                                               "\xC2\xB7",
                                               "\xCD\xBE",
                                               "<!--",
                                               "-->",
                                               "<![CDATA[",
                                               "<?",
                                               "?>",
                                               "</",
                                               "/>",
                                               "<b/>",
                                               "<b>",
                                               "</b>",
                                               "</a>",
                                               "&amp;",
                                               "&lt;",
                                               "&foo;",
                                               "&#60;",
                                               "&#x3C;",
                                               "&#;",
                                               "&#x;",
                                               "&#X41;",
                                               "&#1;",
                                               "&#x110000;",
                                               "&#xDFFF;",
                                               "&#00065;",
                                               " b='1'",
                                               " b=\"<\"",
                                               " b='>'",
                                               "<?xml version='1.0'?>",
                                               "<?xml?>",
                                               "<?XML ?>",
                                               "<?xml:a b?>",
                                               "<!-- c -->",
                                               "<!---->",
                                               "<!-->",
                                               "<![CDATA[]]>",
                                               "<!DOCTYPE a>",
                                               "<!ELEMENT a ANY>",
                                               " encoding='UTF-8'",
                                               " encoding='utf-16'",
                                               " encoding='utf8'",
                                               " standalone='yes'",
                                               " version='1.0'",
                                               "1.0",
                                               "1.1",
                                               "2.0",
                                               "\xE2\x80\xA8",
                                               "\xC2\x85"};
  return all;
}

class mutator {
 public:
  std::string operator()(std::string text) {
    for (std::size_t n = 1 + below(4) / 3; n > 0; --n)
      mutate(text);
    return text;
  }
  std::size_t below(std::size_t end) { return end == 0 ? 0 : random_() % end; }

 private:
  void mutate(std::string& text) {
    const std::size_t at = below(text.size() + 1);
    const std::size_t left = text.size() - at;
    switch (below(8)) {
      case 0:
        text.erase(at, 1 + below(3));
        break;
      case 1:
        text.insert(at, text.substr(at, 1 + below(4)));
        break;
      case 2:
        if (left >= 2)
          std::swap(text[at], text[at + 1]);
        break;
      case 3:
        text.replace(at, 1, 1, static_cast<char>(below(256)));
        break;
      case 4:
        replace_token(text, at);
        break;
      default:
        text.insert(at, pieces()[below(pieces().size())]);
        break;
    }
  }

  // A token is what stands between two marks of markup.
  void replace_token(std::string& text, std::size_t at) {
    const std::size_t begin = text.find_first_of("<&>'\"= ", at);
    if (begin == std::string::npos)
      return;
    const std::size_t end = std::min(text.find_first_of("<&>'\"= ", begin + 1), text.size());
    const std::string token = text.substr(begin, end - begin);
    text.erase(begin, end - begin);
    if (below(2) == 0)
      text.insert(below(text.size() + 1), token);
    else if (below(2) == 0)
      text.insert(begin, token + token);
  }

  std::mt19937 random_{4};
};

}  // namespace

std::vector<std::string> mutated_xml(const std::vector<std::string>& navigation,
                                     std::size_t count) {
  const std::vector<std::string> small = hand_made();
  std::vector<std::string> texts = small;
  texts.insert(texts.end(), navigation.begin(), navigation.end());
  mutator mutated;
  while (texts.size() < count) {
    const bool whole = !navigation.empty() && mutated.below(4) == 0;
    const std::vector<std::string>& seeds = whole ? navigation : small;
    texts.push_back(mutated(seeds[mutated.below(seeds.size())]));
  }
  return texts;
}

}  // namespace corvane::testing_support
