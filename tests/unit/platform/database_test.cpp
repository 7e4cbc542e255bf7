#include "platform/database.h"

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <filesystem>
#include <functional>

#include "platform/code_page.h"
#include "platform/database_engine.h"
#include "platform/failure.h"
#include "tests/support/temp_directory.h"

namespace platform {
namespace {

const Table kTowns{"COMUNI",
                   {{"CHIAVE", ColumnType::key},
                    {"NOME", ColumnType::text},
                    {"ALIQUOTA", ColumnType::amount},
                    {"NOTA", ColumnType::text}},
                   {"CHIAVE", {"CHIAVE"}, true}};
const Table kMonths{"MESI",
                    {{"KSEQ", ColumnType::sequence},
                     {"KDIPENDENTE", ColumnType::key},
                     {"KPERIODO", ColumnType::key},
                     {"IMPORTO", ColumnType::amount}},
                    {"CHIAVE", {"KDIPENDENTE", "KPERIODO"}, false}};

class DatabaseTest : public testing::Test {
  protected:
    DatabaseTest() {
        create_database(path_, std::vector<Table>{kTowns, kMonths});
        database_ = open_database(path_, DatabaseMode::read_write);
    }
    /// Number of the failure that the action ends with; 0 when it ends well.
    static int failure_of_action(const std::function<void()>& action,
                                 std::string* culprit = nullptr) {
        try {
            action();
        } catch (const Failure& failure) {
            if (culprit != nullptr) {
                *culprit = failure.culprit;
            }
            return failure.number();
        }
        return 0;
    }
    void add_town(const std::string& code, const std::string& name, double rate) {
        const auto towns = database_->open_table("COMUNI");
        towns->add();
        towns->set_field("CHIAVE", code);
        towns->set_field("NOME", name);
        towns->set_field("ALIQUOTA", rate);
        towns->update();
    }
    std::unique_ptr<Recordset> towns() {
        auto records = database_->open_table("COMUNI");
        records->set_index(kTowns.index);
        return records;
    }
    /// What stands in the file, asked of the engine itself.
    std::string bytes_in_file(const std::string& statement) {
        sqlite3* connection = nullptr;
        sqlite3_stmt* query = nullptr;
        std::string text;
        sqlite3_open(path_.c_str(), &connection);
        if (sqlite3_prepare_v2(connection, statement.c_str(), -1, &query, nullptr) == SQLITE_OK &&
            sqlite3_step(query) == SQLITE_ROW && sqlite3_column_text(query, 0) != nullptr) {
            text.assign(static_cast<const char*>(sqlite3_column_blob(query, 0)),
                        static_cast<std::size_t>(sqlite3_column_bytes(query, 0)));
        }
        sqlite3_finalize(query);
        sqlite3_close(connection);
        return text;
    }

