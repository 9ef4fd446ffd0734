// The bench as a VISA library: the entry points of the C interface, in front of one bench for the process.
//
// The environment variable VANTREL_BENCH names a bench file; without it the bench is the default one. VANTREL_BENCH_LOG
// names a file that every exchange is written to, one line each, VANTREL_BENCH_CALLS one for every call.

#include "bench/bench.h"
#include "bench/text.h"
#include "visa_export.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

using namespace vantrel::bench;

namespace {

std::string ContentsOf(const char* name) {
    std::ifstream file(name, std::ios::binary);
    std::ostringstream contents;
    contents << file.rdbuf();
    if (!file) throw std::runtime_error("the file cannot be read");
    return contents.str();
}

/// The file that the environment variable names, to be added to; nullptr without one.
std::shared_ptr<std::ofstream> FileNamedBy(const char* variable) {
    const char* name = std::getenv(variable);
    return name != nullptr ? std::make_shared<std::ofstream>(name, std::ios::app) : nullptr;
}

std::unique_ptr<Bench> MakeBench() {
    const char* file = std::getenv("VANTREL_BENCH");
    auto bench = std::make_unique<Bench>(file != nullptr ? ParseBench(ContentsOf(file)) : DefaultBench());
    bench->SetRecording(false);
    if (const auto log = FileNamedBy("VANTREL_BENCH_LOG")) {
        bench->SetObserver([log](const Exchange& exchange) {
            const char* arrow = exchange.direction == Exchange::kToInstrument ? " > " : " < ";
            *log << exchange.instrument << arrow << Quoted(exchange.bytes) << std::endl;
        });
    }
    if (const auto log = FileNamedBy("VANTREL_BENCH_CALLS")) {
        bench->SetCallObserver([log](const VisaCall& call) {
            *log << call.text << ' ' << std::hex << std::uppercase << static_cast<std::uint32_t>(call.status)
                 << std::endl;
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
            std::cerr << "VANTREL_BENCH: " << fault.what() << '\n';
            return nullptr;
        }
    }();
    return bench.get();
}

constexpr std::size_t kDescriptorSize = 256;  // what a caller has room for, the end mark included

void CopyDescriptor(const std::string& descriptor, char* buffer) {
    const std::size_t length = std::min(descriptor.size(), kDescriptorSize - 1);
    std::copy_n(descriptor.data(), length, buffer);
    buffer[length] = '\0';
}

}  // namespace

#define VISA_ENTRY extern "C" VISA_EXPORT

VISA_ENTRY Status viOpenDefaultRM(Handle* session) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->OpenDefaultRM(session);
}

VISA_ENTRY Status viFindRsrc(Handle rm, const char* expression, Handle* find_list, std::uint32_t* count,
                             char* descriptor) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    Handle list = 0;
    std::uint32_t found = 0;
    std::string first;
    const Status status = bench->FindRsrc(rm, expression, &list, &found, &first);
    // The find list and the count are optional.
    if (find_list != nullptr) *find_list = list;
    if (count != nullptr) *count = found;
    CopyDescriptor(first, descriptor);
    return status;
}

VISA_ENTRY Status viFindNext(Handle find_list, char* descriptor) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    std::string next;
    const Status status = bench->FindNext(find_list, &next);
    CopyDescriptor(next, descriptor);
    return status;
}

VISA_ENTRY Status viOpen(Handle rm, const char* descriptor, std::uint32_t access, std::uint32_t timeout,
                         Handle* session) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->Open(rm, descriptor, access, timeout, session);
}

VISA_ENTRY Status viSetAttribute(Handle session, std::uint32_t attribute, std::uint32_t value) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->SetAttribute(session, attribute, value);
}

VISA_ENTRY Status viWrite(Handle session, const unsigned char* bytes, std::uint32_t count, std::uint32_t* written) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    std::uint32_t sent = 0;
    const Status status = bench->Write(session, {reinterpret_cast<const char*>(bytes), count}, &sent);
    if (written != nullptr) *written = sent;
    return status;
}

VISA_ENTRY Status viRead(Handle session, unsigned char* bytes, std::uint32_t count, std::uint32_t* read) {
    Bench* bench = TheBench();
    if (bench == nullptr) return kErrorSystem;
    std::string piece;
    const Status status = bench->Read(session, count, &piece);
    std::copy(piece.begin(), piece.end(), bytes);
    if (read != nullptr) *read = static_cast<std::uint32_t>(piece.size());
    return status;
}

VISA_ENTRY Status viClose(Handle object) {
    Bench* bench = TheBench();
    return bench == nullptr ? kErrorSystem : bench->Close(object);
}
