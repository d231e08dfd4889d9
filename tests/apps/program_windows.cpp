#include "apps/program_windows.h"

#include "platform/files/program_folder.h"
#include "platform/text/utf16_windows.h"

namespace corvane::testing_support {
namespace {

namespace fs = std::filesystem;

/// Inherited by the program; closed by us once it runs.
HANDLE output_file(const std::string& path) {
  SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
  return ::CreateFileW(utf16(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherit, CREATE_ALWAYS,
                       FILE_ATTRIBUTE_NORMAL, nullptr);
}

std::string without_returns(std::string text) {
  std::erase(text, '\r');
  return text;
}

}  // namespace

running_program::running_program(const program_start& start) {
  STARTUPINFOW how{};
  how.cb = sizeof how;
  how.dwFlags = STARTF_USESTDHANDLES;
  how.hStdOutput = output_file(said_.path("out"));
  how.hStdError = output_file(said_.path("err"));
  std::wstring line = utf16("\"" + start.program + "\" " + start.arguments);
  // Seen on a busy machine: Wine could not start a program that it had started a moment before.
  // What is tested is what the program does, so starting it is tried again.
  bool started = false;
  DWORD error = 0;
  for (int attempt = 0; attempt < 3 && !started; ++attempt) {
    if (attempt > 0)
      ::Sleep(1000);
    started =
        ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, CREATE_NEW_PROCESS_GROUP,
                         nullptr, utf16(start.folder).c_str(), &how, &info_) != 0;
    error = started ? 0 : ::GetLastError();
  }
  EXPECT_TRUE(started) << start.program << ": " << error;
  ::CloseHandle(how.hStdOutput);
  ::CloseHandle(how.hStdError);
}

running_program::~running_program() {
  kill(1000);
  ::WaitForSingleObject(info_.hProcess, 10'000);
  ::CloseHandle(info_.hProcess);
  ::CloseHandle(info_.hThread);
}

DWORD running_program::wait() {
  EXPECT_EQ(::WaitForSingleObject(info_.hProcess, 120'000), WAIT_OBJECT_0);
  DWORD status = 0;
  ::GetExitCodeProcess(info_.hProcess, &status);
  out_ = without_returns(said_.read("out"));
  err_ = without_returns(said_.read("err"));
  return status;
}

DWORD run_program(const program_start& start, std::string* out, std::string* err) {
  running_program program(start);
  const DWORD status = program.wait();
  if (out != nullptr)
    *out = program.out();
  if (err != nullptr)
    *err = program.err();
  return status;
}

void install_author(const std::string& folder, const std::string& stand_in,
                    const std::string& runner) {
  const fs::path built = path_of(own_executable()).parent_path();
  const auto copy = [&](const std::string& program, const std::string& name) {
    fs::copy_file(built / path_of(program), path_of(join_path(folder, name)));
  };
  make_folders(join_path(folder, "bin"));
  copy("corvane-author.exe", "corvane-author.exe");
  copy(runner, "bin\\conspawn.exe");
  for (const outside_tool& tool : outside_tools())
    copy(stand_in, "bin\\" + tool.name + ".exe");
}

}  // namespace corvane::testing_support
