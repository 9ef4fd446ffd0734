// A second process in a test, where the system can fork one.
#pragma once

#ifndef _WIN32

#include <csignal>
#include <functional>
#include <stdexcept>
#include <sys/wait.h>
#include <unistd.h>

namespace vantrel {

/// A process that runs `work`, given two-way contact with the test, and ends. Killed with the object if it still runs.
class ChildProcess {
public:
    /// How the child talks to the test: one byte at a time.
    struct Contact {
        int in, out;
        void Send() const {
            if (write(out, "x", 1) != 1) _exit(2);
        }
        /// Waits for a byte. False if the other side is gone.
        bool Await() const {
            char byte = 0;
            return read(in, &byte, 1) == 1;
        }
    };

    explicit ChildProcess(const std::function<void(const Contact&)>& work) {
        int to_child[2];
        int to_test[2];
        if (pipe(to_child) != 0 || pipe(to_test) != 0) throw std::runtime_error("no pipe");
        id_ = fork();
        if (id_ == 0) {
            close(to_child[1]);
            close(to_test[0]);
            Work(work, {to_child[0], to_test[1]});
        }
        close(to_child[0]);
        close(to_test[1]);
        contact_ = {to_test[0], to_child[1]};
    }
    ~ChildProcess() {
        if (id_ > 0) Kill();
        close(contact_.in);
        close(contact_.out);
    }
    ChildProcess(const ChildProcess&) = delete;
    ChildProcess& operator=(const ChildProcess&) = delete;

    /// Ends the child at once, without a chance to tidy up.
    void Kill() {
        kill(id_, SIGKILL);
        End();
    }
    /// Waits for the child's own end. 0 if all went well in it.
    int End() {
        int status = 0;
        waitpid(id_, &status, 0);
        id_ = -1;
        return status;
    }
    const Contact& Talk() const { return contact_; }

private:
    [[noreturn]] static void Work(const std::function<void(const Contact&)>& work, const Contact& contact) {
        try {
            work(contact);
        } catch (...) {
            _exit(1);
        }
        _exit(0);
    }

    pid_t id_ = -1;
    Contact contact_{};
};

}  // namespace vantrel

#endif
