// The XML reader against libxml2's: for each of thousands of texts the verdict of xmllint is ours,
// or the difference is one of those listed here with their reason.
#include "authoring/navigation_xml.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "formats/text.h"
#include "formats/xml_reader.h"
#include "mutated_xml.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <optional>
#include <regex>
#include <string>
#include <sys/wait.h>
#include <vector>

namespace corvane::testing_support {
namespace {

/// What xmllint said about one file.
struct judgement {
  std::string error;             ///< the first one that makes the text not well formed
  bool namespace_error = false;  ///< about prefixes, which are no matter of being well formed
  bool validity_error = false;
};

std::string file_name(std::size_t number) {
  return std::to_string(number) + ".xml";
}

/// Runs xmllint in the folder on the files from `begin` to `end`; what it prints.
std::string run_xmllint(const temporary_folder& folder, std::size_t begin, std::size_t end) {
  std::string command = "cd '" + folder.path() + "' && xmllint --noout --nonet";
  for (std::size_t i = begin; i < end; ++i)
    command += " " + file_name(i);
  const int status = std::system((command + " >said 2>&1").c_str());
  // 1: at least one of the files is not well formed.
  EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) <= 1) << folder.read("said");
  return folder.read("said");
}

/// Adds what lines such as "12.xml:3: parser error : ..." tell; others quote the texts.
void add_judgements(const std::string& said, std::vector<judgement>& judgements) {
  for (const std::string& line : split(said, '\n')) {
    const auto mark = line.find(".xml:");
    const auto kind = mark == std::string::npos ? mark : line.find(": ", mark);
    if (kind == std::string::npos || mark == 0 || line.find_first_not_of("0123456789") != mark)
      continue;
    judgement& j = judgements.at(std::stoul(line));
    const std::string what = line.substr(kind + 2);
    if (what.starts_with("namespace error"))
      j.namespace_error = true;
    else if (what.starts_with("validity error"))
      j.validity_error = true;
    else if (what.find("error : ") != std::string::npos && j.error.empty())
      j.error = what;
  }
}

std::vector<judgement> judged(const std::vector<std::string>& texts) {
  constexpr std::size_t at_once = 1000;
  const temporary_folder folder;
  for (std::size_t i = 0; i < texts.size(); ++i)
    folder.add(file_name(i), texts[i]);
  std::vector<judgement> judgements(texts.size());
  for (std::size_t i = 0; i < texts.size(); i += at_once)
    add_judgements(run_xmllint(folder, i, std::min(i + at_once, texts.size())), judgements);
  return judgements;
}

// Why our verdict may differ ----------------------------------------------------------------------

using fault_or_none = std::optional<xml_fault>;

bool says(const fault_or_none& fault, const std::string& what) {
  return fault && fault->what == what;
}

/// Refused here, since entities of its own could hide what the checks before a run look for.
bool has_document_type(const std::string& text, const fault_or_none& fault, const judgement& j) {
  return j.error.empty() && text.find("<!DOCTYPE") != std::string::npos &&
         says(fault, "declarations such as \"<!DOCTYPE\" cannot be authored");
}

/// Refused here for the same reason; with its characters as ASCII and a declaration of UTF-8 the
/// text is well formed for us too.
bool has_other_encoding(const std::string& text, const fault_or_none& fault, const judgement& j) {
  std::smatch found;
  const std::regex declared("^(\xEF\xBB\xBF)?<\\?xml\\s[^>]*encoding\\s*=\\s*['\"]([^'\"]*)");
  if (!j.error.empty() || !says(fault, "the encoding is not UTF-8") ||
      !std::regex_search(text, found, declared))
    return false;
  std::string ascii = text;
  std::replace_if(
      ascii.begin() + found.length(1), ascii.end(),
      [](char c) { return static_cast<unsigned char>(c) >= 0x80; }, 'x');
  ascii.replace(static_cast<std::size_t>(found.position(2)),
                static_cast<std::size_t>(found.length(2)), "UTF-8");
  return !first_xml_fault(ascii);
}

/// xmllint knows UTF-16 by its byte order mark.
bool is_utf_16(const std::string& text, const fault_or_none& fault, const judgement& j) {
  return j.error.empty() && (text.starts_with("\xFE\xFF") || text.starts_with("\xFF\xFE")) &&
         says(fault, "there is a character or byte that XML does not allow");
}

/// For xmllint a text ends at a NUL that stands outside of its element.
bool has_nul_behind(const std::string& text, const fault_or_none& fault, const judgement& j) {
  const auto nul = text.find('\0');
  return j.error.empty() && nul != std::string::npos && !first_xml_fault(text.substr(0, nul)) &&
         says(fault, "there is a character or byte that XML does not allow");
}

/// XML wants white space before "standalone"; xmllint does not.
bool lacks_blank(const std::string& text, const fault_or_none& fault, const judgement& j) {
  std::string repaired = text;
  const auto place = repaired.find("standalone");
  if (!j.error.empty() || place == std::string::npos ||
      !says(fault, "the XML declaration is not well formed"))
    return false;
  return !first_xml_fault(repaired.insert(place, " "));
}

