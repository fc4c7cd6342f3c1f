// SPDX-License-Identifier: MIT
#include "Process.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <stdexcept>

extern char **environ;

namespace testsystem {

namespace {

class Redirections
{
public:
    Redirections() { posix_spawn_file_actions_init(&actions); }
    Redirections(const Redirections &) = delete;
    Redirections &operator=(const Redirections &) = delete;
    ~Redirections() { posix_spawn_file_actions_destroy(&actions); }

    void add(int stream, const std::string &file, int flags)
    {
        if (!file.empty())
            posix_spawn_file_actions_addopen(&actions, stream, file.c_str(), flags, S_IRUSR | S_IWUSR);
    }
    const posix_spawn_file_actions_t *get() const { return &actions; }

private:
    posix_spawn_file_actions_t actions{};
};

} // namespace

Process::Process(const std::string &program, const std::vector<std::string> &arguments,
                 const std::string &input, const std::string &output, const std::string &errors)
{
    std::vector<char *> texts{const_cast<char *>(program.c_str())}; // which are only read
    for (const std::string &argument : arguments)
        texts.push_back(const_cast<char *>(argument.c_str()));
    texts.push_back(nullptr);
    Redirections redirections;
    redirections.add(STDIN_FILENO, input, O_RDONLY);
    redirections.add(STDOUT_FILENO, output, O_WRONLY | O_CREAT | O_TRUNC);
    redirections.add(STDERR_FILENO, errors, O_WRONLY | O_CREAT | O_TRUNC);
    pid_t child = 0;
    if (posix_spawn(&child, program.c_str(), redirections.get(), nullptr, texts.data(), environ) != 0)
        throw std::runtime_error("can't start " + program);
    process = child;
}

int Process::wait()
{
    int status = -1;
    if (process == 0 || waitpid(static_cast<pid_t>(std::exchange(process, 0)), &status, 0) < 0)
        return -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

void Process::kill()
{
    if (process != 0)
        ::kill(static_cast<pid_t>(process), SIGKILL);
}

} // namespace testsystem
