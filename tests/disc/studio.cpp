#include "studio.h"

#include "judge.h"
#include "platform/files/files.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"

#include <filesystem>

namespace corvane::disc {

void add_title(project& p, const std::vector<std::string>& streams, const std::string& chapters,
               const std::string& delay) {
  std::string row;
  for (const std::string& stream : streams)
    row += (row.empty() ? "" : "/") + stream;
  p.List11.push_back(row);
  rebuild_List1(p);
  p.chapters.push_back(chapters);
  p.delay.push_back(delay);
  p.subtitledata.push_back("<none>");
  p.subtitleoptions.push_back(default_subtitleoptions(p.globalregion));
}

void add_menu(project& p, const std::string& video, const std::string& audio,
              const std::vector<std::string>& buttons, const std::string& options) {
  std::string element;
  for (const std::string& record : buttons)
    element += (element.empty() ? "" : "|") + record;
  const bool first = p.menulist.empty();
  p.menulist.push_back(video + "/" + audio);
  p.moremenuoptions.push_back(options);
  if (first)
    p.menubuttons.clear();
  p.menubuttons.push_back(element);
}

project short_project() {
  project p;
  add_title(p, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3")});
  return p;
}

project small_project() {
  project p = short_project();
  add_title(p, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3")}, "0,0:01");
  add_menu(
      p, stored_media("clip-ntsc.m2v"), stored_media("clip.ac3"),
      {"100/100/200/150/jump title 1/yellow/white", "100/200/200/250/jump title 2/yellow/white"});
  p.isocreate = true;
  return p;
}

std::vector<std::string> texts(const std::vector<vm_command>& commands) {
  std::vector<std::string> all;
  all.reserve(commands.size());
  for (const vm_command& c : commands)
    all.push_back(c.text());
  return all;
}

studio::studio(std::string work, std::string out, std::string app)
    : work_(std::move(work)), out_(std::move(out)), app_(std::move(app)) {
  EXPECT_FALSE(make_folders(folder_.path(work_)));
}

finished studio::author(const project& p, const std::vector<std::string>& options) const {
  const failure unwritten = write_file(project_file(), project_text(p));
  EXPECT_FALSE(unwritten) << *unwritten;
  command c;
  c.words = {CORVANE_AUTHOR};
  c.words.insert(c.words.end(), options.begin(), options.end());
  c.words.insert(c.words.end(), {project_file(), out()});
  c.environment["CORVANE_HOME"] = app();
  return run(c);
}

contents studio::authored(const project& p, const std::vector<std::string>& options) const {
  const finished done = author(p, options);
  EXPECT_EQ(done.status, 0) << done.out;
  EXPECT_EQ(disagreement_text(out()), "");
  if (file_exists(image())) {
    EXPECT_EQ(disagreement_text(image()), "");
  }
  auto found = disc();
  EXPECT_TRUE(found) << found.error << "\n" << done.out;
  return found ? *found : contents();
}

std::string studio::copy_media(const std::string& sample, const std::string& name) const {
  const std::string to = folder_.path(work_ + "/" + name);
  EXPECT_FALSE(make_folders(text_of(path_of(to).parent_path())));
  std::filesystem::copy_file(path_of(media(sample)), path_of(to));
  return stored_from_native(to);
}

}  // namespace corvane::disc
