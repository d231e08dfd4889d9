#include "examine/tool_rules.h"

#include "formats/text.h"
#include "runner/tools/known_messages.h"
#include "runner/tools/tool_outcomes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
namespace {

struct message_source {
  std::string_view tool, name;
};

constexpr std::array message_sources = {message_source{"mplex.exe", "mplex 2.1.0"},
                                        message_source{"spumux.exe", "spumux 0.7.2"},
                                        message_source{"dvdauthor.exe", "dvdauthor 0.7.2"},
                                        message_source{"mkisofs.exe", "genisoimage 1.1.11"}};

/// With "(...)" for what a message puts in the place of "{1}".
std::string without_parts(std::string_view text) {
  std::string all;
  for (;;) {
    const std::size_t begin = text.find('{');
    all += text.substr(0, begin);
    if (begin == std::string_view::npos)
      return all;
    all += "(...)";
    text.remove_prefix(std::min(text.size(), text.find('}', begin) + 1));
  }
}

std::string with_capital_letter(std::string text) {
  if (!text.empty() && text.front() >= 'a' && text.front() <= 'z')
    text.front() = static_cast<char>(text.front() - 'a' + 'A');
  return text;
}

/// How the tool prints it, with "..." for what differs.
std::string printed_text(std::string_view pattern) {
  std::string text = "\"";
  for (const char c : pattern)
    if (c == '~' || c == '%')
      text += "...";
    else
      text += c;
  return text + "\"";
}

/// The rules, and the texts of which they are views.
class tool_rule_list {
 public:
  tool_rule_list() {
    for (const message_source& source : message_sources)
      for (const known_message& message : known_messages_of(source.tool))
        add(message, source.name);
    for (const written& one : all_)
      rules_.push_back({one.id, one.severity, one.subject, "a run without this message",
                        one.consequence, one.remedy, one.source});
    for (const tool_outcome& one : tool_outcomes())
      rules_.push_back({one.rule, one.severity, one.subject, one.wanted, one.consequence,
                        one.remedy, one.source});
  }
  tool_rule_list(const tool_rule_list&) = delete;
  tool_rule_list& operator=(const tool_rule_list&) = delete;

  std::span<const rule> rules() const { return rules_; }

 private:
  struct written {
    std::string_view id;
    finding_severity severity = finding_severity::note;
    std::string subject, consequence, remedy, source;
  };

  /// The first message of an identifier gives its texts, the worst one its severity.
  void add(const known_message& message, std::string_view tool) {
    const auto known = std::find_if(all_.begin(), all_.end(), [&message](const written& one) {
      return one.id == message.rule;
    });
    const std::string printed = printed_text(message.pattern);
    if (known != all_.end()) {
      known->severity = std::max(known->severity, message.severity);
      known->source += ", " + printed;
      return;
    }
    all_.push_back({message.rule, message.severity,
                    with_capital_letter(without_parts(message.found)),
                    without_parts(message.consequence), without_parts(message.remedy),
                    std::string(tool) + ": " + printed});
  }

  std::vector<written> all_;
  std::vector<rule> rules_;
};

}  // namespace

std::span<const rule> tool_rules() {
  static const tool_rule_list list;
  return list.rules();
}

}  // namespace corvane
