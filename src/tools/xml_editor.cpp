#include "tools/xml_editor.h"

#include "formats/line_reader.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/edited_xml.h"
#include "project/messages.h"
#include "project/project_file.h"
#include "runner/run_files.h"

#include <cstdint>
#include <utility>

namespace corvane {
namespace {

// A project file with more could be saved, but not loaded again.
constexpr std::uintmax_t largest_xml = largest_project_file / 2;

answer ask_yes_no(document& doc, const std::string& text, bool enter_answers_yes) {
  message_box question;
  question.text = text;
  question.picture = icon::information;
  question.choice = buttons::yes_no;
  question.enter_answers_yes = enter_answers_yes;
  return doc.ask.message(question);
}

bool is_blank(std::string_view text) {
  return text.find_first_not_of(" \t\r\n") == std::string_view::npos;
}

std::string config_file(const std::string& app) {
  return join_path(app, run_file::navigation);
}

/// Each line followed by CR LF.
std::string lines_of(std::string_view text) {
  std::string lines;
  line_reader reader(text);
  while (const auto line = reader.next())
    lines.append(*line).append(crlf);
  return lines;
}

}  // namespace

xmleditor::xmleditor(document& doc, xmleditor_equipment e) : doc_(&doc), e_(std::move(e)) {
  if (const std::string& edited = edited_xml(doc.p); !edited.empty())
    opened_ = edited;
  else if (const auto text = read_file(config_file(e_.app), largest_xml))
    opened_ = lines_of(*text);
  restore();
}

void xmleditor::set_Text1(std::string_view text) {
  Text1_ = replace_all(text, "\r\n", "\n");
  Text1_ = replace_all(replace_all(Text1_, "\r", "\n"), "\n", crlf);
}

void xmleditor::keep_in(project& copy) const {
  if (Text1_ != opened_)
    copy.customxml = Text1_;
}

xmleditor_end xmleditor::close() {
  if (!may_close_with_fault())
    return xmleditor_end::stays_open;
  const answer wants_it_saved = ask_yes_no(*doc_, "Save changes?", Text1_ != opened_);
  if (wants_it_saved == answer::cancel || (wants_it_saved == answer::yes && !save()))
    return xmleditor_end::stays_open;
  if (ask_yes_no(*doc_, "Proceed with Authoring?", false) == answer::yes)
    return xmleditor_end::proceed;
  e_.lock.release();
  return xmleditor_end::declined;
}

// An empty text is no faulty one: it is how an edit is taken back.
bool xmleditor::may_close_with_fault() {
  if (is_blank(Text1_))
    return true;
  const auto found = fault();
  if (!found)
    return true;
  message_box question;
  question.text = "The XML is not well formed.  Line " + std::to_string(found->line) + ", column " +
                  std::to_string(found->column) + ": " + found->what +
                  ".\r\n\r\nClose the editor nevertheless?";
  question.picture = icon::exclamation;
  question.choice = buttons::ok_cancel;
  return doc_->ask.message(question) == answer::ok;
}

bool xmleditor::save() {
  const bool edited = !is_blank(Text1_);
  if (edited && Text1_.size() > largest_xml) {
    say(*doc_, icon::critical,
        "The text is too large for a project: it has more than " +
            std::to_string(largest_xml >> 20) + " megabytes.");
    return false;
  }
  const std::string text = edited ? Text1_ + std::string(crlf) : e_.generated();
  const std::string file = config_file(e_.app);
  if (const failure why = replace_file(file, text)) {
    say(*doc_, icon::critical,
        "The file \"" + sanitized(file) + "\" could not be written: " + *why + ".");
    return false;
  }
  const std::string customxml = edited ? Text1_ : std::string();
  if (doc_->p.customxml != customxml)
    doc_->p.saved = 0;
  doc_->p.customxml = customxml;
  return true;
}

void editxml_command(document& doc) {
  if (!doc.p.editxml)
    say(doc, icon::information,
        "This will allow you to customize the config.xml file, before the authoring process "
        "begins.  (This is useful if you wish to label the audio/subtitle streams, move titles to "
        "different titlesets, etc.)  For more information on the tags, read the DVDAuthor "
        "documentation, found here:  https://dvdauthor.sourceforge.net/doc/dvdauthor.html");
  doc.p.editxml = !doc.p.editxml;
}

}  // namespace corvane
