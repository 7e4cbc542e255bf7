#include "platform/database.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <filesystem>
#include <optional>
#include <unordered_map>
#include <utility>

#include "platform/database_engine.h"
#include "platform/disk_names.h"
#include "platform/failure.h"
#include "platform/file_system.h"

namespace platform {

namespace {

bool same_name(std::string_view a, std::string_view b) {
    const auto lower = [](char c) {
        return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    };
    return std::ranges::equal(a, b, [&](char x, char y) { return lower(x) == lower(y); });
}

std::string in_quotes(std::string_view name) {
    std::string text = "\"";
    for (const char c : name) {
        text += c;
        if (c == '"') {
            text += c;
        }
    }
    return text + '"';
}

/// Position of a column among the names; nothing where there is none.
std::optional<std::size_t> position_of(const std::vector<std::string>& names,
                                       std::string_view column) {
    const auto found = std::ranges::find_if(
        names, [column](const std::string& name) { return same_name(name, column); });
    if (found == names.end()) {
        return std::nullopt;
    }
    return static_cast<std::size_t>(found - names.begin());
}

/// A prepared statement out of the archive's store, which goes back when it goes.
class StatementStore;
class Lease {
  public:
    Lease(StatementStore& store, std::string text, std::unique_ptr<PreparedStatement> statement)
        : store_(&store), text_(std::move(text)), statement_(std::move(statement)) {}
    Lease(Lease&&) noexcept = default;
    Lease& operator=(Lease&&) = delete;
    Lease(const Lease&) = delete;
    Lease& operator=(const Lease&) = delete;
    ~Lease();
    PreparedStatement* operator->() const { return statement_.get(); }

  private:
    StatementStore* store_;
    std::string text_;
    std::unique_ptr<PreparedStatement> statement_;
};

/// Each statement is prepared once and kept; one that is in use is prepared a second time.
class StatementStore {
  public:
    explicit StatementStore(Engine& engine) : engine_(&engine) {}
    [[nodiscard]] Engine& engine() const { return *engine_; }

    Lease take(const std::string& text) {
        if (const auto found = kept_.find(text); found != kept_.end()) {
            std::unique_ptr<PreparedStatement> statement = std::move(found->second);
            kept_.erase(found);
            return {*this, text, std::move(statement)};
        }
        return {*this, text, engine_->prepare(text)};
    }
    /// The same with its parameters bound; 3061 where their number differs.
    Lease take(const std::string& text, const Values& parameters) {
        Lease statement = take(text);
        if (static_cast<std::size_t>(statement->parameters()) != parameters.size()) {
            fail_in_archive(kTooFewParameters, engine_->name(), text);
        }
        for (std::size_t i = 0; i < parameters.size(); ++i) {
            statement->bind(static_cast<int>(i), parameters[i]);
        }
        return statement;
    }
    void give_back(std::string text, std::unique_ptr<PreparedStatement> statement) {
        kept_.insert_or_assign(std::move(text), std::move(statement));
    }
    void run(const std::string& text, const Values& parameters) {
        const Lease statement = take(text, parameters);
        while (statement->step()) {
        }
    }

  private:
    Engine* engine_;
    std::unordered_map<std::string, std::unique_ptr<PreparedStatement>> kept_;
};

Lease::~Lease() {
    if (statement_) {
        statement_->reset();
        store_->give_back(std::move(text_), std::move(statement_));
    }
}

Values row_of(PreparedStatement& statement, std::size_t first, std::size_t columns) {
    Values row;
    row.reserve(columns);
    for (std::size_t i = first; i < first + columns; ++i) {
        row.push_back(statement.column(static_cast<int>(i)));
    }
    return row;
}

// ---- The records of a table ----

class TableRecords : public Recordset {
  public:
    TableRecords(StatementStore& store, std::string table, std::vector<std::string> columns)
        : store_(&store), table_(std::move(table)), columns_(std::move(columns)) {
        select_ = "select " + store.engine().identity();
        for (const std::string& column : columns_) {
            select_ += "," + in_quotes(column);
        }
        select_ += " from " + in_quotes(table_);
    }

    void set_index(const Index& index) override {
        key_.clear();
        for (const std::string& column : index.columns) {
            key_.push_back(columns_[position(column)]);
        }
    }

