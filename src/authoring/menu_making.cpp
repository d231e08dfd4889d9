#include "authoring/menu_making.h"

#include "authoring/menu_shapes.h"
#include "disc/disc_description.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "import/encoder_complaints.h"
#include "import/encoder_progress.h"
#include "import/finish_import.h"
#include "import/menu_film.h"
#include "import/picture_still.h"
#include "import/unfinished_imports.h"
#include "platform/files/files.h"
#include "platform/files/held_folder.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/missing_tools.h"
#include "runner/output_lines.h"
#include "runner/run_files.h"
#include "runner/shelled.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <future>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

constexpr int page_width = 720;
constexpr std::uintmax_t largest_making_log = std::uintmax_t{16} << 20;

// Of all the work. A page is drawn in a tenth of a second, its still takes two; a film seconds.
constexpr double drawing_of_stills = 35, drawing_of_films = 4;
constexpr double most_making_percent = 99.9;

/// Nothing is said of the time before so many seconds have gone.
constexpr double first_word_after = 3;

double making_seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

std::string of_menu(std::size_t menu, std::size_t count) {
  return "menu " + trimmed(static_cast<int>(menu) + 1) + " of " + trimmed(static_cast<int>(count));
}

std::string background_step(std::size_t menu, std::size_t count) {
  return "making the background of " + of_menu(menu, count);
}

bool is_name_taken(const std::string& file) {
  return entry_exists(file) || entry_exists(temporary_name(file));
}

std::string folder_of_file(const std::string& file) {
  return text_of(path_of(file).parent_path());
}

/// What made a run a failure, without its mark.
std::string first_reason(const std::vector<std::string>& errors) {
  if (errors.empty())
    return "a tool has failed; the log says more";
  std::string reason = errors.front();
  if (const std::size_t mark = reason.find(error_mark); mark != std::string::npos)
    reason.erase(0, mark + std::string_view(error_mark).size());
  return reason;
}

failure write_page(const std::string& file, const std::string& png) {
  std::ofstream out(path_of(file), std::ios::binary | std::ios::trunc);
  out << png;
  out.close();
  return out ? std::nullopt : failure("\"" + file + "\" cannot be written; the disk may be full");
}

/// Whether a video is whole: the tools write the code at its end last.
failure why_not_whole_video(const std::string& part) {
  constexpr std::streamoff code_length = 4;
  std::ifstream file(path_of(part), std::ios::binary);
  if (!file)
    return failure("it was not made");
  file.seekg(-code_length, std::ios::end);
  std::string code(static_cast<std::size_t>(code_length), '\0');
  file.read(code.data(), code_length);
  return file && code == std::string_view("\0\0\1\xb7", 4) ? std::nullopt
                                                           : failure("it is not whole");
}

/// The kind of the sound that menus have which stay: all of a disc's are of one.
disc_sound sound_beside(const disc_description& d, const std::vector<int>& kept) {
  for (const int number : kept) {
    const std::string ending = lower_extension_of(d.menu(number).audio());
    if (ending == "mp2" || ending == "mpa")
      return disc_sound::mp2;
  }
  return disc_sound::ac3;
}

/// "titles-1.ac3" for "titles-1.m2v", or another name that nothing has.
std::string sound_name(const std::string& m2v, disc_sound kind) {
  const std::string ending = kind == disc_sound::mp2 ? ".mp2" : ".ac3";
  const std::string stem = m2v.substr(0, m2v.rfind('.'));
  for (int number = 1;; ++number) {
    std::string name = stem + (number == 1 ? "" : " (" + trimmed(number) + ")") + ending;
    if (!is_name_taken(name))
      return name;
  }
}

}  // namespace

struct menu_making::state final : private run_listener {
  enum class phase { idle, drawing, running, naming };

  state(document& d, making_wishes w, making_equipment e, making_events when)
      : doc(d),
        wishes(std::move(w)),
        equipment(std::move(e)),
        events(std::move(when)),
        runner(*this, d.ask, equipment.launcher, equipment.lock, equipment.app) {}

  ~state() override {
    events = {};
    stop();
  }

  failure start();
  void update();
  void stop();

