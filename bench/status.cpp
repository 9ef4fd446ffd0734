#include "bench/status.h"

#include <algorithm>
#include <array>

namespace vantrel::bench {
namespace {

struct Meaning {
    Status status;
    std::string_view text;
};
constexpr std::array<Meaning, 26> kMeanings = {{
    {kSuccess, "The call has succeeded."},
    {kSuccessEventDisabled, "The event was disabled already."},
    {kSuccessQueueEmpty, "The event queue was empty already."},
    {kSuccessTermChar, "The read has met the termination character."},
    {kSuccessMaxCnt, "The read has filled the buffer."},
    {kSuccessNestedShared, "The session holds more than one shared lock."},
    {kSuccessNestedExclusive, "The session holds more than one exclusive lock."},
    {kErrorSystem, "The bench file cannot be read."},
    {kErrorInvObject, "The handle belongs to nothing that is open."},
    {kErrorRsrcLocked, "Another session has locked the resource."},
    {kErrorInvExpr, "The search expression is wrong."},
    {kErrorRsrcNotFound, "No such resource is there."},
    {kErrorInvResourceName, "The text is not a resource name."},
    {kErrorTimeOut, "The time-out has passed."},
    {kErrorNoSuchAttribute, "The object has no such attribute."},
    {kErrorNoSuchAttributeState, "The attribute does not take this value."},
    {kErrorAttributeReadOnly, "The attribute can only be read."},
    {kErrorInvLockType, "There is no such kind of lock."},
    {kErrorInvAccessKey, "The key does not open the lock."},
    {kErrorInvEvent, "The instrument has no such event."},
    {kErrorHandlerNotInstalled, "No handler is installed for the event."},
    {kErrorNotEnabled, "The event is not enabled."},
    {kErrorNotSupported, "The bench does not support the call."},
    {kErrorInvMode, "The call has no such mode."},
    {kErrorSessionNotLocked, "The session has no lock."},
    {kErrorConnectionLost, "The connection to the instrument is lost."},
}};

}  // namespace

std::string_view StatusText(Status status) {
    const auto* const found = std::ranges::find(kMeanings, status, &Meaning::status);
    return found == kMeanings.end() ? std::string_view() : found->text;
}

}  // namespace vantrel::bench
