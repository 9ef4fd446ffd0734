#include "platform/sqlite/source.h"

#include "platform/errors.h"
#include "platform/sqlite/connection.h"

#include <algorithm>

namespace vantrel::engine {

namespace {

/// Takes a query apart from the front.
class Reader {
public:
    explicit Reader(std::string_view query) : rest_(query) {}

    bool AtEnd() {
        SkipSpace();
        return rest_.empty();
    }
    void Word(std::string_view word) { Require(SameName(Name(), word)); }
    void Sign(char sign) {
        SkipSpace();
        Require(rest_.starts_with(sign));
        rest_.remove_prefix(1);
    }
    /// Letters, digits and underscores; or anything in square brackets.
    std::string Name() {
        SkipSpace();
        if (rest_.starts_with('[')) return Bracketed();
        const auto end = std::ranges::find_if_not(rest_, IsNameCharacter);
        std::string name(rest_.begin(), end);
        Require(!name.empty());
        rest_.remove_prefix(name.size());
        return name;
    }
    /// A text in single quotes; a doubled quote stands for one.
    std::string QuotedText() {
        Sign('\'');
        std::string text;
        for (;;) {
            const std::size_t quote = rest_.find('\'');
            Require(quote != std::string_view::npos);
            text += rest_.substr(0, quote);
            rest_.remove_prefix(quote + 1);
            if (!rest_.starts_with('\'')) return text;
            text += '\'';
            rest_.remove_prefix(1);
        }
    }

private:
    static bool IsNameCharacter(char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
    }
    static void Require(bool is_good) {
        if (!is_good) throw RunTimeError(kEngineSyntax);
    }
    void SkipSpace() { rest_.remove_prefix(std::min(rest_.find_first_not_of(" \t\r\n"), rest_.size())); }
    std::string Bracketed() {
        const std::size_t end = rest_.find(']');
        Require(end != std::string_view::npos && end > 1);
        std::string name(rest_.substr(1, end - 1));
        rest_.remove_prefix(end + 1);
        return name;
    }

    std::string_view rest_;
};

}  // namespace

Source ParseSource(std::string_view query) {
    Reader reader(query);
    Source source;
    reader.Word("select");
    reader.Sign('*');
    reader.Word("from");
    source.table = reader.Name();
    if (reader.AtEnd()) return source;
    reader.Word("where");
    source.column = reader.Name();
    reader.Sign('=');
    source.text = reader.QuotedText();
    if (!reader.AtEnd()) throw RunTimeError(kEngineSyntax);
    return source;
}

}  // namespace vantrel::engine
