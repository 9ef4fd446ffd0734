// Any text as a query.
#include "platform/sqlite/source.h"

#include "fuzz/target.h"
#include "platform/errors.h"

using namespace vantrel;

void Try(std::string_view text) {
    try {
        const engine::Source source = engine::ParseSource(text);
        Hold(!source.table.empty());
        Hold(!source.column.empty() || source.text.empty());
    } catch (const RunTimeError& error) {
        Hold(error.Number() == 3075);
    }
}