    void seek(const Values& key) override {
        leave_record();
        std::string condition;
        for (std::size_t i = 0; i < std::min(key.size(), key_.size()); ++i) {
            condition += (condition.empty() ? " where " : " and ") + in_quotes(key_[i]) + "=?";
        }
        const Lease statement = store_->take(select_ + condition + order() + " limit 1", key);
        take_row(statement);
        no_match_ = end();
    }
    [[nodiscard]] bool no_match() const override { return no_match_; }

    void move_first() override {
        leave_record();
        walk_.clear();
        next_ = 0;
        const Lease statement = store_->take("select " + store_->engine().identity() + " from " +
                                             in_quotes(table_) + order());
        while (statement->step()) {
            walk_.push_back(statement->column(0));
        }
        move_next();
    }
    /// Goes on from move_first(); a record deleted in the meantime is passed over.
    void move_next() override {
        leave_record();
        while (next_ < walk_.size() && end()) {
            load(std::move(walk_[next_++]));
        }
    }
    [[nodiscard]] bool end() const override { return !identity_.has_value(); }

    [[nodiscard]] bool has_field(std::string_view column) const override {
        return position_of(columns_, column).has_value();
    }
    [[nodiscard]] Value field(std::string_view column) override {
        const std::size_t place = position(column);
        if (writing_ != Writing::nothing && written_[place].has_value()) {
            return *written_[place];
        }
        if (writing_ == Writing::new_record) {
            return {};
        }
        need_record();
        if (row_.empty()) {
            load(*identity_);
            need_record();
        }
        return row_[place];
    }
    void set_field(std::string_view column, Value value) override {
        if (writing_ == Writing::nothing) {
            fail(kNothingBegun);
        }
        written_[position(column)] = std::move(value);
    }

    void add() override { begin_writing(Writing::new_record); }
    void edit() override {
        need_record();
        begin_writing(Writing::change);
    }
    void update() override {
        if (writing_ == Writing::nothing) {
            fail(kNothingBegun);
        }
        const bool is_new = writing_ == Writing::new_record;
        std::vector<std::string> names;
        Values values;
        for (std::size_t i = 0; i < columns_.size(); ++i) {
            if (written_[i].has_value()) {
                names.push_back(in_quotes(columns_[i]));
                values.push_back(std::move(*written_[i]));
            }
        }
        writing_ = Writing::nothing;
        if (is_new) {
            write(insertion(names), values);
        } else if (!names.empty()) {
            values.push_back(*identity_);
            write(change(names), values);
        }
    }
    void remove() override {
        need_record();
        store_->run(
            "delete from " + in_quotes(table_) + " where " + store_->engine().identity() + "=?",
            {*identity_});
        leave_record();
    }

  private:
    enum class Writing { nothing, new_record, change };

    [[noreturn]] void fail(int number, std::string_view column = {}) const {
        fail_in_archive(number, store_->engine().name(),
                        table_ + (column.empty() ? "" : "." + std::string(column)));
    }
    [[nodiscard]] std::size_t position(std::string_view column) const {
        const auto place = position_of(columns_, column);
        if (!place.has_value()) {
            fail(kNoSuchColumn, column);
        }
        return *place;
    }
    void need_record() const {
        if (end()) {
            fail(kNoCurrentRecord);
        }
    }
    void leave_record() {
        identity_.reset();
        row_.clear();
        writing_ = Writing::nothing;
        no_match_ = false;
    }
    [[nodiscard]] std::string order() const {
        std::string text = " order by ";
        for (const std::string& column : key_) {
            text += in_quotes(column) + ",";
        }
        return text + store_->engine().identity();
    }
    void take_row(const Lease& statement) {
        if (statement->step()) {
            identity_ = statement->column(0);
            row_ = row_of(*statement.operator->(), 1, columns_.size());
        }
    }
    void load(Value identity) {
        leave_record();
        const Lease statement =
            store_->take(select_ + " where " + store_->engine().identity() + "=?", {identity});
        take_row(statement);
    }
    void begin_writing(Writing what) {
        writing_ = what;
        written_.assign(columns_.size(), std::nullopt);
    }
    [[nodiscard]] std::string insertion(const std::vector<std::string>& names) const {
        std::string text = "insert into " + in_quotes(table_);
        if (names.empty()) {
            return text + " default values";
        }
        std::string places;
        for (std::size_t i = 0; i < names.size(); ++i) {
            text += (i == 0 ? "(" : ",") + names[i];
            places += i == 0 ? "?" : ",?";
        }
        return text + ") values(" + places + ")";
    }
    [[nodiscard]] std::string change(const std::vector<std::string>& names) const {
        std::string text = "update " + in_quotes(table_) + " set ";
        for (std::size_t i = 0; i < names.size(); ++i) {
            text += (i == 0 ? "" : ",") + names[i] + "=?";
        }
        return text + " where " + store_->engine().identity() + "=?";
    }
    /// Runs it; the record written is the current one, and read when somebody asks for it.
    void write(const std::string& text, const Values& values) {
        leave_record();
        const Lease statement =
            store_->take(text + " returning " + store_->engine().identity(), values);
        if (statement->step()) {
            identity_ = statement->column(0);
            while (statement->step()) {
            }
        }
    }

