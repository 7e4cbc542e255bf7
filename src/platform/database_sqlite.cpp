// The embedded engine.

#include <sqlite3.h>

#include <array>
#include <cmath>

#include "platform/code_page.h"
#include "platform/database_engine.h"
#include "platform/failure.h"

namespace platform {

namespace {

constexpr int kBusyMilliseconds = 5000;  // what another program's transaction may take

struct NumberOfCode {
    int code;
    int number;
};
constexpr std::array<NumberOfCode, 11> kNumbers{{
    {SQLITE_BUSY, kArchiveLocked},
    {SQLITE_LOCKED, kArchiveLocked},
    {SQLITE_NOTADB, kNotAnArchive},
    {SQLITE_CORRUPT, kNotAnArchive},
    {SQLITE_CANTOPEN, kPathFileAccess},
    {SQLITE_PERM, kPermissionDenied},
    {SQLITE_READONLY, kArchiveReadOnly},
    {SQLITE_FULL, kDiskFull},
    {SQLITE_NOMEM, kOutOfMemory},
    {SQLITE_CONSTRAINT, kKeyTaken},
    {SQLITE_ERROR, kStatementNotUnderstood},
}};

/// Any other trouble is one of the machine.
int number_of(int code) {
    constexpr int kPrimary = 0xff;
    for (const NumberOfCode& row : kNumbers) {
        if (row.code == (code & kPrimary)) {
            return row.number;
        }
    }
    return kDeviceIo;
}

class Statement : public PreparedStatement {
  public:
    Statement(sqlite3* connection, std::string archive, const std::string& text)
        : archive_(std::move(archive)), text_(text) {
        const std::string utf8 = to_utf8(text);
        check(sqlite3_prepare_v3(connection, utf8.c_str(), static_cast<int>(utf8.size() + 1),
                                 SQLITE_PREPARE_PERSISTENT, &statement_, nullptr));
    }
    ~Statement() override { sqlite3_finalize(statement_); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;
    Statement(Statement&&) = delete;
    Statement& operator=(Statement&&) = delete;

    void bind(int parameter, const Value& value) override {
        if (value.is_null()) {
            check(sqlite3_bind_null(statement_, parameter + 1));
        } else if (value.is_number()) {
            bind_number(parameter + 1, value.number());
        } else {
            const std::string utf8 = to_utf8(value.text());
            check(sqlite3_bind_text64(statement_, parameter + 1, utf8.data(), utf8.size(),
                                      SQLITE_TRANSIENT, SQLITE_UTF8));
        }
    }
    [[nodiscard]] int parameters() const override {
        return sqlite3_bind_parameter_count(statement_);
    }
    bool step() override {
        const int code = sqlite3_step(statement_);
        if (code != SQLITE_DONE) {
            check(code);
        }
        return code == SQLITE_ROW;
    }
    [[nodiscard]] Value column(int number) override {
        switch (sqlite3_column_type(statement_, number)) {
            case SQLITE_NULL:
                return {};
            case SQLITE_INTEGER:
            case SQLITE_FLOAT:
                return sqlite3_column_double(statement_, number);
            default:
                return from_utf8(utf8_of(number));
        }
    }
    [[nodiscard]] std::vector<std::string> column_names() override {
        std::vector<std::string> names;
        for (int i = 0; i < sqlite3_column_count(statement_); ++i) {
            names.push_back(from_utf8(sqlite3_column_name(statement_, i)));
        }
        return names;
    }
    void reset() override { sqlite3_reset(statement_); }

  private:
    /// A whole number goes in as one, so that a column of text gets "1" and not "1.0".
    void bind_number(int place, double number) {
        constexpr double kWholeNumbers = 9007199254740992;  // 2^53
        if (std::abs(number) < kWholeNumbers && number == std::trunc(number)) {
            check(sqlite3_bind_int64(statement_, place, static_cast<sqlite3_int64>(number)));
        } else {
            check(sqlite3_bind_double(statement_, place, number));
        }
    }
    [[nodiscard]] std::string_view utf8_of(int number) {
        const auto* const text = static_cast<const char*>(sqlite3_column_blob(statement_, number));
        const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement_, number));
        return text == nullptr ? std::string_view() : std::string_view(text, length);
    }
    void check(int code) {
        if (code != SQLITE_OK && code != SQLITE_ROW) {
            fail_in_archive(number_of(code), archive_, text_);
        }
    }

    std::string archive_;
    std::string text_;
    sqlite3_stmt* statement_ = nullptr;
};

class EmbeddedEngine : public Engine {
  public:
    EmbeddedEngine(std::string path, int flags) : path_(std::move(path)) {
        const int code =
            sqlite3_open_v2(path_.c_str(), &connection_, flags | SQLITE_OPEN_NOMUTEX, nullptr);
        if (code != SQLITE_OK) {
            sqlite3_close(connection_);
            fail_in_archive(number_of(code), path_);
        }
        sqlite3_busy_timeout(connection_, kBusyMilliseconds);
    }
    ~EmbeddedEngine() override { sqlite3_close_v2(connection_); }
    EmbeddedEngine(const EmbeddedEngine&) = delete;
    EmbeddedEngine& operator=(const EmbeddedEngine&) = delete;
    EmbeddedEngine(EmbeddedEngine&&) = delete;
    EmbeddedEngine& operator=(EmbeddedEngine&&) = delete;

    [[nodiscard]] std::unique_ptr<PreparedStatement> prepare(
        const std::string& statement) override {
        return std::make_unique<Statement>(connection_, path_, statement);
    }
    [[nodiscard]] int touched() override { return sqlite3_changes(connection_); }
    [[nodiscard]] std::vector<std::string> columns(const std::string& table) override {
        Statement statement(connection_, path_, "select name from pragma_table_info(?)");
        statement.bind(0, Value(table));
        std::vector<std::string> names;
        while (statement.step()) {
            names.push_back(statement.column(0).text());
        }
        return names;
    }
    [[nodiscard]] std::string identity() const override { return "rowid"; }
    [[nodiscard]] std::string declaration(ColumnType type) const override {
        switch (type) {
            case ColumnType::text:
                return "TEXT";
            case ColumnType::key:
                return "TEXT COLLATE RTRIM";
            case ColumnType::amount:
                return "DOUBLE PRECISION";
            case ColumnType::whole:
                return "INTEGER";
            case ColumnType::sequence:
                return "INTEGER PRIMARY KEY AUTOINCREMENT";
        }
        return "TEXT";
    }
    [[nodiscard]] std::string begin_statement() const override { return "begin immediate"; }
    [[nodiscard]] std::string name() const override { return path_; }

  private:
    std::string path_;
    sqlite3* connection_ = nullptr;
};

/// Reads what tables there are, so that a damaged file is found out when it is opened.
void check_archive(Engine& engine) {
    try {
        const auto tables = engine.prepare("select name from sqlite_master");
        while (tables->step()) {
        }
    } catch (const Failure& failure) {
        const bool garbled = failure.number() == kStatementNotUnderstood;
        fail_in_archive(garbled ? kNotAnArchive : failure.number(), engine.name());
    }
}

}  // namespace

std::unique_ptr<Engine> open_embedded(const std::string& path, DatabaseMode mode) {
    auto engine = std::make_unique<EmbeddedEngine>(
        path, mode == DatabaseMode::read_only ? SQLITE_OPEN_READONLY : SQLITE_OPEN_READWRITE);
    check_archive(*engine);
    return engine;
}

std::unique_ptr<Engine> create_embedded(const std::string& path) {
    return std::make_unique<EmbeddedEngine>(path, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
}

}  // namespace platform
