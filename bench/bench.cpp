#include "bench/bench.h"

#include "bench/expression.h"
#include "bench/resource_name.h"
#include "bench/text.h"

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <thread>
#include <utility>

namespace vantrel::bench {
namespace {

constexpr std::uint16_t kMessageAvailable = 0x10;

std::int64_t MachineTime() {
    using std::chrono::duration_cast;
    return duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

void MachineWait(std::int64_t milliseconds) { std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds)); }

/// name(argument, argument, ...)
std::string CallText(std::string name, std::initializer_list<std::string> arguments) {
    std::string separator = "(";
    for (const std::string& argument : arguments) {
        name += separator + argument;
        separator = ", ";
    }
    return name + (arguments.size() == 0 ? "()" : ")");
}

std::string Hexadecimal(std::uint32_t value) {
    std::string digits;
    for (; value != 0; value /= 16) digits.insert(digits.begin(), "0123456789ABCDEF"[value % 16]);
    return "0x" + digits;
}

}  // namespace

Bench::Bench(BenchDescription description, TimeSource now, Waiting wait)
    : now_(now ? std::move(now) : MachineTime), wait_(wait ? std::move(wait) : MachineWait) {
    for (auto& instrument : description.instruments) {
        instruments_.emplace_back(std::move(instrument), static_cast<int>(instruments_.size()), description.pace);
    }
    locks_.resize(instruments_.size());
}

// ---- the calls, with their place in the record

Status Bench::OpenDefaultRM(Handle* session) {
    managers_[++last_handle_] = ManagerAttributes();
    *session = last_handle_;
    return Recorded(CallText("viOpenDefaultRM", {}), kSuccess);
}

Status Bench::FindRsrc(Handle rm, const std::string& expression, Handle* find_list, std::uint32_t* count,
                       std::string* descriptor) {
    const Status status = DoFindRsrc(rm, expression, find_list, count, descriptor);
    return Recorded(CallText("viFindRsrc", {std::to_string(rm), Quoted(expression)}), status);
}

Status Bench::FindNext(Handle find_list, std::string* descriptor) {
    const Status status = DoFindNext(find_list, descriptor);
    return Recorded(CallText("viFindNext", {std::to_string(find_list)}), status);
}

Status Bench::Open(Handle rm, const std::string& descriptor, std::uint32_t access, std::uint32_t timeout,
                   Handle* session) {
    const Status status = DoOpen(rm, descriptor, access, timeout, session);
    return Recorded(
        CallText("viOpen", {std::to_string(rm), Quoted(descriptor), std::to_string(access), std::to_string(timeout)}),
        status);
}

Status Bench::GetAttribute(Handle object, std::uint32_t attribute, AttributeValue* value) {
    const Status status = DoGetAttribute(object, attribute, value);
    return Recorded(CallText("viGetAttribute", {std::to_string(object), Hexadecimal(attribute)}), status);
}

Status Bench::SetAttribute(Handle session, std::uint32_t attribute, std::uint32_t value) {
    const Status status = DoSetAttribute(session, attribute, value);
    return Recorded(
        CallText("viSetAttribute", {std::to_string(session), Hexadecimal(attribute), std::to_string(value)}), status);
}

Status Bench::Write(Handle session, std::string_view bytes, std::uint32_t* written) {
    const Status status = DoWrite(session, bytes, written);
    return Recorded(CallText("viWrite", {std::to_string(session), Quoted(bytes)}), status);
}

Status Bench::Read(Handle session, std::uint32_t limit, std::string* bytes) {
    const Status status = DoRead(session, limit, bytes);
    return Recorded(CallText("viRead", {std::to_string(session), std::to_string(limit)}), status);
}

Status Bench::Close(Handle object) {
    DropLocks(object);
    const auto closed = sessions_.erase(object) + find_lists_.erase(object) + managers_.erase(object);
    return Recorded(CallText("viClose", {std::to_string(object)}), closed != 0 ? kSuccess : kErrorInvObject);
}

Status Bench::Clear(Handle session) {
    return Recorded(CallText("viClear", {std::to_string(session)}), DoClear(session));
}

Status Bench::ReadStb(Handle session, std::uint16_t* status_byte) {
    return Recorded(CallText("viReadSTB", {std::to_string(session)}), DoReadStb(session, status_byte));
}

Status Bench::TakeLock(Handle session, std::uint32_t kind, std::uint32_t timeout, const std::string& requested_key,
                       std::string* key) {
    const Status status = DoTakeLock(session, kind, timeout, requested_key, key);
    return Recorded(CallText("viLock", {std::to_string(session), std::to_string(kind), std::to_string(timeout),
                                        Quoted(requested_key)}),
                    status);
}

Status Bench::ReleaseLock(Handle session) {
    const Session* open = FindSession(session);
    const Status status = open == nullptr ? kErrorInvObject : LockOf(*open).Release(session);
    return Recorded(CallText("viUnlock", {std::to_string(session)}), status);
}

