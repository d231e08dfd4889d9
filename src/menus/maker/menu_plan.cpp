#include "menus/maker/menu_plan.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "platform/files/paths.h"
#include "platform/text/utf8.h"
#include "project/project_file.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <utility>

namespace corvane {
namespace {

// What a menu's program chain holds, and what the jump table takes of it in menu 1
// (examine/navigation_rules.cpp).
constexpr int most_commands = 128;

bool has_chapter_time(const disc_title& title, std::size_t chapter) {
  return title.chapters[chapter].seconds.has_value();
}

int chapters_with_time(const disc_title& title) {
  int count = 0;
  for (std::size_t i = 0; i < title.chapters.size(); ++i)
    count += has_chapter_time(title, i) ? 1 : 0;
  return count;
}

std::string text_for(const menu_texts& texts, const std::string& key, const std::string& made) {
  const auto own = texts.find(key);
  return own == texts.end() ? made : own->second;
}

/// A name of each title that stays its own when others come and go: the path of its video, with a
/// number behind it where several play the same.
std::vector<std::string> marks_of_titles(const disc_description& d) {
  std::map<std::string, int> times;
  std::vector<std::string> marks;
  for (const disc_title& title : d.titles) {
    const int time = ++times[title.video()];
    marks.push_back(title.video() + (time == 1 ? "" : " #" + trimmed(time)));
  }
  return marks;
}

/// "1", "1 and 2", "1, 2 and 3".
std::string listed_titles(const std::vector<int>& titles) {
  std::string text = titles.size() == 1 ? "title " : "titles ";
  for (std::size_t i = 0; i < titles.size(); ++i)
    text += (i == 0 ? "" : i + 1 == titles.size() ? " and " : ", ") + trimmed(titles[i]);
  return text;
}

int pages_for(int entries, int of_a_page) {
  return std::max(1, (entries + of_a_page - 1) / of_a_page);
}

class planner {
 public:
  planner(const disc_description& d, const menu_choices& choices, const plan_bounds& bounds,
          const menu_texts& texts)
      : disc_(d), choices_(choices), bounds_(bounds), texts_(texts), marks_(marks_of_titles(d)) {}

  menu_plan plan() {
    if (disc_.titles.empty() || bounds_.menus < 1) {
      plan_.notes.emplace_back(disc_.titles.empty()
                                   ? "There are no titles to make menus of."
                                   : "The project has 99 menus, so there is room for none.");
      return plan_;
    }
    bounds_.entries = std::clamp(bounds_.entries, 1, 32);
    take_choices();
    settle_first_page();
    add_menus_of_titles();
    for (const int title : chosen_)
      add_menus_of_chapters(title);
    lead_back_and_forth();
    return std::move(plan_);
  }

 private:
  // How many ------------------------------------------------------------------------------------

  void take_choices() {
    std::vector<int> without;
    for (int title = 1; title <= disc_.title_count(); ++title)
      if (std::ranges::find(choices_.chapters_of, title) != choices_.chapters_of.end())
        (chapters_with_time(disc_.title(title)) > 1 ? chosen_ : without).push_back(title);
    if (!without.empty())
      note("No menu of chapters is made for " + listed_titles(without) + ": " +
           (without.size() == 1 ? "it has" : "they have") + " no two chapters.");
    std::vector<int> left_out;
    first_entries_ = bounds_.entries;
    while (!chosen_.empty() && menu_total() > bounds_.menus) {
      left_out.insert(left_out.begin(), chosen_.back());
      chosen_.pop_back();
    }
    if (!left_out.empty())
      note("A disc has room for " + trimmed(most_menus) +
           " menus: no menu of chapters is made for " + listed_titles(left_out) + ".");
    if (menu_total() > bounds_.menus)
      note("A disc has room for " + trimmed(most_menus) +
           " menus: not all titles have an entry.  Choose a design with more entries on a page.");
  }

  int pages_of_titles() const {
    const int rest = disc_.title_count() - first_entries_;
    return rest <= 0 ? 1 : 1 + pages_for(rest, bounds_.entries);
  }
  int pages_of_chapters(int title) const {
    return pages_for(chapters_with_time(disc_.title(title)), bounds_.entries);
  }
  int menu_total() const {
    int total = pages_of_titles();
    for (const int title : chosen_)
      total += pages_of_chapters(title);
    return total;
  }
  bool has_chosen(int title) const { return std::ranges::find(chosen_, title) != chosen_.end(); }
  bool plays_all() const { return choices_.play_all && disc_.title_count() > 1; }

