#include "bench/bench.h"

#include "bench/expression.h"
#include "bench/text.h"

#include <algorithm>
#include <chrono>
#include <initializer_list>
#include <thread>
#include <utility>

namespace vantrel::bench {
namespace {

constexpr std::uint32_t kDefaultTimeOut = 2000;

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
}

// ---- the calls, with their place in the record

Status Bench::OpenDefaultRM(Handle* session) {
    managers_.push_back(++last_handle_);
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
    const Status status = DoOpen(rm, descriptor, session);
    return Recorded(
        CallText("viOpen", {std::to_string(rm), Quoted(descriptor), std::to_string(access), std::to_string(timeout)}),
        status);
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
    const auto closed = sessions_.erase(object) + find_lists_.erase(object) + std::erase(managers_, object);
    return Recorded(CallText("viClose", {std::to_string(object)}), closed != 0 ? kSuccess : kErrorInvObject);
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

Status Bench::DoOpen(Handle rm, const std::string& descriptor, Handle* session) {
    if (!IsManager(rm)) return kErrorInvObject;
    const auto instrument = std::find_if(instruments_.begin(), instruments_.end(), [&](const Instrument& candidate) {
        return Upper(candidate.Resource()) == Upper(descriptor);
    });
    if (instrument == instruments_.end() || instrument->RefusesToOpen()) return kErrorRsrcNotFound;
    *session = ++last_handle_;
    sessions_[*session] = {static_cast<int>(instrument - instruments_.begin()), kDefaultTimeOut};
    return kSuccess;
}

Status Bench::DoSetAttribute(Handle session, std::uint32_t attribute, std::uint32_t value) {
    Session* open = FindSession(session);
    if (open == nullptr) return kErrorInvObject;
    if (attribute != kAttributeTimeOut) return kErrorNoSuchAttribute;
    open->time_out_ms = value;
    return kSuccess;
}

Status Bench::DoWrite(Handle session, std::string_view bytes, std::uint32_t* written) {
    const Session* open = FindSession(session);
    if (open == nullptr) return kErrorInvObject;
    Instrument& instrument = At(open->instrument);
    const Instrument::Fate fate = instrument.NextCall();
    if (fate == Instrument::Fate::kConnectionLost) return kErrorConnectionLost;
    if (fate == Instrument::Fate::kTimesOut) {
        wait_(open->time_out_ms);
        return kErrorTimeOut;
    }
    Note(open->instrument, Exchange::kToInstrument, bytes);
    *written = static_cast<std::uint32_t>(bytes.size());
    if (instrument.Receive(bytes, now_())) PullTheWire(open->instrument);
    return static_cast<Status>(instrument.FixedStatusOfCall().value_or(kSuccess));
}

Status Bench::DoRead(Handle session, std::uint32_t limit, std::string* bytes) {
    const Session* open = FindSession(session);
    if (open == nullptr) return kErrorInvObject;
    Instrument& instrument = At(open->instrument);
    const Instrument::Fate fate = instrument.NextCall();
    if (fate == Instrument::Fate::kConnectionLost) return kErrorConnectionLost;
    if (fate == Instrument::Fate::kTimesOut || !instrument.HasReply()) {
        wait_(open->time_out_ms);
        return kErrorTimeOut;
    }
    *bytes = instrument.TakeReply(limit);
    Note(open->instrument, Exchange::kFromInstrument, *bytes);
    const auto fixed = instrument.FixedStatusOfCall();
    if (fixed) return static_cast<Status>(*fixed);
    return bytes->size() == limit ? kSuccessMaxCnt : kSuccess;
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

bool Bench::IsManager(Handle handle) const {
    return std::find(managers_.begin(), managers_.end(), handle) != managers_.end();
}

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
