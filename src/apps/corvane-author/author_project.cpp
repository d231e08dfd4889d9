#include "apps/corvane-author/author_project.h"

#include "apps/corvane-author/check_project.h"
#include "apps/corvane-author/console_listener.h"
#include "apps/corvane-author/console_prompts.h"
#include "apps/corvane-author/verify_disc.h"
#include "authoring/author.h"
#include "authoring/earlier_disc.h"
#include "authoring/navigation_xml.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "platform/processes/interrupt.h"
#include "platform/processes/process.h"
#include "project/edited_xml.h"
#include "project/missing_tools.h"
#include "project/preferences.h"
#include "project/project_file.h"
#include "runner/run_files.h"

#include <chrono>
#include <memory>

namespace corvane {
namespace {

using namespace std::chrono_literals;

/// How often the runner is asked to look, as in the window.
constexpr auto polling_interval = 100ms;

/// Loads the project and puts the options over its own switches. False when it was refused.
bool load(document& doc, const author_arguments& arguments, const std::string& path) {
  start_up(doc);
  // A look at project or disc tells itself of files that are missing.
  const bool looks = arguments.check || arguments.verify;
  if (looks ? !load_to_look(doc, path) : !loadprojectf(doc, path))
    return false;
  doc.p.isocreate = arguments.iso.value_or(doc.p.isocreate);
  doc.p.cleanup = arguments.cleanup;
  doc.p.editxml = false;
  return true;
}

/// Hand-edited navigation XML names the output folder itself; authoring elsewhere than the command
/// line says would be a surprise.
failure why_not_there(const project& p, const std::string& output) {
  if (edited_xml(p).empty())
    return std::nullopt;
  const std::string folder = folder_of_custom_xml(edited_xml(p));
  if (!folder.empty() && (absolute_path(folder) == output || same_place(folder, output)))
    return std::nullopt;
  return "the project's hand-edited navigation XML authors into \"" + folder + "\", not into \"" +
         output + "\".  Name that folder as OUTPUT-FOLDER, or discard the XML in the main window.";
}

int status_of(author_result result) {
  switch (result) {
    case author_result::started:
    case author_result::editing:  // never: there is no editor here
    case author_result::prepared:
      return disc_authored;
    case author_result::not_started:
      return tool_reported_error;
    case author_result::tool_missing:
      return tool_not_installed;
    case author_result::nothing_to_author:
    case author_result::cancelled:
    case author_result::refused:
    case author_result::holds_disc:
    case author_result::folder_in_use:
    case author_result::not_written:
      return not_authorable;
  }
  return not_authorable;
}

/// Everything one run needs, made in the order of need.
struct run {
  run(report& out, document& opened, folder_lock& app_lock, const std::string& app)
      : report_(out),
        doc(opened),
        lock(app_lock),
        listener(out),
        launcher(make_process_launcher()),
        runner(listener, opened.ask, *launcher, lock, app),
        equipment{app, lock, runner, {}, {}} {}

  report& report_;
  document& doc;
  folder_lock& lock;
  console_listener listener;
  std::unique_ptr<process_launcher> launcher;
  shelled runner;
  author_equipment equipment;
  fact_store facts;
  prepared_run prepared;
};

int status_of(run_outcome outcome) {
  return outcome == run_outcome::success ? disc_authored : tool_reported_error;
}

int stop(run& r) {
  r.runner.stop();
  if (r.runner.outcome() != run_outcome::stopped)
    return status_of(r.runner.outcome());
  r.report_.message("stopped; the tools have been ended.");
  return 128 + interrupt_number();
}

/// Polls until the script has ended; gives the exit status.
int watch(run& r) {
  while (r.runner.running()) {
    wait_or_interrupt(polling_interval);
    if (interrupt_number() != 0)
      return stop(r);
    r.runner.update();
    // After an error of its own the runner polls no more and has said so.
    if (r.runner.running() && !r.runner.watching()) {
      r.runner.stop();
      return tool_reported_error;
    }
  }
  return status_of(r.runner.outcome());
}

int start_and_watch(run& r) {
  if (interrupt_number() != 0) {
    r.lock.release();
    return 128 + interrupt_number();
  }
  const author_result started = authordvd(r.doc, r.equipment, r.prepared);
  if (started != author_result::started)
    return status_of(started);
  const int status = watch(r);
  r.report_.end_progress();
  if (status == tool_reported_error)
    r.listener.say_errors();
  r.listener.say_findings();
  r.report_.line("log: " + join_path(r.equipment.app, run_file::log));
  return status;
}

int prepare_and_run(const author_arguments& arguments, run& r) {
  r.equipment.replace_earlier_disc = arguments.replace;
  r.equipment.material = {&r.facts, [&](examination& e) {
                            if (arguments.skip_look)
                              return look_end::skipped;
                            return read_all_files(e, r.report_, false) ? look_end::whole
                                                                       : look_end::stopped;
                          }};
  const author_result prepared = prepare_run(r.doc, r.equipment, r.prepared);
  if (prepared == author_result::cancelled && interrupt_number() != 0) {
    r.report_.end_progress();
    r.report_.message("stopped; nothing was written.");
    return 128 + interrupt_number();
  }
  if (prepared == author_result::holds_disc)
    r.report_.message("\"" + r.prepared.where.out +
                      "\" already holds a DVD or its image.  Give --replace to replace it.");
  if (prepared != author_result::prepared)
    return status_of(prepared);
  if (!arguments.prepare)
    return start_and_watch(r);
  for (const std::string& file : r.prepared.files)
    r.report_.line(file);
  r.lock.release();
  return disc_authored;
}

}  // namespace

int author_project(const author_arguments& arguments, report& out) {
  // Before the current folder changes.
  const std::string path = arguments.project.empty() ? "" : absolute_path(arguments.project);
  const std::string output = arguments.output.empty() ? "" : absolute_path(arguments.output);
  const std::string app = program_folder();
  if (const failure why = enter_program_folder(app)) {
    out.message(*why + ".");
    return not_authorable;
  }
  if (arguments.verify && path.empty())
    return verify_disc(nullptr, app, output, arguments.json, out);
  // The window's preferences are the user's; a run without it neither reads nor changes them.
  memory_settings prefs;
  console_prompts ask(out, output, arguments.force);
  document doc(ask, prefs);
  if (!arguments.check && !arguments.verify)
    tell_missing_tools(doc, app);
  // Makes the lock's file: loading looks for any file in the program folder.
  folder_lock lock(app);
  settle_interrupted_runs(doc, app, lock);
  if (!load(doc, arguments, path))
    return not_authorable;
  if (arguments.verify)
    return verify_disc(&doc.p, app, output, arguments.json, out);
  if (const failure why = output.empty() ? std::nullopt : why_not_there(doc.p, output)) {
    out.message(*why);
    return not_authorable;
  }
  if (arguments.check)
    return check_project(doc.p, app, output, arguments.json, out);
  run r(out, doc, lock, app);
  return prepare_and_run(arguments, r);
}

}  // namespace corvane
