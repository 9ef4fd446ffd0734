// The simulated bench: instruments behind the VISA calls that a program makes.
//
// The instruments are joined by a trigger wire. When one starts a scan by "rout:scan" or "rout:scan:step", each wired
// instrument behind it (in search order) starts one too. Each takes one sweep of its own active channels, unless the
// count of the one that was commanded was set to something else than a sweep of its own: then that count goes out on
// the wire, and every instrument takes as many readings.
#pragma once

#include "bench/attributes.h"
#include "bench/description.h"
#include "bench/instrument.h"
#include "bench/lock.h"
#include "bench/status.h"

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantrel::bench {

using Handle = std::uint32_t;
/// Bytes that went over the wire in one call.
struct Exchange {
    enum Direction { kToInstrument, kFromInstrument };
    int instrument;  ///< place on the bench, from 0
    std::string resource;
    Direction direction;
    std::string bytes;
};

/// One call of VISA, as `viWrite(2, "fetch?\n")`. Results are not part of the text; handles, bytes and counts that the
/// caller passed are.
struct VisaCall {
    std::string text;
    Status status;
};

class Bench {
public:
    using TimeSource = std::function<std::int64_t()>;   ///< the present moment in milliseconds, of any origin
    using Waiting = std::function<void(std::int64_t)>;  ///< lets that many milliseconds pass

    /// Without a time source and a way of waiting, both are the machine's.
    explicit Bench(BenchDescription description, TimeSource now = {}, Waiting wait = {});

    // The calls. Results are left alone when a call fails. Handles are 1, 2, 3 ... in the order of their opening.
    // Closing the resource manager closes nothing else.
    Status OpenDefaultRM(Handle* session);
    Status FindRsrc(Handle rm, const std::string& expression, Handle* find_list, std::uint32_t* count,
                    std::string* descriptor);
    Status FindNext(Handle find_list, std::string* descriptor);
    Status Open(Handle rm, const std::string& descriptor, std::uint32_t access, std::uint32_t timeout, Handle* session);
    /// The attributes stand in attributes.cpp. A session begins with a time-out of 2000 ms.
    Status GetAttribute(Handle object, std::uint32_t attribute, AttributeValue* value);
    Status SetAttribute(Handle session, std::uint32_t attribute, std::uint32_t value);
    /// Sends one whole message.
    Status Write(Handle session, std::string_view bytes, std::uint32_t* written);
    /// Reads up to `limit` bytes. Exactly `limit` give kSuccessMaxCnt, also when nothing is left; the next read then
    /// gives no bytes. With nothing to read, waits the session's time-out and fails. With the termination character
    /// enabled a read ends behind one, with kSuccessTermChar.
    Status Read(Handle session, std::uint32_t limit, std::string* bytes);
    Status Close(Handle object);
    /// Throws the reply away that waits in the instrument.
    Status Clear(Handle session);
    /// Bit 4 of the status byte says that a reply waits; no other one is ever set.
    Status ReadStb(Handle session, std::uint16_t* status_byte);
    /// Takes a lock of Lock::Kind `kind`, or waits `timeout` ms and fails. `key` is set for a shared one.
    Status TakeLock(Handle session, std::uint32_t kind, std::uint32_t timeout, const std::string& requested_key,
                    std::string* key);
    Status ReleaseLock(Handle session);
    /// A call on a session that has no effect on the instruments: `status`, if there is such a session.
    Status NoEffect(const std::string& name, Handle session, Status status);

    // Faults that begin now.
    void Unplug(int instrument) { At(instrument).Unplug(); }
    void Silence(int instrument) { At(instrument).Silence(); }

    // What happened so far. Recorded unless switched off.
    const std::vector<Exchange>& Transcript() const { return transcript_; }
    const std::vector<VisaCall>& Calls() const { return calls_; }
    void ClearTranscript();
    void SetRecording(bool on) { recording_ = on; }
    /// Is told each exchange, recorded or not.
    void SetObserver(std::function<void(const Exchange&)> observer) { observer_ = std::move(observer); }
    /// Is told each call, recorded or not.
    void SetCallObserver(std::function<void(const VisaCall&)> observer) { call_observer_ = std::move(observer); }

    /// Handles of sessions with instruments that are open.
    std::vector<Handle> OpenSessions() const;

private:
    struct Session {
        int instrument;
        Attributes attributes;

        std::uint32_t Number(std::uint32_t attribute) const { return NumberOf(attributes.at(attribute).value); }
        std::uint32_t TimeOut() const { return Number(kAttributeTimeOut); }
        std::optional<char> Terminator() const;
    };
    struct FindList {
        std::vector<std::string> resources;
        std::size_t next;
    };

    Instrument& At(int index) { return instruments_.at(static_cast<std::size_t>(index)); }
    Status DoFindRsrc(Handle rm, const std::string& expression, Handle* find_list, std::uint32_t* count,
                      std::string* descriptor);
    Status DoFindNext(Handle find_list, std::string* descriptor);
    Status DoOpen(Handle rm, const std::string& descriptor, std::uint32_t access, std::uint32_t timeout,
                  Handle* session);
    Status DoGetAttribute(Handle object, std::uint32_t attribute, AttributeValue* value);
    Status DoSetAttribute(Handle object, std::uint32_t attribute, std::uint32_t value);
    Status DoWrite(Handle session, std::string_view bytes, std::uint32_t* written);
    Status DoRead(Handle session, std::uint32_t limit, std::string* bytes);
    Status DoReplayedWrite(const Session& open, std::string_view bytes, std::uint32_t* written);
    Status DoReplayedRead(const Session& open, std::uint32_t limit, std::string* bytes);
    Status DoClear(Handle session);
    Status DoReadStb(Handle session, std::uint16_t* status_byte);
    Status DoTakeLock(Handle session, std::uint32_t kind, std::uint32_t timeout, const std::string& requested_key,
                      std::string* key);
    void DropLocks(Handle session);
    Lock& LockOf(const Session& session) { return locks_.at(static_cast<std::size_t>(session.instrument)); }
    /// The session `handle` in `open`, unless another has locked its instrument.
    Status Use(Handle handle, Session** open);
    Attributes* AttributesOf(Handle object);
    Session* FindSession(Handle handle);
    bool IsManager(Handle handle) const;
    void PullTheWire(int starter);
    Status Recorded(const std::string& text, Status status);
    void Note(int instrument, Exchange::Direction direction, std::string_view bytes);

    std::vector<Instrument> instruments_;
    std::vector<Lock> locks_;  ///< beside instruments_
    TimeSource now_;
    Waiting wait_;
    Handle last_handle_ = 0;
    std::map<Handle, Attributes> managers_;
    std::map<Handle, FindList> find_lists_;
    std::map<Handle, Session> sessions_;
    std::vector<Exchange> transcript_;
    std::vector<VisaCall> calls_;
    bool recording_ = true;
    std::function<void(const Exchange&)> observer_;
    std::function<void(const VisaCall&)> call_observer_;
};

}  // namespace vantrel::bench
