#include "authoring/verify_command.h"

#include "authoring/asked_disc.h"
#include "authoring/foreseen_run.h"
#include "authoring/navigation_xml.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/edited_xml.h"
#include "project/messages.h"
#include "tools/finding_list.h"

#include <filesystem>
#include <memory>
#include <utility>

namespace corvane {
namespace {

namespace fs = std::filesystem;

constexpr int disc_slice_milliseconds = 100;

/// The disc of the file that was chosen: of VIDEO_TS.IFO the folder that it makes a disc.
std::string disc_of_file(const std::string& file) {
  const fs::path path = path_of(file);
  if (lower_extension_of(file) != "ifo")
    return file;
  const fs::path folder = path.parent_path();
  const bool inside = upper(text_of(folder.filename())) == "VIDEO_TS";
  return text_of(inside ? folder.parent_path() : folder);
}

/// Has the project's files read and foresees its disc. Returns null after it has told that the
/// hand-edited XML cannot be read.
std::shared_ptr<const foreseen_run> foresee(document& doc, const verification_equipment& e) {
  const project& p = doc.p;
  run_paths where;
  where.app = e.app;
  where.out = output_folder(folder_of_custom_xml(edited_xml(p)));
  const result<disc_description> asked = asked_disc(p, where);
  if (!asked) {
    say(doc, icon::exclamation,
        "The hand-edited XML cannot be read: " + sanitized(asked.error) +
            ".  The disc cannot be held against it.");
    return nullptr;
  }
  if (e.material.facts != nullptr) {
    examination look(*asked, examination::depth::whole_files, *e.material.facts, {});
    if (e.material.examine)
      e.material.examine(look);
    else
      while (look.step(disc_slice_milliseconds)) {
      }
    while (look.step_beginnings(disc_slice_milliseconds)) {
    }
  }
  return std::make_shared<const foreseen_run>(foreseen_of(p, where, e.material.facts, {}));
}

bool read_whole_disc(verification& look, const verification_equipment& e) {
  if (e.read)
    return e.read(look);
  while (look.step(disc_slice_milliseconds)) {
  }
  return true;
}

}  // namespace

std::optional<verified_disc> verify_command(document& doc, const verification_equipment& e) {
  const std::string file = doc.ask.open_file({"choose the VIDEO_TS.IFO or the image of a disc",
                                              "DVD(VIDEO_TS.IFO, *.iso)|*.ifo;*.iso", ""});
  if (file.empty())
    return std::nullopt;
  verified_disc disc;
  disc.path = disc_of_file(file);
  disc_place where = place_of_disc(disc.path);
  std::shared_ptr<const foreseen_run> foreseen;
  if (!disc_of(doc.p).titles.empty()) {
    message_box question;
    question.text =
        "Is this the disc of the project that is open?\n\nYes: it is held against what the project "
        "asks for.\nNo: only what a disc must be by itself is looked at.";
    question.picture = icon::information;
    question.choice = buttons::yes_no_cancel;
    const answer said = doc.ask.message(question);
    if (said == answer::cancel)
      return std::nullopt;
    disc.compared = said == answer::yes;
  }
  if (disc.compared) {
    foreseen = foresee(doc, e);
    if (!foreseen)
      return std::nullopt;
    if (foreseen->image)
      where = place_with_image(disc.path);
  }
  verification look(where, foreseen);
  if (!read_whole_disc(look, e))
    return std::nullopt;
  disc.findings = look.findings();
  disc.table = disc_table(look.found(), look.foreseen());
  return disc;
}

std::string verified_text(const verified_disc& disc) {
  const finding_list findings(disc.findings, files_read::whole);
  std::string text = disc.path + "\n" + findings.summary() + "\n\n";
  for (const finding& f : findings.findings())
    text += text_of(f) + "\n";
  return text + disc.table;
}

void save_verified(document& doc, const verified_disc& disc) {
  save_text(doc, {"save what was found", "text file(*.txt)|*.txt", "disc.txt"},
            verified_text(disc));
}

}  // namespace corvane
