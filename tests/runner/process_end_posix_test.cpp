// What is left of a run after its end, its stop, and the killing of any of its processes.
#include "real_run.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane {
namespace {

using testing_support::real_run;
using namespace std::chrono_literals;

/// Whether the process is there; one that has ended and is not yet asked for does not count.
bool alive(pid_t pid) {
  std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
  std::string text;
  std::getline(stat, text);
  const auto name_end = text.rfind(')');
  return name_end != std::string::npos && text[name_end + 2] != 'Z' && text[name_end + 2] != 'X';
}

bool becomes_true(const std::function<bool()>& condition, std::chrono::seconds limit = 10s) {
  const auto until = std::chrono::steady_clock::now() + limit;
  while (!condition()) {
    if (std::chrono::steady_clock::now() > until)
      return false;
    std::this_thread::sleep_for(5ms);
  }
  return true;
}

pid_t number_in(const std::string& path) {
  pid_t pid = 0;
  std::ifstream(path) >> pid;
  return pid;
}

pid_t parent_of(pid_t pid) {
  std::ifstream stat("/proc/" + std::to_string(pid) + "/stat");
  std::string text;
  std::getline(stat, text);
  return static_cast<pid_t>(std::stol(text.substr(text.rfind(')') + 4)));
}

/// Two tools that tell their numbers and then wait for a minute, the one feeding the other.
std::string waiting_tools(const real_run& run) {
  return run.tool("mplex") + " process one.pid silent 60000 | " + run.tool("gm") +
         " process two.pid silent 60000\r\n";
}

struct waiting_pids {
  pid_t one = 0, two = 0, conspawn = 0;
};

waiting_pids wait_for_tools(const real_run& run) {
  EXPECT_TRUE(becomes_true([&] {
    return file_exists(run.app.path("one.pid")) && file_exists(run.app.path("two.pid"));
  }));
  const pid_t one = number_in(run.app.path("one.pid"));
  return {one, number_in(run.app.path("two.pid")), parent_of(one)};
}

void expect_all_gone(const waiting_pids& pids) {
  EXPECT_TRUE(
      becomes_true([&] { return !alive(pids.one) && !alive(pids.two) && !alive(pids.conspawn); }));
}

int open_descriptors() {
  int count = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator("/proc/self/fd"))
    ++count;
  return count;
}

/// Children of this process, those included that have ended and are not yet asked for.
int children() {
  std::ifstream list("/proc/self/task/" + std::to_string(::getpid()) + "/children");
  EXPECT_TRUE(list);
  int count = 0;
  for (pid_t pid = 0; list >> pid;)
    ++count;
  return count;
}

TEST(ProcessEnd, StopEndsTheScriptAndEveryTool) {
  real_run run;
  run.start(waiting_tools(run));
  const waiting_pids pids = wait_for_tools(run);
  ASSERT_TRUE(alive(pids.one) && alive(pids.two) && alive(pids.conspawn));
  run.runner.stop();
  expect_all_gone(pids);
}

TEST(ProcessEnd, ToolsDoNotInheritIgnoredSignals) {
  real_run run;
  const auto old = std::signal(SIGHUP, SIG_IGN);
  run.start(waiting_tools(run));
  std::signal(SIGHUP, old);
  const waiting_pids pids = wait_for_tools(run);
  std::ifstream status("/proc/" + std::to_string(pids.one) + "/status");
  std::string line;
  while (std::getline(status, line) && line.substr(0, 7) != "SigIgn:") {
  }
  ASSERT_GT(line.size(), 16u);
  const std::uint64_t ignored = std::stoull(line.substr(line.size() - 16), nullptr, 16);
  EXPECT_EQ(ignored & (1u << (SIGHUP - 1)), 0u) << line;
  run.runner.stop();
  expect_all_gone(pids);
}

TEST(ProcessEnd, KilledScriptRunnerEndsItsToolsAndTheRunAsAFailure) {
  real_run run;
  run.ask.expect(
      {"There was an error.  Please review the log.", icon::critical, buttons::ok_cancel},
      answer::cancel);
  run.start(waiting_tools(run));
  const waiting_pids pids = wait_for_tools(run);
  ::kill(pids.conspawn, SIGKILL);
  const std::string log = run.finish();
  EXPECT_NE(log.find("ERR:  the work script ended before its last line (conspawn was ended by "
                     "signal 9)"),
            std::string::npos)
      << log;
  expect_all_gone(pids);
}