/// xmllint reads elements in elements up to a depth of 256.
bool is_too_deep(const std::string& text, const fault_or_none& fault, const judgement& j) {
  if (fault || !j.error.starts_with("parser error : Excessive depth"))
    return false;
  std::vector<std::size_t> depths;
  for (const xml_element& e : read_xml(text).elements)
    depths.push_back(e.parent == no_xml_parent ? 1 : depths.at(e.parent) + 1);
  return *std::max_element(depths.begin(), depths.end()) > 256;
}

/// xmllint reads names of up to 50000 bytes.
bool has_too_long_name(const std::string& text, const fault_or_none& fault, const judgement& j) {
  const xml_reading xml = read_xml(text);
  return !fault && j.error.starts_with("parser error : Name too long") &&
         std::any_of(xml.elements.begin(), xml.elements.end(),
                     [](const xml_element& e) { return e.name.size() > 50'000; });
}

const struct {
  const char* name;
  bool (*explains)(const std::string&, const fault_or_none&, const judgement&);
} differences[] = {
    {"document type", has_document_type},
    {"other encoding", has_other_encoding},
    {"UTF-16", is_utf_16},
    {"NUL behind the element", has_nul_behind},
    {"no blank before \"standalone\"", lacks_blank},
    {"depth", is_too_deep},
    {"length of names", has_too_long_name},
};

/// Agreement, or the name of the difference; nullopt if no difference that is listed explains it.
std::optional<std::string> outcome_of(const std::string& text, const fault_or_none& fault,
                                      const judgement& j) {
  if (fault && !j.error.empty())
    return "both refuse";
  // Prefixes and identifiers are rules of their own.
  if (!fault && j.error.empty())
    return j.namespace_error ? "prefixes" : j.validity_error ? "identifiers" : "both accept";
  for (const auto& difference : differences)
    if (difference.explains(text, fault, j))
      return difference.name;
  return std::nullopt;
}

TEST(Xmllint, HasTheSameVerdictOnThousandsOfTexts) {
  ASSERT_EQ(std::system("xmllint --version >/dev/null 2>&1"), 0) << "xmllint is not installed";
  std::vector<std::string> navigation;
  for (const sample& s : all_samples(path_style::posix))
    navigation.push_back(config_xml(s.p, s.where));
  const std::vector<std::string> texts = mutated_xml(navigation, 6000);
  const std::vector<judgement> judgements = judged(texts);
  std::map<std::string, int> outcomes;
  for (std::size_t i = 0; i < texts.size(); ++i) {
    const auto fault = first_xml_fault(texts[i]);
    const auto outcome = outcome_of(texts[i], fault, judgements[i]);
    EXPECT_TRUE(outcome) << texts[i].substr(0, 2000)
                         << "\nours: " << (fault ? fault->what : "(fine)")
                         << "\nxmllint: " << judgements[i].error;
    ++outcomes[outcome.value_or("unexplained")];
  }
  EXPECT_GT(outcomes["both accept"], 800);
  EXPECT_GT(outcomes["both refuse"], 2000);
  for (const char* const rule : {"prefixes", "identifiers"})
    EXPECT_GT(outcomes[rule], 0) << rule;
  for (const auto& difference : differences)
    EXPECT_GT(outcomes[difference.name], 0) << difference.name;
}

/// What xmllint finds for an expression in the text.
std::string found_by_xmllint(const std::string& expression, const std::string& text) {
  const temporary_folder folder;
  folder.add("text.xml", text);
  const std::string command =
      "cd '" + folder.path() + "' && xmllint --xpath '" + expression + "' text.xml >found 2>&1";
  EXPECT_EQ(std::system(command.c_str()), 0);
  std::string found = folder.read("found");
  if (found.ends_with('\n'))  // it adds one
    found.pop_back();
  return found;
}

TEST(Xmllint, ReadsTheSameValuesAndTexts) {
  for (const char* const text :
       {"<a x='1\t2\n3\r4\r\n5'>1\t2\n3\r4\r\n5.</a>",
        "<a x='1&#9;2&#10;3&#13;4&#x0D;\n5'>1&#9;2&#10;3&#13;4&#xD;\r5.</a>",
        "<a x=\" &amp;lt; &lt;&gt;&quot;&apos; '&#228;&#x1F4C0; \"> &amp;lt; &#x20AC;\r\n\n.</a>",
        "<a x='\xC3\xA9'>1<!-- 2 --><![CDATA[<b>&amp;\r\n]]>3<?p 5?>6</a>", "<a x=''></a>"}) {
    const xml_reading xml = read_xml(text);
    ASSERT_EQ(xml.elements.size(), 1u) << text;
    EXPECT_EQ(*attribute_of(xml.elements[0], "x"), found_by_xmllint("string(/a/@x)", text));
    EXPECT_EQ(xml.elements[0].text, found_by_xmllint("string(/a)", text));
  }
}

}  // namespace
}  // namespace corvane::testing_support
