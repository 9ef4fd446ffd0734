// Devices without the Connect dialog.
#pragma once

#include "state/shared.h"

#include <string>

namespace vantrel {

/// Opens a session with the instrument of that resource name, as the search that found it at `place` and the user who
/// ticked it in row `slot` would have, and makes it device `dev`.
inline void Attach(Integer dev, Integer slot, Integer place, const std::string& resource) {
    if (DefaultRM == 0) VisaStatus = viOpenDefaultRM(&DefaultRM);
    VisaStatus = viOpen(DefaultRM, resource, 0, 0, &InstrSession(place));
    VisaStatus = viSetAttribute(InstrSession(place), kViAttrTmoValue, 5000);
    FoundSession(slot) = place;
    SlotOf(dev) = slot;
}

}  // namespace vantrel
