#include "apps/corvane-author/watched_launcher.h"

#include <utility>

namespace corvane {
namespace {

class watched_process : public child_process {
 public:
  watched_process(std::unique_ptr<child_process> child, watched_launcher::listener on_output)
      : child_(std::move(child)), on_output_(std::move(on_output)) {}

  std::optional<std::size_t> waiting() override { return child_->waiting(); }
  std::optional<std::string> read(std::size_t count) override {
    auto piece = child_->read(count);
    if (piece)
      on_output_(*piece);
    return piece;
  }
  void kill_all() override { child_->kill_all(); }
  std::optional<exit_status> ended() override { return child_->ended(); }

 private:
  std::unique_ptr<child_process> child_;
  watched_launcher::listener on_output_;
};

}  // namespace

start_result watched_launcher::start(const std::string& command_line,
                                     const std::vector<child_variable>& variables) {
  start_result started = launcher_.start(command_line, variables);
  if (started.child)
    started.child = std::make_unique<watched_process>(std::move(started.child), on_output_);
  return started;
}

}  // namespace corvane
