#include "support/bench_on_the_wire.h"

#include "platform/clock.h"
#include "platform/visa.h"

#include <algorithm>

using vantrel::VisaEntryPoints;
using vantrel::bench::Bench;
using vantrel::bench::Exchange;
using vantrel::bench::Handle;
using vantrel::bench::Status;

namespace {

using Word = VisaEntryPoints::Word;

Bench* on_the_wire = nullptr;

Handle Low(Word word) { return static_cast<Handle>(word); }

/// What a library with 32-bit integers leaves in the result register: a status without its sign.
Word Result(Status status) { return static_cast<std::uint32_t>(status); }

void CopyText(const std::string& text, char* buffer) { *std::copy(text.begin(), text.end(), buffer) = '\0'; }

Word OpenDefaultRM(Word* session) {
    Handle handle = 0;
    const Status status = on_the_wire->OpenDefaultRM(&handle);
    *session = handle;
    return Result(status);
}

Word FindRsrc(Word rm, const char* expression, Word* find_list, Word* count, char* descriptor) {
    Handle list = 0;
    std::uint32_t found = 0;
    std::string first;
    const Status status = on_the_wire->FindRsrc(Low(rm), expression, &list, &found, &first);
    *find_list = list;
    *count = found;
    CopyText(first, descriptor);
    return Result(status);
}

Word FindNext(Word find_list, char* descriptor) {
    std::string next;
    const Status status = on_the_wire->FindNext(Low(find_list), &next);
    CopyText(next, descriptor);
    return Result(status);
}

Word Open(Word rm, const char* descriptor, Word access, Word timeout, Word* session) {
    Handle handle = 0;
    const Status status = on_the_wire->Open(Low(rm), descriptor, Low(access), Low(timeout), &handle);
    *session = handle;
    return Result(status);
}

Word SetAttribute(Word session, Word attribute, Word value) {
    return Result(on_the_wire->SetAttribute(Low(session), Low(attribute), Low(value)));
}

Word Write(Word session, const unsigned char* bytes, Word count, Word* written) {
    std::uint32_t sent = 0;
    const std::string message(bytes, bytes + count);
    const Status status = on_the_wire->Write(Low(session), message, &sent);
    *written = sent;
    return Result(status);
}

Word Read(Word session, unsigned char* bytes, Word count, Word* read) {
    std::string piece;
    const Status status = on_the_wire->Read(Low(session), Low(count), &piece);
    std::copy(piece.begin(), piece.end(), bytes);
    *read = piece.size();
    return Result(status);
}

Word Close(Word object) { return Result(on_the_wire->Close(Low(object))); }

}  // namespace

BenchOnTheWire::BenchOnTheWire(vantrel::bench::BenchDescription description)
    : bench(
          std::move(description), [] { return vantrel::Now().ms; },
          [](std::int64_t milliseconds) { vantrel::Sleep(static_cast<int>(milliseconds)); }) {
    on_the_wire = &bench;
    vantrel::UseVisa({OpenDefaultRM, FindRsrc, FindNext, Open, SetAttribute, Write, Read, Close});
}

BenchOnTheWire::~BenchOnTheWire() {
    vantrel::UseVisa({});
    on_the_wire = nullptr;
}

std::vector<std::string> BenchOnTheWire::Sent(int instrument) const {
    std::vector<std::string> messages;
    for (const auto& [receiver, bytes] : Sent()) {
        if (receiver == instrument) messages.push_back(bytes);
    }
    return messages;
}

std::vector<std::pair<int, std::string>> BenchOnTheWire::Sent() const {
    std::vector<std::pair<int, std::string>> messages;
    for (const Exchange& exchange : bench.Transcript()) {
        if (exchange.direction == Exchange::kToInstrument) messages.emplace_back(exchange.instrument, exchange.bytes);
    }
    return messages;
}

std::vector<std::string> BenchOnTheWire::Calls() const {
    std::vector<std::string> texts;
    for (const auto& call : bench.Calls()) texts.push_back(call.text);
    return texts;
}
