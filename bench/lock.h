// VISA's locks on one instrument.
#pragma once

#include "bench/status.h"

#include <cstdint>
#include <map>
#include <string>

namespace vantrel::bench {

/// The locks that sessions hold on one instrument. A session may take each kind several times, and gives it back as
/// often.
class Lock {
public:
    /// VISA's numbers of the kinds.
    enum Kind : std::uint32_t { kNone = 0, kExclusive = 1, kShared = 2 };

    /// kErrorRsrcLocked where another session is in the way; it is not waited for.
    Status TakeExclusive(std::uint32_t session);
    /// The first session to share says with which key, which is handed back in `key`; the others have to name it.
    Status TakeShared(std::uint32_t session, const std::string& requested_key, std::string* key);
    /// Gives back the exclusive lock where the session holds one, else the shared one.
    Status Release(std::uint32_t session);
    /// Gives back all that the session holds.
    void Forget(std::uint32_t session);

    /// Whether the session may not use the instrument.
    bool Excludes(std::uint32_t session) const;
    Kind State() const;

private:
    std::uint32_t owner_ = 0;  ///< of the exclusive lock
    int times_ = 0;            ///< that the owner took it
    std::map<std::uint32_t, int> sharers_;
    std::string key_;
};

}  // namespace vantrel::bench
