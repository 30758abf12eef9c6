#include "ServiceProcess.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace {

// Only so that a service that hangs fails the test.
constexpr int patienceMilliseconds = 20000;

}  // namespace

ServiceProcess::ServiceProcess(const std::vector<std::string>& arguments) {
    std::array<int, 2> ends{};
    EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0);
    outputPipe = ends[0];
    std::vector<std::string> words = {ORVANDE_SERVICE_PROGRAM};
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    pointers.reserve(words.size() + 1);
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, (folder.Path() / "errors").c_str(),
                                     O_WRONLY | O_CREAT | O_APPEND, 0600);
    EXPECT_EQ(posix_spawn(&process, words[0].c_str(), &actions, nullptr, pointers.data(), environ), 0);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
}

ServiceProcess::~ServiceProcess() {
    if (process > 0) {
        kill(process, SIGKILL);
        waitpid(process, nullptr, 0);
    }
    close(outputPipe);
}

int ServiceProcess::WaitForPort() {
    constexpr std::string_view words = "listening on port ";
    while (output.find('\n') == std::string::npos) {
        if (!ReadOutput()) break;
    }
    if (output.starts_with(words) && output.ends_with('\n'))
        return static_cast<int>(std::strtol(output.c_str() + words.size(), nullptr, 10));
    ADD_FAILURE() << "the service does not listen: " << output << Errors();
    return 0;
}

void ServiceProcess::Signal(int signal) const {
    EXPECT_EQ(kill(process, signal), 0);
}

int ServiceProcess::WaitForEnd() {
    // The end of its output comes with its own end.
    while (ReadOutput())
        continue;
    int status = 0;
    EXPECT_EQ(waitpid(process, &status, 0), process);
    process = -1;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

uint64_t ServiceProcess::PeakMemory() const {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    constexpr std::string_view field = "VmHWM:";
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with(field)) return std::strtoull(line.c_str() + field.size(), nullptr, 10) * 1024;
    }
    ADD_FAILURE() << "the system does not tell the memory of the service";
    return 0;
}

std::string ServiceProcess::Errors() const {
    std::ostringstream text;
    text << std::ifstream(folder.Path() / "errors").rdbuf();
    return text.str();
}

bool ServiceProcess::ReadOutput() {
    pollfd waiting{outputPipe, POLLIN, 0};
    if (poll(&waiting, 1, patienceMilliseconds) != 1) {
        ADD_FAILURE() << "the service says nothing and does not end";
        kill(process, SIGKILL);
        return false;
    }
    std::array<char, 4096> bytes{};
    const ssize_t count = read(outputPipe, bytes.data(), bytes.size());
    if (count <= 0) return false;
    output.append(bytes.data(), static_cast<size_t>(count));
    return true;
}
