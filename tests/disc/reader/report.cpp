#include "report.h"

#include "menu_report.h"
#include "platform/files/paths.h"
#include "track_report.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace corvane::disc {

namespace {

/// A measured length ends with the last picture or the last sound, whichever is later.
constexpr double length_tolerance = 0.3;

verdict agreement(bool agrees) {
  return agrees ? verdict::agrees : verdict::differs;
}

std::string plural(std::size_t n, const std::string& what) {
  return std::to_string(n) + " " + what + (n == 1 ? "" : "s");
}

std::string joined(const std::vector<std::string>& parts, const char* between) {
  std::string text;
  for (const std::string& part : parts)
    text += (text.empty() ? "" : between) + part;
  return text;
}

std::string texts_of(const std::vector<vm_command>& commands) {
  std::vector<std::string> texts;
  texts.reserve(commands.size());
  for (const vm_command& c : commands)
    texts.push_back(c.text());
  return texts.empty() ? "-" : joined(texts, "; ");
}

std::string name_in(const std::string& native) {
  return std::string(file_name_of(stored_from_native(native)));
}

std::string format_of_file(const std::string& path) {
  const std::string extension = lower_extension_of(name_in(path));
  return extension == "mpa" ? "mp2" : extension;
}

std::string with_language(const std::string& text, const std::string& language) {
  return language.empty() ? text : text + " " + language;
}

/// What dvdauthor plays first when the project names nothing: the menu, else the first title.
std::optional<std::string> first_command(const asked_disc& asked) {
  if (asked.firstplay != "<default>")
    return machine_command(asked.firstplay);
  return !asked.menus.empty() ? std::nullopt : std::optional<std::string>("JumpTT 1");
}

class reporter {
 public:
  reporter(const contents& on_disc, const asked_disc* asked, const iso_volume* image)
      : disc_(on_disc), asked_(asked), image_(image) {}

  std::vector<report_row> rows() {
    add_disc();
    for (const title& t : disc_.titles)
      add_title(t);
    for (report_row& row : menu_rows(disc_, asked_))
      rows_.push_back(std::move(row));
    add_image();
    return std::move(rows_);
  }

 private:
  bool comparable() const { return asked_ != nullptr && !asked_->hand_edited; }

  void add(std::string name, std::string asked, std::string found,
           verdict says = verdict::not_compared) {
    rows_.push_back({std::move(name), std::move(asked), std::move(found),
                     comparable() ? says : verdict::not_compared});
  }

  void add_all(std::vector<report_row> more) {
    for (report_row& row : more)
      add(std::move(row.name), std::move(row.asked), std::move(row.found), row.says);
  }

  void add_disc() {
    const std::string standard = disc_.titles.empty() ? "" : disc_.titles[0].picture.standard;
    const std::string regions = disc_.forbidden_regions == 0 ? "all regions" : "some regions";
    add("video format", asked_ ? asked_->region : "", standard + ", " + regions,
        agreement(asked_ && asked_->region == standard && disc_.forbidden_regions == 0));
    add("titles", asked_ ? std::to_string(asked_->titles.size()) : "",
        std::to_string(disc_.titles.size()) + " in " +
            plural(static_cast<std::size_t>(disc_.titlesets), "titleset"),
        agreement(asked_ && asked_->titles.size() == disc_.titles.size() && disc_.titlesets == 1));
    add_first_play();
  }

  void add_first_play() {
    const std::string found = disc_.first_play ? texts_of(disc_.first_play->pre) : "nothing";
    const auto expected = asked_ ? first_command(*asked_) : std::nullopt;
    const bool same =
        expected &&
        (found == *expected ||
         found == "JumpTT" + expected->substr(std::min<std::size_t>(10, expected->size())));
    add("first play", asked_ ? asked_->firstplay : "", found,
        expected ? agreement(same) : verdict::not_compared);
    if (!disc_.begins_with.empty())
      add_beginning();
  }

  void add_beginning() {
    const bool by_default = asked_ && asked_->firstplay == "<default>";
    const std::string first =
        asked_ && !asked_->menus.empty() ? "jump titleset 1 menu" : "jump title 1";
    const auto expected =
        asked_ ? place_after(by_default ? first : asked_->firstplay, 1, *asked_) : std::nullopt;
    add("  shows", "", disc_.begins_with,
        expected ? agreement(*expected == disc_.begins_with) : verdict::not_compared);
  }

  const asked_title* asked_title_of(const title& t) const {
    const auto i = static_cast<std::size_t>(t.number) - 1;
    return asked_ && i < asked_->titles.size() ? &asked_->titles[i] : nullptr;
  }

  void add_title(const title& t) {
    const asked_title* const a = asked_title_of(t);
    add("title " + std::to_string(t.number), a ? name_in(a->files[0]) : "",
        t.picture.size + " " + t.picture.aspect);
    add("  length", a && a->seconds > 0 ? clock_text(a->seconds) : "", clock_text(t.chain.seconds),
        agreement(a && std::fabs(a->seconds - t.chain.seconds) < length_tolerance));
    add_all(chapter_rows(t, a));
    for (std::size_t i = 0; i < std::max(t.audio.size(), a ? a->files.size() - 1 : 0); ++i)
      add_audio(t, a, i);
    if (a && !a->is_ready() && !t.audio.empty())
      add("  delay", std::to_string(a->delay_ms) + " ms", delay_text(t),
          agreement(std::fabs(t.audio[0].begins + a->delay_ms / 1000.0) < 0.04));
    add_all(subtitle_rows(t, a, asked_));
    add_post(t, a);
  }

