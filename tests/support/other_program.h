// A second program in a test, on every system: it says on its output how far it is, and goes on when a file appears.
#pragma once

#include "platform/os/program.h"
#include "support/temp_folder.h"

#include <cstdio>
#include <stdexcept>
#include <string>

namespace vantrel {

/// Does one of the tasks of tests/other_program with the record at `path`, beside the test.
class OtherProgram {
public:
    OtherProgram(const std::string& task, const std::string& path) {
        const std::string words = Quoted(os::ProgramFolder() + "/other_program") + " " + task + " " + Quoted(path) +
                                  " " + Quoted(signals_.Path());
#ifdef _WIN32
        output_ = _popen(Quoted(words).c_str(), "r");  // the interpreter takes the outer quotes off
#else
        output_ = popen(words.c_str(), "r");
#endif
        if (output_ == nullptr) throw std::runtime_error("no other program");
    }
    ~OtherProgram() {
        while (!has_ended_) {
            Continue();
            if (!Await()) End();
        }
    }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

    /// Waits until it has come to its next halt. False if it has ended.
    bool Await() {
        char line[16];
        return std::fgets(line, sizeof line, output_) != nullptr;
    }
    /// Lets it go on behind its next halt.
    void Continue() { WriteFileBytes(signals_ / std::to_string(++signal_), ""); }
    /// Waits for its end. True if all went well in it.
    bool End() {
        has_ended_ = true;
#ifdef _WIN32
        return _pclose(output_) == 0;
#else
        return pclose(output_) == 0;
#endif
    }

private:
    static std::string Quoted(const std::string& word) { return '"' + word + '"'; }

    TempFolder signals_;
    int signal_ = 0;
    bool has_ended_ = false;
    std::FILE* output_ = nullptr;
};

}  // namespace vantrel
