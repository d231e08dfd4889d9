// The user prompts with the toolkit's own boxes and dialogs.
#pragma once

#include "project/dialog_folders.h"
#include "project/prompts.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

class wxDialog;
class wxWindow;

namespace corvane {

class wx_prompts : public prompts {
 public:
  /// Boxes belong to `owner`, or to the active window beside it (the log), unless another one has
  /// said that it asks. File dialogs open in `folder` (native) as long as no other is remembered.
  wx_prompts(wxWindow& owner, settings& prefs, std::string folder);

  answer message(const message_box& box) override;
  std::string open_file(const file_dialog& dialog) override;
  std::string save_file(const file_dialog& dialog) override;
  std::string input(const input_box& box) override;

  /// Several existing files (native paths, absolute); empty when the user cancelled.
  std::vector<std::string> open_files(const file_dialog& dialog);
  /// A folder (native, absolute) that may be made in the dialog; empty when the user cancelled.
  /// Opens in `folder`.
  std::string choose_folder(const std::string& title, const std::string& folder);
  bool go_on_despite(const findings_question& question) override;
  std::string folder_of_missing(const missing_question& missing) override;
  bool show_text_file(const std::string& path) override;
  bool can_ask() const override { return !asking_stopped_; }

  /// A window that works on the project: as long as this lives, what is asked is asked by it.
  class asking_window {
   public:
    asking_window(wx_prompts& ask, wxWindow& window) : ask_(ask) {
      ask_.askers_.push_back(&window);
    }
    ~asking_window() { ask_.askers_.pop_back(); }
    asking_window(const asking_window&) = delete;
    asking_window& operator=(const asking_window&) = delete;

   private:
    wx_prompts& ask_;
  };

  /// Places in the project for what was found before a run.
  struct finding_places {
    std::function<bool(const finding&)> has;
    std::function<void(const finding&)> ask_for;  ///< the user wants to see it, and no run
  };
  void lead_to(finding_places places) { places_ = std::move(places); }

  /// Shows a text (native path) that no program of the user's shows.
  void show_texts_by(std::function<void(const std::string& path)> show) {
    show_text_ = std::move(show);
  }

  /// Whether a box or dialog stands: whoever asked is in the middle of it.
  bool asking() const { return asking_ > 0; }

  /// From now on nothing is shown: each box and dialog is answered as if it was closed at once.
  void stop_asking() { asking_stopped_ = true; }

 private:
  wxWindow* parent() const;
  int show(wxDialog& dialog);
  std::string choose(const file_dialog& dialog, long style);

  wxWindow& owner_;
  std::vector<wxWindow*> askers_;  ///< each stands over the one before
  dialog_folders folders_;
  finding_places places_;
  std::function<void(const std::string&)> show_text_;
  int asking_ = 0;
  bool asking_stopped_ = false;
};

}  // namespace corvane
