// What stands behind a Recordset.
#pragma once

#include "platform/sqlite/connection.h"
#include "platform/sqlite/source.h"

#include <functional>

namespace vantrel::engine {

/// A set of rows, a position in it, the row at that position as it was when it was reached, and the change or the new
/// row that is being prepared. The set is known by ranges of row ids, so that opening a long table costs no more than
/// opening a short one.
///
/// A row that someone else deleted after the set was taken is stepped over by every move. One that goes while the set
/// stands on it can still be read; storing a change of it or deleting it raises error 3021.
struct Rows {
public:
    /// `wanted`: the columns that are read; nullopt for all.
    Rows(std::shared_ptr<Connection> connection, const Source& source, ColumnNames wanted);

    std::int64_t RecordCount();
    bool Bof() const;
    bool Eof() const;
    void MoveFirst();
    void MoveNext();
    void MoveLast();
    void AddNew();
    void Edit();
    void Update();
    void Delete();
    const Text& Value(const std::string& column) const;
    void Set(const std::string& column, std::string text);
    void Renumber(const std::string& column, std::int64_t most);
    void Scan(std::int64_t first, const std::vector<std::string>& columns,
              const std::function<bool(const std::vector<Text>&)>& visit) const;

private:
    enum class Mode { kReading, kAdding, kEditing };
    struct Range {
        std::int64_t low, high;  // row ids, both included
    };
    struct Position {
        std::size_t range;
        std::int64_t id;
        bool IsBehind(const Position& other) const {
            return range != other.range ? range > other.range : id > other.id;
        }
    };

    void RequireOpen() const;
    void TakeAll();
    void TakeFound(const Source& source);
    bool StandOnFirst(std::size_t range, std::int64_t low);
    bool StandOnLast();
    bool Read(const std::string& statement, std::size_t range, std::int64_t low);
    void Reach(const Position& position);
    std::int64_t CountAll();
    void Include(std::int64_t id);
    void StoreNewRow();
    void StoreChange();

    std::shared_ptr<Connection> connection_;
    std::shared_ptr<const Table> table_;
    std::vector<Range> ranges_;
    Position at_{0, 0};
    bool is_on_row_ = false;
    bool is_at_end_ = false;
    Position furthest_{0, 0};  // the last row reached
    bool has_reached_any_ = false;
    bool are_all_reached_ = false;
    std::int64_t rows_reached_ = 0;
    std::vector<Text> row_;
    Mode mode_ = Mode::kReading;
    std::vector<Text> draft_;       // the new row, or the row with its changes
    std::vector<bool> is_changed_;  // by column of draft_
};

}  // namespace vantrel::engine
