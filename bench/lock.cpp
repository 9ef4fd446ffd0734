#include "bench/lock.h"

namespace vantrel::bench {

Status Lock::TakeExclusive(std::uint32_t session) {
    if (Excludes(session)) return kErrorRsrcLocked;
    owner_ = session;
    return ++times_ == 1 ? kSuccess : kSuccessNestedExclusive;
}

Status Lock::TakeShared(std::uint32_t session, const std::string& requested_key, std::string* key) {
    if (owner_ != 0 && owner_ != session) return kErrorRsrcLocked;
    if (sharers_.empty()) {
        key_ = requested_key.empty() ? "bench" : requested_key;
    } else if (!sharers_.contains(session) || !requested_key.empty()) {
        if (requested_key.empty()) return kErrorRsrcLocked;
        if (requested_key != key_) return kErrorInvAccessKey;
    }
    *key = key_;
    return ++sharers_[session] == 1 ? kSuccess : kSuccessNestedShared;
}

Status Lock::Release(std::uint32_t session) {
    if (owner_ == session) {
        if (--times_ > 0) return kSuccessNestedExclusive;
        owner_ = 0;
        return kSuccess;
    }
    const auto sharer = sharers_.find(session);
    if (sharer == sharers_.end()) return kErrorSessionNotLocked;
    if (--sharer->second > 0) return kSuccessNestedShared;
    sharers_.erase(sharer);
    return kSuccess;
}

void Lock::Forget(std::uint32_t session) {
    if (owner_ == session) {
        owner_ = 0;
        times_ = 0;
    }
    sharers_.erase(session);
}

bool Lock::Excludes(std::uint32_t session) const {
    if (owner_ != 0) return owner_ != session;
    return !sharers_.empty() && !sharers_.contains(session);
}

Lock::Kind Lock::State() const {
    if (owner_ != 0) return kExclusive;
    return sharers_.empty() ? kNone : kShared;
}

}  // namespace vantrel::bench
