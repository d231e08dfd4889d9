#include "ui/main_window.h"

#include "authoring/author.h"
#include "authoring/earlier_disc.h"
#include "authoring/last_disc.h"
#include "authoring/navigation_xml.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "project/change_notes.h"
#include "project/disc_of.h"
#include "project/dropped_files.h"
#include "project/missing_tools.h"
#include "project/moved_commands.h"
#include "project/preferences.h"
#include "project/project_file.h"
#include "project/recent_projects.h"
#include "project/title_commands.h"
#include "tools/still_video.h"
#include "tools/xml_editor.h"
#include "ui/command_bars.h"
#include "ui/disc/project_check.h"
#include "ui/disc/xmleditor_window.h"
#include "ui/editor/file_pictures.h"
#include "ui/editor/menu_windows.h"
#include "ui/import/import_window.h"
#include "ui/item_details.h"
#include "ui/map/project_map.h"
#include "ui/project_view.h"
#include "ui/still/still_window.h"
#include "ui/video/chapter_window.h"
#include "ui/widgets/control_name.h"
#include "ui/widgets/file_drop.h"
#include "ui/widgets/icons.h"
#include "ui/widgets/layout.h"
#include "ui/widgets/telling_status_bar.h"
#include "ui/widgets/wx_text.h"

#include <wx/accel.h>
#include <wx/control.h>
#include <wx/menu.h>
#include <wx/toolbar.h>

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

constexpr int poll_milliseconds = 100;
constexpr int draft_milliseconds = 300;
constexpr int told_pane = 0, file_pane = 1;

/// Sets a flag as long as it lives.
class raised {
 public:
  explicit raised(bool& flag) : flag_(flag), before_(flag) { flag_ = true; }
  ~raised() { flag_ = before_; }
  raised(const raised&) = delete;
  raised& operator=(const raised&) = delete;

 private:
  bool& flag_;
  bool before_;
};

/// "disc.cvp, not saved (/home/u/films)".
std::string project_name(const document& doc) {
  const std::string stored = stored_from_native(doc.file());
  const std::string name(file_name_of(stored));
  const std::string mark = doc.is_unsaved() ? ", not saved" : "";
  if (name.empty())
    return "no project file" + mark;
  const std::string folder = native_from_stored(stored.substr(0, stored.size() - name.size()));
  return name + mark + " (" + folder + ")";
}

}  // namespace

main_window::main_window(std::string app, const std::string& media_folder)
    : wxFrame(nullptr, wxID_ANY, version_title, wxDefaultPosition, wxDefaultSize,
              wxDEFAULT_FRAME_STYLE, "main"),
      app_(std::move(app)),
      prefs_(user_settings()),
      ask_(*this, *prefs_, media_folder),
      recovery_(join_path(app_, "kept")),
      document_(ask_, *prefs_),
      lock_(app_),
      display_(*this, [this] { stop_run(); }),
      launcher_(make_process_launcher()),
      user_desktop_(make_desktop()),
      runner_(display_, ask_, *launcher_, lock_, app_),
      // Once the key has been dealt with: a message may follow.
      guide_key_([this](const char* page) { CallAfter([this, page] { show_guide(page); }); }) {
  name_control(*this, "main");
  // Drawn while the display brings the window up: only the desktop shows them.
  CallAfter([this] { SetIcons(program_icon()); });
  make_controls();
  bind_keys();
  Timer1_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
    const raised in_command(in_command_);  // at its end the run tells its outcome
    let_timer(false);                      // no pass begins in another
    runner_.update();
    if (runner_.watching())
      let_timer(true);
    tell_restored();
  });
  draft_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { keep_draft(); });
  end_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { end(); });
  Bind(wxEVT_CLOSE_WINDOW, &main_window::on_close, this);
  check_ = std::make_unique<project_check>(*this);
  map_ = std::make_unique<project_map>(*this, check_->facts());
  details_ = std::make_unique<item_details>(check_->facts(), [this] { return view_->details(); });
  ask_.lead_to({[this](const finding& f) { return check_->has_place(f); },
                [this](const finding& f) { to_repair_ = f; }});
  // It may come when the window has gone.
  ask_.show_texts_by([window = wxWeakRef<main_window>(this)](const std::string&) {
    if (window != nullptr)
      window->display_.show_last_log();
  });
  Bind(wxEVT_IDLE, &main_window::on_idle, this);
  start_up(document_);
  document_.keep_in(&recovery_);
  refresh();
}

