#include "platform/sqlite/rows.h"

#include "platform/errors.h"
#include "platform/sqlite/numbering.h"

#include <algorithm>
#include <limits>

namespace vantrel::engine {

namespace {

constexpr std::int64_t kLongestText = 255;

/// Counts the bytes of UTF-8 that begin a character.
std::int64_t CharacterCount(std::string_view text) {
    return std::ranges::count_if(text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; });
}

}  // namespace

Rows::Rows(std::shared_ptr<Connection> connection, const Source& source, ColumnNames wanted)
    : connection_(std::move(connection)) {
    const ReadScope one_picture(*connection_);
    if (wanted && !source.column.empty()) wanted->push_back(source.column);
    table_ = connection_->FindTable(source.table, wanted);
    row_.resize(table_->columns.size());
    if (source.column.empty())
        TakeAll();
    else
        TakeFound(source);
}

void Rows::TakeAll() {
    Statement last = connection_->Prepare("select max(_rowid_) from " + Quoted(table_->name));
    last.Step();
    if (!last.IsNull(0)) ranges_.push_back({std::numeric_limits<std::int64_t>::min(), last.Int(0)});
    StandOnFirst(0, std::numeric_limits<std::int64_t>::min());
}

void Rows::TakeFound(const Source& source) {
    const std::size_t key = table_->ColumnIndex(source.column);
    const Found found = FindRows(*connection_, *table_, table_->columns[key], source.text);
    for (const std::int64_t id : found.ids) Include(id);
    StandOnFirst(0, std::numeric_limits<std::int64_t>::min());
    if (!found.is_by_number || row_[key] == source.text) return;
    ranges_.clear();
    rows_reached_ = 0;
    StandOnFirst(0, std::numeric_limits<std::int64_t>::min());
}

void Rows::RequireOpen() const {
    if (!connection_->IsOpen()) throw RunTimeError(kObjectClosed);
}

std::int64_t Rows::RecordCount() {
    RequireOpen();
    const bool may_hold_more = rows_reached_ == 0 && !are_all_reached_;
    return may_hold_more ? std::min<std::int64_t>(CountAll(), 1) : rows_reached_;
}

bool Rows::Bof() const {
    RequireOpen();
    return is_at_end_ && rows_reached_ == 0;
}

bool Rows::Eof() const {
    RequireOpen();
    return is_at_end_;
}

void Rows::MoveFirst() {
    RequireOpen();
    if (!StandOnFirst(0, std::numeric_limits<std::int64_t>::min())) throw RunTimeError(kNoCurrentRecord);
}

void Rows::MoveNext() {
    if (Eof()) throw RunTimeError(kNoCurrentRecord);
    const bool is_range_done = at_.id == ranges_[at_.range].high;
    if (is_range_done)
        StandOnFirst(at_.range + 1, std::numeric_limits<std::int64_t>::min());
    else
        StandOnFirst(at_.range, at_.id + 1);
}

void Rows::MoveLast() {
    RequireOpen();
    const ReadScope one_picture(*connection_);
    if (!are_all_reached_) rows_reached_ = CountAll();
    are_all_reached_ = true;
    if (!StandOnLast()) throw RunTimeError(kNoCurrentRecord);
}

/// Makes the first row from `low` in range `range` on the current one. Without any the set stands behind its rows.
bool Rows::StandOnFirst(std::size_t range, std::int64_t low) {
    mode_ = Mode::kReading;
    is_on_row_ = false;
    for (; range < ranges_.size(); ++range)
        if (Read(table_->first_row, range, std::max(low, ranges_[range].low))) return true;
    is_at_end_ = true;
    are_all_reached_ = true;
    return false;
}

bool Rows::StandOnLast() {
    mode_ = Mode::kReading;
    is_on_row_ = false;
    for (std::size_t range = ranges_.size(); range-- > 0;)
        if (Read(table_->last_row, range, ranges_[range].low)) return true;
    is_at_end_ = true;
    return false;
}

/// Reads the row that `statement` finds from `low` to the end of the range, and stands on it. False if there is none.
bool Rows::Read(const std::string& statement, std::size_t range, std::int64_t low) {
    Statement read = connection_->Prepare(statement);
    read.Bind(1, low);
    read.Bind(2, ranges_[range].high);
    if (!read.Step()) return false;
    for (std::size_t i = 0; i < row_.size(); ++i) read.Read(static_cast<int>(i) + 1, &row_[i]);
    at_ = {range, read.Int(0)};
    is_on_row_ = true;
    is_at_end_ = false;
    Reach(at_);
    return true;
}

void Rows::Reach(const Position& position) {
    const bool is_new = !are_all_reached_ && (!has_reached_any_ || position.IsBehind(furthest_));
    if (!is_new) return;
    furthest_ = position;
    has_reached_any_ = true;
    ++rows_reached_;
}

std::int64_t Rows::CountAll() {
    const ReadScope one_picture(*connection_);
    if (ranges_.size() == 1 && ranges_.front().low == std::numeric_limits<std::int64_t>::min())
        if (const auto known = KnownCount(*connection_, *table_, ranges_.front().high)) return *known;
    const std::string count_rows = "select count(*) from " + Quoted(table_->name) + " where _rowid_ between ?1 and ?2";
    Statement count = connection_->Prepare(count_rows);
    std::int64_t rows = 0;
    for (const Range& range : ranges_) {
        count.Reset();
        count.Bind(1, range.low);
        count.Bind(2, range.high);
        count.Step();
        rows += count.Int(0);
    }
    return rows;
}