  static std::string delay_text(const title& t) {
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "picture %.0f ms after sound",
                  -t.audio[0].begins * 1000);
    return text.data();
  }

  void add_audio(const title& t, const asked_title* a, std::size_t i) {
    const std::string number = "  audio " + std::to_string(i + 1);
    const std::string tag =
        asked_ && i < asked_->audio_languages.size() ? asked_->audio_languages[i] : "";
    const bool named = a && i + 1 < a->files.size();
    const std::string format = named ? format_of_file(a->files[i + 1]) : "";
    const std::string asked = with_language(named ? format : "as the file has it", tag);
    if (i >= t.audio.size()) {
      add(number, asked, "missing", verdict::differs);
      return;
    }
    const audio_stream& s = t.audio[i];
    // A titleset lists the streams of all its titles; a ready file need not have every one.
    std::string found = with_language(
        s.format + " " + plural(static_cast<std::size_t>(s.channels), "channel"), s.language);
    if (s.packets == 0)
      found += " (no packets)";
    const bool agrees = s.language == tag && (!named || (s.format == format && s.packets > 0));
    add(number, a ? asked : "", found, agreement(agrees));
  }

  void add_post(const title& t, const asked_title* a) {
    const std::string post = a ? post_command(*asked_, t.number) : "";
    const auto expected = machine_command(post);
    const std::string found = texts_of(t.chain.post);
    add("  after it", post, found,
        expected ? agreement(found == *expected) : verdict::not_compared);
  }

  void add_image() {
    if (image_ == nullptr)
      return;
    add("image", "DVDVideo, UDF", image_->name + (image_->udf() ? ", UDF" : ", no UDF"),
        agreement(image_->name == "DVDVideo" && image_->udf()));
  }

  const contents& disc_;
  const asked_disc* asked_;
  const iso_volume* image_;
  std::vector<report_row> rows_;
};

/// Characters of UTF-8 text, so that columns stay straight under names of any language.
std::size_t width_of(const std::string& text) {
  return static_cast<std::size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xc0) != 0x80; }));
}

std::string padded(const std::string& text, std::size_t width) {
  const std::size_t has = width_of(text);
  return has < width ? text + std::string(width - has, ' ') : text;
}

const char* word_of(verdict v) {
  return v == verdict::agrees ? "ok" : v == verdict::differs ? "DIFFERS" : "";
}

}  // namespace

std::optional<std::string> machine_command(const std::string& post) {
  if (post == "exit")
    return "Exit";
  int title = 0, chapter = 0, used = 0;
  const int length = static_cast<int>(post.size());
  if (std::sscanf(post.c_str(), "jump title %d chapter %d%n", &title, &chapter, &used) == 2 &&
      used == length)
    return "JumpVTS_PTT " + std::to_string(title) + ":" + std::to_string(chapter);
  if (std::sscanf(post.c_str(), "jump title %d%n", &title, &used) == 1 && used == length)
    return "JumpVTS_TT " + std::to_string(title);
  return std::nullopt;
}

std::string post_command(const asked_disc& asked, int title) {
  const std::string& post = asked.titles[static_cast<std::size_t>(title) - 1].post;
  if (!post.empty())
    return post;
  return title < static_cast<int>(asked.titles.size()) ? "jump title " + std::to_string(title + 1)
                                                       : "exit";
}

std::vector<report_row> report(const contents& on_disc, const asked_disc* asked,
                               const iso_volume* image) {
  return reporter(on_disc, asked, image).rows();
}

bool all_agree(const std::vector<report_row>& rows) {
  return std::none_of(rows.begin(), rows.end(),
                      [](const report_row& r) { return r.says == verdict::differs; });
}

std::string table(const std::vector<report_row>& rows, bool compared) {
  std::vector<report_row> all{{"", compared ? "asked for" : "", "on the disc"}};
  all.insert(all.end(), rows.begin(), rows.end());
  std::size_t name = 0, asked = 0, found = 0;
  for (const report_row& r : all) {
    name = std::max(name, width_of(r.name));
    asked = std::max(asked, width_of(r.asked));
    found = std::max(found, width_of(r.found));
  }
  std::string text;
  for (const report_row& r : all) {
    std::string line = padded(r.name, name + 3);
    if (compared)
      line += padded(r.asked, asked + 3);
    line += compared ? padded(r.found, found + 3) + word_of(r.says) : r.found;
    text += line.erase(line.find_last_not_of(' ') + 1) + "\n";
  }
  return text;
}

std::string clock_text(double seconds) {
  const long long ms = std::llround(seconds * 1000);
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%lld:%02lld.%03lld", ms / 60000, ms / 1000 % 60,
                ms % 1000);
  return text.data();
}

}  // namespace corvane::disc
