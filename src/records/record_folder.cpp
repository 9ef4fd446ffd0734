#include "records/record_folder.h"

#include "platform/files.h"
#include "platform/toolkit/dialogs.h"

namespace vantrel {

void TellUnusableRecordFolder() {
    std::string fault;
    std::string remedy;
    switch (StateOfDbFolder()) {
        case DbFolderState::kUsable:
            return;
        case DbFolderState::kMissing:
            fault = "There is no folder for records:";
            remedy = "Make this folder";
            break;
        case DbFolderState::kNotWritable:
            fault = "The folder for records cannot be written to:";
            remedy = "Get the permission to write there";
            break;
    }
    MsgBox(fault + "\n" + DbFolder() + "\n\n" + remedy +
           ", or keep records elsewhere: vantrel --folder DIR uses DIR/db.\n\n"
           "You can go on, but only without records: a run that is to store ends the program at Start.");
}

}  // namespace vantrel