TEST(ProcessEnd, KilledToolIsNamedWithItsSignal) {
  real_run run;
  run.ask.expect(
      {"There was an error.  Please review the log.", icon::critical, buttons::ok_cancel},
      answer::cancel);
  run.start(run.tool("mplex") + " process one.pid silent 60000\r\n");
  ASSERT_TRUE(becomes_true([&] { return file_exists(run.app.path("one.pid")); }));
  ::kill(number_in(run.app.path("one.pid")), SIGKILL);
  const std::string log = run.finish();
  EXPECT_NE(log.find("\nERR:  mplex.exe was ended by signal 9 (Killed)\n"), std::string::npos)
      << log;
}

TEST(ProcessEnd, EndprocessLeavesTheScriptRunning) {
  real_run run;
  run.start(run.tool("mplex") + " process one.pid silent 500 write late.txt done\r\n");
  ASSERT_TRUE(becomes_true([&] { return file_exists(run.app.path("one.pid")); }));
  run.runner.endprocess();
  EXPECT_TRUE(becomes_true([&] { return file_exists(run.app.path("late.txt")); }));
}

TEST(ProcessEnd, NoZombiesAndNoOpenDescriptorsAreLeft) {
  real_run run;
  run.succeeds(run.tool("gm") + " print x\\n\r\n");
  const int before = open_descriptors();
  const int children_before = children();
  for (int i = 0; i < 20; ++i)
    run.succeeds(run.tool("gm") + " print x\\n\r\n");
  EXPECT_EQ(open_descriptors(), before);
  // A script runner that was still about to end is asked for at the next start, so at most the
  // last one is left.
  EXPECT_LE(children(), children_before + 1);
}

TEST(ProcessEnd, ToolsInheritNothingButTheirStandardDescriptors) {
  real_run run;
  const int ours = ::open("/dev/null", O_RDONLY);  // without O_CLOEXEC
  std::filesystem::create_symlink("/bin/ls", path_of(run.app.path("bin/ls.exe")));
  // Its own look into the folder is the fourth.
  EXPECT_EQ(run.succeeds(run.tool("ls") + " /proc/self/fd\r\n"),
            "Send problems to us\n*first step\n0\n1\n2\n3\n*process complete\n\n");
  ::close(ours);
}

TEST(ProcessEnd, KilledProgramLeavesNoChildAndItsLockDoesNotBlock) {
  real_run run;
  run.app.add("process.bat", "@echo off\r\n" + waiting_tools(run) + "echo *process complete\r\n");
  const std::string folder = run.app.path();
  const pid_t program = ::fork();
  if (program == 0) {
    ::execl(CORVANE_STAND_IN_PROGRAM, CORVANE_STAND_IN_PROGRAM, folder.c_str(), nullptr);
    ::_exit(127);
  }
  const waiting_pids pids = wait_for_tools(run);
  EXPECT_FALSE(run.lock.take()) << "the program should hold it";
  ::kill(program, SIGKILL);
  ASSERT_EQ(::waitpid(program, nullptr, 0), program);
  expect_all_gone(pids);
  EXPECT_TRUE(run.lock.take());
}

TEST(ProcessEnd, FullDiskIsToldBeforeTheOutcomeAndTheRunGoesOn) {
  real_run run;
  run.app.add("CorvaneLOG.txt", "the log before");
  run.ask.expect(
      {"The log could not be written whole: File too large.  It is kept as far as it was "
       "written.",
       icon::exclamation});
  run.ask.expect({"Process complete.  Please review the log for more information (recommended).",
                  icon::information, buttons::ok_cancel},
                 answer::cancel);
  run.start(run.tool("dvdauthor") + " megabytes 1\r\n");
  // From here on no file of this process can grow, as on a full disk; the tools' can.
  rlimit before{};
  ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  rlimit full = before;
  full.rlim_cur = 4096;
  EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &full), 0);
  const std::string log = run.finish();
  EXPECT_EQ(::setrlimit(RLIMIT_FSIZE, &before), 0);
  std::signal(SIGXFSZ, handler);
  EXPECT_FALSE(log.empty()) << "what could be written";
  EXPECT_EQ(log.find("the log before"), std::string::npos);
  EXPECT_EQ(run.runner.outcome(), run_outcome::success);
}

TEST(ProcessEnd, NoDescriptorLeftIsAPipeThatCannotBeMade) {
  real_run run;
  std::vector<int> taken;
  for (int file = ::open("/dev/null", O_RDONLY); file >= 0; file = ::open("/dev/null", O_RDONLY))
    taken.push_back(file);
  const start_result start = run.launcher->start("bin/conspawn.exe \"x\"", {});
  for (const int file : taken)
    ::close(file);
  EXPECT_EQ(start.failed, start_result::step::pipe);
  EXPECT_EQ(start.error, static_cast<std::uint32_t>(EMFILE));
}

}  // namespace
}  // namespace corvane
