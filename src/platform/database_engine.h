#pragma once
// What an engine gives to the archive interface: prepared statements and what it knows of a table.
// Recordsets, the older dialect and the choice by the file's content stand above it, one for all
// engines. An engine opens in a function of its own.

#include <memory>
#include <string>
#include <vector>

#include "platform/database.h"

namespace platform {

/// A prepared statement. Parameters and columns count from 0.
class PreparedStatement {
  public:
    virtual ~PreparedStatement() = default;
    PreparedStatement() = default;
    PreparedStatement(const PreparedStatement&) = delete;
    PreparedStatement& operator=(const PreparedStatement&) = delete;
    PreparedStatement(PreparedStatement&&) = delete;
    PreparedStatement& operator=(PreparedStatement&&) = delete;

    virtual void bind(int parameter, const Value& value) = 0;
    [[nodiscard]] virtual int parameters() const = 0;
    /// Runs to the next row; false behind the last one.
    virtual bool step() = 0;
    [[nodiscard]] virtual Value column(int number) = 0;
    [[nodiscard]] virtual std::vector<std::string> column_names() = 0;
    /// Ready to run again; what the run held is free.
    virtual void reset() = 0;
};

class Engine {
  public:
    virtual ~Engine() = default;
    Engine() = default;
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    Engine(Engine&&) = delete;
    Engine& operator=(Engine&&) = delete;

    /// The statement in the engine's own dialect, code page 1252.
    [[nodiscard]] virtual std::unique_ptr<PreparedStatement> prepare(
        const std::string& statement) = 0;
    /// Records touched by the statement that ran last.
    [[nodiscard]] virtual int touched() = 0;
    /// Names of the columns of a table, in their order; none where there is no such table.
    [[nodiscard]] virtual std::vector<std::string> columns(const std::string& table) = 0;
    /// Expression that names a record of a table for good while the archive is open.
    [[nodiscard]] virtual std::string identity() const = 0;
    /// Type of a column as the engine declares it.
    [[nodiscard]] virtual std::string declaration(ColumnType type) const = 0;
    /// Statement that opens a transaction which may write.
    [[nodiscard]] virtual std::string begin_statement() const = 0;
    /// The file, for messages.
    [[nodiscard]] virtual std::string name() const = 0;
};

/// The embedded engine on a file that exists.
[[nodiscard]] std::unique_ptr<Engine> open_embedded(const std::string& path, DatabaseMode mode);
/// The embedded engine on a new file.
[[nodiscard]] std::unique_ptr<Engine> create_embedded(const std::string& path);

/// A statement of the older dialect in that of the engines: `delete * from` loses its star, `MID`
/// becomes `substr`. What stands in quotes stays.
[[nodiscard]] std::string from_older_dialect(const std::string& statement);

/// Fails with `number`; `culprit` is the archive's name and, behind it, what it is about.
[[noreturn]] void fail_in_archive(int number, const std::string& archive,
                                  const std::string& what = {});

}  // namespace platform
