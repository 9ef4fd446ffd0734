// Any text as a bench file: a bench that answers, or a fault with its line.
#include "bench/bench.h"

#include "fuzz/target.h"

#include <stdexcept>
#include <string>

using namespace vantrel::bench;

void Try(std::string_view text) {
    try {
        std::int64_t now = 0;
        Bench bench(
            ParseBench(text), [&] { return now; }, [&](std::int64_t ms) { now += ms; });
        Handle manager = 0;
        Handle list = 0;
        std::uint32_t count = 0;
        std::string resource;
        bench.OpenDefaultRM(&manager);
        if (bench.FindRsrc(manager, "?*INSTR", &list, &count, &resource) < 0) return;
        Handle session = 0;
        bench.Open(manager, resource, 0, 0, &session);
        for (const char* message : {"*IDN?", "rout:scan\n", "rout:scan:state?\n", "fetch?\n"}) {
            std::uint32_t written = 0;
            bench.Write(session, message, &written);
            std::string reply;
            bench.Read(session, 1024, &reply);
            Hold(reply.size() <= 1024);
        }
    } catch (const std::invalid_argument& fault) {
        Hold(std::string_view(fault.what()).find("line") != std::string_view::npos);
    }
}
