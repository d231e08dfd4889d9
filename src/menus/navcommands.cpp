#include "menus/navcommands.h"

#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "project/messages.h"
#include "project/moved_commands.h"
#include "project/post_rows.h"

#include <algorithm>
#include <cstddef>

namespace corvane {
namespace {

constexpr std::size_t title_width = 20;

/// Titles play one after the other, and the last one ends.
std::string default_command(int title, int titles) {
  return title < titles ? "jump title" + leading_blank(title + 1) : std::string("exit");
}

/// What title `title` (1-based) runs. The list can be shorter than the titles: a title without its
/// row does what it does when the list is empty.
std::string command_of(const project& p, int title, int titles) {
  return title - 1 <= UUBound(p.postinfo) ? p.postinfo[static_cast<std::size_t>(title) - 1]
                                          : default_command(title, titles);
}

bool refuse(document& doc, const std::string& text) {
  if (!holds_control_character(text))
    return false;
  say(doc, icon::exclamation,
      "The command \"" + sanitized_short(text) +
          "\" cannot be used: it contains a line break, a tab or another control character.");
  return true;
}

}  // namespace

std::optional<navcommands> navcommands::prepare(document& doc, bool already_shown) {
  if (custom(doc) != 1 || already_shown)
    return std::nullopt;
  return navcommands(doc);
}

navcommands::navcommands(document& doc) : doc_(&doc) {
  const int titles = UUBound(doc.p.List1) + 1;
  for (int title = 1; title <= titles; ++title)
    rows_.push_back(
        {doc.p.List1[static_cast<std::size_t>(title) - 1], command_of(doc.p, title, titles)});
  fill_commands();
  fill_firstplay();
}

void navcommands::fill_commands() {
  const int titles = UUBound(doc_->p.List1) + 1, menus = UUBound(doc_->p.menulist) + 1;
  for (int title = 1; title <= titles; ++title)
    Combo1_items_.push_back("jump title" + leading_blank(title));
  Combo1_items_.emplace_back("exit");
  Combo1_ = "exit";
  if (menus == 0)
    return;
  if (!doc_->p.jumptable) {
    Combo1_items_.emplace_back("call menu");
    return;
  }
  for (int menu = 1; menu <= menus; ++menu)
    Combo1_items_.push_back("call menu" + leading_blank(menu));
  Combo1_items_.emplace_back("call last menu");
}

void navcommands::fill_firstplay() {
  for (int title = 1; title <= UUBound(doc_->p.List1) + 1; ++title)
    firstplay_items_.push_back("jump title" + leading_blank(title));
  if (!doc_->p.menulist.empty())
    firstplay_items_.emplace_back("jump titleset 1 menu");
  firstplay_items_.emplace_back(no_first_play);
  firstplay_ = doc_->p.firstplay;
}

std::vector<std::string> navcommands::List1() const {
  std::vector<std::string> texts;
  for (const title_row& r : rows_)
    texts.push_back(padded(sanitized(r.title), title_width) + "\t" +
                    padded(sanitized(r.command), post_width));
  return texts;
}

void navcommands::select(int row) {
  if (row < 0 || row >= static_cast<int>(rows_.size()))
    return;
  selected_ = row;
  const auto& [title, command] = rows_[static_cast<std::size_t>(row)];
  Text1_ = trim_right(padded(sanitized(title), title_width));
  Combo1_ = trim_right(padded(sanitized(command), post_width));
}

void navcommands::set_command(const std::string& text) {
  if (text == Combo1_ || refuse(*doc_, text))
    return;
  Combo1_ = text;
  if (selected_ >= 0)
    rows_[static_cast<std::size_t>(selected_)].command = text;
}

void navcommands::set_firstplay(const std::string& text) {
  if (text != firstplay_ && !refuse(*doc_, text))
    firstplay_ = text;
}

void navcommands::accept() {
  if (firstplay_.empty())
    firstplay_ = no_first_play;
  keep_in(doc_->p);
  forget_targets_of_titles(doc_->p);
  doc_->p.saved = 0;
}

void navcommands::keep_in(project& copy) const {
  copy.postinfo.resize(std::max(copy.postinfo.size(), rows_.size()));
  for (std::size_t i = 0; i < rows_.size(); ++i)
    copy.postinfo[i] = post_row(rows_[i].command);
  copy.firstplay = firstplay_;
}

}  // namespace corvane
