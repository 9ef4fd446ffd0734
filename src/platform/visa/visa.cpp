#include "platform/visa.h"

#include "platform/os/environment.h"
#include "platform/os/library.h"
#include "platform/visa/loader.h"
#include "platform/visa/wire_log.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>

namespace vantrel {
namespace {

using Word = VisaEntryPoints::Word;

constexpr auto kErrorLibraryNotFound = static_cast<ViStatus>(0xBFFF009E);
constexpr std::size_t kDescriptorSize = 1024;  // VISA itself writes 256 characters at most

std::optional<VisaEntryPoints> table_in_use;

const VisaEntryPoints& Table() {
    if (!table_in_use) table_in_use = LoadVisa(os::VisaLibraryNames());
    return *table_in_use;
}

/// The log that the environment asks for.
WireLog& Log() {
    static WireLog log(os::Environment("VANTREL_WIRE_LOG").value_or("").c_str());
    return log;
}

/// What counts of a result: the low 32 bits. The others are whatever a 32-bit library left there.
std::uint32_t Low(Word word) { return static_cast<std::uint32_t>(word); }

template <typename Routine, typename... Arguments>
ViStatus Call(Routine* VisaEntryPoints::*entry_point, Arguments... arguments) {
    Routine* routine = Table().*entry_point;
    if (routine == nullptr) return kErrorLibraryNotFound;
    return static_cast<ViStatus>(Low(routine(arguments...)));
}

/// A result of a call with `status`: nothing is believed of a call that failed.
std::uint32_t Result(ViStatus status, Word cell) { return status < 0 ? 0 : Low(cell); }

/// The buffer that VISA writes a resource descriptor into.
struct DescriptorBuffer {
    std::array<char, kDescriptorSize + 1> characters = {};
    std::string Text(ViStatus status) const { return status < 0 ? std::string() : std::string(characters.data()); }
};

}  // namespace

void UseVisa(const VisaEntryPoints& entry_points) { table_in_use = entry_points; }

ViStatus viOpenDefaultRM(ViSession* session) {
    Word cell = 0;
    const ViStatus status = Call(&VisaEntryPoints::viOpenDefaultRM, &cell);
    *session = Result(status, cell);
    return status;
}

ViStatus viFindRsrc(ViSession rm, const char* expression, ViSession* find_list, std::uint32_t* count,
                    std::string* descriptor) {
    Word list_cell = 0;
    Word count_cell = 0;
    DescriptorBuffer buffer;
    const ViStatus status =
        Call(&VisaEntryPoints::viFindRsrc, Word{rm}, expression, &list_cell, &count_cell, buffer.characters.data());
    *find_list = Result(status, list_cell);
    *count = Result(status, count_cell);
    *descriptor = buffer.Text(status);
    return status;
}

ViStatus viFindNext(ViSession find_list, std::string* descriptor) {
    DescriptorBuffer buffer;
    const ViStatus status = Call(&VisaEntryPoints::viFindNext, Word{find_list}, buffer.characters.data());
    *descriptor = buffer.Text(status);
    return status;
}

ViStatus viOpen(ViSession rm, const std::string& descriptor, std::uint32_t access, std::uint32_t timeout,
                ViSession* session) {
    Word cell = 0;
    const ViStatus status =
        Call(&VisaEntryPoints::viOpen, Word{rm}, descriptor.c_str(), Word{access}, Word{timeout}, &cell);
    *session = Result(status, cell);
    Log().Opened(descriptor, *session, status);
    return status;
}

ViStatus viSetAttribute(ViSession session, std::uint32_t attribute, std::uint32_t value) {
    return Call(&VisaEntryPoints::viSetAttribute, Word{session}, Word{attribute}, Word{value});
}

ViStatus viWrite(ViSession session, const std::string& bytes, std::uint32_t count, std::uint32_t* written) {
    Word cell = 0;
    const Word length = std::min<Word>(count, bytes.size());
    const ViStatus status = Call(&VisaEntryPoints::viWrite, Word{session},
                                 reinterpret_cast<const unsigned char*>(bytes.data()), length, &cell);
    *written = Result(status, cell);
    Log().Sent(session, std::string_view(bytes).substr(0, length), status);
    return status;
}

ViStatus viRead(ViSession session, std::string* bytes, std::uint32_t count, std::uint32_t* read) {
    Word cell = 0;
    std::string buffer(count, '\0');
    const ViStatus status = Call(&VisaEntryPoints::viRead, Word{session},
                                 reinterpret_cast<unsigned char*>(buffer.data()), Word{count}, &cell);
    *read = std::min(Result(status, cell), count);
    buffer.resize(*read);
    Log().Received(session, buffer, status);
    *bytes = std::move(buffer);
    return status;
}

ViStatus viClose(ViSession object) { return Call(&VisaEntryPoints::viClose, Word{object}); }

}  // namespace vantrel
