#include "examine/setting_rules.h"

#include "disc/av_delay.h"
#include "examine/chapter_rules.h"
#include "examine/measures.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <map>
#include <optional>
#include <string>

namespace corvane {
namespace {

using severity = finding_severity;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

constexpr int most_titles = 99;
constexpr int most_menus = 99;
constexpr std::size_t most_chapters = 99;
constexpr std::size_t most_audio_streams = 8;

constexpr std::string_view run_fails =
    "nothing: the run fails when everything has been multiplexed";

constexpr std::array setting_rules_table = {
    rule{"disc-too-many-titles", severity::error, "A disc has at most 99 titles",
         "at most 99 titles", "titles behind the 99th never", "remove titles", dvd_video_tables},
    rule{"disc-too-many-menus", severity::error, "A disc has at most 99 menus", "at most 99 menus",
         run_fails, "remove menus in \"remove titleset menu\"", "dvdauthor 0.7.2, its grammar"},
    rule{"title-too-many-sounds", severity::error, "A title has at most eight audio streams",
         "at most eight audio streams", "not all of the title's sound",
         "remove the title and add it again with fewer audio streams", dvd_video_tables},
    rule{"title-too-many-subtitles", severity::error, "A title has at most 32 subtitles",
         "at most 32 subtitles", run_fails, "reset the title's subtitles in \"add/edit subtitles\"",
         dvd_video_tables},
    rule{"title-too-many-chapters", severity::error, "A title has at most 99 chapters",
         "at most 99 chapters, the one at the beginning included",
         "no title behind the 99th chapter in players that hold to it",
         "remove chapters in \"chapters\"", dvd_video_tables},
    rule{"chapter-time-unreadable", severity::error, "Chapter times can be read",
         "a time such as 00:05:00.00", run_fails, "correct the chapter in \"chapters\"",
         "dvdauthor 0.7.2, measured"},
    rule{"delay-not-number", severity::error, "An A/V delay is a number",
         "a number of milliseconds", "nothing: the run fails at this title",
         "set the delay again in \"edit A/V delay\"", "mplex 2.1.0, measured"},
    rule{"delay-too-long", severity::error, "Video is delayed by less than a second",
         "less than 1000 ms",
         "nothing: the run fails when the whole title has been multiplexed (buffer under-runs)",
         "set a smaller delay in \"edit A/V delay\", or cut the beginning off the sound",
         "mplex 2.1.0, measured"},
    rule{"delay-beyond-title", severity::warning, "Sound begins before its title's video ends",
         "a delay of the sound that is shorter than the video",
         "the whole title without sound, and then sound without a picture that moves",
         "set a smaller delay in \"edit A/V delay\": it is counted in milliseconds",
         "mplex 2.1.0, measured"},
    rule{"language-code", severity::error, "A language tag ends in a language code",
         "a code of two letters", run_fails, "choose the language again in \"edit language tags\"",
         "ISO 639-1; dvdauthor 0.7.2, measured"},
    rule{"language-too-many", severity::error, "There are no more tags than streams can be",
         "at most 8 audio tags and 32 subtitle tags", run_fails,
         "remove tags in \"edit language tags\"", dvd_video_tables},
    rule{"language-without-stream", severity::warning, "Each language tag has a stream",
         "no more tags than a title has streams",
         "a language in the player's list that plays nothing",
         "remove the tag in \"edit language tags\", or add the stream",
         "dvdauthor 0.7.2, measured"},
};

bool is_language_code(const std::string& code) {
  return code.size() == 2 && std::all_of(code.begin(), code.end(), [](char c) {
           return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
         });
}

class setting_examiner {
 public:
  setting_examiner(const disc_description& d, std::span<const std::optional<double>> title_seconds)
      : disc_(d), title_seconds_(title_seconds) {}

  std::vector<finding> findings() {
    look_at_counts();
    for (int title = 1; title <= disc_.title_count(); ++title)
      look_at_title(title);
    look_at_languages();
    return std::move(findings_);
  }

 private:
  void add(std::string_view rule, finding_item item, std::string found) {
    findings_.push_back(finding_of(setting_rules_table, rule, item, std::move(found)));
  }

  void look_at_counts() {
    if (disc_.title_count() > most_titles)
      add("disc-too-many-titles", {}, "there are " + trimmed(disc_.title_count()) + " titles");
    if (disc_.menu_count() > most_menus)
      add("disc-too-many-menus", {}, "there are " + trimmed(disc_.menu_count()) + " menus");
  }

  // Titles ----------------------------------------------------------------------------------------

  void look_at_title(int number) {
    const disc_title& t = disc_.title(number);
    const finding_item item{whole::title, number, part::whole, 0};
    for (const title_file* const file : t.files())
      look_at_file(item, *file);
    look_at_chapters(number, t);
  }

  void look_at_file(const finding_item& item, const title_file& file) {
    if (file.is_multiplexed_here && file.streams.size() > most_audio_streams + 1)
      add("title-too-many-sounds", item,
          "the title has " + std::to_string(file.streams.size() - 1) + " audio streams");
    if (file.subtitles.size() > most_subpictures)
      add("title-too-many-subtitles", item,
          "the title has " + std::to_string(file.subtitles.size()) + " subtitles");
    if (file.is_multiplexed_here)
      look_at_delay(item, file);
  }

