// A program that is killed while it edits and saves.
#include "platform/files/files.h"
#include "project/project_file.h"
#include "project/project_text.h"
#include "project/recovery.h"
#include "project/title_rows.h"
#include "support/scripted_prompts.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <random>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace corvane {
namespace {

using testing_support::temporary_folder;

/// Numbers the changes that it does to a project, saves it now and then, and tells each number when
/// the change is done.
[[noreturn]] void edit_for_ever(const std::string& kept, const std::string& file, int told) {
  testing_support::scripted_prompts nobody;
  memory_settings prefs;
  document doc(nobody, prefs);
  recovery keeper(kept);
  doc.keep_in(&keeper);
  for (int change = 1;; ++change) {
    {
      const document::step step(doc, "change");
      doc.p.firstplay = std::to_string(change);
      add_title(doc.p, "\\a.vob");
      if (doc.p.List11.size() > 20)
        remove_title(doc.p, 0);
    }
    if (change % 7 == 0) {
      const document::step step(doc, "save");
      if (!write_file(file, project_text(doc.p)))
        doc.saved_to(file);
    }
    if (::write(told, &change, sizeof change) != sizeof change)
      ::_exit(1);
  }
}

int change_in(const std::string& text) {
  const auto loaded = parse_project(text);
  EXPECT_TRUE(loaded) << loaded.error;
  return loaded ? std::stoi("0" + loaded->firstplay) : -1;
}

TEST(KilledProgram, LosesAtMostItsLastChange) {
  std::mt19937 random(20);
  for (int round = 0; round < 200; ++round) {
    const temporary_folder folder;
    const std::string kept = folder.path("kept"), file = folder.path("p.cvp");
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    const pid_t child = ::fork();
    if (child == 0)
      edit_for_ever(kept, file, ends[1]);
    ::close(ends[1]);
    std::this_thread::sleep_for(std::chrono::microseconds(2000 + random() % 30000));
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    int last = 0;
    for (int change = 0; ::read(ends[0], &change, sizeof change) == sizeof change;)
      last = change;
    ::close(ends[0]);

    int found = 0;
    if (const auto saved = read_file(file, 1 << 20))
      found = change_in(*saved);
    recovery next(kept);
    for (const left_project& left : next.left())
      found = std::max(found, change_in(left.what().text));
    EXPECT_GE(found, last - 1) << "round " << round;
    if (HasFailure())
      return;
  }
}

}  // namespace
}  // namespace corvane
