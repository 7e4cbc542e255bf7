// The index of 100,000 ten-character keys against LMDB and SQLite on the same keys in the same
// order. Each insertion stands in the file when the call returns, as other programs of the suite
// see it; none of the three waits for the disk. Each search looks at the file anew.

#include <lmdb.h>
#include <sqlite3.h>

#include <algorithm>
#include <memory>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/ratio_reporter.h"
#include "files/file_numbers.h"
#include "files/isam.h"
#include "files/logical_files.h"
#include "tests/support/archive_directory.h"

using namespace MXLIBRERIA::file_numbers;

namespace {

constexpr std::size_t kKeys = 100000;

std::vector<std::string> shuffled_keys(unsigned seed) {
    std::vector<std::string> keys;
    keys.reserve(kKeys);
    for (std::size_t i = 1; i <= kKeys; ++i) {
        const std::string digits = std::to_string(i * 7);
        keys.push_back(std::string(10 - digits.size(), '0') + digits);
    }
    std::shuffle(keys.begin(), keys.end(), std::mt19937(seed));
    return keys;
}

const std::vector<std::string> kInsertOrder = shuffled_keys(1);
const std::vector<std::string> kSearchOrder = shuffled_keys(2);

void require(bool holds) {
    if (!holds) {
        throw std::runtime_error("an index gave a wrong answer");
    }
}

/// The three-level index.
class OurIndex {
  public:
    OurIndex() {
        archive_.define(36, "NZINDEX.DAT", 2176);
        MXLIBRERIA::ISAM(kBeforeImageIndex, "", MXLIBRERIA::kIsamEmpty, 0);
    }
    static void insert(const std::string& key, double record) {
        require(MXLIBRERIA::ISAM(kBeforeImageIndex, key, MXLIBRERIA::kIsamInsert, record) == 0);
    }
    static void search(const std::string& key) {
        require(MXLIBRERIA::ISAM(kBeforeImageIndex, key, MXLIBRERIA::kIsamSearch, 0) > 0);
    }

  private:
    test_support::ArchiveDirectory archive_;
};

/// LMDB: one write transaction an insertion, one read transaction a search.
class Lmdb {
  public:
    Lmdb() {
        require(::mdb_env_create(&environment_) == 0);
        require(::mdb_env_set_mapsize(environment_, std::size_t{1} << 28U) == 0);
        require(::mdb_env_open(environment_, directory_.path().c_str(), MDB_NOSYNC, 0644) == 0);
        MDB_txn* transaction = nullptr;
        require(::mdb_txn_begin(environment_, nullptr, 0, &transaction) == 0);
        require(::mdb_dbi_open(transaction, nullptr, 0, &table_) == 0);
        require(::mdb_txn_commit(transaction) == 0);
        require(::mdb_txn_begin(environment_, nullptr, MDB_RDONLY, &reader_) == 0);
        ::mdb_txn_reset(reader_);
    }
    ~Lmdb() {
        ::mdb_txn_abort(reader_);
        ::mdb_env_close(environment_);
    }
    Lmdb(const Lmdb&) = delete;
    Lmdb& operator=(const Lmdb&) = delete;
    Lmdb(Lmdb&&) = delete;
    Lmdb& operator=(Lmdb&&) = delete;

    void insert(std::string key, double record) {
        MDB_txn* transaction = nullptr;
        require(::mdb_txn_begin(environment_, nullptr, 0, &transaction) == 0);
        MDB_val name{key.size(), key.data()};
        MDB_val value{sizeof record, &record};
        require(::mdb_put(transaction, table_, &name, &value, MDB_NOOVERWRITE) == 0);
        require(::mdb_txn_commit(transaction) == 0);
    }
    void search(std::string key) {
        require(::mdb_txn_renew(reader_) == 0);
        MDB_val name{key.size(), key.data()};
        MDB_val value{};
        require(::mdb_get(reader_, table_, &name, &value) == 0);
        benchmark::DoNotOptimize(value);
        ::mdb_txn_reset(reader_);
    }