// A window that works on the project must not outlive it.
main_window::~main_window() {
  details_.reset();  // windows that go move the keys about, and what is shown with them
  keep_draft();      // the session may have ended while it was open
  document_.keep_in(nullptr);
  if (editor_ != nullptr)
    delete editor_.get();
}

void main_window::make_controls() {
  bars_ = std::make_unique<command_bars>(*this);
  SetStatusBar(new telling_status_bar(this, {-3, -2}));
  project_view::handlers on;
  on.select = [this](int row) { document_.p.selected = row; };
  on.titleup = [this] { run("move title up", titleup_command); };
  on.titledown = [this] { run("move title down", titledown_command); };
  on.insert = [this] { add_title(); };
  on.remove = [this] { run("remove title", remove_title_command); };
  on.open = [this] { edit_chapters(*this); };
  on.move = [this](int row) {
    run("move title", [row](document& doc) { movetitle_command(doc, row); });
  };
  on.context = [this] {
    return may_command() ? bars_->context_menu(title_items()).release() : nullptr;
  };
  on.add_menu = [this] { add_menu(*this); };
  on.edit_menu = [this] { edit_selected_menu(*this); };
  on.remove_menu = [this] { remove_selected_menu(*this); };
  on.no_menus = [this] { focus_titles(); };
  on.menu_context = [this] {
    return may_command() ? bars_->context_menu(menu_items()).release() : nullptr;
  };
  on.show_details = [this] { show_details(); };
  on.open_folder = [this] { tell_if(user_desktop_->show_folder(last_disc_.folder)); };
  on.play = [this] { tell_if(user_desktop_->play_disc(last_disc_.to_play())); };
  on.show_log = [this] { display_.show_last_log(); };
  on.findings = [this] { check_->show(); };
  on.region = [this](const std::string& region) {
    run("change DVD format", [&region](document& doc) { region_command(doc, region); });
  };
  view_ = new project_view(this, std::move(on));
  view_->SetDropTarget(new file_drop([this](const std::vector<std::string>& p) { drop(p); }));

  wxSize least = view_->least_size();
  least.IncTo(wxSize(GetToolBar()->GetBestSize().x, 0));
  SetMinClientSize(least);
  SetClientSize(FromDIP(wxSize(layout::main_width, layout::main_height)));
  // What the menu bar and the tool bar take is known once the window stands.
  Bind(wxEVT_SIZE, [this, least](wxSizeEvent& event) {
    if (GetMinClientSize() != least)
      SetMinClientSize(least);
    event.Skip();
  });
}

void main_window::bind_keys() {
  std::vector<wxAcceleratorEntry> entries;
  for (const command_key& key : main_keys()) {
    const int id = wxWindow::NewControlId();
    Bind(
        wxEVT_MENU, [this, run = key.run](wxCommandEvent&) { run(*this); }, id);
    wxAcceleratorEntry entry;
    entry.FromString(key.keys);
    entries.emplace_back(entry.GetFlags(), entry.GetKeyCode(), id);
  }
  SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(entries.size()), entries.data()));
}

bool main_window::may_command() const {
  return !in_command_ && !editor_is_open_ && !ending_ && !runner_.running();
}

void main_window::run(const char* name, const std::function<void(document&)>& command) {
  if (!may_command())
    return;
  {
    const raised in_command(in_command_);
    left_by_run_.clear();
    const document::step step(document_, name);
    const corvane::project before = document_.p;
    command(document_);
    note_ = change_note(before, document_.p);
  }
  if (runner_.watching())
    let_timer(true);
  refresh();
}

void main_window::open_editor(const char* name,
                              const std::function<wxTopLevelWindow*(lent_project)>& open) {
  if (!may_command())
    return;
  editor_is_open_ = true;
  note_.clear();
  check_->let_commands(false);
  map_->let_commands(false);
  editor_ = open({document_, ask_, name, draft_, [this] {
                    editor_is_open_ = false;
                    check_->let_commands(true);
                    map_->let_commands(true);
                    focus_list();
                    check_->come_back();
                    map_->come_back();
                  }});
}

void main_window::undo() {
  if (!may_command())
    return;
  note_.clear();
  document_.undo();
  refresh();
}

void main_window::redo() {
  if (!may_command())
    return;
  note_.clear();
  document_.redo();
  refresh();
}

// The status bar tells where the page is: a browser that does not come up says nothing.
void main_window::show_guide(const char* page) {
  if (ending_)
    return;
  const failure why = open_guide(*user_desktop_, page);
  if (!why) {
    SetStatusText(wx_text("User guide: " + join_path(guide_folder(), page)), told_pane);
    return;
  }
  const raised in_command(in_command_);
  tell(*why);
}

