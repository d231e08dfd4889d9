#include "apps/corvane-author/menus_of_project.h"

#include "apps/corvane-author/author_project.h"
#include "apps/corvane-author/console_prompts.h"
#include "authoring/menu_making.h"
#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "platform/files/program_folder.h"
#include "platform/processes/interrupt.h"
#include "platform/processes/process.h"
#include "project/missing_tools.h"
#include "project/preferences.h"
#include "project/project_file.h"
#include "runner/run_files.h"
#include "runner/run_meter.h"

#include <chrono>
#include <utility>

namespace corvane {
namespace {

using namespace std::chrono_literals;

constexpr auto making_interval = 20ms;

/// One making of menus from the console.
class console_menus {
 public:
  console_menus(const author_arguments& arguments, report& out, const source_prober& probe,
                const std::function<result<page_painter>()>& painter)
      : arguments_(arguments),
        out_(out),
        probe_(probe),
        painter_(painter),
        project_(absolute_path(arguments.project)),
        app_(program_folder()),
        ask_(out, {}, false),
        doc_(ask_, prefs_) {
    // Before the current folder changes.
    if (!arguments.to.empty())
      folder_ = absolute_path(arguments.to);
    if (!arguments.film.empty())
      film_ = absolute_path(arguments.film);
    const std::string file = absolute_path(arguments.design);
    design_ = lower_extension_of(file) == "design" && file_exists(file) ? file : arguments.design;
  }

  int run() {
    if (const failure why = enter_program_folder(app_))
      return refused(*why + ".");
    if (const std::string missing = missing_tools(app_, tools()); !missing.empty()) {
      out_.message(missing);
      return tool_not_installed;
    }
    const auto design =
        design_named(designs_in(program_designs_folder(), own_designs_folder(app_)), design_);
    if (!design)
      return refused(design.error + ".");
    start_up(doc_);
    if (!loadprojectf(doc_, project_))
      return not_authorable;
    return make(wishes_for(*design));
  }

 private:
  int refused(const std::string& why) {
    if (!why.empty())
      out_.message(why);
    return not_authorable;
  }

  std::vector<std::string> tools() const {
    if (!film_.empty())
      return {"ffmpeg"};
    return {"gm", "jpeg2yuv", "mpeg2enc"};
  }

  making_wishes wishes_for(const found_design& design) const {
    making_wishes wishes = preset_wishes(doc_, design);
    if (!folder_.empty())
      wishes.menus.folder = folder_;
    if (arguments_.play_all)
      wishes.menus.choices.play_all = true;
    if (!film_.empty())
      wishes.motion = menu_motion{film_};
    return wishes;
  }

  int make(making_wishes wishes) {
    auto painter = painter_();
    if (!painter)
      return refused("The menus cannot be drawn: " + painter.error +
                     ".  Installing Corvane again brings back what is missing.");
    folder_lock lock(app_);
    const auto launcher = make_process_launcher();
    making_events events;
    events.progress = [this](const making_progress& p) { tell(p); };
    events.ended = [this](const making_end& end) { end_ = end; };
    menu_making making(doc_, std::move(wishes),
                       {std::move(*painter), probe_, *launcher, lock, app_}, std::move(events));
    if (const failure why = making.start())
      return refused(*why);
    while (making.running()) {
      wait_or_interrupt(making_interval);
      if (interrupt_number() != 0)
        making.stop();
      else
        making.update();
    }
    out_.end_progress();
    return tell_end();
  }

  void tell(const making_progress& p) {
    if (p.step != step_)
      out_.step(p.step);
    step_ = p.step;
    const std::string time = time_left_text(p.seconds_left);
    out_.whole(p.percent, {time.empty() ? "all" : "all, " + time, "all"});
  }

  int tell_end() {
    if (end_.stopped) {
      out_.message("stopped; the project is as it was, and what was not complete was removed.");
      return 128 + interrupt_number();
    }
    if (!end_.problem.empty()) {
      out_.message(end_.problem);
      out_.line("log: " + join_path(app_, run_file::menus_log));
      return tool_reported_error;
    }
    savefile_command(doc_);
    for (const std::string& note : end_.notes)
      out_.message(printable(note));
    if (doc_.p.saved != 1) {
      out_.message("The menus are not in \"" + project_ +
                   "\"; the backgrounds that were made for them stay.");
      return tool_reported_error;
    }
    for (const std::string& file : end_.files)
      out_.line(printable(file));
    out_.line(end_.menus == 1 ? "1 menu was made"
                              : std::to_string(end_.menus) + " menus were made");
    return disc_authored;
  }

  const author_arguments& arguments_;
  report& out_;
  const source_prober& probe_;
  const std::function<result<page_painter>()>& painter_;
  std::string project_, app_, folder_, film_, design_;
  memory_settings prefs_;
  console_prompts ask_;
  document doc_;
  making_end end_;
  std::string step_;
};

}  // namespace

int make_menus_of_project(const author_arguments& arguments, report& out,
                          const source_prober& probe,
                          const std::function<result<page_painter>()>& painter) {
  return console_menus(arguments, out, probe, painter).run();
}

}  // namespace corvane