  private:
    test_support::TempDirectory directory_;
    MDB_env* environment_ = nullptr;
    MDB_txn* reader_ = nullptr;
    MDB_dbi table_ = 0;
};

/// SQLite: a commit an insertion, in a write-ahead log; statements prepared once.
class Sqlite {
  public:
    Sqlite() {
        require(::sqlite3_open(directory_.file("index.db").c_str(), &database_) == SQLITE_OK);
        run("PRAGMA journal_mode=WAL");
        run("PRAGMA synchronous=OFF");
        run("CREATE TABLE i (k TEXT PRIMARY KEY, r INTEGER) WITHOUT ROWID");
        insert_ = prepare("INSERT INTO i VALUES (?, ?)");
        search_ = prepare("SELECT r FROM i WHERE k = ?");
    }
    ~Sqlite() {
        ::sqlite3_finalize(insert_);
        ::sqlite3_finalize(search_);
        ::sqlite3_close(database_);
    }
    Sqlite(const Sqlite&) = delete;
    Sqlite& operator=(const Sqlite&) = delete;
    Sqlite(Sqlite&&) = delete;
    Sqlite& operator=(Sqlite&&) = delete;

    void insert(const std::string& key, double record) {
        bind(insert_, key);
        ::sqlite3_bind_int64(insert_, 2, static_cast<sqlite3_int64>(record));
        require(::sqlite3_step(insert_) == SQLITE_DONE);
        ::sqlite3_reset(insert_);
    }
    void search(const std::string& key) {
        bind(search_, key);
        require(::sqlite3_step(search_) == SQLITE_ROW);
        benchmark::DoNotOptimize(::sqlite3_column_int64(search_, 0));
        ::sqlite3_reset(search_);
    }

  private:
    void run(const char* statement) {
        require(::sqlite3_exec(database_, statement, nullptr, nullptr, nullptr) == SQLITE_OK);
    }
    sqlite3_stmt* prepare(const char* text) {
        sqlite3_stmt* statement = nullptr;
        require(::sqlite3_prepare_v2(database_, text, -1, &statement, nullptr) == SQLITE_OK);
        return statement;
    }
    static void bind(sqlite3_stmt* statement, const std::string& key) {
        ::sqlite3_bind_text(statement, 1, key.data(), static_cast<int>(key.size()), nullptr);
    }

    test_support::TempDirectory directory_;
    sqlite3* database_ = nullptr;
    sqlite3_stmt* insert_ = nullptr;
    sqlite3_stmt* search_ = nullptr;
};

template <typename Index>
void fill(Index& index) {
    double record = 0;
    for (const std::string& key : kInsertOrder) {
        index.insert(key, ++record);
    }
}

template <typename Index>
void insertions(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        auto index = std::make_unique<Index>();
        state.ResumeTiming();
        fill(*index);
        state.PauseTiming();
        index.reset();
        state.ResumeTiming();
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kKeys));
}

template <typename Index>
void searches(benchmark::State& state) {
    Index index;
    fill(index);
    for (auto _ : state) {
        for (const std::string& key : kSearchOrder) {
            index.search(key);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kKeys));
}

void isam_insert(benchmark::State& state) {
    insertions<OurIndex>(state);
}
void lmdb_insert(benchmark::State& state) {
    insertions<Lmdb>(state);
}
void sqlite_insert(benchmark::State& state) {
    insertions<Sqlite>(state);
}
void isam_search(benchmark::State& state) {
    searches<OurIndex>(state);
}
void lmdb_search(benchmark::State& state) {
    searches<Lmdb>(state);
}
void sqlite_search(benchmark::State& state) {
    searches<Sqlite>(state);
}

BENCHMARK(isam_insert)->Iterations(1)->Repetitions(3)->Unit(benchmark::kMillisecond);
BENCHMARK(lmdb_insert)->Iterations(1)->Repetitions(3)->Unit(benchmark::kMillisecond);
BENCHMARK(sqlite_insert)->Iterations(1)->Repetitions(3)->Unit(benchmark::kMillisecond);
BENCHMARK(isam_search)->Repetitions(3)->Unit(benchmark::kMillisecond);
BENCHMARK(lmdb_search)->Repetitions(3)->Unit(benchmark::kMillisecond);
BENCHMARK(sqlite_search)->Repetitions(3)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    bench::RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.print_ratio("isam_insert", "lmdb_insert");
    reporter.print_ratio("isam_insert", "sqlite_insert");
    reporter.print_ratio("isam_search", "lmdb_search");
    reporter.print_ratio("isam_search", "sqlite_search");
    return 0;
}