bool main_window::raise_editor() {
  if (!editor_is_open_ || editor_ == nullptr)
    return false;
  editor_->Raise();
  return true;
}

void main_window::author() {
  prepared_run prepared;
  bool edit = false;
  run("author dvd", [&](document& doc) {
    author_equipment equipment{app_, lock_, runner_, [&edit] { edit = true; }, {}};
    equipment.material = material();
    stop_question_ = "Stop authoring?  The disc will not be complete.";
    const author_result result = author_command(doc, equipment, prepared);
    if (result == author_result::started || result == author_result::editing)
      last_output_ = prepared.where.out;
    authors_ = result == author_result::started;
  });
  repair_what_was_asked_about();
  if (edit)
    edit_xml(prepared);
}

void main_window::edit_xml(const prepared_run& prepared) {
  bool opened = false;
  open_editor("edit xml", [&](lent_project lent) -> wxTopLevelWindow* {
    opened = true;
    document& doc = lent.doc();
    const auto generated = [&doc, where = prepared.where] {
      return config_xml(disc_of(doc.p), {}, where);
    };
    auto* editor =
        new xmleditor_window(this, std::move(lent), xmleditor(doc, {app_, lock_, generated}),
                             [this, prepared](bool proceed) {
                               if (proceed)
                                 start(prepared);
                             });
    editor->Show();
    return editor;
  });
  if (!opened)
    lock_.release();
}

void main_window::start(const prepared_run& prepared) {
  run("author dvd", [&](document& doc) {
    author_equipment equipment{app_, lock_, runner_, {}, {}};
    equipment.material = material();
    authors_ = authordvd(doc, equipment, prepared) == author_result::started;
  });
  repair_what_was_asked_about();
}

// The place of a finding was the answer to the question about it.
void main_window::repair_what_was_asked_about() {
  if (const auto f = std::exchange(to_repair_, std::nullopt))
    check_->repair(*f);
}

void main_window::still() {
  std::string refused;
  run("create m2v still", [&](document& doc) {
    const media_pictures pictures;
    still_equipment equipment{app_, lock_, runner_, pictures,
                              [&refused](const std::string& picture) { refused = picture; }};
    stop_question_ = "Stop making the still?  The video will not be complete.";
    still_command(doc, equipment);
  });
  if (!refused.empty())
    open_still_window(*this, refused, true);
}

void main_window::make_still(const picture_still& still) {
  run("create m2v still", [&](document& doc) {
    const media_pictures pictures;
    still_equipment equipment{app_, lock_, runner_, pictures};
    stop_question_ = "Stop making the still?  No video will be left.";
    start_still(doc, equipment, picture_still_script(app_, still),
                [app = app_, still](run_outcome outcome) {
                  return settle_picture_still(app, still, outcome);
                });
  });
}

void main_window::show_log() {
  display_.show_log();
}

void main_window::clear_log() {
  display_.clear_log();
}

void main_window::check_project() {
  check_->check();
}

void main_window::show_run_findings() {
  check_->show_run();
}

void main_window::show_disc_map() {
  map_->show();
}

material_equipment main_window::material() {
  return check_->material();
}

void main_window::show_findings(const finding_list& findings) {
  view_->show_findings(findings);
  show_details();
}

// What is shown there may have become known meanwhile.
void main_window::show_details() {
  if (details_)
    details_->show(document_.p, view_->shown_item());
}

int main_window::selected_menu() const {
  const finding_item shown = view_->shown_item();
  return shown.whole == finding_item::whole_kind::menu ? shown.number : 0;
}

void main_window::select_title(int row) {
  run("select title", [row](document& doc) {
    if (row < title_count(doc.p))
      doc.p.selected = row;
  });
  Raise();
  focus_titles();
}

// The findings wait until whatever else is on has ended: a conversation must not see the window
// change under it, and a run needs the disk.
void main_window::on_idle(wxIdleEvent& event) {
  event.Skip();
  if (draft_.keep && !draft_timer_.IsRunning())
    draft_timer_.StartOnce(draft_milliseconds);
  if (!in_command_ && !ending_ && !runner_.running() &&
      (details_->work() || check_->work() || map_->work()))
    event.RequestMore();
}

// Each event of an open window may have changed what stands there.
void main_window::keep_draft() {
  if (!draft_.keep)
    return;
  project copy = document_.p;
  draft_.keep(copy);
  document_.keep_draft(copy, draft_.caption);
}

void main_window::drop_down(const std::string& tool_caption) {
  if (wxMenu* menu = bars_->drop_down(tool_caption); menu != nullptr && may_command())
    GetToolBar()->PopupMenu(menu);
}

