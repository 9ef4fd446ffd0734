// The two forms of query that the engine answers.
#pragma once

#include <string>
#include <string_view>

namespace vantrel::engine {

/// "select * from <table>", or the same with "where <column>='<text>'" behind it.
struct Source {
    std::string table;
    std::string column;  ///< empty for all rows
    std::string text;
};

/// Reads a query; case and spacing do not count, except in the text. Error 3075 for anything else.
Source ParseSource(std::string_view query);

}  // namespace vantrel::engine
