#include "calc/selection.h"

#include <gtest/gtest.h>

#include <string>

#include "files/file_numbers.h"
#include "tests/support/logical_files.h"

namespace ModSWCALM {
namespace {

using namespace MXLIBRERIA::file_numbers;

constexpr const char* kEnd = "9999999999";

std::string entry(int company, int employee) {
    char text[16];
    std::snprintf(text, sizeof text, "%03d000%04d", company, employee);
    return text;
}

class SelectionTest : public ::testing::Test {
  protected:
    SelectionTest() {
        files.define(kSelection, 200);
        MXLIBRERIA::FAIOPEN(kSelection);
    }
    test_support::LogicalFiles files;
};

TEST_F(SelectionTest, AnEmptyFileHasNoEntry) {
    EXPECT_FALSE(Selection().next());
    EXPECT_EQ(Selection::count(), 0U);
}

TEST_F(SelectionTest, AnEntryNamesCompanyAndEmployeeRecord) {
    files.put(kSelection, 1, "123ABC4567" + std::string(kEnd));
    Selection selection;
    const auto first = selection.next();
    ASSERT_TRUE(first);
    EXPECT_EQ(first->company, 123);
    EXPECT_EQ(first->employee_record, 4567);
    EXPECT_FALSE(selection.next());
}

TEST_F(SelectionTest, EndsAtTheMarkInTheMiddleOfARecord) {
    files.put(kSelection, 1, entry(1, 1) + entry(1, 2) + kEnd + entry(1, 3));
    EXPECT_EQ(Selection::count(), 2U);
}

TEST_F(SelectionTest, EndsAtTheMarkInTheFirstEntry) {
    files.put(kSelection, 1, kEnd + entry(1, 1));
    EXPECT_EQ(Selection::count(), 0U);
}

TEST_F(SelectionTest, TwentyEntriesGoOnInTheNextRecord) {
    std::string full;
    for (int i = 1; i <= 20; ++i) {
        full += entry(1, i);
    }
    files.put(kSelection, 1, full);
    files.put(kSelection, 2, entry(2, 21) + kEnd);
    Selection selection;
    for (int i = 1; i <= 20; ++i) {
        EXPECT_EQ(selection.next()->employee_record, i);
    }
    const auto last = selection.next();
    ASSERT_TRUE(last);
    EXPECT_EQ(last->company, 2);
    EXPECT_EQ(last->employee_record, 21);
    EXPECT_FALSE(selection.next());
}

TEST_F(SelectionTest, AMissingNextRecordEndsIt) {
    std::string full;
    for (int i = 1; i <= 20; ++i) {
        full += entry(1, i);
    }
    files.put(kSelection, 1, full);
    EXPECT_EQ(Selection::count(), 20U);
}

}  // namespace
}  // namespace ModSWCALM
