// The bench as a VISA library: the entry points of the C interface, in front of one bench for the process.
//
// The environment variable VANTREL_BENCH names a bench file; without it the bench is the default one. VANTREL_BENCH_LOG
// names a file that every exchange is written to, one line each, VANTREL_BENCH_CALLS one for every call.

#include "bench/bench.h"
#include "bench/resource_name.h"
#include "bench/status.h"
#include "bench/text.h"
#include "platform/os/environment.h"
#include "platform/os/file.h"
#include "platform/os/library.h"
#include "platform/os/output.h"
#include "visa_export.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <exception>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>

using namespace vantrel::bench;
namespace os = vantrel::os;

namespace {

std::string ContentsOf(const std::string& name) {
    std::ifstream file(os::PathOf(name), std::ios::binary);
    std::ostringstream contents;
    contents << file.rdbuf();
    if (!file) throw std::runtime_error("the file cannot be read");
    return contents.str();
}

/// A file that lines are added to. One that cannot be written is told once on the standard error.
class Log {
public:
    Log(const char* variable, const std::string& name) : variable_(variable), name_(name) {
        if (file_.Open(name, os::File::Use::kAppend) != os::Fault::kNone) GiveUp();
    }

    void Write(const std::string& line) {
        if (file_.IsOpen() && file_.Write(line + '\n') != os::Fault::kNone) GiveUp();
    }

private:
    void GiveUp() {
        file_.Close();
        os::WriteError(variable_ + ": " + name_ + " cannot be written\n");
    }

    std::string variable_;
    std::string name_;
    os::File file_;
};

/// The log that the environment variable names; nullptr without one.
std::shared_ptr<Log> LogNamedBy(const char* variable) {
    const auto name = os::Environment(variable);
    return name && !name->empty() ? std::make_shared<Log>(variable, *name) : nullptr;
}

std::unique_ptr<Bench> MakeBench() {
    const auto file = os::Environment("VANTREL_BENCH");
    auto bench = std::make_unique<Bench>(file ? ParseBench(ContentsOf(*file)) : DefaultBench());
    bench->SetRecording(false);
    if (const auto log = LogNamedBy("VANTREL_BENCH_LOG")) {
        bench->SetObserver([log](const Exchange& exchange) {
            const char* arrow = exchange.direction == Exchange::kToInstrument ? " > " : " < ";
            log->Write(std::to_string(exchange.instrument) + arrow + Quoted(exchange.bytes));
        });
    }
    if (const auto log = LogNamedBy("VANTREL_BENCH_CALLS")) {
        bench->SetCallObserver([log](const VisaCall& call) {
            std::ostringstream line;
            line << call.text << ' ' << std::hex << std::uppercase << static_cast<std::uint32_t>(call.status);
            log->Write(line.str());
        });
    }
    return bench;
}

/// The bench; nullptr if its file is not a bench file; the standard error says why.
Bench* TheBench() {
    static const std::unique_ptr<Bench> bench = []() -> std::unique_ptr<Bench> {
        try {
            return MakeBench();
        } catch (const std::exception& fault) {
            os::WriteError(std::string("VANTREL_BENCH: ") + fault.what() + '\n');
            return nullptr;
        }
    }();
    return bench.get();
}

constexpr std::size_t kTextSize = 256;  // what a caller has room for in any text, the end mark included

/// Without a buffer nothing is copied: most texts are optional.
void CopyText(std::string_view text, char* buffer) {
    if (buffer == nullptr) return;
    const std::size_t length = std::min(text.size(), kTextSize - 1);
    std::copy_n(text.data(), length, buffer);
    buffer[length] = '\0';
}

/// A result that the caller may not want.
template <typename Result>
void Give(Result value, Result* cell) {
    if (cell != nullptr) *cell = value;
}

/// A call that finds no instrument interested.
Status NoEffect(const char* name, Handle session, Status status) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->NoEffect(name, session, status);
}

}  // namespace

#define VISA_ENTRY extern "C" VISA_EXPORT Status VANTREL_LIBRARY_CALL

