// A VISA library that lacks one of the calls that the program makes: viClose.
#define ENTRY(name) \
    extern "C" __attribute__((visibility("default"))) int name() { return 0; }

ENTRY(viOpenDefaultRM)
ENTRY(viFindRsrc)
ENTRY(viFindNext)
ENTRY(viOpen)
ENTRY(viSetAttribute)
ENTRY(viWrite)
ENTRY(viRead)