    StatementStore* store_;
    std::string table_;
    std::vector<std::string> columns_;
    std::string select_;
    std::vector<std::string> key_;
    Values walk_;
    std::size_t next_ = 0;
    bool no_match_ = false;
    std::optional<Value> identity_;
    Values row_;  ///< empty while the current record has not been read
    Writing writing_ = Writing::nothing;
    std::vector<std::optional<Value>> written_;
};

// ---- What a query returns ----

class QueryRecords : public Recordset {
  public:
    QueryRecords(StatementStore& store, const std::string& statement, const Values& parameters)
        : name_(store.engine().name()), statement_(store.take(statement, parameters)) {
        columns_ = statement_->column_names();
        QueryRecords::move_next();
    }

    void set_index(const Index& /*index*/) override { fail(kArchiveReadOnly); }
    void seek(const Values& /*key*/) override { fail(kArchiveReadOnly); }
    [[nodiscard]] bool no_match() const override { return end_; }
    void move_first() override {
        statement_->reset();
        move_next();
    }
    void move_next() override {
        end_ = !statement_->step();
        row_ = end_ ? Values() : row_of(*statement_.operator->(), 0, columns_.size());
    }
    [[nodiscard]] bool end() const override { return end_; }
    [[nodiscard]] bool has_field(std::string_view column) const override {
        return position_of(columns_, column).has_value();
    }
    [[nodiscard]] Value field(std::string_view column) override {
        const auto place = position_of(columns_, column);
        if (!place.has_value()) {
            fail(kNoSuchColumn, column);
        }
        if (end_) {
            fail(kNoCurrentRecord);
        }
        return row_[*place];
    }
    void set_field(std::string_view /*column*/, Value /*value*/) override {
        fail(kArchiveReadOnly);
    }
    void add() override { fail(kArchiveReadOnly); }
    void edit() override { fail(kArchiveReadOnly); }
    void update() override { fail(kArchiveReadOnly); }
    void remove() override { fail(kArchiveReadOnly); }

  private:
    [[noreturn]] void fail(int number, std::string_view column = {}) const {
        fail_in_archive(number, name_, std::string(column));
    }

    std::string name_;
    Lease statement_;
    std::vector<std::string> columns_;
    bool end_ = false;
    Values row_;
};

// ---- The archive ----

class Archive : public Database {
  public:
    explicit Archive(std::unique_ptr<Engine> engine)
        : engine_(std::move(engine)), store_(*engine_) {}

    [[nodiscard]] std::unique_ptr<Recordset> open_table(const std::string& table) override {
        std::vector<std::string> columns = engine_->columns(table);
        if (columns.empty()) {
            fail_in_archive(kNoSuchTable, engine_->name(), table);
        }
        return std::make_unique<TableRecords>(store_, table, std::move(columns));
    }
    [[nodiscard]] std::unique_ptr<Recordset> query(const std::string& statement,
                                                   const Values& parameters) override {
        return std::make_unique<QueryRecords>(store_, from_older_dialect(statement), parameters);
    }
    int execute(const std::string& statement, const Values& parameters) override {
        store_.run(from_older_dialect(statement), parameters);
        return engine_->touched();
    }
    [[nodiscard]] bool has_table(const std::string& table) override {
        return !engine_->columns(table).empty();
    }
    void create_table(const Table& table) override {
        std::string columns;
        for (const Column& column : table.columns) {
            columns += (columns.empty() ? "" : ",") + in_quotes(column.name) + " " +
                       engine_->declaration(column.type);
        }
        store_.run("create table " + in_quotes(table.name) + " (" + columns + ")", {});
        if (table.index.columns.empty()) {
            return;
        }
        std::string key;
        for (const std::string& column : table.index.columns) {
            key += (key.empty() ? "" : ",") + in_quotes(column);
        }
        store_.run(std::string("create ") + (table.index.unique ? "unique " : "") + "index " +
                       in_quotes(table.name + "_" + table.index.name) + " on " +
                       in_quotes(table.name) + " (" + key + ")",
                   {});
    }
    void begin() override { store_.run(engine_->begin_statement(), {}); }
    void commit() override { store_.run("commit", {}); }
    void rollback() override { store_.run("rollback", {}); }