VISA_ENTRY viOpenDefaultRM(Handle* session) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->OpenDefaultRM(session);
}

VISA_ENTRY viFindRsrc(Handle rm, const char* expression, Handle* find_list, std::uint32_t* count, char* descriptor) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    Handle list = 0;
    std::uint32_t found = 0;
    std::string first;
    const Status status = bench->FindRsrc(rm, expression, &list, &found, &first);
    Give(found, count);
    // Nobody else could close a list that the caller does not want.
    if (find_list == nullptr && status >= 0) bench->Close(list);
    Give(list, find_list);
    CopyText(first, descriptor);
    return status;
}

VISA_ENTRY viFindNext(Handle find_list, char* descriptor) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    std::string next;
    const Status status = bench->FindNext(find_list, &next);
    CopyText(next, descriptor);
    return status;
}

VISA_ENTRY viOpen(Handle rm, const char* descriptor, std::uint32_t access, std::uint32_t timeout, Handle* session) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->Open(rm, descriptor, access, timeout, session);
}

VISA_ENTRY viSetAttribute(Handle session, std::uint32_t attribute, std::uint32_t value) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->SetAttribute(session, attribute, value);
}

VISA_ENTRY viWrite(Handle session, const unsigned char* bytes, std::uint32_t count, std::uint32_t* written) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    std::uint32_t sent = 0;
    const Status status = bench->Write(session, {reinterpret_cast<const char*>(bytes), count}, &sent);
    Give(sent, written);
    return status;
}

VISA_ENTRY viRead(Handle session, unsigned char* bytes, std::uint32_t count, std::uint32_t* read) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    std::string piece;
    const Status status = bench->Read(session, count, &piece);
    std::copy(piece.begin(), piece.end(), bytes);
    Give(static_cast<std::uint32_t>(piece.size()), read);
    return status;
}

VISA_ENTRY viClose(Handle object) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->Close(object);
}

VISA_ENTRY viParseRsrcEx(Handle rm, const char* name, std::uint16_t* interface, std::uint16_t* board,
                         char* resource_class, char* whole_name, char* alias) {
    const Status status = NoEffect("viParseRsrcEx", rm, kSuccess);
    if (status < 0) return status;
    const auto parsed = ParseResourceName(name);
    if (!parsed) return kErrorInvResourceName;
    Give(static_cast<std::uint16_t>(parsed->interface), interface);
    Give(parsed->board, board);
    CopyText(parsed->resource_class, resource_class);
    CopyText(parsed->Whole(), whole_name);
    CopyText("", alias);
    return kSuccess;
}

VISA_ENTRY viParseRsrc(Handle rm, const char* name, std::uint16_t* interface, std::uint16_t* board) {
    return viParseRsrcEx(rm, name, interface, board, nullptr, nullptr, nullptr);
}

VISA_ENTRY viGetAttribute(Handle object, std::uint32_t attribute, void* result) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    AttributeValue value;
    const Status status = bench->GetAttribute(object, attribute, &value);
    if (status < 0) return status;
    if (const auto* text = std::get_if<std::string>(&value)) CopyText(*text, static_cast<char*>(result));
    if (const auto* number = std::get_if<std::uint8_t>(&value)) std::memcpy(result, number, sizeof *number);
    if (const auto* number = std::get_if<std::uint16_t>(&value)) std::memcpy(result, number, sizeof *number);
    if (const auto* number = std::get_if<std::uint32_t>(&value)) std::memcpy(result, number, sizeof *number);
    return status;
}

VISA_ENTRY viStatusDesc(Handle /*object*/, Status status, char* text) {
    const std::string_view meaning = StatusText(status);
    CopyText(meaning.empty() ? "The bench does not give this status." : meaning, text);
    return meaning.empty() ? kWarningUnknownStatus : kSuccess;
}

VISA_ENTRY viClear(Handle session) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->Clear(session);
}

VISA_ENTRY viReadSTB(Handle session, std::uint16_t* status_byte) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->ReadStb(session, status_byte);
}

