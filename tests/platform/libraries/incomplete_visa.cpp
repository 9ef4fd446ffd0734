// A VISA library that lacks one of the calls that the program makes: viClose.
#include "incomplete_visa_export.h"

#define ENTRY(name) \
    extern "C" INCOMPLETE_VISA_EXPORT int name() { return 0; }

ENTRY(viOpenDefaultRM)
ENTRY(viFindRsrc)
ENTRY(viFindNext)
ENTRY(viOpen)
ENTRY(viSetAttribute)
ENTRY(viWrite)
ENTRY(viRead)
