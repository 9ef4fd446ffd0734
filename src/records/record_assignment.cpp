#include "records/record_assignment.h"

#include "platform/toolkit/dialogs.h"
#include "state/shared.h"

namespace vantrel {

void OfferRecords(ComboBox& combo) {
    for (int i = 1; i <= 10; ++i) combo.AddItem("Record" + Str(i));
    combo.AddItem("NONE");
}

std::string RecordPrompt(Integer device) {
    return HasRecord(device) ? RecordName(device) : "Please choice a datebase";  // Kept: K-texts
}

void AssignRecord(Integer device, const std::string& text, int devices) {
    // Kept: K-word-record
    if (!Contains(text, "Record")) {
        RecordName(device) = kNoRecord;
        return;
    }
    // Kept: K-shared-record
    for (const Integer j : Each(devices)) {
        RecordName(device) = text;
        if (j != device && RecordName(j) == RecordName(device)) {
            MsgBox("Please select other Record.");
            RecordName(device) = kNoRecord;  // Kept: K-refused
            return;
        }
    }
}

}  // namespace vantrel
