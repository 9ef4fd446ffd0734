#include "platform/command_line.h"

#include "platform/os/file.h"

namespace vantrel {

namespace {

constexpr int kWrongUse = 2;

const std::string kHelp =
    "Usage: vantrel [--folder DIR]\n"
    "Logs the readings of bench multimeters with scanner cards.\n"
    "\n"
    "  --folder DIR  keep records in DIR/db instead of the folder db beside the program\n"
    "  --version     print the version\n"
    "  --help        print this text\n";

CommandLine Answer(const std::string& text) { return {.folder = {}, .exit_status = 0, .answer = text}; }

CommandLine Refusal(const std::string& reason) {
    const std::string line = "vantrel: " + reason + "; vantrel --help tells what there is\n";
    return {.folder = {}, .exit_status = kWrongUse, .answer = line};
}

}  // namespace

CommandLine ReadCommandLine(const std::vector<std::string>& words) {
    CommandLine line;
    for (auto word = words.begin(); word != words.end(); ++word) {
        if (*word == "--help") return Answer(kHelp);
        if (*word == "--version") return Answer("vantrel " VANTREL_VERSION "\n");
        if (*word != "--folder") return Refusal("\"" + *word + "\" is not an option");
        if (++word == words.end() || word->empty()) return Refusal("--folder needs a folder");
        line.folder = os::WholePath(*word);
    }
    return line;
}

}  // namespace vantrel