Status Bench::NoEffect(const std::string& name, Handle session, Status status) {
    const bool is_open = AttributesOf(session) != nullptr;
    return Recorded(CallText(name, {std::to_string(session)}), is_open ? status : kErrorInvObject);
}

// ---- what they do

Status Bench::DoFindRsrc(Handle rm, const std::string& expression, Handle* find_list, std::uint32_t* count,
                         std::string* descriptor) {
    if (!IsManager(rm)) return kErrorInvObject;
    std::vector<std::string> found;
    for (const Instrument& instrument : instruments_) {
        const auto matches = Matches(expression, instrument.Resource());
        if (!matches) return kErrorInvExpr;
        if (*matches) found.push_back(instrument.Resource());
    }
    if (found.empty()) return kErrorRsrcNotFound;
    *find_list = ++last_handle_;
    *count = static_cast<std::uint32_t>(found.size());
    *descriptor = found.front();
    find_lists_[*find_list] = {std::move(found), 1};
    return kSuccess;
}

Status Bench::DoFindNext(Handle find_list, std::string* descriptor) {
    const auto list = find_lists_.find(find_list);
    if (list == find_lists_.end()) return kErrorInvObject;
    FindList& found = list->second;
    if (found.next >= found.resources.size()) return kErrorRsrcNotFound;
    *descriptor = found.resources[found.next++];
    return kSuccess;
}

Status Bench::DoOpen(Handle rm, const std::string& descriptor, std::uint32_t access, std::uint32_t timeout,
                     Handle* session) {
    if (!IsManager(rm)) return kErrorInvObject;
    const auto instrument = std::find_if(instruments_.begin(), instruments_.end(), [&](const Instrument& candidate) {
        return SameResource(candidate.Resource(), descriptor);
    });
    if (instrument == instruments_.end() || instrument->RefusesToOpen()) return kErrorRsrcNotFound;
    const Handle handle = ++last_handle_;
    sessions_[handle] = {static_cast<int>(instrument - instruments_.begin()),
                         SessionAttributes(instrument->Resource(), instrument->Identity(), rm)};
    std::string key;
    const Status locked = access == Lock::kNone ? kSuccess : DoTakeLock(handle, access, timeout, "", &key);
    if (locked < 0) {
        sessions_.erase(handle);
        return locked == kErrorTimeOut ? kErrorRsrcLocked : locked;
    }
    *session = handle;
    return kSuccess;
}

Status Bench::DoGetAttribute(Handle object, std::uint32_t attribute, AttributeValue* value) {
    const Attributes* attributes = AttributesOf(object);
    if (attributes == nullptr) return kErrorInvObject;
    const auto found = attributes->find(attribute);
    if (found == attributes->end()) return kErrorNoSuchAttribute;
    *value = found->second.value;
    const Session* open = FindSession(object);
    if (attribute == kAttributeLockState && open != nullptr) *value = std::uint32_t{LockOf(*open).State()};
    return kSuccess;
}

Status Bench::DoSetAttribute(Handle object, std::uint32_t attribute, std::uint32_t value) {
    Attributes* attributes = AttributesOf(object);
    if (attributes == nullptr) return kErrorInvObject;
    const auto found = attributes->find(attribute);
    if (found == attributes->end()) return kErrorNoSuchAttribute;
    if (found->second.greatest == 0) return kErrorAttributeReadOnly;
    if (value > found->second.greatest) return kErrorNoSuchAttributeState;
    Assign(found->second.value, value);
    return kSuccess;
}

Status Bench::DoWrite(Handle session, std::string_view bytes, std::uint32_t* written) {
    Session* open = nullptr;
    const Status status = Use(session, &open);
    if (status < 0) return status;
    Instrument& instrument = At(open->instrument);
    if (instrument.Replays()) return DoReplayedWrite(*open, bytes, written);
    const Instrument::Fate fate = instrument.NextCall();
    if (fate == Instrument::Fate::kConnectionLost) return kErrorConnectionLost;
    if (fate == Instrument::Fate::kTimesOut) {
        wait_(open->TimeOut());
        return kErrorTimeOut;
    }
    Note(open->instrument, Exchange::kToInstrument, bytes);
    *written = static_cast<std::uint32_t>(bytes.size());
    if (instrument.Receive(bytes, now_())) PullTheWire(open->instrument);
    return static_cast<Status>(instrument.FixedStatusOfCall().value_or(kSuccess));
}

Status Bench::DoRead(Handle session, std::uint32_t limit, std::string* bytes) {
    Session* open = nullptr;
    const Status status = Use(session, &open);
    if (status < 0) return status;
    Instrument& instrument = At(open->instrument);
    if (instrument.Replays()) return DoReplayedRead(*open, limit, bytes);
    const Instrument::Fate fate = instrument.NextCall();
    if (fate == Instrument::Fate::kConnectionLost) return kErrorConnectionLost;
    if (fate == Instrument::Fate::kTimesOut || !instrument.HasReply()) {
        wait_(open->TimeOut());
        return kErrorTimeOut;
    }
    const std::optional<char> terminator = open->Terminator();
    *bytes = instrument.TakeReply(limit, terminator);
    Note(open->instrument, Exchange::kFromInstrument, *bytes);
    const auto fixed = instrument.FixedStatusOfCall();
    if (fixed) return static_cast<Status>(*fixed);
    if (terminator && bytes->ends_with(*terminator)) return kSuccessTermChar;
    return bytes->size() == limit ? kSuccessMaxCnt : kSuccess;
}

