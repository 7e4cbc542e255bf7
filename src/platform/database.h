#pragma once
// Relational archives, the files named `.MDB`: tables with an index, records found by key, read and
// written by the names of their columns, and statements. What a file of such a name holds chooses
// the engine. Text is bytes of code page 1252 on this side, UTF-8 in the database; a column may
// hold Null. Failures are platform::Failure; `culprit` names file, table and column or statement:
// 53 no such file, 70 no right or locked, 61 disk full, 57 other trouble of the machine,
// 3020 nothing begun to write, 3021 no current record, 3022 key taken, 3027 read-only, 3049 no
// archive or a damaged one, 3061 a parameter without value, 3075 statement not understood, 3078 no
// such table, 3151 the tables are on a server, 3260 another program writes, 3265 no such column,
// 3343 archive of the older engine.

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace platform {

/// Value of a column: Null, a number, or text of code page 1252.
class Value {
  public:
    // What stands for a value is one: Values{"ROMA", 0.8}.
    Value() = default;
    Value(double number) : content_(number) {}
    Value(int number) : content_(static_cast<double>(number)) {}
    Value(std::string text) : content_(std::move(text)) {}
    Value(std::string_view text) : content_(std::string(text)) {}
    Value(const char* text) : content_(std::string(text)) {}

    [[nodiscard]] bool is_null() const { return content_.index() == 0; }
    [[nodiscard]] bool is_number() const { return content_.index() == 1; }
    /// The number; of a text its leading number; of Null 0.
    [[nodiscard]] double number() const;
    /// The text; of a number its shortest decimal form; of Null the empty text.
    [[nodiscard]] std::string text() const;
    friend bool operator==(const Value&, const Value&) = default;

  private:
    std::variant<std::monostate, double, std::string> content_;
};
using Values = std::vector<Value>;

// ---- What a table is ----

enum class ColumnType {
    text,      ///< "TEXT"
    key,       ///< text of a key: trailing blanks do not count in comparisons
    amount,    ///< "DOUBLE PRECISION"
    whole,     ///< a whole number
    sequence,  ///< a number that the engine gives to each new record, never used again
};
struct Column {
    std::string name;
    ColumnType type = ColumnType::text;
};
/// An index: its name, and the columns of its key in their order.
struct Index {
    std::string name;
    std::vector<std::string> columns;
    bool unique = false;
};
struct Table {
    std::string name;
    std::vector<Column> columns;
    Index index;
};

// ---- Records ----

/// The records of a table, or those that a query returns, with one of them current. The names of
/// columns are found whatever their case. A query's records cannot be written.
class Recordset {
  public:
    virtual ~Recordset() = default;
    Recordset() = default;
    Recordset(const Recordset&) = delete;
    Recordset& operator=(const Recordset&) = delete;
    Recordset(Recordset&&) = delete;
    Recordset& operator=(Recordset&&) = delete;

    /// The index that seek() and the order of move_first() follow. 3265 where the table lacks one
    /// of its columns. The index itself may be missing in the file: the records are found all the
    /// same.
    virtual void set_index(const Index& index) = 0;
    /// The first record whose key equals `key` becomes current; else none, and no_match() is true.
    virtual void seek(const Values& key) = 0;
    [[nodiscard]] virtual bool no_match() const = 0;

    virtual void move_first() = 0;
    virtual void move_next() = 0;
    /// True when there is no current record: behind the last one, or none was found.
    [[nodiscard]] virtual bool end() const = 0;

    [[nodiscard]] virtual bool has_field(std::string_view column) const = 0;
    /// Column of the current record; between add() or edit() and update() what has been set.
    [[nodiscard]] virtual Value field(std::string_view column) = 0;
    virtual void set_field(std::string_view column, Value value) = 0;

    /// Begins a new record; columns that are not set take the table's own default.
    virtual void add() = 0;
    /// Begins to change the current record.
    virtual void edit() = 0;
    /// Writes what add() or edit() began. The record written is the current one, so that a number
    /// which the engine gave can be read back.
    virtual void update() = 0;
    /// Deletes the current record; none is current after it.
    virtual void remove() = 0;
};

// ---- The archive ----

/// An open archive. Closed by its destructor; recordsets must go first. Statements are those of the
/// older engine too: `delete * from`, `MID(...)`; a `?` stands for a parameter. Each is prepared
/// once.
class Database {
  public:
    virtual ~Database() = default;
    Database() = default;
    Database(const Database&) = delete;
    Database& operator=(const Database&) = delete;
    Database(Database&&) = delete;
    Database& operator=(Database&&) = delete;

    /// The records of a table; 3078 where there is no such table.
    [[nodiscard]] virtual std::unique_ptr<Recordset> open_table(const std::string& table) = 0;
    /// The records that a `select` returns; the first is current.
    [[nodiscard]] virtual std::unique_ptr<Recordset> query(const std::string& statement,
                                                           const Values& parameters) = 0;
    /// Any other statement; returns how many records it touched.
    virtual int execute(const std::string& statement, const Values& parameters) = 0;
    [[nodiscard]] virtual bool has_table(const std::string& table) = 0;
    /// Makes a table and its index, `<TABLE>_<INDEX>` where names of indexes are those of the whole
    /// archive.
    virtual void create_table(const Table& table) = 0;

    /// From begin() on nothing counts until commit(); rollback() undoes it.
    virtual void begin() = 0;
    virtual void commit() = 0;
    virtual void rollback() = 0;
};

/// What is written while it lives counts all together at commit(), or not at all.
class Transaction {
  public:
    explicit Transaction(Database& database) : database_(&database) { database.begin(); }
    ~Transaction();
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;
    Transaction(Transaction&&) = delete;
    Transaction& operator=(Transaction&&) = delete;
    void commit();

  private:
    Database* database_;
};

enum class DatabaseMode { read_only, read_write };

/// Opens the archive of that path, whose names are found whatever their case on disk.
[[nodiscard]] std::unique_ptr<Database> open_database(const std::string& path, DatabaseMode mode);
/// Makes an embedded archive with these tables, empty; 58 where a file of that name exists. The
/// file appears whole or not at all.
void create_database(const std::string& path, std::span<const Table> tables);

}  // namespace platform
