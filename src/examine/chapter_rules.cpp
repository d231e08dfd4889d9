#include "examine/chapter_rules.h"

#include "examine/measures.h"
#include "examine/navigation_map.h"
#include "examine/unit_facts.h"
#include "formats/chapter_list.h"
#include "formats/sanitized.h"
#include "formats/time_text.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>

namespace corvane {
namespace {

using severity = finding_severity;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;
using fate_kind = chapter_fate::kind;

constexpr std::string_view measured = "dvdauthor 0.7.2, measured";

constexpr std::array chapter_rules_table = {
    rule{"chapter-order", severity::warning, "Chapters stand in the order of their times",
         "later than the chapter before it",
         "this chapter is missing, later ones have other numbers", "sort the title's chapters",
         measured},
    rule{"chapter-merged", severity::warning, "Each chapter has a unit (VOBU) of its own",
         "nearer to another I picture than the chapter before",
         "one chapter instead of two, later ones have other numbers",
         "move the chapter, or encode the video with shorter groups of pictures", measured},
    rule{"chapter-after-end", severity::warning, "Chapters begin before the end of their title",
         "before the end", "this chapter is missing", "remove the chapter or correct its time",
         measured},
    rule{"chapter-added", severity::note, "A title's first chapter is at its beginning",
         "0 as the first time",
         "one more chapter, at the beginning: all others have a number one higher",
         "add a chapter at 0, so that the numbers are the ones that you see", measured},
    rule{"chapter-moved", severity::note, "Chapters begin where they were asked for",
         "the beginning of a unit (VOBU), which is that of a group of pictures",
         "nothing: a player can enter a title only where a unit begins",
         "nothing need be done; shorter groups of pictures bring chapters nearer to their times",
         measured},
    rule{"chapter-number", severity::warning, "Commands lead to the chapter that they name",
         "the number that the chapter has on the disc", "another place of the title than was meant",
         "add a chapter at 0, or correct the chapters or the command", measured},
    rule{"chapter-missing", severity::error, "Commands name chapters that the title has",
         "a chapter that is on the disc", "nothing: the run fails",
         "correct the chapters or the command", measured},
};

/// In the clock of a disc's times: what is half way in it is so, however seconds are rounded.
long long clocks(double seconds) {
  return std::llround(seconds * clocks_of_units);
}

/// Half way between two it is the earlier one.
std::size_t nearest_unit(double seconds, const std::vector<double>& units) {
  const auto after = std::upper_bound(units.begin(), units.end(), seconds);
  if (after == units.begin())
    return 0;
  const auto before = after - 1;
  const bool later_is_nearer =
      after != units.end() && clocks(*after - seconds) < clocks(seconds - *before);
  return static_cast<std::size_t>((later_is_nearer ? after : before) - units.begin());
}

// Gathers the chapters of a file as dvdauthor takes them.
class landing {
 public:
  landing(const title_length& length, bool is_first_file)
      : length_(length), is_first_file_(is_first_file) {}

  chapter_fate take(const text_time& entry) {
    chapter_fate fate;
    fate.text = entry.text;
    if (!entry.seconds)
      return fate;
    fate.asked = fate.begins = *entry.seconds;
    if (is_first_file_ && result_.begins.empty())
      begin(*entry.seconds);
    if (*entry.seconds < latest_) {
      fate.what = fate_kind::out_of_order;
      return fate;
    }
    latest_ = *entry.seconds;
    if (length_.seconds && *entry.seconds >= *length_.seconds) {
      fate.what = fate_kind::after_end;
      return fate;
    }
    if (!length_.units.empty()) {
      const std::size_t unit = nearest_unit(*entry.seconds, length_.units);
      fate.begins = unit == 0 ? 0 : length_.units[unit];
    }
    const bool is_next = result_.begins.empty() || fate.begins > result_.begins.back();
    if (is_next)
      result_.begins.push_back(fate.begins);
    fate.what = is_next || first_ ? fate_kind::is_chapter : fate_kind::merged;
    first_ = false;
    fate.number = static_cast<int>(result_.begins.size());
    return fate;
  }

  landed_chapters finish(std::vector<chapter_fate> fates) {
    if (is_first_file_ ? result_.begins.empty() : fates.empty())
      result_.begins.push_back(0);
    result_.fates = std::move(fates);
    return std::move(result_);
  }

 private:
  // The chapter at the beginning, whoever asked for it.
  void begin(double first) {
    result_.added = first > 0;
    first_ = !result_.added;
    result_.begins.push_back(0);
  }