  private:
    std::unique_ptr<Engine> engine_;
    StatementStore store_;  // goes before the engine
};

// ---- What a file holds ----

enum class Content { embedded, server, older_engine, unknown };

struct Mark {
    std::size_t position;
    std::string_view text;
    Content content;
};
constexpr std::array<Mark, 5> kMarks{{
    {0, "SQLite format 3", Content::embedded},
    {0, "postgresql://", Content::server},
    {0, "postgres://", Content::server},
    {4, "Standard Jet DB", Content::older_engine},
    {4, "Standard ACE DB", Content::older_engine},
}};

Content content_of(const std::string& path) {
    std::array<char, 32> head{};
    const std::size_t length =
        files().open(path, OpenMode::read_only)->read_at(0, head.data(), head.size());
    const std::string_view text(head.data(), length);
    for (const Mark& mark : kMarks) {
        if (text.size() >= mark.position && text.substr(mark.position).starts_with(mark.text)) {
            return mark.content;
        }
    }
    return Content::unknown;
}

}  // namespace

// ---- Values ----

double Value::number() const {
    if (const double* number = std::get_if<double>(&content_)) {
        return *number;
    }
    double number = 0;
    if (const std::string* text = std::get_if<std::string>(&content_)) {
        const std::size_t start = std::min(text->find_first_not_of(' '), text->size());
        std::from_chars(text->data() + start, text->data() + text->size(), number,
                        std::chars_format::fixed);
    }
    return number;
}

std::string Value::text() const {
    if (const double* number = std::get_if<double>(&content_)) {
        std::array<char, 400> digits{};
        const auto result = std::to_chars(digits.data(), digits.data() + digits.size(), *number,
                                          std::chars_format::fixed);
        return {digits.data(), result.ptr};
    }
    const std::string* text = std::get_if<std::string>(&content_);
    return text == nullptr ? std::string() : *text;
}

// ---- Opening and making ----

void fail_in_archive(int number, const std::string& archive, const std::string& what) {
    Failure failure(number);
    failure.culprit = archive + (what.empty() ? "" : ": " + what);
    throw failure;
}

Transaction::~Transaction() {
    if (database_ == nullptr) {
        return;
    }
    try {
        database_->rollback();
    } catch (const Failure&) {
        // The engine has undone it already, or undoes it when the archive is opened again.
        return;
    }
}

void Transaction::commit() {
    database_->commit();
    database_ = nullptr;
}

std::unique_ptr<Database> open_database(const std::string& path, DatabaseMode mode) {
    const std::string place = path_on_disk(path);
    switch (content_of(place)) {
        case Content::embedded:
            return std::make_unique<Archive>(open_embedded(place, mode));
        case Content::server:
            fail_in_archive(kArchiveOnServer, place);
        case Content::older_engine:
            fail_in_archive(kOlderArchive, place);
        case Content::unknown:
            break;
    }
    fail_in_archive(kNotAnArchive, place);
}

void create_database(const std::string& path, std::span<const Table> tables) {
    const std::string place = path_on_disk(path);
    if (files().exists(place)) {
        fail_in_archive(kFileAlreadyExists, place);
    }
    const std::string unfinished = place + ".nuovo";
    std::remove(unfinished.c_str());
    {
        Archive archive(create_embedded(unfinished));
        Transaction transaction(archive);
        for (const Table& table : tables) {
            archive.create_table(table);
        }
        transaction.commit();
    }
    std::filesystem::rename(unfinished, place);
    made_on_disk(place);
}

}  // namespace platform
