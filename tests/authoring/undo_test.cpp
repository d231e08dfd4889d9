// Random sequences of commands, undone to the beginning and done again to the end.
#include "menus/menu_editor.h"
#include "menus/menu_entries.h"
#include "menus/menu_picker.h"
#include "menus/navcommands.h"
#include "project/dropped_files.h"
#include "project/preferences.h"
#include "project/project_file.h"
#include "project/title_commands.h"
#include "support/command_test.h"
#include "tools/chapters.h"
#include "tools/language_tags.h"
#include "tools/subtitles.h"

#include <gmock/gmock.h>

#include <array>
#include <functional>
#include <random>

namespace corvane {
namespace {

/// Answers anything that is asked, with files that are there.
class anybody : public prompts {
 public:
  anybody(std::mt19937& random, testing_support::temporary_folder& folder)
      : random_(random), folder_(folder) {}

  answer message(const message_box& box) override {
    if (box.choice == buttons::ok)
      return answer::ok;
    constexpr std::array answers = {answer::ok, answer::yes, answer::no, answer::cancel};
    return answers[random_() % answers.size()];
  }
  std::string open_file(const file_dialog& dialog) override {
    if (random_() % 8 == 0)
      return {};
    if (dialog.title.find("audio") != std::string::npos)
      return file({"a.ac3", "b.mp2"});
    if (dialog.title.find("subtitle") != std::string::npos)
      return file({"a.srt", "b.srt"});
    if (dialog.title.find("project") != std::string::npos)
      return file({"1.cvp", "2.cvp"});
    return dialog.filter.find("vob") != std::string::npos ? file({"a.m2v", "b.m2v", "c.vob"})
                                                          : file({"a.m2v", "b.m2v"});
  }
  std::string save_file(const file_dialog&) override { return file({"1.cvp", "2.cvp", ""}); }
  std::string input(const input_box&) override { return std::to_string(random_() % 100); }

 private:
  std::string file(std::vector<std::string> names) {
    const std::string& name = names[random_() % names.size()];
    return name.empty() ? name : folder_.path(name);
  }

  std::mt19937& random_;
  testing_support::temporary_folder& folder_;
};

class no_pictures : public picture_loader {
 public:
  result<pixel_size> size_of(const std::string&) const override {
    return result<pixel_size>::fail("none here");
  }
};

class Undo : public testing_support::command_test {
 protected:
  using command = std::function<void(document&)>;

  Undo() {
    for (const char* const name : {"a.m2v", "b.m2v", "a.ac3", "b.mp2", "a.srt", "b.srt"})
      folder.add(name);
    folder.add("c.vob", testing_support::nav_block());
  }

  int pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }

  /// All that undo has to bring back, as one text.
  static std::string whole(const project& p) {
    std::string all = project_text(p) + (p.Comboregion_enabled ? "free" : "locked") + "\n" +
                      std::to_string(p.selected) + "\n" + p.Frame1 + "\n" + p.dvdsizetext + "\n";
    for (const auto* const rows : {&p.List1, &p.List11, &p.delay, &p.menubuttons, &p.postinfo})
      for (const std::string& row : *rows)
        all += row + "\n";
    return all;
  }

  command any_command() {
    switch (pick(20)) {
      case 0:
      case 1:
      case 2:
        return open_command;
      case 3:
        return remove_title_command;
      case 4:
        return titleup_command;
      case 5:
        return titledown_command;
      case 6:
        return addaudiostream_command;
      case 7:
        return editdelay_command;
      case 8:
        return isocreate_command;
      case 9:
        return [this](document& d) { region_command(d, pick(2) == 0 ? "PAL" : "NTSC"); };
      case 10:
        return jumptable_command;
      case 11:
        return [](document& d) { addmenu_command(d); };
      case 12:
        return [this](document& d) {
          if (remove_menu_command(d))
            menu_picker(d, picker_erase_caption).confirm(pick(menu_count(d.p)));
        };
      case 13:
        return [this](document& d) {
          if (auto dialog = chapter::open(d)) {
            dialog->set_text("00:00:0" + std::to_string(pick(10)) + ".00");
            dialog->accept();
          }
        };
      case 14:
        return [this](document& d) {
          if (auto dialog = language::open(d)) {
            pick(2) == 0 ? dialog->add_audio_tag() : dialog->remove();
            dialog->accept();
          }
        };
      case 15:
        return [this](document& d) {
          if (auto dialog = Subtitles::open(d, {})) {
            pick(3) == 0 ? dialog->reset() : dialog->add_file();
            if (pick(2) == 0)
              dialog->accept();
          }
        };
      case 16:
        return [this](document& d) {
          if (auto dialog = navcommands::prepare(d)) {
            dialog->select(pick(3));
            dialog->set_command(pick(2) == 0 ? "call menu" : "exit");
            dialog->accept();
          }
        };
      case 17:
        return [this](document& d) {
          if (!editmenu_command(d) ||
              !menu_picker(d, picker_edit_caption).confirm(pick(menu_count(d.p))))
            return;
          menu_editor editor(d, pictures);
          editor.recallbuttondata();
          editor.add_button();
          editor.scroll_y(pick(400));
          editor.accept();
        };
      case 18:
        return pick(3) == 0 ? newproject_command : loadproject_command;
      default:
        return pick(2) == 0 ? saveproject_command : savefile_command;
    }
  }

  /// One sequence; gives how many of its steps could be undone.
  int sequence() {
    struct done {
      std::string name, before, after;
    };
    std::vector<done> steps;
    doc.p = {};
    start_up(doc);
    for (int i = 0; i < 20; ++i) {
      p.selected = pick(title_count(p) + 1) - 1;
      const std::string name = "step " + std::to_string(++number), before = whole(p),
                        file = project_text(p);
      {
        const document::step step(doc, name);
        any_command()(doc);
      }
      const std::string after = whole(p);
      if (doc.undo_name() == name)
        steps.push_back({name, before, after});
      else
        EXPECT_EQ(project_text(p), file) << "a change that cannot be undone: " << name;
    }
    for (auto step = steps.rbegin(); step != steps.rend(); ++step) {
      EXPECT_EQ(doc.undo_name(), step->name);
      doc.undo();
      EXPECT_EQ(whole(p), step->before);
    }
    for (const done& step : steps) {
      EXPECT_EQ(doc.redo_name(), step.name);
      doc.redo();
      EXPECT_EQ(whole(p), step.after);
    }
    return static_cast<int>(steps.size());
  }
  std::mt19937 random{14};
  anybody user{random, folder};
  prompts_relay::answered_by answers{doc.ask, user};
  no_pictures pictures;
  int number = 0;
};

TEST_F(Undo, RandomSequencesOfCommandsAreUndoneToTheBeginningAndDoneAgainToTheEnd) {
  constexpr int sequences = 2000;
  int undone = 0;
  for (int i = 0; i < sequences && !HasFailure(); ++i)
    undone += sequence();
  EXPECT_GT(undone, sequences * 5) << "most commands change something";
}

}  // namespace
}  // namespace corvane