  bool running() const { return now != phase::idle; }

 private:
  void started(const run_start&) override {}
  void step(const run_step& one) override;
  void progress(const run_progress&) override {}
  void output(std::string_view tail) override;
  void broken_off() override {}
  void closed() override {}
  void finished(const run_end& end) override;

  failure take_lock();
  failure look_at_film();
  failure plan();
  failure ask_and_plan();
  void begin();
  void draw_next();
  failure draw(std::size_t menu);
  void run_tools();
  std::string script() const;
  std::vector<std::string> lines_for(std::size_t menu) const;
  picture_still still_of(std::size_t menu) const;
  std::string page_file(std::size_t menu) const;
  std::string pages_folder() const;
  std::vector<std::string> files() const;
  failure finish_files();
  failure give_names();
  void put();
  void end(const std::string& problem, bool stopped = false);
  void remove_parts();
  void tell(const std::string& what, double part);

  document& doc;
  making_wishes wishes;
  making_equipment equipment;
  making_events events;
  shelled runner;
  phase now = phase::idle;
  std::optional<menu_film> film;
  bool discards_xml = false;
  menus_to_make made;
  std::vector<menu_background> backgrounds;
  std::string sound;  ///< native path; empty: none
  std::optional<held_folder> target;
  std::size_t menu = 0;  ///< that is drawn, or made, 0-based
  std::future<void> fetching;
  std::optional<std::string> run_problem;  ///< empty: the tools have made all
  std::vector<std::string> notes;
  double began = 0, percent = 0;
  double in_film = 0;  ///< of the menu that is made, 0 to 1
};

failure menu_making::state::take_lock() {
  folder_lock& lock = equipment.lock;
  if (lock.take())
    return std::nullopt;
  if (lock.is_held_elsewhere())
    return "Another run is using the program folder \"" + equipment.app +
           "\".  Please wait until it has finished.";
  return "Nothing can be written into the program folder \"" + equipment.app +
         "\", where the files of a run go: " + lock.trouble() + ".  Please let it be written.";
}

failure menu_making::state::look_at_film() {
  menu_wishes& menus = wishes.menus;
  if (!wishes.motion) {
    if (std::holds_alternative<video_background>(menus.design.background))
      return "The design " + sanitized_quoted(menus.design.name) +
             " shows a film behind the menus.  Please choose one, or another design.";
    return std::nullopt;
  }
  menus.design.background = video_background{};
  menus.loops = true;
  const menu_motion& motion = *wishes.motion;
  const std::string name = "The film " + sanitized_quoted(motion.film);
  if (const auto why = why_not_storable(motion.film))
    return name + " cannot stand behind the menus: its name " + *why + ".";
  const result<source_facts> facts = equipment.probe(motion.film);
  if (!facts)
    return name + " cannot stand behind the menus: " + sanitized(facts.error) + ".";
  menu_film_choices choices;
  choices.standard = disc_of(doc.p).standard;
  choices.aspect = menus.is_wide ? disc_aspect::sixteen_nine : disc_aspect::four_three;
  choices.begin = std::max(0.0, motion.begin);
  choices.length = std::clamp(motion.length, 1.0, longest_menu_motion);
  choices.with_sound = motion.with_sound;
  choices.sound = sound_beside(disc_of(doc.p), menus_that_stay(doc.p, menus.replaces_own));
  result<menu_film> found = menu_film_of(motion.film, *facts, choices);
  if (!found)
    return name + " cannot stand behind the menus: " + sanitized(found.error) + ".";
  film = std::move(*found);
  if (motion.with_sound && !film->sound)
    notes.push_back(name + " has no sound; so the menus have none.");
  return std::nullopt;
}

failure menu_making::state::plan() {
  const menu_wishes& menus = wishes.menus;
  result<menus_to_make> planned = menus_for(doc.p, menus, equipment.painter.measure, is_name_taken);
  if (!planned)
    return planned.error.ends_with('.') ? planned.error : planned.error + ".";
  made = std::move(*planned);
  backgrounds = made.backgrounds();
  notes.insert(notes.end(), made.notes.begin(), made.notes.end());
  if (film && film->sound) {
    sound = sound_name(backgrounds.front().m2v, film->sound->kind);
    made.sound = stored_from_native(sound);
  }
  return prepare_import_folder(menus.folder);
}

