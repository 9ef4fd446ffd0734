#include "platform/command_line.h"
#include "platform/files.h"
#include "platform/os/output.h"
#include "platform/os/program.h"
#include "platform/toolkit/events.h"
#include "records/record_folder.h"
#include "windows/Form1.h"

int main(int argc, char** argv) {
    using namespace vantrel;
    const CommandLine line = ReadCommandLine(os::Arguments(argc, argv));
    if (line.exit_status) {
        (*line.exit_status == 0 ? os::WriteOutput : os::WriteError)(line.answer);
        return *line.exit_status;
    }
    if (!line.folder.empty()) UseAppPath(line.folder);
    return RunProgram([] {
        The<Form1>().Show();
        TellUnusableRecordFolder();
    });
}
