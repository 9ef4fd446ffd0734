// A file of everything that goes over the wire.
#pragma once

#include "platform/os/file.h"
#include "platform/visa.h"

#include <map>
#include <string>
#include <string_view>

namespace vantrel {

/// Adds a line to a file for each viOpen, viWrite and viRead, in the format that bench/README.md describes. Each line
/// is in the file when the call returns. The log never ends or holds up a run: a file that cannot be written, or that
/// is not an ordinary file, is told once on the standard error, and nothing more is logged.
class WireLog {
public:
    /// Without a file (nullptr or an empty name) nothing is logged.
    explicit WireLog(const char* file);

    void Opened(const std::string& resource, ViSession session, ViStatus status);
    void Sent(ViSession session, std::string_view bytes, ViStatus status);
    /// `bytes` are what arrived; a call that failed has none.
    void Received(ViSession session, std::string_view bytes, ViStatus status);

private:
    void Exchanged(ViSession session, char direction, std::string_view bytes, ViStatus status);
    void Write(const std::string& line);
    void GiveUp();

    std::string name_;
    os::File file_;
    std::map<std::string, int> places_;       ///< of the resources, from 0 in the order of their first opening
    std::map<ViSession, int> session_place_;  ///< of the sessions that were opened
};

}  // namespace vantrel