/// Whether hand-edited XML goes is asked before anything is planned, and it goes with the menus'
/// coming.
failure menu_making::state::ask_and_plan() {
  const document::step step(doc, "make menus");
  const std::string xml = doc.p.customxml;
  if (custom(doc) != 1)
    return "";
  failure why = plan();
  discards_xml = doc.p.customxml != xml;
  doc.p.customxml = xml;
  return why;
}

failure menu_making::state::start() {
  const menu_wishes& menus = wishes.menus;
  const std::vector<std::string> tools =
      wishes.motion ? std::vector<std::string>{"ffmpeg"}
                    : std::vector<std::string>{"gm", "jpeg2yuv", "mpeg2enc"};
  if (std::string missing = missing_tools(equipment.app, tools); !missing.empty())
    return missing;
  const std::vector<int> kept = menus_that_stay(doc.p, menus.replaces_own);
  if (failure why = why_not_beside(menu_shape_reader().shapes_of(doc.p, kept), menus.is_wide))
    return why;
  if (failure why = look_at_film())
    return why;
  if (failure why = take_lock())
    return why;
  // Their names would be taken.
  remove_left_imports(equipment.app);
  remove_all(pages_folder());
  failure why = ask_and_plan();
  if (!why)
    if (const failure trouble = make_folders(pages_folder()))
      why = "The folder \"" + pages_folder() + "\" cannot be made: " + *trouble + ".";
  if (why) {
    equipment.lock.release();
    return why;
  }
  begin();
  return std::nullopt;
}

void menu_making::state::begin() {
  target.emplace(folder_of_file(backgrounds.front().m2v));
  import_job unfinished;
  unfinished.files.video = backgrounds.front().m2v;
  unfinished.files.sounds = files();
  unfinished.files.notes = backgrounds.front().m2v;
  note_unfinished(equipment.app, unfinished);
  remove_all(join_path(equipment.app, run_file::menus_log));
  began = making_seconds();
  now = phase::drawing;
  menu = 0;
  tell("drawing " + of_menu(0, backgrounds.size()), 0);
}

std::string menu_making::state::pages_folder() const {
  return join_path(equipment.app, run_file::menu_pages);
}

std::string menu_making::state::page_file(std::size_t number) const {
  return join_path(pages_folder(), trimmed(static_cast<int>(number) + 1) + ".png");
}

std::vector<std::string> menu_making::state::files() const {
  std::vector<std::string> all;
  all.reserve(backgrounds.size() + 1);
  for (const menu_background& background : backgrounds)
    all.push_back(background.m2v);
  if (!sound.empty())
    all.push_back(sound);
  return all;
}

// What films and files show is read in a thread of its own: seconds, of a long film.
void menu_making::state::draw_next() {
  constexpr auto a_moment = std::chrono::milliseconds(20);
  if (!fetching.valid())
    fetching = std::async(std::launch::async, [this, page = backgrounds[menu].page] {
      if (equipment.painter.fetch)
        equipment.painter.fetch(page);
    });
  if (fetching.wait_for(a_moment) != std::future_status::ready)
    return;
  fetching.get();
  if (const failure why = draw(menu))
    return end("The menus could not be drawn: " + *why + ".");
  ++menu;
  const std::size_t count = backgrounds.size();
  const double share = film ? drawing_of_films : drawing_of_stills;
  tell("drawing " + of_menu(std::min(menu, count - 1), count),
       share * static_cast<double>(menu) / static_cast<double>(count));
  if (menu == count)
    run_tools();
}

failure menu_making::state::draw(std::size_t number) {
  const result<painted_page> painted = equipment.painter.paint(backgrounds[number].page);
  if (!painted)
    return painted.error;
  for (const std::string& one : painted->missing)
    if (std::ranges::find(notes, one + ".") == notes.end())
      notes.push_back(one + ".");
  return write_page(page_file(number), painted->png);
}

