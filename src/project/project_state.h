// What undo brings back of a project: all that its file holds, and what the main window shows of
// it. Not the preferences ("clean up files", "edit xml"), nor what the menu editor keeps for
// itself.
#pragma once

#include "project/project.h"

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

class project_state {
 public:
  /// Of `p`. Lists and XML that `like` has, too, are shared with it and take no memory again.
  explicit project_state(const project& p, const project_state* like = nullptr);

  /// Makes `p` what it was.
  void restore(project& p) const;

  /// Whether both hold the same project. What is merely shown (the selection, title count and size)
  /// does not count.
  bool is_same_project(const project_state& other) const;

  /// What it takes beside `other`, about, in bytes.
  std::size_t bytes_beside(const project_state* other) const;

 private:
  using rows = std::vector<std::string>;
  static constexpr std::array lists = {
      &project::List1,       &project::List11,       &project::chapters,
      &project::delay,       &project::subtitledata, &project::subtitleoptions,
      &project::postinfo,    &project::menulist,     &project::moremenuoptions,
      &project::menubuttons, &project::languagetags,
  };
  static constexpr std::array texts = {&project::firstplay, &project::globalregion};
  static constexpr std::array marks = {&project::isocreate, &project::jumptable,
                                       &project::Comboregion_enabled};

  std::array<std::shared_ptr<const rows>, lists.size()> lists_;
  std::shared_ptr<const std::string> customxml_;
  std::array<std::string, texts.size()> texts_;
  std::array<bool, marks.size()> marks_{};
  std::vector<command_target> led_to_;
  std::string Frame1_, dvdsizetext_;
  bool dvdsizetext_red_ = false;
  std::uint64_t dvdsize_bytes_ = 0;
  int selected_ = -1;
};

}  // namespace corvane
