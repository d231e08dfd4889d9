// A place to author discs in: a project, a program folder and an output folder of a test's own,
// and corvane-author run on them as a person would.
#pragma once

#include "command.h"
#include "disc.h"
#include "media.h"
#include "project/project.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace corvane::disc {

/// Adds a title as the commands of the window would: `streams` are stored paths, video first.
void add_title(project& p, const std::vector<std::string>& streams,
               const std::string& chapters = "00:00:00.00", const std::string& delay = "0");

/// Adds a menu with its options row and its button records.
void add_menu(project& p, const std::string& video, const std::string& audio,
              const std::vector<std::string>& buttons,
              const std::string& options = "0\t00:00:00.0\t00:00:00.0\t1");

/// A project with one short NTSC title of one AC-3 stream.
project short_project();

/// Two short titles, a menu with a button for each, and an image.
project small_project();

/// Commands as text.
std::vector<std::string> texts(const std::vector<vm_command>& commands);

class studio {
 public:
  /// Folder names are used as they stand, whatever is in them.
  explicit studio(std::string work = "work", std::string out = "disc", std::string app = "home");

  /// Saves the project (unless there already under this text) and runs corvane-author on it.
  finished author(const project& p, const std::vector<std::string>& options = {}) const;

  /// The same, and the disc that it made. Fails the test when there is none.
  contents authored(const project& p, const std::vector<std::string>& options = {}) const;

  /// What is in the output folder.
  result<contents> disc() const { return read_disc(out()); }

  std::string out() const { return folder_.path(work_ + "/" + out_); }
  std::string image() const { return out() + ".iso"; }
  std::string app() const { return folder_.path(work_ + "/" + app_); }
  std::string project_file() const { return folder_.path(work_ + "/project.cvp"); }
  const testing_support::temporary_folder& folder() const { return folder_; }

  /// Copies a sample file into the work folder under another name; gives its stored path.
  std::string copy_media(const std::string& sample, const std::string& name) const;

 private:
  testing_support::temporary_folder folder_;
  std::string work_, out_, app_;
};

}  // namespace corvane::disc
