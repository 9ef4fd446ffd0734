// The eight operations of the machine's VISA library. Where the environment variable VANTREL_WIRE_LOG names a file,
// what goes over the wire is added to it (platform/visa/wire_log.h).
#pragma once

#include "platform/os/library.h"

#include <cstdint>
#include <string>

namespace vantrel {

using ViSession = std::uint32_t;
using ViStatus = std::int32_t;

inline constexpr ViStatus kViSuccess = 0;
inline constexpr ViStatus kViSuccessMaxCnt = 0x3FFF0006;  ///< the read's buffer is full and more waits
inline constexpr std::uint32_t kViAttrTmoValue = 0x3FFF001A;

/// The entry points as the program calls them. Every argument is handed over as a zero-extended word of the machine and
/// every result lands in a zeroed cell of that size, of which the low 32 bits count. So on a machine with 64 bits,
/// where each argument has a register or a stack slot of that size, libraries with 32-bit and with 64-bit integers both
/// work.
struct VisaEntryPoints {
    using Word = std::uintptr_t;
    Word(VANTREL_LIBRARY_CALL* viOpenDefaultRM)(Word* session) = nullptr;
    Word(VANTREL_LIBRARY_CALL* viFindRsrc)(Word rm, const char* expression, Word* find_list, Word* count,
                                           char* descriptor) = nullptr;
    Word(VANTREL_LIBRARY_CALL* viFindNext)(Word find_list, char* descriptor) = nullptr;
    Word(VANTREL_LIBRARY_CALL* viOpen)(Word rm, const char* descriptor, Word access, Word timeout,
                                       Word* session) = nullptr;
    Word(VANTREL_LIBRARY_CALL* viSetAttribute)(Word session, Word attribute, Word value) = nullptr;
    Word(VANTREL_LIBRARY_CALL* viWrite)(Word session, const unsigned char* bytes, Word count, Word* written) = nullptr;
    Word(VANTREL_LIBRARY_CALL* viRead)(Word session, unsigned char* bytes, Word count, Word* read) = nullptr;
    Word(VANTREL_LIBRARY_CALL* viClose)(Word object) = nullptr;
};

/// Lets the calls below go to `entry_points` and not to the machine's library. For tests.
void UseVisa(const VisaEntryPoints& entry_points);

// Each returns VISA's status. A call that fails leaves 0 (or an empty text) in what it would have returned. Without a
// VISA library on the machine every call fails with VI_ERROR_LIBRARY_NFOUND (below 0).
ViStatus viOpenDefaultRM(ViSession* session);
ViStatus viFindRsrc(ViSession rm, const char* expression, ViSession* find_list, std::uint32_t* count,
                    std::string* descriptor);
ViStatus viFindNext(ViSession find_list, std::string* descriptor);
ViStatus viOpen(ViSession rm, const std::string& descriptor, std::uint32_t access, std::uint32_t timeout,
                ViSession* session);
ViStatus viSetAttribute(ViSession session, std::uint32_t attribute, std::uint32_t value);
ViStatus viWrite(ViSession session, const std::string& bytes, std::uint32_t count, std::uint32_t* written);
/// Reads up to `count` bytes; `bytes` becomes what arrived.
ViStatus viRead(ViSession session, std::string* bytes, std::uint32_t count, std::uint32_t* read);
ViStatus viClose(ViSession object);

}  // namespace vantrel
