// What the words behind the program's name ask for.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace vantrel {

struct CommandLine {
    std::string folder;              ///< absolute path; records are kept in its folder "db". Empty: the program's own
    std::optional<int> exit_status;  ///< set: print `answer` and end with this status instead of starting
    std::string answer;              ///< for standard output where the status is 0, else for standard error
};

/// `words`: the arguments without the program's name. Of several folders the last one counts.
CommandLine ReadCommandLine(const std::vector<std::string>& words);

}  // namespace vantrel