picture_still menu_making::state::still_of(std::size_t number) const {
  const menu_background& background = backgrounds[number];
  picture_still still;
  still.source.file = page_file(number);
  still.source.form = "PNG";
  still.source.shown = {{page_width, background.page.height}, {1, 1}};
  still.choices.standard =
      background.page.height > 480 ? video_standard::pal : video_standard::ntsc;
  still.choices.aspect =
      background.page.is_wide ? disc_aspect::sixteen_nine : disc_aspect::four_three;
  still.m2v = background.m2v;
  return still;
}

std::vector<std::string> menu_making::state::lines_for(std::size_t number) const {
  if (!film)
    return picture_still_lines(equipment.app, still_of(number));
  return {ffmpeg_line(
      equipment.app,
      menu_film_arguments(*film, page_file(number), temporary_name(backgrounds[number].m2v),
                          number == 0 && !sound.empty() ? temporary_name(sound) : std::string()))};
}

std::string menu_making::state::script() const {
  std::string text = "@echo off\r\n";
  for (std::size_t number = 0; number < backgrounds.size(); ++number) {
    text += "echo " + step_line(background_step(number, backgrounds.size())) + "\r\n";
    for (const std::string& line : lines_for(number))
      text += line + "\r\n";
  }
  return text + "echo " + std::string(end_marker) + "\r\n";
}

void menu_making::state::run_tools() {
  const std::string file = join_path(equipment.app, run_file::menus_script);
  if (const failure why = replace_file(file, script()))
    return end("The file \"" + file + "\" could not be written: " + *why + ".");
  now = phase::running;
  menu = 0;
  run_options options;
  options.log = run_file::menus_log;
  options.tells_outcome = false;
  options.keeps_lock = true;  // until the backgrounds have their names
  runner.ExecuteCommand(file, options);
}

void menu_making::state::step(const run_step& one) {
  for (std::size_t number = menu; number < backgrounds.size(); ++number)
    if (one.name == background_step(number, backgrounds.size())) {
      menu = number;
      in_film = 0;
    }
}

// What came before the step is of another menu.
void menu_making::state::output(std::string_view tail) {
  if (!film)
    return;
  const std::string line = step_line(background_step(menu, backgrounds.size()));
  if (const std::size_t at = tail.rfind(line); at != std::string_view::npos)
    tail.remove_prefix(at + line.size());
  if (const auto status = encoder_progress_in(tail))
    in_film = std::clamp(status->seconds / film->plan.seconds, in_film, 1.0);
}

void menu_making::state::finished(const run_end& run) {
  std::string trouble;
  if (const auto log = read_file(join_path(equipment.app, run_file::menus_log), largest_making_log))
    trouble = writing_trouble_in(*log);
  if (!trouble.empty())
    run_problem = trouble;
  else if (run.outcome == run_outcome::success)
    run_problem = "";
  else if (run.outcome == run_outcome::none)
    run_problem = "the script could not be started";
  else
    run_problem = first_reason(run.errors);
}

failure menu_making::state::finish_files() {
  const std::string folder = folder_of_file(backgrounds.front().m2v);
  if (target->is_elsewhere())
    return "the folder \"" + folder +
           "\" is not there any more; it was renamed or moved, or its disk was taken out";
  for (const menu_background& background : backgrounds) {
    const std::string part = temporary_name(background.m2v);
    failure why = film ? finish_video_file(part, finish_of(film->plan)) : std::nullopt;
    if (!why)
      why = why_not_whole_video(part);
    if (why)
      return "\"" + background.m2v + "\": " + *why;
  }
  if (!sound.empty() && file_size(temporary_name(sound)).value_or(0) == 0)
    return "\"" + sound + "\": it is empty";
  return give_names();
}

failure menu_making::state::give_names() {
  const std::vector<std::string> all = files();
  for (std::size_t i = 0; i < all.size(); ++i) {
    const failure why = move_entry(temporary_name(all[i]), all[i]);
    if (!why)
      continue;
    for (std::size_t before = 0; before < i; ++before)
      remove_all(all[before]);
    return "\"" + all[i] + "\": " + *why;
  }
  return std::nullopt;
}

