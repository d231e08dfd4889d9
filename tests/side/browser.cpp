#include "side/browser.h"

#include "disc/command.h"
#include "platform/files/files.h"
#include "side/dom.h"

#include <gtest/gtest.h>

#include <utility>

namespace corvane::side {
namespace {

constexpr const char* seconds_to_live = "100";
constexpr std::size_t largest_page = 1u << 26;

std::string quoted(const std::string& file) {
  EXPECT_EQ(file.find_first_of("\"\\"), std::string::npos) << file;
  return '"' + file + '"';
}

/// A page that loads all of them and becomes a list of what the browser made of each.
std::string collecting_page(const std::vector<std::string>& files) {
  std::string html = "<html><body><script>\nfor (const file of [";
  for (const std::string& file : files)
    html += quoted("file://" + file) + ",\n";
  return html +
         "]) {\n"
         "  const frame = document.createElement('iframe');\n"
         "  frame.src = file;\n"
         "  document.body.append(frame);\n"
         "}\n"
         "window.onload = () => {\n"
         "  const made = [...document.querySelectorAll('iframe')].map(frame => {\n"
         "    const text = document.createElement('pre');\n"
         "    text.textContent = frame.contentDocument.documentElement.outerHTML;\n"
         "    return text;\n"
         "  });\n"
         "  document.body.replaceChildren(...made);\n"
         "};\n"
         "</script></body></html>\n";
}

}  // namespace

bool browser::run(const std::vector<std::string>& words, const std::string& output) {
  // The browser's own sandbox needs rights that a container or a root shell may not give.
  disc::command c{{"timeout", "--kill-after=5", seconds_to_live, "chromium", "--headless",
                   "--no-sandbox", "--disable-gpu", "--disable-dev-shm-usage", "--no-first-run",
                   "--user-data-dir=" + folder_ + "/profile", "--allow-file-access-from-files"}};
  c.words.insert(c.words.end(), words.begin(), words.end());
  c.environment = {{"HOME", folder_}, {"XDG_CONFIG_HOME", folder_}, {"XDG_CACHE_HOME", folder_}};
  c.output_file = output;
  const disc::finished ended = disc::run(c);
  EXPECT_EQ(ended.status, 0) << "chromium: " << ended.out;
  return ended.status == 0;
}

std::optional<std::string> browser::page(const std::string& file) {
  const std::string output = folder_ + "/page";
  if (!run({"--dump-dom", "file://" + file}, output))
    return std::nullopt;
  const auto text = read_file(output, largest_page);
  EXPECT_TRUE(text) << text.error;
  return text ? std::optional(*text) : std::nullopt;
}

std::optional<std::vector<std::string>> browser::pages(const std::vector<std::string>& files) {
  const std::string collector = folder_ + "/collector.html";
  EXPECT_FALSE(write_file(collector, collecting_page(files)));
  const auto html = page(collector);
  if (!html)
    return std::nullopt;
  std::string why;
  const auto root = parse_dom(*html, why);
  const element* const body = root ? find(*root, "body") : nullptr;
  EXPECT_TRUE(body != nullptr) << why;
  std::vector<std::string> made;
  if (body != nullptr)
    for (const element* text : body->all("pre"))
      made.push_back(text->text);
  EXPECT_EQ(made.size(), files.size());
  return made.size() == files.size() ? std::optional(made) : std::nullopt;
}

bool browser::picture(const std::string& file, const std::string& png) {
  return run({"--window-size=900,1000", "--screenshot=" + png, "file://" + file},
             folder_ + "/page") &&
         file_exists(png);
}

}  // namespace corvane::side
