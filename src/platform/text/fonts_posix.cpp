#include "platform/text/fonts.h"

#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <string_view>

namespace corvane {
namespace {

// A line for each font: path, number in the file, full name, family and style.
constexpr const char* list_command =
    "fc-list --format '%{file}\\t%{index}\\t%{fullname[0]}\\t%{family[0]} %{style[0]}\\n' "
    "2>/dev/null";

std::string output_of(const char* command) {
  struct closer {
    void operator()(std::FILE* stream) const { ::pclose(stream); }
  };
  const std::unique_ptr<std::FILE, closer> stream(::popen(command, "re"));
  std::string text;
  std::array<char, 4096> buffer{};
  std::size_t got = 0;
  while (stream && (got = std::fread(buffer.data(), 1, buffer.size(), stream.get())) > 0)
    text.append(buffer.data(), got);
  return text;
}

/// Takes the text before the next `end` off.
std::string_view take_until(std::string_view& text, char end) {
  const auto at = text.find(end);
  const std::string_view taken = text.substr(0, at);
  text.remove_prefix(at == std::string_view::npos ? text.size() : at + 1);
  return taken;
}

installed_font font_of(std::string_view line) {
  const std::string_view path = take_until(line, '\t');
  const std::string_view number = take_until(line, '\t');
  const std::string_view full_name = take_until(line, '\t');
  // Whoever is given the file takes its first font.
  if (number != "0")
    return {};
  return {std::string(full_name.empty() ? line : full_name),
          std::string(path.substr(path.rfind('/') + 1)), std::string(path)};
}

}  // namespace

std::vector<installed_font> installed_fonts() {
  std::vector<installed_font> fonts;
  const std::string list = output_of(list_command);
  for (std::string_view rest = list; !rest.empty();) {
    installed_font font = font_of(take_until(rest, '\n'));
    if (!font.path.empty())
      fonts.push_back(std::move(font));
  }
  return fonts;
}

std::string font_place(const std::string& path) {
  return path;
}

}  // namespace corvane
