#include "platform/os/program.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace vantrel::os {

namespace {

int request_pipe[2] = {-1, -1};

// Signal handlers may do next to nothing: the signal becomes a byte in a pipe.
void NoteRequest(int) {
    const char byte = 1;
    [[maybe_unused]] const auto written = write(request_pipe[1], &byte, 1);
}

/// The program `name` as a shell would find it; empty for none.
std::string FindProgram(const std::string& name) {
    const char* const path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "");
    for (std::string folder; std::getline(folders, folder, ':');) {
        std::filesystem::path file(folder);
        (file += '/') += name;
        std::error_code fault;
        if (std::filesystem::is_regular_file(file, fault) && access(file.c_str(), X_OK) == 0) return file.string();
    }
    return {};
}

}  // namespace

std::vector<std::string> Arguments(int argc, char** argv) { return {argv + 1, argv + argc}; }

std::string ProgramFolder() { return std::filesystem::read_symlink("/proc/self/exe").parent_path().string(); }

void FailOversizeWrites() { std::signal(SIGXFSZ, SIG_IGN); }

int WatchEndRequests() {
    if (pipe(request_pipe) != 0) return -1;
    for (const int end : request_pipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    struct sigaction action {};
    action.sa_handler = NoteRequest;
    action.sa_flags = SA_RESTART;
    sigaction(SIGTERM, &action, nullptr);
    sigaction(SIGHUP, &action, nullptr);
    return request_pipe[0];
}

void TakeEndRequests() {
    char bytes[16];
    [[maybe_unused]] const auto got = read(request_pipe[0], bytes, sizeof bytes);
}

bool OpenByInterpreter(const std::string& address) {
    const std::string interpreter = FindProgram("cmd.exe");
    if (interpreter.empty()) return false;
    const pid_t starter = fork();
    if (starter < 0) return false;
    if (starter == 0) {
        // Started by a process that ends at once, so that nobody has to ask for its end.
        setsid();
        if (fork() == 0) execl(interpreter.c_str(), interpreter.c_str(), "/c", "start", address.c_str(), nullptr);
        _exit(0);
    }
    waitpid(starter, nullptr, 0);
    return true;
}

}  // namespace vantrel::os