VISA_ENTRY viLock(Handle session, std::uint32_t kind, std::uint32_t timeout, const char* requested_key,
                  char* access_key) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    std::string key;
    const Status status = bench->TakeLock(session, kind, timeout, requested_key == nullptr ? "" : requested_key, &key);
    if (kind == Lock::kShared) CopyText(key, access_key);
    return status;
}

VISA_ENTRY viUnlock(Handle session) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->ReleaseLock(session);
}

// The instruments take no trigger from the bus, and are in remote state whenever they are spoken to.

VISA_ENTRY viAssertTrigger(Handle session, std::uint16_t /*protocol*/) {
    return NoEffect("viAssertTrigger", session, kSuccess);
}

VISA_ENTRY viGpibControlREN(Handle session, std::uint16_t mode) {
    constexpr std::uint16_t kModes = 7;
    return NoEffect("viGpibControlREN", session, mode < kModes ? kSuccess : kErrorInvMode);
}

// Reads and writes pass no buffer of the library's own.

VISA_ENTRY viFlush(Handle session, std::uint16_t /*buffers*/) { return NoEffect("viFlush", session, kSuccess); }

// There are no events: to be rid of them succeeds, to have them does not.

VISA_ENTRY viDisableEvent(Handle session, std::uint32_t /*event*/, std::uint16_t /*mechanism*/) {
    return NoEffect("viDisableEvent", session, kSuccessEventDisabled);
}

VISA_ENTRY viDiscardEvents(Handle session, std::uint32_t /*event*/, std::uint16_t /*mechanism*/) {
    return NoEffect("viDiscardEvents", session, kSuccessQueueEmpty);
}

VISA_ENTRY viEnableEvent(Handle session, std::uint32_t /*event*/, std::uint16_t /*mechanism*/,
                         std::uint32_t /*context*/) {
    return NoEffect("viEnableEvent", session, kErrorInvEvent);
}

VISA_ENTRY viWaitOnEvent(Handle session, std::uint32_t /*event*/, std::uint32_t /*timeout*/,
                         std::uint32_t* /*occurred*/, Handle* /*context*/) {
    return NoEffect("viWaitOnEvent", session, kErrorNotEnabled);
}

VISA_ENTRY viInstallHandler(Handle session, std::uint32_t /*event*/, void* /*handler*/, void* /*user*/) {
    return NoEffect("viInstallHandler", session, kErrorInvEvent);
}

VISA_ENTRY viUninstallHandler(Handle session, std::uint32_t /*event*/, void* /*handler*/, void* /*user*/) {
    return NoEffect("viUninstallHandler", session, kErrorHandlerNotInstalled);
}

// What a message-based instrument may have and these have not. The arguments behind the session, a word each, are named
// for a way of calling in which the called one takes them off the stack.
#define NOT_SUPPORTED(name, ...) \
    VISA_ENTRY name(Handle session __VA_OPT__(, ) __VA_ARGS__) { return NoEffect(#name, session, kErrorNotSupported); }

using Word = std::uintptr_t;

NOT_SUPPORTED(viReadAsync, Word, Word, Word)
NOT_SUPPORTED(viWriteAsync, Word, Word, Word)
NOT_SUPPORTED(viTerminate, Word, Word)
NOT_SUPPORTED(viReadToFile, Word, Word, Word)
NOT_SUPPORTED(viWriteFromFile, Word, Word, Word)
NOT_SUPPORTED(viBufRead, Word, Word, Word)
NOT_SUPPORTED(viBufWrite, Word, Word, Word)
NOT_SUPPORTED(viSetBuf, Word, Word)
NOT_SUPPORTED(viGpibCommand, Word, Word, Word)
NOT_SUPPORTED(viGpibControlATN, Word)
NOT_SUPPORTED(viGpibPassControl, Word, Word)
NOT_SUPPORTED(viGpibSendIFC)
NOT_SUPPORTED(viUsbControlIn, Word, Word, Word, Word, Word, Word, Word)
NOT_SUPPORTED(viUsbControlOut, Word, Word, Word, Word, Word, Word)