    test_support::TempDirectory directory_;
    std::string path_ = directory_.file("PROVA.MDB");
    std::unique_ptr<Database> database_;
};

TEST_F(DatabaseTest, ARecordIsFoundByItsKeyAndReadByTheNamesOfItsColumns) {
    add_town("H501", "Roma", 0.9);
    add_town("F205", "Milano", 0.8);
    const auto records = towns();
    records->seek({"F205"});
    EXPECT_FALSE(records->no_match());
    EXPECT_EQ(records->field("NOME").text(), "Milano");
    EXPECT_EQ(records->field("aliquota").number(), 0.8);
    records->seek({"X999"});
    EXPECT_TRUE(records->no_match());
    EXPECT_TRUE(records->end());
    EXPECT_EQ(failure_of_action([&] { (void)records->field("NOME"); }), kNoCurrentRecord);
}

TEST_F(DatabaseTest, TrailingBlanksOfAKeyDoNotCount) {
    add_town("H501 ", "Roma", 0.9);
    const auto records = towns();
    records->seek({"H501"});
    EXPECT_FALSE(records->no_match());
    records->seek({"H501   "});
    EXPECT_FALSE(records->no_match());
    records->seek({" H501"});
    EXPECT_TRUE(records->no_match());
}

TEST_F(DatabaseTest, ATableWithoutTheIndexIsSearchedAllTheSame) {
    database_->execute("drop index \"COMUNI_CHIAVE\"", {});
    add_town("H501", "Roma", 0.9);
    const auto records = towns();
    records->seek({"H501"});
    EXPECT_EQ(records->field("NOME").text(), "Roma");
}

TEST_F(DatabaseTest, AnIndexOverAColumnThatTheTableLacksIsRefused) {
    const auto records = database_->open_table("COMUNI");
    std::string culprit;
    EXPECT_EQ(failure_of_action(
                  [&] {
                      records->set_index({"CHIAVE", {"CODICE"}});
                  },
                  &culprit),
              kNoSuchColumn);
    EXPECT_EQ(culprit, path_ + ": COMUNI.CODICE");
}

TEST_F(DatabaseTest, NullIsNeitherTextNorNumber) {
    add_town("H501", "Roma", 0.9);
    const auto records = towns();
    records->seek({"H501"});
    EXPECT_TRUE(records->field("NOTA").is_null());
    EXPECT_EQ(records->field("NOTA").text(), "");
    EXPECT_EQ(records->field("NOTA").number(), 0);
    records->edit();
    records->set_field("NOTA", "");
    records->set_field("ALIQUOTA", {});
    records->update();
    records->seek({"H501"});
    EXPECT_FALSE(records->field("NOTA").is_null());
    EXPECT_TRUE(records->field("ALIQUOTA").is_null());
}

TEST_F(DatabaseTest, EditChangesWhatIsSetAndLeavesTheRest) {
    add_town("H501", "Roma", 0.9);
    add_town("F205", "Milano", 0.8);
    const auto records = towns();
    records->seek({"H501"});
    records->edit();
    records->set_field("ALIQUOTA", 0.95);
    EXPECT_EQ(records->field("ALIQUOTA").number(), 0.95);
    EXPECT_EQ(records->field("NOME").text(), "Roma");
    records->update();
    records->seek({"H501"});
    EXPECT_EQ(records->field("ALIQUOTA").number(), 0.95);
    EXPECT_EQ(records->field("NOME").text(), "Roma");
    records->seek({"F205"});
    EXPECT_EQ(records->field("ALIQUOTA").number(), 0.8);
}

TEST_F(DatabaseTest, WhatAddOrEditBeganIsLostWithTheRecord) {
    add_town("H501", "Roma", 0.9);
    const auto records = towns();
    records->seek({"H501"});
    records->edit();
    records->set_field("ALIQUOTA", 0.1);
    records->seek({"H501"});
    EXPECT_EQ(records->field("ALIQUOTA").number(), 0.9);
    EXPECT_EQ(failure_of_action([&] { records->update(); }), kNothingBegun);
    EXPECT_EQ(failure_of_action([&] { records->set_field("NOME", "x"); }), kNothingBegun);
    records->seek({"X999"});
    EXPECT_EQ(failure_of_action([&] { records->edit(); }), kNoCurrentRecord);
    EXPECT_EQ(failure_of_action([&] { records->remove(); }), kNoCurrentRecord);
}

TEST_F(DatabaseTest, TheNumberThatTheEngineGaveIsReadBackAndNeverGivenAgain) {
    const auto records = database_->open_table("MESI");
    const auto add = [&] {
        records->add();
        records->set_field("KDIPENDENTE", "0010000001");
        records->update();
        return records->field("KSEQ").number();
    };
    EXPECT_EQ(add(), 1);
    EXPECT_EQ(add(), 2);
    EXPECT_EQ(records->field("KDIPENDENTE").text(), "0010000001");
    records->remove();
    EXPECT_EQ(add(), 3);
}

TEST_F(DatabaseTest, ARecordOfDefaultsAloneCanBeAdded) {
    const auto records = database_->open_table("MESI");
    records->add();
    records->update();
    EXPECT_TRUE(records->field("IMPORTO").is_null());
}

TEST_F(DatabaseTest, TheWalkFollowsTheIndexAndPassesOverWhatIsDeleted) {
    for (const char* code : {"L219", "A944", "H501"}) {
        add_town(code, code, 0.8);
    }
    const auto records = towns();
    std::string order;
    for (records->move_first(); !records->end(); records->move_next()) {
        order += records->field("CHIAVE").text() + " ";
        if (records->field("CHIAVE").text() == "A944") {
            database_->execute("delete from COMUNI where CHIAVE = 'H501'", {});
        }
    }
    EXPECT_EQ(order, "A944 L219 ");
    database_->execute("delete from COMUNI", {});
    records->move_first();
    EXPECT_TRUE(records->end());
}

TEST_F(DatabaseTest, StatementsOfTheOlderDialectRun) {
    add_town("H501", "Roma", 0.9);
    add_town("H502", "Romagnano", 0.5);
    add_town("F205", "Milano", 0.8);
    const auto rows =
        database_->query("SELECT * FROM COMUNI where MID(CHIAVE,1,2) = 'H5' order by CHIAVE", {});
    EXPECT_FALSE(rows->end());
    EXPECT_EQ(rows->field("nome").text(), "Roma");
    rows->move_next();
    EXPECT_EQ(rows->field("NOME").text(), "Romagnano");
    rows->move_next();
    EXPECT_TRUE(rows->end());
    rows->move_first();
    EXPECT_EQ(rows->field("NOME").text(), "Roma");
    EXPECT_EQ(database_->execute("delete * from COMUNI where  CHIAVE = '" + std::string("H501") +
                                     "' AND (NOME = 'Roma' or NOME = 'P')",
                                 {}),
              1);
    EXPECT_EQ(database_->execute("delete * from COMUNI where CHIAVE = ?", {"X999"}), 0);
}

TEST(OlderDialect, OnlyItsOwnWordsAreChangedAndNothingInQuotes) {
    EXPECT_EQ(from_older_dialect("DELETE  *  FROM T where A = 'delete * from MID(x)'"),
              "DELETE    FROM T where A = 'delete * from MID(x)'");
    EXPECT_EQ(from_older_dialect("select * from T where Mid (A,48,16) = mid"),
              "select * from T where substr (A,48,16) = mid");
    EXPECT_EQ(from_older_dialect("select A*B, HUMID(3) from T where C = 'it''s"),
              "select A*B, HUMID(3) from T where C = 'it''s");
    EXPECT_EQ(from_older_dialect(""), "");
}

TEST_F(DatabaseTest, ParametersAreValuesAndNoPartOfTheStatement) {
    add_town("H501", "Sant'Agata", 0.9);
    EXPECT_FALSE(database_->query("select * from COMUNI where NOME = ?", {"Sant'Agata"})->end());
    EXPECT_TRUE(database_->query("select * from COMUNI where NOME = ?", {"' or '1'='1"})->end());
    EXPECT_EQ(
        failure_of_action([&] { database_->execute("delete from COMUNI where NOME = ?", {}); }),
        kTooFewParameters);
}

TEST_F(DatabaseTest, TheSameQueryCanBeOpenTwice) {
    add_town("F205", "Milano", 0.8);
    add_town("H501", "Roma", 0.9);
    const std::string statement = "select * from COMUNI order by CHIAVE";
    const auto first = database_->query(statement, {});
    const auto second = database_->query(statement, {});
    first->move_next();
    EXPECT_EQ(first->field("NOME").text(), "Roma");
    EXPECT_EQ(second->field("NOME").text(), "Milano");
}

TEST_F(DatabaseTest, TextIsCodePage1252HereAndUtf8InTheFile) {
    const std::string name = from_utf8("Forlì €") + '\x81';
    add_town("D704", name, 0.8);
    const auto records = towns();
    records->seek({"D704"});
    EXPECT_EQ(records->field("NOME").text(), name);
    EXPECT_EQ(bytes_in_file("select NOME from COMUNI"), "Forl\xc3\xac \xe2\x82\xac\xc2\x81");
}

TEST_F(DatabaseTest, TextKeepsAZeroByteAndNumbersInTextColumnsHaveNoFraction) {
    const auto records = towns();
    records->add();
    records->set_field("CHIAVE", 7);
    records->set_field("NOME", std::string("a\0b", 3));
    records->set_field("ALIQUOTA", 1);
    records->update();
    records->seek({"7"});
    EXPECT_EQ(records->field("CHIAVE").text(), "7");
    EXPECT_EQ(records->field("NOME").text(), std::string("a\0b", 3));
    EXPECT_EQ(records->field("ALIQUOTA").text(), "1");
}

TEST(DatabaseValue, NumbersOfTextsAndTextsOfNumbers) {
    EXPECT_EQ(Value("  0.80 %").number(), 0.8);
    EXPECT_EQ(Value("**").number(), 0);
    EXPECT_EQ(Value("").number(), 0);
    EXPECT_EQ(Value(999999.99).text(), "999999.99");
    EXPECT_EQ(Value(0.1).text(), "0.1");
    EXPECT_TRUE(Value().is_null());
    EXPECT_FALSE(Value("").is_null());
}

TEST_F(DatabaseTest, ATransactionCountsWholeOrNotAtAll) {
    {
        const Transaction transaction(*database_);
        add_town("H501", "Roma", 0.9);
    }
    auto records = towns();
    records->seek({"H501"});
    EXPECT_TRUE(records->no_match());
    {
        Transaction transaction(*database_);
        add_town("H501", "Roma", 0.9);
        transaction.commit();
    }
    records->seek({"H501"});
    EXPECT_FALSE(records->no_match());
}

TEST_F(DatabaseTest, AKeyThatIsTakenIsRefused) {
    add_town("H501", "Roma", 0.9);
    EXPECT_EQ(failure_of_action([&] { add_town("H501", "Roma", 0.9); }), kKeyTaken);
}

TEST_F(DatabaseTest, TablesColumnsAndStatementsThatDoNotExistAreNamed) {
    std::string culprit;
    EXPECT_EQ(failure_of_action([&] { (void)database_->open_table("CATASTO"); }, &culprit),
              kNoSuchTable);
    EXPECT_EQ(culprit, path_ + ": CATASTO");
    EXPECT_EQ(failure_of_action([&] { (void)towns()->field("FASCIA"); }, &culprit), kNoSuchColumn);
    EXPECT_EQ(culprit, path_ + ": COMUNI.FASCIA");
    EXPECT_FALSE(towns()->has_field("FASCIA"));
    EXPECT_EQ(failure_of_action([&] { database_->execute("delete COMUNI from", {}); }, &culprit),
              kStatementNotUnderstood);
    EXPECT_EQ(culprit, path_ + ": delete COMUNI from");
    const auto rows = database_->query("select NOME from COMUNI", {});
    EXPECT_EQ(failure_of_action([&] { rows->edit(); }), kArchiveReadOnly);
    EXPECT_EQ(failure_of_action([&] { (void)rows->field("NOME"); }), kNoCurrentRecord);
    EXPECT_EQ(failure_of_action([&] { (void)rows->field("CHIAVE"); }), kNoSuchColumn);
}

TEST_F(DatabaseTest, AnArchiveOpenedToReadIsNotWritten) {
    const auto reader = open_database(path_, DatabaseMode::read_only);
    EXPECT_EQ(failure_of_action([&] { reader->execute("delete from COMUNI", {}); }),
              kArchiveReadOnly);
}

TEST_F(DatabaseTest, AnArchiveIsFoundWhateverTheCaseOfItsName) {
    database_.reset();
    std::filesystem::rename(path_, directory_.file("prova.mdb"));
    EXPECT_TRUE(open_database(path_, DatabaseMode::read_only)->has_table("comuni"));
}

TEST_F(DatabaseTest, WhatTheFileHoldsChoosesTheEngine) {
    const auto opening = [&](const std::string& bytes) {
        directory_.write("ALTRO.MDB", bytes);
        return failure_of_action([&] {
            const auto opened =
                open_database(directory_.file("ALTRO.MDB"), DatabaseMode::read_only);
        });
    };
    EXPECT_EQ(opening(std::string("\0\1\0\0", 4) + "Standard Jet DB" + std::string(100, '\0')),
              kOlderArchive);
    EXPECT_EQ(opening(std::string("\0\1\0\0", 4) + "Standard ACE DB"), kOlderArchive);
    EXPECT_EQ(opening("postgresql://paghe@server/archivi\n"), kArchiveOnServer);
    EXPECT_EQ(opening(""), kNotAnArchive);
    EXPECT_EQ(opening("un testo qualunque"), kNotAnArchive);
    EXPECT_EQ(failure_of_action([&] {
                  const auto opened =
                      open_database(directory_.file("MANCA.MDB"), DatabaseMode::read_only);
              }),
              kFileNotFound);
}

TEST_F(DatabaseTest, ADamagedArchiveIsNamed) {
    database_.reset();
    std::string bytes = directory_.read("PROVA.MDB");
    for (std::size_t i = 40; i < bytes.size(); ++i) {
        bytes[i] = '\xff';
    }
    directory_.write("PROVA.MDB", bytes);
    std::string culprit;
    EXPECT_EQ(
        failure_of_action([&] { (void)open_database(path_, DatabaseMode::read_only); }, &culprit),
        kNotAnArchive);
    EXPECT_EQ(culprit, path_);
}

TEST_F(DatabaseTest, AnExistingArchiveIsNeverMadeAnew) {
    add_town("H501", "Roma", 0.9);
    EXPECT_EQ(failure_of_action([&] { create_database(path_, std::vector<Table>{kTowns}); }),
              kFileAlreadyExists);
    const auto records = towns();
    records->seek({"H501"});
    EXPECT_FALSE(records->no_match());
}

TEST_F(DatabaseTest, AnArchiveThatCannotBeFinishedIsNotThere) {
    const std::string path = directory_.file("DOPPIA.MDB");
    EXPECT_NE(failure_of_action([&] {
                  create_database(path, std::vector<Table>{kTowns, kTowns});
              }),
              0);
    EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(DatabaseTest, ColumnsAndIndexStandInTheFileAsTheyAreNamed) {
    EXPECT_EQ(bytes_in_file("select name from sqlite_master where type = 'index'"),
              "COMUNI_CHIAVE");
    EXPECT_EQ(bytes_in_file("select type from pragma_table_info('COMUNI') where name = 'NOME'"),
              "TEXT");
    EXPECT_EQ(bytes_in_file("select type from pragma_table_info('COMUNI') where name = 'ALIQUOTA'"),
              "DOUBLE PRECISION");
    EXPECT_EQ(bytes_in_file("select type from pragma_table_info('MESI') where name = 'KSEQ'"),
              "INTEGER");
}

}  // namespace
}  // namespace platform