  /// Commands of the first menu, when the jump table finds the way to each other menu there.
  int first_commands() const {
    int titles = plays_all() ? 1 : 0;
    for (int title = 1; title <= std::min(first_entries_, disc_.title_count()); ++title)
      titles += has_chosen(title) ? 0 : 1;
    const int before = most_menus - bounds_.menus;
    return before + menu_total() - 1 + (titles == 0 ? 1 : 3 * titles + 3);
  }

  void settle_first_page() {
    if (!disc_.jump_table || bounds_.menus < most_menus)
      return;
    std::vector<int> left_out;
    while (first_commands() > most_commands) {
      const int most_rest = bounds_.menus - menu_total();
      if (first_entries_ > 1 && (most_rest > 0 || pages_of_titles() == pages_if_fewer())) {
        --first_entries_;
      } else if (!chosen_.empty()) {
        left_out.insert(left_out.begin(), chosen_.back());
        chosen_.pop_back();
        first_entries_ = bounds_.entries;
      } else {
        break;
      }
    }
    if (!left_out.empty())
      note(
          "With the jump table the first menu has no room for the ways to so many menus: no menu "
          "of chapters is made for " +
          listed_titles(left_out) + ".");
    if (first_entries_ < std::min(bounds_.entries, disc_.title_count()))
      note("With the jump table the first menu has room for " + trimmed(first_entries_) +
           (first_entries_ == 1 ? " entry." : " entries."));
  }
  int pages_if_fewer() {
    --first_entries_;
    const int pages = pages_of_titles();
    ++first_entries_;
    return pages;
  }

  // What ----------------------------------------------------------------------------------------

  std::string name_of_title(int title) const {
    const auto i = static_cast<std::size_t>(title) - 1;
    const std::string made = cleaned_name(disc_.title(title).video());
    return text_for(texts_, "title " + marks_[i], made.empty() ? "title " + trimmed(title) : made);
  }

  planned_entry entry_of_title(int title) const {
    planned_entry entry;
    entry.key = "title " + marks_[static_cast<std::size_t>(title) - 1];
    entry.text = name_of_title(title);
    entry.title = title;
    entry.film = disc_.title(title).video();
    entry.seconds = choices_.picture_after;
    return entry;
  }

  planned_entry way(const std::string& name, const std::string& made) const {
    planned_entry entry;
    entry.key = "way " + name;
    entry.text = text_for(texts_, entry.key, made);
    return entry;
  }

  void add_menus_of_titles() {
    const int pages = std::min(pages_of_titles(), bounds_.menus);
    int title = 1;
    for (int page = 1; page <= pages; ++page) {
      planned_menu menu;
      menu.key = "titles " + trimmed(page);
      menu.subject = "titles";
      menu.heading_key = "heading of titles";
      menu.heading = text_for(texts_, menu.heading_key, choices_.words.heading);
      menu.page = page;
      menu.pages = pages;
      const int most = page == 1 ? first_entries_ : bounds_.entries;
      for (int n = 0; n < most && title <= disc_.title_count(); ++n, ++title) {
        page_of_title_[title] = page;
        menu.entries.push_back(entry_of_title(title));
      }
      if (plays_all() && page == 1) {
        menu.ways.push_back(way("play all", choices_.words.play_all));
        menu.ways.back().title = 1;
      }
      plan_.menus.push_back(std::move(menu));
    }
  }

  std::vector<planned_entry> entries_of_chapters(int title) const {
    const disc_title& t = disc_.title(title);
    std::vector<planned_entry> entries;
    for (std::size_t i = 0; i < t.chapters.size(); ++i) {
      if (!has_chapter_time(t, i))
        continue;
      planned_entry entry;
      const int number = static_cast<int>(i) + 1;
      entry.key =
          "chapter " + t.chapters[i].text + " of " + marks_[static_cast<std::size_t>(title) - 1];
      entry.text = text_for(texts_, entry.key, choices_.words.chapter + " " + trimmed(number));
      entry.title = title;
      entry.chapter = number;
      entry.film = t.video();
      entry.seconds = *t.chapters[i].seconds + choices_.picture_after;
      entries.push_back(std::move(entry));
    }
    return entries;
  }