void menu_making::state::put() {
  {
    const document::step step(doc, "make menus");
    if (discards_xml)
      doc.p.customxml.clear();
    if (const failure why = put_menus(doc, wishes.menus, made))
      notes.push_back(*why);
  }
  end({});
}

void menu_making::state::update() {
  if (now == phase::drawing)
    return draw_next();
  if (now != phase::running)
    return;
  if (runner.running()) {
    runner.update();
    if (runner.running() && !runner.watching())
      runner.stop();
  }
  if (!run_problem) {
    const double share = film ? drawing_of_films : drawing_of_stills;
    const auto count = static_cast<double>(backgrounds.size());
    tell(background_step(menu, backgrounds.size()),
         share + (100 - share) * (static_cast<double>(menu) + in_film) / count);
    return;
  }
  if (!run_problem->empty())
    return end("The backgrounds of the menus could not be made: " + *run_problem + ".");
  now = phase::naming;
  if (const failure why = finish_files())
    return end("The backgrounds of the menus could not be made: " + *why + ".");
  put();
}

void menu_making::state::stop() {
  if (now == phase::idle)
    return;
  if (runner.running())
    runner.stop();
  end({}, true);
}

void menu_making::state::remove_parts() {
  if (fetching.valid())
    fetching.wait();
  fetching = {};
  for (const std::string& file : files()) {
    remove_all(temporary_name(file));
    target->remove(native_file_name(temporary_name(file)));
  }
  remove_all(pages_folder());
  remove_all(join_path(equipment.app, run_file::still_picture));
  remove_left_imports(equipment.app);
}

void menu_making::state::end(const std::string& problem, bool stopped) {
  now = phase::idle;
  remove_parts();
  equipment.lock.release();
  if (!events.ended)
    return;
  making_end told;
  told.stopped = stopped;
  told.problem = problem;
  if (!stopped && problem.empty()) {
    told.menus = static_cast<int>(backgrounds.size());
    told.files = files();
    told.notes = std::move(notes);
  }
  events.ended(told);
}

void menu_making::state::tell(const std::string& what, double part) {
  percent = std::clamp(part, percent, most_making_percent);
  if (!events.progress)
    return;
  making_progress told{percent, what, {}};
  const double took = making_seconds() - began;
  if (took >= first_word_after && percent > 1)
    told.seconds_left = took / percent * (100 - percent);
  events.progress(told);
}

menu_making::menu_making(document& doc, making_wishes wishes, making_equipment equipment,
                         making_events events)
    : s_(std::make_unique<state>(doc, std::move(wishes), std::move(equipment), std::move(events))) {
}

menu_making::~menu_making() = default;

failure menu_making::start() {
  return s_->start();
}

void menu_making::update() {
  s_->update();
}

void menu_making::stop() {
  s_->stop();
}

bool menu_making::running() const {
  return s_->running();
}

making_wishes preset_wishes(const document& doc, const found_design& design) {
  const project& p = doc.p;
  const remembered_menus before = menus_made_before(p);
  making_wishes wishes;
  menu_wishes& menus = wishes.menus;
  menus.design_id = design.id;
  if (design.design)
    menus.design = *design.design;
  const disc_description d = disc_of(p);
  if (before.made.empty()) {
    menus.choices.chapters_of = titles_with_chapters(d);
    const menu_shapes staying = menu_shape_reader().shapes_of(p, menus_that_stay(p, false));
    menus.is_wide =
        staying.is_wide().value_or(demands_of_project(p).aspect == disc_aspect::sixteen_nine);
    // What somebody has chosen for the ends of his titles stays.
    menus.sets_ends = std::ranges::none_of(
        d.titles, [](const disc_title& title) { return title.post.has_value(); });
  } else {
    menus.choices = before.choices;
    menus.is_wide = before.is_wide;
    menus.texts = before.texts;
    menus.moves = before.moves;
  }
  if (!doc.file().empty())
    menus.folder = folder_of_file(doc.file());
  else if (d.title_count() > 0)
    menus.folder = folder_of_file(native_from_stored(d.title(1).video()));
  return wishes;
}

}  // namespace corvane
