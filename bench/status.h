// VISA's statuses, as far as the bench gives them.
#pragma once

#include <cstdint>
#include <string_view>

namespace vantrel::bench {

using Status = std::int32_t;

inline constexpr Status kSuccess = 0;
inline constexpr Status kSuccessEventDisabled = 0x3FFF0003;
inline constexpr Status kSuccessQueueEmpty = 0x3FFF0004;
inline constexpr Status kSuccessTermChar = 0x3FFF0005;
inline constexpr Status kSuccessMaxCnt = 0x3FFF0006;
inline constexpr Status kSuccessNestedShared = 0x3FFF0099;
inline constexpr Status kSuccessNestedExclusive = 0x3FFF009A;
inline constexpr Status kWarningUnknownStatus = 0x3FFF0085;
inline constexpr auto kErrorSystem = static_cast<Status>(0xBFFF0000);
inline constexpr auto kErrorInvObject = static_cast<Status>(0xBFFF000E);
inline constexpr auto kErrorRsrcLocked = static_cast<Status>(0xBFFF000F);
inline constexpr auto kErrorInvExpr = static_cast<Status>(0xBFFF0010);
inline constexpr auto kErrorRsrcNotFound = static_cast<Status>(0xBFFF0011);
inline constexpr auto kErrorInvResourceName = static_cast<Status>(0xBFFF0012);
inline constexpr auto kErrorTimeOut = static_cast<Status>(0xBFFF0015);
inline constexpr auto kErrorNoSuchAttribute = static_cast<Status>(0xBFFF001D);
inline constexpr auto kErrorNoSuchAttributeState = static_cast<Status>(0xBFFF001E);
inline constexpr auto kErrorAttributeReadOnly = static_cast<Status>(0xBFFF001F);
inline constexpr auto kErrorInvLockType = static_cast<Status>(0xBFFF0020);
inline constexpr auto kErrorInvAccessKey = static_cast<Status>(0xBFFF0021);
inline constexpr auto kErrorInvEvent = static_cast<Status>(0xBFFF0026);
inline constexpr auto kErrorHandlerNotInstalled = static_cast<Status>(0xBFFF0028);
inline constexpr auto kErrorNotEnabled = static_cast<Status>(0xBFFF002F);
inline constexpr auto kErrorNotSupported = static_cast<Status>(0xBFFF0067);
inline constexpr auto kErrorInvMode = static_cast<Status>(0xBFFF0091);
inline constexpr auto kErrorSessionNotLocked = static_cast<Status>(0xBFFF009C);
inline constexpr auto kErrorConnectionLost = static_cast<Status>(0xBFFF00A6);

/// What a status means, in a sentence; an empty text for one that the bench does not give.
std::string_view StatusText(Status status);

}  // namespace vantrel::bench