  void add_menus_of_chapters(int title) {
    const std::string& mark = marks_[static_cast<std::size_t>(title) - 1];
    const std::vector<planned_entry> entries = entries_of_chapters(title);
    const int pages = pages_of_chapters(title);
    first_page_of_[title] = static_cast<int>(plan_.menus.size()) + 1;
    for (int page = 1; page <= pages; ++page) {
      planned_menu menu;
      menu.key = "chapters of " + mark + " " + trimmed(page);
      menu.subject = cleaned_name(disc_.title(title).video());
      menu.heading_key = "heading of " + mark;
      menu.heading = text_for(texts_, menu.heading_key, name_of_title(title));
      menu.page = page;
      menu.pages = pages;
      menu.title = title;
      const auto from =
          static_cast<std::size_t>(page - 1) * static_cast<std::size_t>(bounds_.entries);
      const std::size_t to =
          std::min(entries.size(), from + static_cast<std::size_t>(bounds_.entries));
      for (std::size_t i = from; i < to; ++i)
        menu.entries.push_back(entries[i]);
      menu.ways.push_back(way("play", choices_.words.play));
      menu.ways.back().title = title;
      plan_.menus.push_back(std::move(menu));
    }
  }

  void lead_back_and_forth() {
    for (std::size_t i = 0; i < plan_.menus.size(); ++i) {
      planned_menu& menu = plan_.menus[i];
      const int number = static_cast<int>(i) + 1;
      const auto add = [&](const std::string& name, const std::string& made, int to) {
        menu.ways.push_back(way(name, made));
        menu.ways.back().menu = to;
      };
      if (menu.title != 0)
        add("back", choices_.words.back, page_of_title_[menu.title]);
      if (menu.page > 1)
        add("previous", choices_.words.previous, number - 1);
      if (menu.page < menu.pages)
        add("next", choices_.words.next, number + 1);
      if (menu.title != 0)
        continue;
      for (planned_entry& entry : menu.entries)
        if (const auto chapters = first_page_of_.find(entry.title);
            chapters != first_page_of_.end())
          entry.menu = chapters->second;
    }
  }

  void note(std::string text) { plan_.notes.push_back(std::move(text)); }

  const disc_description& disc_;
  const menu_choices& choices_;
  plan_bounds bounds_;
  const menu_texts& texts_;
  std::vector<std::string> marks_;
  std::vector<int> chosen_;  ///< titles that get a menu of chapters
  int first_entries_ = 1;    ///< of the first page
  std::map<int, int> page_of_title_, first_page_of_;
  menu_plan plan_;
};

}  // namespace

std::vector<int> titles_with_chapters(const disc_description& d) {
  std::vector<int> titles;
  for (int title = 1; title <= d.title_count(); ++title)
    if (chapters_with_time(d.title(title)) > 1)
      titles.push_back(title);
  return titles;
}

menu_plan plan_menus(const disc_description& d, const menu_choices& choices,
                     const plan_bounds& bounds, const menu_texts& texts) {
  return planner(d, choices, bounds, texts).plan();
}

std::string cleaned_name(std::string_view stored) {
  std::string_view name = file_name_of(stored);
  if (const std::size_t point = name.rfind('.'); point != std::string_view::npos && point > 0)
    name = name.substr(0, point);
  const bool has_blanks = name.find(' ') != std::string_view::npos;
  std::string cleaned;
  for (const char c : repaired_utf8(name)) {
    // Where a name has blanks, "-" and "." are what somebody wanted to stand there.
    const bool is_for_blank =
        c == '_' || is_control_character(c) || (!has_blanks && (c == '-' || c == '.'));
    if (!is_for_blank && c != ' ')
      cleaned += c;
    else if (!cleaned.empty() && cleaned.back() != ' ')
      cleaned += ' ';
  }
  return std::string(trim(cleaned));
}

std::string action_of(const planned_entry& entry, int before) {
  if (entry.menu != 0)
    return "jump menu" + leading_blank(before + entry.menu);
  const std::string title = "jump title" + leading_blank(entry.title);
  return entry.chapter == 0 ? title : title + " chapter " + leading_blank(entry.chapter);
}

std::vector<std::string> ends_of_titles(const disc_description& d, const menu_choices& choices) {
  std::vector<std::string> ends(static_cast<std::size_t>(d.title_count()),
                                d.jump_table ? "call last menu" : "call menu");
  if (choices.play_all)
    for (std::size_t i = 0; i + 1 < ends.size(); ++i)
      ends[i] = "jump title" + leading_blank(static_cast<std::int64_t>(i) + 2);
  return ends;
}

}  // namespace corvane
