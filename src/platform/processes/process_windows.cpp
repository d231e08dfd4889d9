#include "platform/processes/process.h"
#include "platform/text/utf16_windows.h"

#include <algorithm>
#include <cwchar>
#include <string_view>
#include <utility>
#include <vector>
#include <windows.h>

namespace corvane {
namespace {

/// Jobs of commands that nobody watches any more. They end their processes when their handle is
/// closed, which the system does when this program ends, in whatever way.
class leftovers {
 public:
  ~leftovers() = default;
  void add(HANDLE job) { jobs_.push_back(job); }

  /// Closes the jobs in which nothing runs any more.
  void reap() {
    std::erase_if(jobs_, [](HANDLE job) {
      JOBOBJECT_BASIC_ACCOUNTING_INFORMATION now{};
      if (::QueryInformationJobObject(job, JobObjectBasicAccountingInformation, &now, sizeof now,
                                      nullptr) == 0 ||
          now.ActiveProcesses != 0)
        return false;
      ::CloseHandle(job);
      return true;
    });
  }

 private:
  std::vector<HANDLE> jobs_;
};

HANDLE make_job() {
  const HANDLE job = ::CreateJobObjectW(nullptr, nullptr);
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  ::SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
  return job;
}

class windows_child : public child_process {
 public:
  windows_child(const PROCESS_INFORMATION& info, HANDLE read_end, HANDLE job,
                std::shared_ptr<leftovers> rest)
      : info_(info), read_end_(read_end), job_(job), rest_(std::move(rest)) {}
  ~windows_child() override {
    ::CloseHandle(info_.hProcess);
    ::CloseHandle(info_.hThread);
    ::CloseHandle(read_end_);
    rest_->add(job_);
    rest_->reap();
  }
  windows_child(const windows_child&) = delete;
  windows_child& operator=(const windows_child&) = delete;

  std::optional<std::size_t> waiting() override {
    DWORD read = 0;
    DWORD available = 0;
    DWORD left = 0;
    if (::PeekNamedPipe(read_end_, nullptr, 0, &read, &available, &left) == 0)
      return std::nullopt;
    return available;
  }

  std::optional<std::string> read(std::size_t count) override {
    std::string bytes(count, ' ');
    DWORD got = 0;
    if (::ReadFile(read_end_, bytes.data(), static_cast<DWORD>(count), &got, nullptr) == 0)
      return std::nullopt;
    bytes.resize(got);
    return bytes;
  }

  void kill_all() override {
    ::TerminateJobObject(job_, 1);
    // Should the process not have come into the job, this ends it at least.
    ::TerminateProcess(info_.hProcess, 1);
  }

  std::optional<exit_status> ended() override {
    if (::WaitForSingleObject(info_.hProcess, waiting() ? 0 : 2) != WAIT_OBJECT_0)
      return std::nullopt;
    DWORD status = 0;
    if (::GetExitCodeProcess(info_.hProcess, &status) == 0)
      return std::nullopt;
    return exit_status{false, status};
  }

 private:
  PROCESS_INFORMATION info_;
  HANDLE read_end_;
  HANDLE job_;
  std::shared_ptr<leftovers> rest_;
};

/// The name in "NAME=value". One that begins with "=" (a drive's current folder) has that in it.
std::wstring_view name_of(std::wstring_view variable) {
  return variable.substr(0, variable.find(L'=', 1));
}

/// As the system orders and compares names: by code units, whatever their case.
int compare(std::wstring_view a, std::wstring_view b) {
  return ::CompareStringOrdinal(a.data(), static_cast<int>(a.size()), b.data(),
                                static_cast<int>(b.size()), TRUE) -
         CSTR_EQUAL;
}

std::vector<std::wstring> own_environment() {
  std::vector<std::wstring> variables;
  wchar_t* const block = ::GetEnvironmentStringsW();
  for (const wchar_t* at = block; at != nullptr && *at != L'\0'; at += std::wcslen(at) + 1)
    variables.emplace_back(at);
  if (block != nullptr)
    ::FreeEnvironmentStringsW(block);
  return variables;
}

/// Our environment with these variables in it, as CreateProcess takes it: sorted by name, each
/// ended by a NUL, and one NUL more.
std::wstring environment_with(const std::vector<child_variable>& added) {
  std::vector<std::wstring> variables = own_environment();
  for (const child_variable& one : added) {
    const std::wstring name = utf16(one.name);
    std::erase_if(variables,
                  [&name](const std::wstring& v) { return compare(name_of(v), name) == 0; });
    variables.push_back(name + L"=" + utf16(one.value));
  }
  std::stable_sort(variables.begin(), variables.end(),
                   [](const std::wstring& a, const std::wstring& b) {
                     return compare(name_of(a), name_of(b)) < 0;
                   });
  std::wstring block;
  for (const std::wstring& variable : variables)
    block += variable + L'\0';
  return block + L'\0';
}

class windows_launcher : public process_launcher {
 public:
  start_result start(const std::string& command_line,
                     const std::vector<child_variable>& variables) override {
    rest_->reap();
    start_result r;
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE read_end = nullptr;
    HANDLE write_end = nullptr;
    if (::CreatePipe(&read_end, &write_end, &inheritable, 0) == 0) {
      r.failed = start_result::step::pipe;
      r.error = ::GetLastError();
      return r;
    }
    ::SetHandleInformation(read_end, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOA how{};
    how.cb = sizeof how;
    how.dwFlags = STARTF_USESHOWWINDOW | STARTF_USESTDHANDLES;
    how.wShowWindow = SW_HIDE;
    how.hStdOutput = write_end;
    how.hStdError = write_end;
    PROCESS_INFORMATION info{};
    // The call may write into the text. With the program's manifest, ANSI is UTF-8.
    std::string line = command_line;
    std::wstring environment = environment_with(variables);
    const BOOL started = ::CreateProcessA(nullptr, line.data(), &inheritable, &inheritable, TRUE,
                                          NORMAL_PRIORITY_CLASS | CREATE_UNICODE_ENVIRONMENT,
                                          environment.data(), nullptr, &how, &info);
    r.error = started == TRUE ? 0 : ::GetLastError();
    ::CloseHandle(write_end);
    if (started != TRUE) {
      ::CloseHandle(read_end);
      r.failed = start_result::step::process;
      return r;
    }
    const HANDLE job = make_job();
    ::AssignProcessToJobObject(job, info.hProcess);
    r.child = std::make_unique<windows_child>(info, read_end, job, rest_);
    return r;
  }

 private:
  std::shared_ptr<leftovers> rest_ = std::make_shared<leftovers>();
};

}  // namespace

std::unique_ptr<process_launcher> make_process_launcher() {
  return std::make_unique<windows_launcher>();
}

}  // namespace corvane