  const title_length& length_;
  bool is_first_file_;
  landed_chapters result_;
  double latest_ = 0;
  bool first_ = false;  // the entry that is the beginning has not been taken yet
};

double first_time(const landed_chapters& landed) {
  const auto first =
      std::find_if(landed.fates.begin(), landed.fates.end(),
                   [](const chapter_fate& f) { return f.what != fate_kind::no_time; });
  return first == landed.fates.end() ? 0 : first->asked;
}

std::string at_time(double seconds) {
  return time_text(std::min(seconds, latest_time));
}

// `file`: of the title, 0-based.
title_length length_of_file(const title_length& title, std::size_t file) {
  if (file == 0)
    return title;
  return file <= title.further.size() ? title.further[file - 1] : title_length();
}

finding_item chapter_item(int title, std::size_t entry) {
  return {whole::title, title, part::chapter, static_cast<int>(entry) + 1};
}

finding about_entry(std::string_view id, int title, std::size_t entry, const chapter_fate& fate,
                    std::string found) {
  finding f = finding_of(chapter_rules_table, id, chapter_item(title, entry), std::move(found));
  if (fate.file == 0)  // others count from the beginning of theirs
    f.seconds = fate.asked;
  return f;
}

// In one finding for a title: of most titles all chapters move a little.
void look_where_they_land(int title, const landed_chapters& landed, std::vector<finding>& all) {
  constexpr double seen = 0.1;
  constexpr std::size_t most_told = 10;
  std::string found;
  std::size_t moved = 0;
  for (const chapter_fate& fate : landed.fates)
    if (fate.what == fate_kind::is_chapter && std::abs(fate.begins - fate.asked) >= seen &&
        ++moved <= most_told)
      found += (found.empty() ? "" : ", ") + sanitized_quoted(fate.text) + " begins at " +
               at_time(fate.begins);
  if (moved > most_told)
    found += ", and " + std::to_string(moved - most_told) + " more elsewhere";
  if (moved > 0)
    all.push_back(finding_of(chapter_rules_table, "chapter-moved", {whole::title, title}, found));
}

void look_at_entries(int title, const title_length& length, const landed_chapters& landed,
                     std::vector<finding>& all) {
  for (std::size_t entry = 0; entry < landed.fates.size(); ++entry) {
    const chapter_fate& fate = landed.fates[entry];
    const std::string time = sanitized_quoted(fate.text);
    switch (fate.what) {
      case fate_kind::is_chapter:
      case fate_kind::no_time:  // the setting rules look at that
        break;
      case fate_kind::merged:
        all.push_back(about_entry(
            "chapter-merged", title, entry, fate,
            time + " falls to " + at_time(fate.begins) + " as the chapter before it does"));
        break;
      case fate_kind::out_of_order:
        all.push_back(about_entry("chapter-order", title, entry, fate,
                                  time + " stands behind a later chapter"));
        break;
      case fate_kind::after_end:
        all.push_back(
            about_entry("chapter-after-end", title, entry, fate,
                        time + " is not before the end of the " +
                            (length.further.empty() ? "title, " : "file, ") +
                            at_time(length_of_file(length, fate.file).seconds.value_or(0))));
        break;
    }
  }
  look_where_they_land(title, landed, all);
  if (landed.added)
    all.push_back(finding_of(chapter_rules_table, "chapter-added", {whole::title, title},
                             "the first chapter is at " + at_time(first_time(landed)) +
                                 "; one at the beginning is added"));
}

// A command of the disc, and where it stands.
struct placed_command {
  finding_item item;
  command_owner owner;
  const disc_command* command;
};

class command_list {
 public:
  explicit command_list(const disc_description& d) {
    add({whole::disc, 0, part::command}, {}, d.first_play);
    for (int title = 1; title <= d.title_count(); ++title) {
      const disc_title& t = d.title(title);
      add_around({whole::title, title, part::command},
                 {command_owner::kind::title, title, t.titleset}, t);
    }
    for (int menu = 1; menu <= d.menu_count(); ++menu) {
      const disc_menu& m = d.menu(menu);
      const command_owner owner{command_owner::kind::menu, menu, m.titleset};
      add_around({whole::menu, menu, part::command}, owner, m);
      int button = 0;
      for (const disc_button& b : m.buttons)
        all_.push_back({{whole::menu, menu, part::button, ++button}, owner, &b.action});
    }
  }

  const std::vector<placed_command>& all() const { return all_; }

 private:
  void add(const finding_item& item, const command_owner& owner,
           const std::optional<disc_command>& command) {
    if (command)
      all_.push_back({item, owner, &*command});
  }

