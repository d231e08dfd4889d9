#include "platform/files/files.h"
#include "platform/processes/spawn.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <memory>
#include <system_error>
#include <utility>
#include <windows.h>
// After windows.h, which it needs.
#include <shellapi.h>

namespace corvane {
namespace {

/// A handle of ours, closed at the end.
class handle {
 public:
  handle() = default;
  explicit handle(HANDLE h) : h_(h == INVALID_HANDLE_VALUE ? nullptr : h) {}
  ~handle() { close(); }
  handle(handle&& other) noexcept : h_(other.h_) { other.h_ = nullptr; }
  handle& operator=(handle&& other) noexcept {
    std::swap(h_, other.h_);
    return *this;
  }
  HANDLE get() const { return h_; }
  bool is_open() const { return h_ != nullptr; }
  void close() {
    if (h_ != nullptr)
      ::CloseHandle(h_);
    h_ = nullptr;
  }

 private:
  HANDLE h_ = nullptr;
};

struct two_ends {
  handle read_end, write_end;
};

/// Neither end is inherited until it is made inheritable for one program.
two_ends make_pipe() {
  HANDLE read_end = nullptr;
  HANDLE write_end = nullptr;
  if (::CreatePipe(&read_end, &write_end, nullptr, 0) == 0)
    return {};
  return {handle(read_end), handle(write_end)};
}

/// A pipe whose reader need not wait for ever, as that of the call above must.
two_ends make_watched_pipe() {
  constexpr DWORD room = 1 << 16;
  static std::atomic<unsigned> count{0};
  const std::wstring name = L"\\\\.\\pipe\\corvane-" + std::to_wstring(::GetCurrentProcessId()) +
                            L"-" + std::to_wstring(++count);
  handle read_end(::CreateNamedPipeW(
      name.c_str(), PIPE_ACCESS_INBOUND | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
      PIPE_TYPE_BYTE | PIPE_REJECT_REMOTE_CLIENTS, 1, 0, room, 0, nullptr));
  if (!read_end.is_open())
    return {};
  handle write_end(
      ::CreateFileW(name.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  if (!write_end.is_open())
    return {};
  return {std::move(read_end), std::move(write_end)};
}

std::string message_of(DWORD error) {
  std::string text = std::system_category().message(static_cast<int>(error));
  while (!text.empty() && (text.back() == '\n' || text.back() == '\r' || text.back() == '.'))
    text.pop_back();
  return text;
}

/// One word as the C runtime of the started program will read it back: in double quotes where
/// needed, backslashes before a double quote doubled.
std::wstring quoted(const std::wstring& word) {
  if (!word.empty() && word.find_first_of(L" \t\n\v\"") == std::wstring::npos)
    return word;
  std::wstring text = L"\"";
  std::size_t backslashes = 0;
  for (const wchar_t c : word) {
    if (c == L'\\') {
      ++backslashes;
      continue;
    }
    text.append(c == L'"' ? 2 * backslashes + 1 : backslashes, L'\\');
    text += c;
    backslashes = 0;
  }
  text.append(2 * backslashes, L'\\');
  return text + L'"';
}

std::wstring command_line_of(const std::vector<std::string>& words) {
  std::wstring line;
  for (const std::string& word : words) {
    if (!line.empty())
      line += L' ';
    line += quoted(path_of(word).wstring());
  }
  return line;
}

/// What one program of a pipeline gets as its standard handles; null: it gets none.
struct standard_handles {
  HANDLE in, out, err;
};

/// The list of handles that the program inherits, and no others.
class inherited_handles {
 public:
  explicit inherited_handles(const standard_handles& files) {
    for (const HANDLE h : {files.in, files.out, files.err})
      if (h != nullptr && std::find(list_.begin(), list_.end(), h) == list_.end()) {
        ::SetHandleInformation(h, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
        list_.push_back(h);
      }
    SIZE_T size = 0;
    ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
    room_.resize(size);
    ready_ = ::InitializeProcThreadAttributeList(attributes(), 1, 0, &size) != 0;
    if (ready_)
      ::UpdateProcThreadAttribute(attributes(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, list_.data(),
                                  list_.size() * sizeof(HANDLE), nullptr, nullptr);
  }
  ~inherited_handles() {
    if (ready_)
      ::DeleteProcThreadAttributeList(attributes());
  }
  inherited_handles(const inherited_handles&) = delete;
  inherited_handles& operator=(const inherited_handles&) = delete;

  LPPROC_THREAD_ATTRIBUTE_LIST attributes() {
    return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(room_.data());
  }

 private:
  std::vector<HANDLE> list_;
  std::vector<char> room_;
  bool ready_ = false;
};

program_end not_started(DWORD error) {
  return {program_end::kind::not_started, error, message_of(error)};
}

/// Makes the process. Once in thousands of times, on a machine full of work, it dies before its
/// first instruction (seen under Wine), which is told as an internal error: nothing of the program
/// has run, so it is tried again. 0, or the error.
DWORD create_process(const std::vector<std::string>& words, STARTUPINFOEXW& how,
                     PROCESS_INFORMATION& info) {
  constexpr int most_tries = 4;
  for (int tries = 1;; ++tries) {
    std::wstring line = command_line_of(words);  // which the call may write into
    if (::CreateProcessW(path_of(words[0]).c_str(), line.data(), nullptr, nullptr, TRUE,
                         EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr, &how.StartupInfo,
                         &info) != 0)
      return 0;
    const DWORD error = ::GetLastError();
    if (error != ERROR_INTERNAL_ERROR || tries == most_tries)
      return error;
    ::Sleep(100);
  }
}

/// Starts one program. Its handle, or a closed one and `end` told.
handle start(const std::vector<std::string>& words, const standard_handles& files,
             program_end& end) {
  inherited_handles inherited(files);
  STARTUPINFOEXW how{};
  how.StartupInfo.cb = sizeof how;
  how.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
  how.StartupInfo.hStdInput = files.in;
  how.StartupInfo.hStdOutput = files.out;
  how.StartupInfo.hStdError = files.err;
  how.lpAttributeList = inherited.attributes();
  PROCESS_INFORMATION info{};
  if (const DWORD error = create_process(words, how, info)) {
    end = not_started(error);
    return {};
  }
  ::CloseHandle(info.hThread);
  return handle(info.hProcess);
}

/// Statuses from here on are those of an exception that ended the program, but for the last ones:
/// those are negative numbers that a program written for other systems gave, where a byte of them
/// counts: -1 is 255.
constexpr DWORD first_exception = 0xC0000000, first_negative = 0xFFFFFF00;

program_end end_of(DWORD status) {
  if (status < first_exception)
    return {program_end::kind::exited, status, {}};
  if (status >= first_negative)
    return {program_end::kind::exited, status & 0xFF, {}};
  return {program_end::kind::by_exception, status,
          status == 0xC0000005 ? "access violation" : "it crashed"};
}

struct started_program {
  handle process;  ///< closed: there is nothing to wait for any more
  program_end end;
};

/// Whether the program has ended within the time, and how.
bool has_ended(started_program& program, DWORD time) {
  if (!program.process.is_open())
    return true;
  if (::WaitForSingleObject(program.process.get(), time) == WAIT_TIMEOUT)
    return false;
  DWORD status = 0;
  program.end = ::GetExitCodeProcess(program.process.get(), &status) == 0
                    ? not_started(::GetLastError())
                    : end_of(status);
  program.process.close();
  return true;
}

bool have_ended(std::vector<started_program>& programs) {
  bool all = true;
  for (started_program& program : programs)
    all = has_ended(program, 0) && all;
  return all;
}

void write_all(HANDLE file, std::string_view text) {
  while (!text.empty()) {
    DWORD written = 0;
    const DWORD want = static_cast<DWORD>(std::min<std::size_t>(text.size(), 1u << 20));
    if (::WriteFile(file, text.data(), want, &written, nullptr) == 0)
      return;
    text.remove_prefix(written);
  }
}

using steady = std::chrono::steady_clock;

/// Passes on what the programs print. A process that they left behind can keep the pipe open for as
/// long as it likes: so they are asked, now and then, whether they have ended.
class output_reader {
 public:
  output_reader(HANDLE from, const std::function<void(std::string_view)>& take)
      : from_(from), take_(take), buffer_(std::size_t{64} << 10) {}

  void read_until_end(std::vector<started_program>& programs) {
    if (!done_.is_open())
      return;
    steady::time_point next_look = steady::now() + between_looks;
    while (begin(buffer_.size())) {
      bool all_ended = false;
      while (!all_ended &&
             ::WaitForSingleObject(done_.get(), between_looks.count()) == WAIT_TIMEOUT)
        all_ended = have_ended(programs);
      if (all_ended)
        ::CancelIo(from_);
      if (!finish() && !all_ended)
        return;
      if (!all_ended && steady::now() >= next_look) {
        all_ended = have_ended(programs);
        next_look = steady::now() + between_looks;
      }
      if (all_ended)
        return read_what_is_there();
    }
  }

 private:
  static constexpr std::chrono::duration<DWORD, std::milli> between_looks{100};

  /// What the programs printed before they ended. More may come all the time, but not from them.
  void read_what_is_there() {
    DWORD left = 0;
    if (::PeekNamedPipe(from_, nullptr, 0, nullptr, &left, nullptr) == 0)
      return;
    while (left > 0 && begin(std::min<std::size_t>(buffer_.size(), left)) && finish() && got_ > 0)
      left -= got_;
  }

  /// Begins to read a piece. False when all have closed the pipe.
  bool begin(std::size_t most) {
    reading_ = {};
    reading_.hEvent = done_.get();
    return ::ReadFile(from_, buffer_.data(), static_cast<DWORD>(most), nullptr, &reading_) != 0 ||
           ::GetLastError() == ERROR_IO_PENDING;
  }

  /// Waits for the piece and takes it. False when there is none.
  bool finish() {
    got_ = 0;
    if (::GetOverlappedResult(from_, &reading_, &got_, TRUE) == 0)
      return false;
    if (got_ > 0)
      take_({buffer_.data(), got_});
    return true;
  }

  HANDLE from_;
  const std::function<void(std::string_view)>& take_;
  std::vector<char> buffer_;
  handle done_{::CreateEventW(nullptr, TRUE, FALSE, nullptr)};
  OVERLAPPED reading_{};
  DWORD got_ = 0;
};

handle open_input(const std::string& path) {
  return handle(::CreateFileW(path.empty() ? L"NUL" : path_of(path).c_str(), GENERIC_READ,
                              FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
}

handle open_output(const std::string& path) {
  return handle(::CreateFileW(path_of(path).c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                              CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
}

/// Made before the first program starts: one without the pipe that it needs would print past us.
struct pipes_of_pipeline {
  two_ends printed;  ///< closed when the programs inherit ours
  std::vector<two_ends> between;

  explicit pipes_of_pipeline(const pipeline& p) {
    if (p.take_output)
      printed = make_watched_pipe();
    for (std::size_t i = 1; i < p.programs.size(); ++i)
      between.push_back(make_pipe());
    is_open_ = printed.write_end.is_open() == static_cast<bool>(p.take_output) &&
               std::all_of(between.begin(), between.end(),
                           [](const two_ends& pipe) { return pipe.write_end.is_open(); });
  }
  bool are_open() const { return is_open_; }

 private:
  bool is_open_ = false;
};

}  // namespace

pipeline_result run_pipeline(const pipeline& p) {
  pipeline_result r;
  const auto unusable = [&r](const std::string& file) {
    r.unusable_file = file;
    r.why_unusable = message_of(::GetLastError());
    return r;
  };
  handle in = open_input(p.input);
  if (!in.is_open())
    return unusable(p.input.empty() ? "NUL" : p.input);
  const handle out = p.output.empty() ? handle() : open_output(p.output);
  if (!p.output.empty() && !out.is_open())
    return unusable(p.output);
  pipes_of_pipeline pipes(p);
  if (!pipes.are_open()) {
    r.ends.assign(p.programs.size(), not_started(::GetLastError()));
    return r;
  }
  const HANDLE printed = pipes.printed.write_end.get();
  const HANDLE own_out = p.take_output ? printed : ::GetStdHandle(STD_OUTPUT_HANDLE);
  const HANDLE own_err = p.take_output ? printed : ::GetStdHandle(STD_ERROR_HANDLE);
  std::vector<started_program> programs(p.programs.size());
  for (std::size_t i = 0; i < programs.size(); ++i) {
    const bool last = i + 1 == programs.size();
    two_ends next = last ? two_ends() : std::move(pipes.between[i]);
    const HANDLE to = !last ? next.write_end.get() : out.is_open() ? out.get() : own_out;
    programs[i].process = start(p.programs[i], {in.get(), to, own_err}, programs[i].end);
    in = std::move(next.read_end);
  }
  in.close();
  pipes.printed.write_end.close();
  if (p.take_output)
    output_reader(pipes.printed.read_end.get(), p.take_output).read_until_end(programs);
  pipes.printed.read_end.close();
  for (started_program& program : programs) {
    has_ended(program, INFINITE);
    r.ends.push_back(std::move(program.end));
  }
  return r;
}

void write_output(std::string_view text) {
  write_all(::GetStdHandle(STD_OUTPUT_HANDLE), text);
}

invocation own_invocation(int /*argc*/, char** /*argv*/) {
  invocation own;
  std::wstring path(32768, L'\0');
  path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  own.program = text_of(std::filesystem::path(path));
  int count = 0;
  const std::unique_ptr<LPWSTR, decltype(&::LocalFree)> words(
      ::CommandLineToArgvW(::GetCommandLineW(), &count), ::LocalFree);
  for (int i = 1; words && i < count; ++i)
    own.arguments.push_back(text_of(std::filesystem::path(words.get()[i])));
  return own;
}

void begin_as_script_runner() {
  // The handle stays open on purpose: the system closes it when this process ends, and with it
  // ends what still runs in the job.
  const HANDLE job = ::CreateJobObjectW(nullptr, nullptr);
  JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits{};
  limits.BasicLimitInformation.LimitFlags = JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE;
  ::SetInformationJobObject(job, JobObjectExtendedLimitInformation, &limits, sizeof limits);
  ::AssignProcessToJobObject(job, ::GetCurrentProcess());
}

}  // namespace corvane
