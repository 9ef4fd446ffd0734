// The folder of the records.
#pragma once

namespace vantrel {

/// Where no record can be kept, since the folder "db" is missing or must not be written to, says so in a message box:
/// which folder it is and what to do. The program can be used without.
void TellUnusableRecordFolder();

}  // namespace vantrel