  void look_at_chapters(int title, const disc_title& t) {
    int number = 0;
    for (const text_time& time : chapters_read(t)) {
      ++number;
      if (!time.seconds)
        add("chapter-time-unreadable", {whole::title, title, part::chapter, number},
            "the chapter has the time " + sanitized_quoted(time.text) + ", which is none");
    }
    // Of two entries with one time the disc has one chapter, wherever its units begin.
    const std::size_t chapters = chapters_on_disc(t, {}).begins.size();
    if (chapters > most_chapters)
      add("title-too-many-chapters", {whole::title, title, part::whole, 0},
          "the title has " + std::to_string(chapters) + " chapters");
  }

  std::optional<double> seconds_of(int title) const {
    const auto index = static_cast<std::size_t>(title) - 1;
    return index < title_seconds_.size() && disc_.title(title).further.empty()
               ? title_seconds_[index]
               : std::nullopt;
  }

  void look_at_delay(const finding_item& item, const title_file& file) {
    const text_number& delay = file.delay;
    const std::optional<double> seconds = seconds_of(item.number);
    if (!delay.is_number)
      add("delay-not-number", item, "the A/V delay is " + sanitized_quoted(delay.text));
    else if (delay.value >= too_long_a_delay)
      add("delay-too-long", item, "the A/V delay is " + sanitized_quoted(delay.text) + " ms");
    else if (file.streams.size() > 1 && seconds && *seconds > 0 && -delay.value >= *seconds * 1000)
      add("delay-beyond-title", item,
          "the A/V delay is " + sanitized_quoted(delay.text) + " ms, so that sound begins after " +
              seconds_text(-delay.value / 1000) + "; the video lasts " + seconds_text(*seconds));
  }

  // Languages -------------------------------------------------------------------------------------

  /// The streams of one kind that the titles of a titleset have at most.
  struct stream_count {
    std::size_t audio = 0, subpictures = 0;
    bool is_known = true;  ///< false: a ready file may have any
  };

  std::map<int, stream_count> streams_by_titleset() const {
    std::map<int, stream_count> all;
    for (const disc_title& t : disc_.titles)
      for (const title_file* const file : t.files())
        count_streams(*file, all[t.titleset]);
    return all;
  }

  static void count_streams(const title_file& file, stream_count& count) {
    if (!file.is_multiplexed_here || file.streams.empty()) {
      count.is_known = false;
      return;
    }
    count.audio = std::max(count.audio, file.streams.size() - 1);
    count.subpictures = std::max(count.subpictures, file.subtitles.size());
  }

  void look_at_languages() {
    const std::map<int, stream_count> streams = streams_by_titleset();
    std::map<int, stream_count> tags;
    for (const disc_language& language : disc_.languages) {
      const bool audio = language.kind == disc_language::stream_kind::audio;
      stream_count& count = tags[language.titleset];
      const std::size_t number = ++(audio ? count.audio : count.subpictures);
      if (number > (audio ? most_audio_streams : most_subpictures))
        continue;  // told below
      const std::string tag = std::string(audio ? "audio" : "subtitle") + " tag " +
                              std::to_string(number) + ", " + named(language) + ",";
      // Hand-edited XML may label a stream with something else than a language.
      if (!is_language_code(language.code) && !(language.code.empty() && language.text.empty()))
        add("language-code", {}, tag + " does not end in a language code");
      const auto found = streams.find(language.titleset);
      const std::size_t there = found == streams.end() ? 0
                                : audio                ? found->second.audio
                                                       : found->second.subpictures;
      if ((found == streams.end() || found->second.is_known) && number > there)
        add("language-without-stream", {},
            tag + " labels a stream that no title has: " + count_text(there, audio));
    }
    for (const auto& [titleset, count] : tags)
      if (count.audio > most_audio_streams || count.subpictures > most_subpictures)
        add("language-too-many", {},
            "there are " + std::to_string(count.audio) + " audio tags and " +
                std::to_string(count.subpictures) + " subtitle tags");
  }

  static std::string named(const disc_language& language) {
    const std::string text = language.text.empty() ? language.code : language.text;
    const auto tab = text.find('\t');
    return sanitized_quoted(
        trim(std::string_view(text).substr(tab == std::string::npos ? 0 : tab + 1)));
  }

  static std::string count_text(std::size_t count, bool audio) {
    const std::string kind = audio ? "audio stream" : "subtitle";
    if (count == 0)
      return "there is no " + kind;
    return "there " + std::string(count == 1 ? "is one " : "are " + std::to_string(count) + " ") +
           kind + (count == 1 ? "" : "s");
  }

  const disc_description& disc_;
  std::span<const std::optional<double>> title_seconds_;
  std::vector<finding> findings_;
};

}  // namespace

std::span<const rule> setting_rules() {
  return setting_rules_table;
}

std::vector<finding> setting_findings(const disc_description& d,
                                      std::span<const std::optional<double>> title_seconds) {
  return setting_examiner(d, title_seconds).findings();
}

}  // namespace corvane