  template <typename Item>
  void add_around(const finding_item& item, const command_owner& owner, const Item& of) {
    add(item, owner, of.pre);
    for (const disc_command& command : of.cell_commands)
      all_.push_back({item, owner, &command});
    add(item, owner, of.post);
  }

  std::vector<placed_command> all_;
};

// A person counts the entries of the list; the disc, its chapters. Numbers beyond both are told by
// the navigation rules.
void look_at_chapter(const finding_item& item, const named_chapter& named, const disc_title& t,
                     const landed_chapters& landed, std::vector<finding>& all) {
  const int number = named.chapter;
  const std::string chapter =
      "chapter " + std::to_string(number) + " of title " + std::to_string(named.title);
  if (number > static_cast<int>(landed.begins.size())) {
    const std::size_t chapters = landed.begins.size() - (landed.added ? 1 : 0);
    if (number <= chapters_asked_for(t).value_or(0))
      all.push_back(finding_of(chapter_rules_table, "chapter-missing", item,
                               chapter + " is not on the disc: of its " +
                                   count_text(landed.fates.size(), "time", "times") + " " +
                                   count_text(chapters, "becomes a chapter", "become chapters")));
    return;
  }
  // Of several files each has a list of its own, or none.
  if (number < 1 || number > static_cast<int>(landed.fates.size()) || !t.further.empty())
    return;
  const chapter_fate& meant = landed.fates[static_cast<std::size_t>(number) - 1];
  if (meant.number == number || meant.what == fate_kind::no_time)
    return;
  const bool is_there = meant.number > 0;
  const std::string real = "chapter " + std::to_string(meant.number);
  all.push_back(finding_of(
      chapter_rules_table, "chapter-number", item,
      chapter + " will begin at " + at_time(landed.begins[static_cast<std::size_t>(number) - 1]) +
          ", not at " + at_time(meant.asked) + ", which is " + (is_there ? real : "no chapter"),
      is_there ? real : std::string()));
}

}  // namespace

std::vector<text_time> chapters_read(const title_file& file) {
  std::vector<text_time> read;
  for (const text_time& piece : file.chapters)
    for (const std::string& entry : chapter_entries(piece.text))
      read.push_back({entry, chapter_entry_seconds(entry)});
  return read;
}

landed_chapters chapters_in_file(const title_file& file, const title_length& length,
                                 bool is_first) {
  landing l(length, is_first);
  std::vector<chapter_fate> fates;
  for (const text_time& entry : chapters_read(file))
    fates.push_back(l.take(entry));
  return l.finish(std::move(fates));
}

landed_chapters chapters_on_disc(const disc_title& title, const title_length& length) {
  landed_chapters all = chapters_in_file(title, length, true);
  double begins = length.seconds.value_or(0);
  for (std::size_t i = 0; i < title.further.size(); ++i) {
    const title_length of_file = length_of_file(length, i + 1);
    const landed_chapters more = chapters_in_file(title.further[i], of_file, false);
    for (chapter_fate fate : more.fates) {
      fate.file = i + 1;
      if (fate.number > 0)
        fate.number += static_cast<int>(all.begins.size());
      all.fates.push_back(std::move(fate));
    }
    std::transform(more.begins.begin(), more.begins.end(), std::back_inserter(all.begins),
                   [begins](double in_file) { return begins + in_file; });
    begins += of_file.seconds.value_or(0);
  }
  return all;
}

std::span<const rule> chapter_rules() {
  return chapter_rules_table;
}

std::vector<finding> chapter_findings(const disc_description& d,
                                      std::span<const title_length> lengths) {
  std::vector<finding> all;
  std::vector<landed_chapters> landed;
  for (int title = 1; title <= d.title_count(); ++title) {
    const auto index = static_cast<std::size_t>(title) - 1;
    const title_length length = index < lengths.size() ? lengths[index] : title_length();
    landed.push_back(chapters_on_disc(d.title(title), length));
    look_at_entries(title, length, landed.back(), all);
  }
  // Whether a ";" that is missing may be missing, the navigation rules tell.
  const navigation_map map(d, true);
  const command_list commands(d);
  for (const placed_command& one : commands.all()) {
    const command_outcome outcome = map.outcome_of(one.owner, *one.command);
    for (const named_chapter& named : outcome.chapters)
      look_at_chapter(one.item, named, d.title(named.title),
                      landed[static_cast<std::size_t>(named.title) - 1], all);
  }
  return all;
}

}  // namespace corvane
