// Who reads and who writes a field: the index made of sources of the tests' own, and of the
// calculation's.

#include "nzutil/field_users.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "tests/support/temp_directory.h"

namespace {

/// The index of one source, with the fields P001 to P009 and PA01.
class FieldUsersTest : public ::testing::Test {
  protected:
    void index(const std::string& source) {
        std::string rows = "# a dictionary\n";
        for (int i = 1; i <= 9; ++i) {
            rows += "P00" + std::to_string(i) + " 00001,01,N,0\n";
        }
        directory.write("DIPX.campi", rows + "PA01 00001,01,N,0\n");
        directory.write("slip.cpp", source);
        const std::string command = "'" VELMOR_GENERATE_FIELD_USERS "' '" +
                                    directory.file("out.cpp") + "' '" + directory.path() + "' '" +
                                    directory.file("DIPX.campi") + "' '" +
                                    directory.file("slip.cpp") + "'";
        ASSERT_EQ(std::system(command.c_str()), 0);
        table = directory.read("out.cpp");
    }
    /// The field has exactly these readers and writers, without their file.
    void expect_users(const std::string& code, const std::string& readers,
                      const std::string& writers) const {
        const std::size_t start = table.find("{\"" + code + "\"");
        ASSERT_NE(start, std::string::npos) << code;
        std::string row = table.substr(start, table.find('\n', start) - start);
        for (std::size_t at = row.find(" (slip.cpp)"); at != std::string::npos;
             at = row.find(" (slip.cpp)")) {
            row.erase(at, 11);
        }
        EXPECT_EQ(row, "{\"" + code + "\", \"" + readers + "\", \"" + writers + "\"},");
    }

    test_support::TempDirectory directory;
    std::string table;
};

TEST_F(FieldUsersTest, AccessorTellsReadingFromWriting) {
    index(R"(
        #include "records/fields.h"
        namespace slip {
        // P009 in a comment, and in a "text" below.
        double wage(int months) {
            TRACCIA("P009");
            scrivi(P001, num(P002) * std::max(num(P003), 1'000.5), months);
            aggiungi(P004, num(P004, 2));
            if (rifilato(P005) == "1") {
                svuota({P006, P007});
            }
            return testo(P008).size() + num(dopo(P001, months));
        }
        }
    )");
    expect_users("P001", "wage", "wage");
    expect_users("P002", "wage", "");
    expect_users("P003", "wage", "");
    expect_users("P004", "wage", "wage");
    expect_users("P005", "wage", "");
    expect_users("P006", "", "wage");
    expect_users("P007", "", "wage");
    expect_users("P008", "wage", "");
    EXPECT_EQ(table.find("{\"P009\""), std::string::npos);
}

TEST_F(FieldUsersTest, FieldIsFollowedThroughParametersAndLocals) {
    index(R"(
        void move(const Descriptor& to, const Descriptor& from) { scrivi(to, num(from)); }
        void pass_on(double amount, const Descriptor& field) { move(field, P009); }
        void month() {
            const Descriptor& wage = additional ? P001 : P002;
            pass_on(1, P003);
            scrivi(wage, 0);
            for (const Descriptor& field : {P004, P005}) {
                if (num(field) == 0) {
                    return;
                }
            }
        }
    )");
    expect_users("P001", "", "month");
    expect_users("P002", "", "month");
    expect_users("P003", "", "month");
    expect_users("P004", "month", "");
    expect_users("P005", "month", "");
    expect_users("P009", "pass_on", "");
}

TEST_F(FieldUsersTest, ColumnOfATableIsWhatTheMemberIsUsedFor) {
    index(R"(
        struct Rise {
            int month;
            Descriptor base;
            Descriptor result;
        };
        constexpr std::array<Rise, 2> kRises{{{1, P001, P002}, {2, P003, P004}}};
        using Saved = std::pair<Descriptor, Descriptor>;
        constexpr std::array kSaved{Saved{P005, P006}, Saved{P007, P008}};
        constexpr std::array<Descriptor, 1> kUnread{P009};
        void raise() {
            for (const Rise& row : kRises) {
                scrivi(row.result, num(row.base));
            }
        }
        void save() {
            for (const auto& [saved, result] : kSaved) {
                scrivi(saved, num(result));
            }
        }
        void clear() { azzera({kUnread.begin(), kUnread.end()}); }
    )");
    expect_users("P001", "raise", "");
    expect_users("P002", "", "raise");
    expect_users("P004", "", "raise");
    expect_users("P005", "", "save");
    expect_users("P006", "save", "");
    expect_users("P008", "save", "");
}

TEST_F(FieldUsersTest, SeriesGoesFromItsFirstFieldToItsLast) {
    index(R"(
        void clear() {
            azzera(serie(P001, P003));
            for (const Descriptor& field : serie(P005, P009, 2)) {
                pay(num(field));
            }
        }
    )");
    expect_users("P001", "", "clear");
    expect_users("P002", "", "clear");
    expect_users("P003", "", "clear");
    EXPECT_EQ(table.find("{\"P004\""), std::string::npos);
    expect_users("P005", "clear", "");
    EXPECT_EQ(table.find("{\"P006\""), std::string::npos);
    expect_users("P007", "clear", "");
    expect_users("P009", "clear", "");
}

TEST_F(FieldUsersTest, VariableOfAFieldsNameIsNoField) {
    index(R"(
        struct Tables { double P001 = 0; };
        void load() { tables.P001 = num(PA01); }
    )");
    EXPECT_EQ(table.find("{\"P001\""), std::string::npos);
    expect_users("PA01", "load", "");
}

/// Does the calculation's index name a procedure among these?
bool names(std::string_view users, std::string_view procedure) {
    return users.find(procedure) != std::string_view::npos;
}

TEST(FieldUsers, CalculationIsIndexed) {
    // Q190 is the ceiling of short-time pay: worked out of the reference wage P213.
    EXPECT_TRUE(names(nzutil::users_of("Q190").writers, "CALCOLACIG ("));
    EXPECT_TRUE(names(nzutil::users_of("P213").readers, "CALCOLACIG ("));
    EXPECT_FALSE(names(nzutil::users_of("P213").writers, "CALCOLACIG ("));
    EXPECT_EQ(nzutil::users_of("P123").readers, "");
    EXPECT_EQ(nzutil::users_of("altro").writers, "");
    EXPECT_TRUE(std::ranges::is_sorted(nzutil::all_field_users(), {}, &nzutil::FieldUsers::code));
}

}  // namespace
