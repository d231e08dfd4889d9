#include "command.h"

#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace corvane::disc {

namespace {

bool redirect(const std::string& file, int flags, int descriptor) {
  if (file.empty())
    return true;
  const int opened = open(file.c_str(), flags | O_CLOEXEC, 0644);
  return opened >= 0 && dup2(opened, descriptor) >= 0;
}

[[noreturn]] void become(const command& c, int output) {
  std::vector<char*> words;
  for (const std::string& word : c.words)
    words.push_back(const_cast<char*>(word.c_str()));
  words.push_back(nullptr);
  const std::string input = c.input_file.empty() ? "/dev/null" : c.input_file;
  const bool ready = dup2(output, STDOUT_FILENO) >= 0 && dup2(output, STDERR_FILENO) >= 0 &&
                     redirect(input, O_RDONLY, STDIN_FILENO) &&
                     redirect(c.output_file, O_WRONLY | O_CREAT | O_TRUNC, STDOUT_FILENO) &&
                     (c.folder.empty() || chdir(c.folder.c_str()) == 0);
  for (const auto& [name, value] : c.environment)
    setenv(name.c_str(), value.c_str(), 1);
  if (ready)
    execvp(words[0], words.data());
  _exit(127);
}

}  // namespace

finished run(const command& c) {
  finished result;
  int pipe_ends[2];
  if (pipe2(pipe_ends, O_CLOEXEC) != 0)
    return result;
  const pid_t child = fork();
  if (child == 0)
    become(c, pipe_ends[1]);
  close(pipe_ends[1]);
  char bytes[4096];
  for (ssize_t n = 0; (n = read(pipe_ends[0], bytes, sizeof bytes)) > 0;)
    result.out.append(bytes, static_cast<std::size_t>(n));
  close(pipe_ends[0]);
  int status = 0;
  if (child > 0 && waitpid(child, &status, 0) == child)
    result.status = WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
  return result;
}

}  // namespace corvane::disc
