#include "nzutil/municipalities.h"

#include <gtest/gtest.h>

#include "installation/tool_error.h"
#include "tests/support/temp_directory.h"

namespace {

class MunicipalitiesCsv : public ::testing::Test {
  protected:
    /// What the tool says of a file; empty where it takes it.
    std::string refusal(const std::string& text) {
        directory.write("comuni.csv", text);
        try {
            (void)nzutil::read_municipalities(directory.file("comuni.csv"));
        } catch (const nzutil::ToolError& error) {
            return error.what();
        }
        return {};
    }
    test_support::TempDirectory directory;
};

TEST_F(MunicipalitiesCsv, ARateWithoutItsLimitIsRefused) {
    EXPECT_NE(refusal("CHIAVE;aliquota\nH501;0.9\n").find(":2: aliquota"), std::string::npos);
    EXPECT_NE(refusal("CHIAVE;FASCIA;aliquota;FASCIA_2;aliquota_2\nH501;15000;0.5;;0.7\n")
                  .find(":2: aliquota_2"),
              std::string::npos);
    EXPECT_EQ(refusal("CHIAVE;FASCIA;aliquota\nH501;999999.99;0.9\n"), "");
    EXPECT_EQ(refusal("CHIAVE;FASCIA;aliquota;TIPOCALCOLO\nH501;;0;**\n"), "");
}

TEST_F(MunicipalitiesCsv, LimitsThatDoNotRiseOrLeaveAGapAreRefused) {
    const std::string header = "CHIAVE;FASCIA;aliquota;FASCIA_2;aliquota_2;FASCIA_3;aliquota_3\n";
    EXPECT_NE(refusal(header + "H501;15000;0.5;15000;0.7;;\n").find(":2: FASCIA_2"),
              std::string::npos);
    EXPECT_NE(refusal(header + "H501;15000;0.5;28000;0.7;20000;0.8\n").find(":2: FASCIA_3"),
              std::string::npos);
    EXPECT_NE(refusal(header + "H501;15000;0.5;;;28000;0.8\n").find(":2: FASCIA_3"),
              std::string::npos);
    EXPECT_EQ(refusal(header + "H501;15000;0.5;15000.01;0.7;28000;0.8\n"), "");
}

}  // namespace