// One after the other: what is told stands until it was read, and a project that came meanwhile
// would be refused as any command is then.
void main_window::begin(const failure& unusable, const std::string& project) {
  run("start", [&](document& doc) {
    if (unusable) {
      tell("The program folder " + app_ + " cannot be used: " + *unusable + ".");
      return;
    }
    settle_interrupted_runs(doc, app_, lock_);
    tell_missing_tools(doc, app_);
  });
  if (unusable)
    return;
  bool recovered = false;
  run("recover project", [&](document& doc) { recovered = recover_command(doc, recovery_); });
  const bool is_open = project.empty() || (recovered && document_.file() == project);
  if (!is_open && recovered)
    run("load project", [&](document& doc) { load_recent_command(doc, project); });
  else if (!is_open)
    load(project);
  focus_titles();
}

void main_window::add_title() {
  std::string refused;
  run("add title", [&refused](document& doc) { refused = open_or_refuse(doc); });
  if (!refused.empty())
    open_import(*this, {refused});
}

void main_window::load(const std::string& path) {
  run("load project", [&path](document& doc) { loadprojectf(doc, path); });
}

// Without the tool that imports, films are named with the other files that nothing can be done
// with. One window opens: a picture among films waits for the next drop, as do all pictures but
// one.
void main_window::drop(const std::vector<std::string>& paths) {
  if (!may_command())
    return;
  std::vector<std::string> films, pictures = pictures_for_stills(paths), others = paths;
  if (missing_tools(app_, {import_tool().name}).empty()) {
    films = films_to_import(paths);
    const auto moving = std::stable_partition(pictures.begin(), pictures.end(), is_for_still);
    films.insert(films.end(), moving, pictures.end());
    pictures.erase(moving, pictures.end());
  }
  const auto leads_elsewhere = [&](const std::string& file) {
    return std::ranges::find(films, file) != films.end() ||
           std::ranges::find(pictures, file) != pictures.end();
  };
  std::erase_if(others, leads_elsewhere);
  if (!others.empty() || paths.empty())
    run("add dropped files", [&](document& doc) {
      const std::vector<std::string> refused = drop_files(doc, others);
      films.insert(films.end(), refused.begin(), refused.end());
    });
  if (pictures.size() > 1 || (!films.empty() && !pictures.empty()))
    run("add dropped files", [this](document&) {
      tell("Pictures become stills one by one.  Please drop each picture alone.");
    });
  else if (!pictures.empty())
    open_still_window(*this, pictures.front(), false);
  if (!films.empty())
    open_import(*this, films);
}

void main_window::tell(const std::string& text) {
  message_box box;
  box.text = text;
  box.picture = icon::information;
  ask_.message(box);
}

void main_window::refresh() {
  const project& p = document_.p;
  view_->show_project(p);
  bars_->item("isocreate")->Check(p.isocreate);
  bars_->item("cleanup")->Check(p.cleanup);
  bars_->item("jumptable")->Check(p.jumptable);
  bars_->item("editxml")->Check(p.editxml);
  show_steps();
  show_recent();
  show_moved_commands();
  show_details();
  check_->look();
  map_->look();
  show_status();
}

// "undo remove title"
void main_window::show_steps() {
  const auto show = [this](const char* name, const std::optional<std::string>& step,
                           const char* caption, const char* keys) {
    wxMenuItem* const item = bars_->item(name);
    item->SetItemLabel(wx_text(caption + (step ? " " + *step : std::string())) + "\t" + keys);
    item->Enable(step.has_value());
  };
  show("undo", document_.undo_name(), "&undo", "Ctrl+Z");
  show("redo", document_.redo_name(), "&redo", "Ctrl+Y");
}

void main_window::show_moved_commands() {
  const std::vector<moved_command> moved = moved_commands(document_.p);
  const bool can_be_carried =
      std::ranges::any_of(moved, [](const moved_command& one) { return one.now.has_value(); });
  view_->show_notice(moved_commands_note(moved), can_be_carried ? "&carry them along" : "",
                     [this] { run("carry commands along", carry_commands_along); });
}

void main_window::show_recent() {
  const std::vector<std::string> files = recent_projects(*prefs_);
  if (files == shown_recent_)
    return;
  shown_recent_ = files;
  wxMenu& menu = *bars_->item("recent")->GetSubMenu();
  while (menu.GetMenuItemCount() > 0)
    menu.Destroy(menu.FindItemByPosition(0));
  for (const std::string& file : files) {
    const int id = wxWindow::NewControlId();
    menu.Append(id, wxControl::EscapeMnemonics(wx_text(file)));
    menu.Bind(
        wxEVT_MENU,
        [this, file](wxCommandEvent&) {
          run("load project", [&file](document& doc) { load_recent_command(doc, file); });
        },
        id);
  }
  bars_->item("recent")->Enable(!files.empty());
}