/// Adds the row `id`, which lies behind all others, to the set. It may have the id of a last row that was deleted.
void Rows::Include(std::int64_t id) {
    const bool is_in_last_range = !ranges_.empty() && id >= ranges_.back().low && id <= ranges_.back().high;
    if (is_in_last_range) return;
    if (!ranges_.empty() && id > ranges_.back().high && id - 1 == ranges_.back().high)
        ranges_.back().high = id;
    else
        ranges_.push_back({id, id});
}

void Rows::AddNew() {
    RequireOpen();
    mode_ = Mode::kAdding;
    draft_.assign(row_.size(), std::nullopt);
}

void Rows::Edit() {
    RequireOpen();
    if (!is_on_row_) throw RunTimeError(kNoCurrentRecord);
    mode_ = Mode::kEditing;
    draft_ = row_;
    is_changed_.assign(row_.size(), false);
}

void Rows::Update() {
    RequireOpen();
    if (mode_ == Mode::kReading) throw RunTimeError(kNoCurrentEdit);
    if (mode_ == Mode::kAdding)
        StoreNewRow();
    else
        StoreChange();
    mode_ = Mode::kReading;
}

/// The new row is the last of the set; the current row stays the current one.
void Rows::StoreNewRow() {
    Append append(*connection_, *table_);
    {
        Statement add = connection_->Prepare(table_->add_row);
        for (std::size_t i = 0; i < draft_.size(); ++i) add.Bind(static_cast<int>(i) + 1, draft_[i]);
        add.Step();
    }
    append.Stored(connection_->LastRowId(), draft_);
    Include(connection_->LastRowId());
    if (are_all_reached_) ++rows_reached_;
}

/// Writes the columns that were set and no others, so that nobody else's change of the rest is undone.
void Rows::StoreChange() {
    std::string columns;
    for (std::size_t i = 0; i < draft_.size(); ++i)
        if (is_changed_[i])
            columns += (columns.empty() ? "" : ",") + Quoted(table_->columns[i]) + "=?" + std::to_string(i + 2);
    if (columns.empty()) return;
    {
        Statement change =
            connection_->Prepare("update " + Quoted(table_->name) + " set " + columns + " where _rowid_=?1");
        change.Bind(1, at_.id);
        for (std::size_t i = 0; i < draft_.size(); ++i)
            if (is_changed_[i]) change.Bind(static_cast<int>(i) + 2, draft_[i]);
        change.Step();
    }
    if (connection_->Changes() == 0) throw RunTimeError(kNoCurrentRecord);
    row_.swap(draft_);
}

void Rows::Delete() {
    RequireOpen();
    if (!is_on_row_) throw RunTimeError(kNoCurrentRecord);
    {
        Statement remove = connection_->Prepare("delete from " + Quoted(table_->name) + " where _rowid_=?1");
        remove.Bind(1, at_.id);
        remove.Step();
    }
    const bool was_there = connection_->Changes() != 0;
    mode_ = Mode::kReading;
    is_on_row_ = false;
    --rows_reached_;
    if (!was_there) throw RunTimeError(kNoCurrentRecord);
}

void Rows::Renumber(const std::string& column, std::int64_t most) {
    RequireOpen();
    const std::string& name = table_->columns[table_->ColumnIndex(column)];
    const Numbering numbering = engine::Renumber(*connection_, *table_, name, most);
    ranges_.clear();
    if (numbering.count > 0) ranges_.push_back({std::numeric_limits<std::int64_t>::min(), numbering.last_id});
    mode_ = Mode::kReading;
    is_on_row_ = false;
    is_at_end_ = true;
    are_all_reached_ = true;
    rows_reached_ = numbering.count;
}

void Rows::Scan(std::int64_t first, const std::vector<std::string>& columns,
                const std::function<bool(const std::vector<Text>&)>& visit) const {
    RequireOpen();
    const ReadScope one_picture(*connection_);
    std::string names;
    for (const std::string& column : columns)
        names += (names.empty() ? "" : ",") + Quoted(table_->columns[table_->ColumnIndex(column)]);
    const auto [id, skipped] = StartAt(*connection_, *table_, first);
    Statement rows = connection_->Prepare("select " + names + " from " + Quoted(table_->name) +
                                          " where _rowid_>=?1 order by _rowid_ limit -1 offset ?2");
    rows.Bind(1, id);
    rows.Bind(2, skipped);
    std::vector<Text> texts(columns.size());
    while (rows.Step()) {
        for (std::size_t i = 0; i < texts.size(); ++i) rows.Read(static_cast<int>(i), &texts[i]);
        if (!visit(texts)) return;
    }
}

const Text& Rows::Value(const std::string& column) const {
    RequireOpen();
    const std::size_t index = table_->ColumnIndex(column);
    if (mode_ != Mode::kReading) return draft_[index];
    if (!is_on_row_) throw RunTimeError(kNoCurrentRecord);
    return row_[index];
}

void Rows::Set(const std::string& column, std::string text) {
    RequireOpen();
    if (mode_ == Mode::kReading) throw RunTimeError(kNoCurrentEdit);
    const std::size_t index = table_->ColumnIndex(column);
    if (CharacterCount(text) > kLongestText) throw RunTimeError(kFieldTooSmall);
    draft_[index] = std::move(text);
    if (mode_ == Mode::kEditing) is_changed_[index] = true;
}

}  // namespace vantrel::engine
