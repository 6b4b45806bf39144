#pragma once

#include <chrono>
#include <csignal>
#include <functional>
#include <stdexcept>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace concurrent {

/// How a child process ended.
struct Ending {
    int status = -1; ///< of a process that ended by itself
    int signal = 0;  ///< that ended it
};

/// Starts a process that does this and ends with its result, 99 after an exception. It must touch no connection that
/// the parent opened.
inline pid_t start(const std::function<int()>& work) {
    const pid_t child = ::fork();
    if (child < 0)
        throw std::runtime_error("no process");
    if (child > 0)
        return child;
    int status = 99;
    try {
        status = work();
    } catch (...) {
    }
    ::_exit(status);
}

/// Kills a process that takes longer: nothing may hang, whatever the others do.
inline Ending waitFor(pid_t child, std::chrono::seconds atMost = std::chrono::seconds(240)) {
    const auto deadline = std::chrono::steady_clock::now() + atMost;
    int status = 0;
    Ending ending;
    pid_t ended = 0;
    while ((ended = ::waitpid(child, &status, WNOHANG)) == 0) {
        if (std::chrono::steady_clock::now() > deadline)
            ::kill(child, SIGABRT);
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    if (ended != child)
        return ending;
    if (WIFEXITED(status))
        ending.status = WEXITSTATUS(status);
    if (WIFSIGNALED(status))
        ending.signal = WTERMSIG(status);
    return ending;
}

} // namespace concurrent
