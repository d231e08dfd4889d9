#include "asked.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string_view>

namespace corvane::disc {

namespace {

std::vector<std::string> split(const std::string& text, char at) {
  std::vector<std::string> pieces;
  std::istringstream in(text);
  std::string piece;
  while (std::getline(in, piece, at))
    pieces.push_back(piece);
  return pieces;
}

std::string trimmed(std::string text) {
  text.erase(text.find_last_not_of(' ') + 1);
  text.erase(0, text.find_first_not_of(' '));
  return text;
}

/// The file's lines, handed out one by one and section by section.
class lines_of {
 public:
  explicit lines_of(const std::string& text) : all_(split(text, '\n')) {
    for (std::string& line : all_)
      if (!line.empty() && line.back() == '\r')
        line.pop_back();
  }
  std::string line() { return next_ < all_.size() ? all_[next_++] : std::string(); }
  bool at_end() const { return next_ >= all_.size(); }
  std::vector<std::string> section() {
    std::vector<std::string> rows;
    while (!at_end()) {
      std::string row = line();
      if (row == "***")
        break;
      rows.push_back(std::move(row));
    }
    return rows;
  }

 private:
  std::vector<std::string> all_;
  std::size_t next_ = 0;
};

asked_title title_of(const std::string& row) {
  asked_title title;
  for (const std::string& part : split(row, '/'))
    title.files.push_back(native_from_stored(part));
  if (!title.files.empty())
    title.seconds = measured_seconds(title.files.front());
  return title;
}

void add_languages(const std::vector<std::string>& tags, asked_disc& asked) {
  for (const std::string& tag : tags) {
    std::istringstream words(tag.substr(std::min(tag.find('\t'), tag.size())));
    std::string name, code;
    words >> name >> code;
    std::transform(code.begin(), code.end(), code.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    (tag.rfind("Aud", 0) == 0 ? asked.audio_languages : asked.subtitle_languages).push_back(code);
  }
}

/// The times of the first subtitle of a SubRip file: "00:00:02,000 --> 00:00:05,500".
void read_first_times(asked_subtitle& subtitle) {
  const auto text = read_file(subtitle.file, std::uintmax_t{1} << 24);
  const std::size_t arrow = text ? text->find("-->") : std::string::npos;
  if (arrow == std::string::npos)
    return;
  const std::size_t line = text->find_last_of("\r\n", arrow) + 1;
  const auto seconds = [](std::string time) {
    std::replace(time.begin(), time.end(), ',', '.');
    return seconds_of_chapter(time);
  };
  subtitle.begins = seconds(text->substr(line, arrow - line));
  subtitle.ends = seconds(text->substr(arrow + 3, 16));
}

/// Rows "a.srt/b.srt" and "center,bottom,...|center,bottom,...|"; the last settings serve files
/// that have none.
void add_subtitles(const std::string& row, const std::string& settings, asked_title& title) {
  if (row == "<none>")
    return;
  const std::vector<std::string> all = split(settings, '|');
  for (const std::string& file : split(row, '/')) {
    std::vector<std::string> fields;
    if (!all.empty())
      fields = split(all[std::min(title.subtitles.size(), all.size() - 1)], ',');
    fields.resize(12);
    asked_subtitle subtitle{native_from_stored(file), fields[0], fields[1]};
    read_first_times(subtitle);
    title.subtitles.push_back(std::move(subtitle));
  }
}

asked_menu menu_of(const std::string& row, const std::string& options) {
  const std::vector<std::string> files = split(row, '/');
  asked_menu menu;
  menu.video = files.empty() ? "" : native_from_stored(files[0]);
  menu.audio = files.size() < 2 ? "" : native_from_stored(files[1]);
  menu.loop = std::atoi(options.c_str()) == 1;
  return menu;
}

std::string look_of(const std::string& field) {
  return field.find('\\') == std::string::npos ? field : native_from_stored(field);
}

asked_button button_of(const std::string& record) {
  std::vector<std::string> fields = split(record, '/');
  fields.resize(7);
  const auto number = [&](std::size_t i) { return std::atoi(fields[i].c_str()); };
  return {number(0), number(1),          number(2),         number(3),
          fields[4], look_of(fields[5]), look_of(fields[6])};
}

/// Rows "menu01: 10/ 20/...", one for each button.
void add_buttons(const std::vector<std::string>& rows, asked_disc& asked) {
  for (const std::string& row : rows) {
    const int menu = row.size() > 7 ? std::atoi(row.substr(4, 2).c_str()) : 0;
    if (menu >= 1 && menu <= static_cast<int>(asked.menus.size()) &&
        !trimmed(row.substr(7)).empty())
      asked.menus[static_cast<std::size_t>(menu) - 1].buttons.push_back(button_of(row.substr(7)));
  }
}

double frame_rate(unsigned code) {
  static const double rates[] = {0, 24000.0 / 1001, 24, 25, 30000.0 / 1001, 30, 50, 60000.0 / 1001};
  return code < 8 ? rates[code] : 0;
}

unsigned byte_at(std::string_view bytes, std::size_t at) {
  return static_cast<std::uint8_t>(bytes[at]);
}

std::uint32_t word_at(std::string_view bytes, std::size_t at) {
  return byte_at(bytes, at) << 24 | byte_at(bytes, at + 1) << 16 | byte_at(bytes, at + 2) << 8 |
         byte_at(bytes, at + 3);
}

double elementary_seconds(std::string_view bytes) {
  double rate = 0;
  int pictures = 0;
  constexpr std::string_view start("\0\0\1", 3);
  for (std::size_t at = bytes.find(start); at != std::string_view::npos;
       at = bytes.find(start, at + 3)) {
    if (at + 8 > bytes.size())
      break;
    const unsigned code = byte_at(bytes, at + 3);
    if (code == 0xb3)
      rate = frame_rate(byte_at(bytes, at + 7) & 15);
    pictures += code == 0;
  }
  return rate > 0 ? pictures / rate : 0;
}

/// Sum over the units of video: each has a navigation packet with its first and last time.
double program_seconds(std::string_view bytes) {
  constexpr std::size_t sector = 2048, begin_time = 0x2d + 12, end_time = 0x2d + 16;
  constexpr std::string_view navigation("\0\0\1\xbf\3\xd4", 6);
  double seconds = 0;
  for (std::size_t at = 0; at + sector <= bytes.size(); at += sector)
    if (bytes.substr(at + 0x26, navigation.size()) == navigation)
      seconds += (word_at(bytes, at + end_time) - word_at(bytes, at + begin_time)) / 90000.0;
  return seconds;
}

}  // namespace

double seconds_of_chapter(const std::string& time) {
  double seconds = 0;
  for (const std::string& part : split(time, ':'))
    seconds = seconds * 60 + std::atof(part.c_str());
  return seconds;
}

double measured_seconds(const std::string& native_path) {
  const auto bytes = read_file(native_path, std::uintmax_t{1} << 30);
  if (!bytes || bytes->size() < 4)
    return 0;
  return word_at(*bytes, 0) == 0x1ba ? program_seconds(*bytes) : elementary_seconds(*bytes);
}

result<asked_disc> read_asked(const std::string& native_project_path) {
  const auto text = read_file(native_project_path, std::uintmax_t{1} << 26);
  if (!text)
    return result<asked_disc>::fail(text.error);
  lines_of lines(*text);
  asked_disc asked;
  lines.line();
  for (const std::string& row : lines.section())
    asked.titles.push_back(title_of(row));
  const auto chapters = lines.section();
  const auto delays = lines.section();
  add_languages(lines.section(), asked);
  const auto menus = lines.section(), options = lines.section();
  for (std::size_t i = 0; i < menus.size(); ++i)
    asked.menus.push_back(menu_of(menus[i], i < options.size() ? options[i] : ""));
  add_buttons(lines.section(), asked);
  const auto posts = lines.section(), subtitles = lines.section(), settings = lines.section();
  for (std::size_t i = 0; i < asked.titles.size(); ++i) {
    asked_title& title = asked.titles[i];
    if (i < chapters.size())
      for (const std::string& time : split(chapters[i], ','))
        title.chapters.push_back(seconds_of_chapter(time));
    if (i < delays.size())
      title.delay_ms = std::atoi(delays[i].c_str());
    if (i < posts.size())
      title.post = trimmed(posts[i]);
    if (i < subtitles.size() && i < settings.size() && !title.is_ready())
      add_subtitles(subtitles[i], settings[i], title);
  }
  asked.firstplay = lines.line();
  asked.region = lines.line();
  asked.iso = lines.line() == "True";
  asked.jumptable = lines.line() == "True";
  asked.hand_edited = !lines.at_end();
  return result<asked_disc>::ok(std::move(asked));
}

}  // namespace corvane::disc