Status Bench::DoReplayedWrite(const Session& open, std::string_view bytes, std::uint32_t* written) {
    const auto status = static_cast<Status>(At(open.instrument).ReplayWrite(bytes));
    if (status == kErrorTimeOut) wait_(open.TimeOut());
    if (status < 0) return status;
    Note(open.instrument, Exchange::kToInstrument, bytes);
    *written = static_cast<std::uint32_t>(bytes.size());
    return status;
}

Status Bench::DoReplayedRead(const Session& open, std::uint32_t limit, std::string* bytes) {
    const RecordedRead read =
        At(open.instrument).ReplayRead().value_or(RecordedRead{"", static_cast<std::uint32_t>(kErrorTimeOut)});
    const auto status = static_cast<Status>(read.status);
    if (status == kErrorTimeOut) wait_(open.TimeOut());
    if (status < 0) return status;
    *bytes = read.bytes.substr(0, limit);
    Note(open.instrument, Exchange::kFromInstrument, *bytes);
    return status;
}

Status Bench::DoClear(Handle session) {
    Session* open = nullptr;
    const Status status = Use(session, &open);
    if (status < 0) return status;
    Instrument& instrument = At(open->instrument);
    if (instrument.Unplugged()) return kErrorConnectionLost;
    instrument.DropReply();
    return kSuccess;
}

Status Bench::DoReadStb(Handle session, std::uint16_t* status_byte) {
    Session* open = nullptr;
    const Status status = Use(session, &open);
    if (status < 0) return status;
    const Instrument& instrument = At(open->instrument);
    if (instrument.Unplugged()) return kErrorConnectionLost;
    *status_byte = instrument.HasReply() ? kMessageAvailable : std::uint16_t{0};
    return kSuccess;
}

Status Bench::DoTakeLock(Handle session, std::uint32_t kind, std::uint32_t timeout, const std::string& requested_key,
                         std::string* key) {
    const Session* open = FindSession(session);
    if (open == nullptr) return kErrorInvObject;
    if (kind != Lock::kExclusive && kind != Lock::kShared) return kErrorInvLockType;
    Lock& lock = LockOf(*open);
    const Status status =
        kind == Lock::kExclusive ? lock.TakeExclusive(session) : lock.TakeShared(session, requested_key, key);
    if (status != kErrorRsrcLocked) return status;
    // The caller's thread is the only one: nobody gives the lock back in the meantime.
    wait_(timeout);
    return kErrorTimeOut;
}

Status Bench::Use(Handle handle, Session** open) {
    *open = FindSession(handle);
    if (*open == nullptr) return kErrorInvObject;
    return LockOf(**open).Excludes(handle) ? kErrorRsrcLocked : kSuccess;
}

void Bench::DropLocks(Handle session) {
    if (const Session* open = FindSession(session)) LockOf(*open).Forget(session);
}

std::optional<char> Bench::Session::Terminator() const {
    if (Number(kAttributeTermCharEnabled) == 0) return std::nullopt;
    return static_cast<char>(Number(kAttributeTermChar));
}

Attributes* Bench::AttributesOf(Handle object) {
    if (Session* session = FindSession(object)) return &session->attributes;
    const auto manager = managers_.find(object);
    return manager == managers_.end() ? nullptr : &manager->second;
}

void Bench::PullTheWire(int starter) {
    const std::optional<int> count = At(starter).CountOnWire();
    for (auto behind = instruments_.begin() + starter + 1; behind != instruments_.end(); ++behind) {
        if (behind->Wired()) behind->StartByWire(count, now_());
    }
}

Bench::Session* Bench::FindSession(Handle handle) {
    const auto session = sessions_.find(handle);
    return session == sessions_.end() ? nullptr : &session->second;
}

bool Bench::IsManager(Handle handle) const { return managers_.contains(handle); }

// ---- the record

Status Bench::Recorded(const std::string& text, Status status) {
    VisaCall call = {text, status};
    if (call_observer_) call_observer_(call);
    if (recording_) calls_.push_back(std::move(call));
    return status;
}

void Bench::Note(int instrument, Exchange::Direction direction, std::string_view bytes) {
    Exchange exchange = {instrument, At(instrument).Resource(), direction, std::string(bytes)};
    if (observer_) observer_(exchange);
    if (recording_) transcript_.push_back(std::move(exchange));
}

void Bench::ClearTranscript() {
    transcript_.clear();
    calls_.clear();
}

std::vector<Handle> Bench::OpenSessions() const {
    std::vector<Handle> handles;
    for (const auto& [handle, session] : sessions_) handles.push_back(handle);
    return handles;
}

}  // namespace vantrel::bench
