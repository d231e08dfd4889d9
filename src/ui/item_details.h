// Finds out what the selected title or menu holds, and has the view show it: at once what is known,
// the rest as it comes. Files are looked at in idle moments, a beginning at a time; what is known
// of them is shared with the check of the project.
//
// Belongs to the main window, which tells it of each change and lends it idle moments.
#pragma once

#include "disc/disc_description.h"
#include "disc/finding.h"
#include "examine/item_summary.h"
#include "ui/first_pictures.h"

#include <functional>
#include <optional>

namespace corvane {

class details_panel;
struct project;

class item_details {
 public:
  /// `panel`: where it is shown; null as long as there is none.
  item_details(fact_store& facts, std::function<details_panel*()> panel);

  /// The project, its files, or what is selected may have changed. `item`: a title or menu;
  /// anything else: none is selected.
  void show(const project& p, const finding_item& item);

  /// Looks at one file that is not known; true when there is more to do.
  bool work();

 private:
  item_summary summary() const;
  void tell();

  fact_store& facts_;
  std::function<details_panel*()> panel_;
  text_counts counts_;
  disc_description disc_;
  finding_item item_;
  bool hand_edited_ = false;
  std::optional<summary_look> look_;
  first_pictures pictures_;
};

}  // namespace corvane