void main_window::show_status() {
  const char* const hint =
      document_.p.List1.empty()
          ? "Click \"add title\" or drop video and audio streams here to begin."
          : "";
  const failure not_kept = recovery_.trouble();
  SetStatusText(
      wx_text(not_kept ? "Should the program die, changes since the last save are lost: " +
                             *not_kept + "."
              : !left_by_run_.empty() ? left_by_run_
              : !note_.empty()        ? note_
                                      : hint),
      told_pane);
  SetStatusText(wx_text(project_name(document_)), file_pane);
}

// Of a run that the user stopped himself the status bar tells; one that failed has left him with
// the question what has become of his disc.
void main_window::run_has_ended(const run_end& end) {
  left_by_run_.clear();
  for (const std::string& note : end.notes)
    left_by_run_ += (left_by_run_.empty() ? "" : "; ") + note;
  if (!left_by_run_.empty())
    left_by_run_ =
        (end.outcome == run_outcome::stopped ? "The run was stopped: " : "The run failed: ") +
        left_by_run_ + ".";
  if (end.outcome == run_outcome::failed)
    restored_ = end.restored;
  if (end.findings)
    check_->take_run(*end.findings);
  if (std::exchange(authors_, false) && end.outcome != run_outcome::none) {
    last_disc_ = look_at_last_disc(last_output_, document_.p.isocreate, end.outcome);
    view_->show_last_disc(last_disc_);
  }
  show_status();
}

void main_window::tell_if(const failure& why) {
  if (why)
    tell("That cannot be done: " + *why + ".");
}

void main_window::tell_restored() {
  if (!restored_.empty())
    tell(std::exchange(restored_, {}));
}

// The frame itself stays enabled, so that its close box can still ask whether to stop the run.
void main_window::let_commands(bool enabled) {
  bars_->enable(enabled);
  view_->Enable(enabled);
  check_->let_commands(enabled);
  map_->let_commands(enabled);
  if (enabled)
    focus_list();
}

// Without a focus the window's keys do nothing. GTK selects the first row of a list that gets it;
// what the user has selected stays selected, and nothing else.
void main_window::focus_titles() {
  const int selected = document_.p.selected;
  view_->focus_titles();
  document_.p.selected = selected;
  refresh();
}

// After another window, or a run.
void main_window::focus_list() {
  if (selected_menu() == 0) {
    focus_titles();
    return;
  }
  view_->focus_list();
  refresh();
}

void main_window::let_timer(bool enabled) {
  if (enabled)
    Timer1_.Start(poll_milliseconds);
  else
    Timer1_.Stop();
}

// The polling rests while the question stands: a run that ended meanwhile would put its own
// message over it.
bool main_window::stop_run() {
  if (!runner_.running())
    return true;
  if (in_command_)
    return false;
  const raised in_command(in_command_);
  const bool polled = Timer1_.IsRunning();
  let_timer(false);
  message_box question;
  question.text = stop_question_;
  question.picture = icon::exclamation;
  question.choice = buttons::yes_no;
  if (ask_.message(question) != answer::yes) {
    let_timer(polled);
    return false;
  }
  runner_.stop();
  tell_restored();
  return true;
}

// A dialog may stand over a command, or over a window that has the project, and its loop runs
// timers and deletes windows. So this window goes when whoever asked has come back, and nothing is
// asked any more: a dialog that opened between Destroy and the deletion would be such a loop again.
// A command that comes back may have started a run.
void main_window::end() {
  ending_ = true;
  ask_.stop_asking();
  if (runner_.running())
    runner_.stop();
  if (in_command_ || ask_.asking())
    end_timer_.StartOnce(poll_milliseconds);
  else
    Destroy();
}

void main_window::on_close(wxCloseEvent& event) {
  if (!event.CanVeto()) {
    // The session ends, and maybe this program at once.
    keep_draft();
    document_.end(false);
    end();
    return;
  }
  if (in_command_ || editor_is_open_ || !stop_run()) {
    raise_editor();
    event.Veto();
    return;
  }
  close_end closed = close_end::stays;
  {
    const raised in_command(in_command_);
    closed = close_project(document_);
  }
  if (closed != close_end::stays) {
    document_.end(closed == close_end::given_up);
    end();
  } else {
    refresh();
    event.Veto();
  }
}

}  // namespace corvane
