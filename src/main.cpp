#include "platform/command_line.h"
#include "platform/files.h"
#include "platform/toolkit/events.h"
#include "records/record_folder.h"
#include "windows/Form1.h"

#include <cstdio>

int main(int argc, char** argv) {
    using namespace vantrel;
    const CommandLine line = ReadCommandLine({argv + 1, argv + argc});
    if (line.exit_status) {
        std::fputs(line.answer.c_str(), *line.exit_status == 0 ? stdout : stderr);
        return *line.exit_status;
    }
    if (!line.folder.empty()) UseAppPath(line.folder);
    return RunProgram([] {
        The<Form1>().Show();
        TellUnusableRecordFolder();
    });
}
