// Which record a device stores into: the rule that both dialogs with a record combo apply.
#pragma once

#include "platform/numbers.h"
#include "platform/toolkit/controls.h"

#include <string>

namespace vantrel {

/// Adds Record1 to Record10, then "NONE", to a combo's list.
void OfferRecords(ComboBox& combo);

/// What a record combo shows for `device`: its record, or the prompt where it has none.
std::string RecordPrompt(Integer device);

/// Takes `text` as the record of `device`. A text without "Record" means none. A record that another of the first
/// `devices` devices has is refused with a message, and the device has none.
void AssignRecord(Integer device, const std::string& text, int devices);

}  // namespace vantrel
