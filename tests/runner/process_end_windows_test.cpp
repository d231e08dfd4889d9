// What is left of a run after its stop and after the killing of the program or the script runner.
#include "real_run.h"

#include <fstream>
#include <functional>
#include <windows.h>

namespace corvane {
namespace {

using testing_support::real_run;

/// A process watched from outside; kept open, so that its number cannot become another's.
class watched {
 public:
  explicit watched(const std::string& number_file) {
    // The file is there before its number is.
    DWORD number = 0;
    for (int i = 0; i < 300 && !(std::ifstream(path_of(number_file)) >> number); ++i)
      ::Sleep(10);
    process_ = ::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, number);
  }
  ~watched() { ::CloseHandle(process_); }
  watched(const watched&) = delete;
  watched& operator=(const watched&) = delete;

  bool opened() const { return process_ != nullptr; }
  bool ends_within(DWORD milliseconds) const {
    return ::WaitForSingleObject(process_, milliseconds) == WAIT_OBJECT_0;
  }

 private:
  HANDLE process_;
};

bool wait_for_file(const std::string& file) {
  for (int i = 0; i < 3000 && !file_exists(file); ++i)
    ::Sleep(10);
  return file_exists(file);
}

std::string waiting_tool(const real_run& run) {
  return run.tool("mplex") + " process one.pid silent 60000\r\n";
}

TEST(ProcessEnd, StopEndsTheTools) {
  real_run run;
  run.start(waiting_tool(run));
  ASSERT_TRUE(wait_for_file(run.app.path("one.pid")));
  const watched tool(run.app.path("one.pid"));
  ASSERT_TRUE(tool.opened());
  EXPECT_FALSE(tool.ends_within(0));
  run.runner.stop();
  EXPECT_TRUE(tool.ends_within(10000));
}

TEST(ProcessEnd, EndprocessLeavesTheScriptRunning) {
  real_run run;
  run.start(run.tool("mplex") + " process one.pid silent 500 write late.txt done\r\n");
  ASSERT_TRUE(wait_for_file(run.app.path("one.pid")));
  run.runner.endprocess();
  EXPECT_TRUE(wait_for_file(run.app.path("late.txt")));
}

TEST(ProcessEnd, KilledProgramLeavesNoChildAndItsLockDoesNotBlock) {
  real_run run;
  run.app.add("process.bat", "@echo off\r\n" + waiting_tool(run) + "echo *process complete\r\n");
  STARTUPINFOW how{};
  how.cb = sizeof how;
  PROCESS_INFORMATION program{};
  std::wstring line =
      path_of(std::string("\"") + CORVANE_STAND_IN_PROGRAM + "\" \"" + run.app.path() + "\"")
          .wstring();
  ASSERT_NE(::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                             &how, &program),
            0);
  ASSERT_TRUE(wait_for_file(run.app.path("one.pid")));
  const watched tool(run.app.path("one.pid"));
  ASSERT_TRUE(tool.opened());
  EXPECT_FALSE(run.lock.take()) << "the program should hold it";
  EXPECT_FALSE(tool.ends_within(0));
  ::TerminateProcess(program.hProcess, 1);
  ::WaitForSingleObject(program.hProcess, 10000);
  EXPECT_TRUE(tool.ends_within(10000));
  EXPECT_TRUE(run.lock.take());
  ::CloseHandle(program.hProcess);
  ::CloseHandle(program.hThread);
}

}  // namespace
}  // namespace corvane
