#include "calc/dated_defaults.h"

#include <array>

#include "files/file_numbers.h"
#include "files/logical_files.h"
#include "files/recovery_slot.h"
#include "records/dictionary/FISX.h"
#include "records/fields.h"

namespace ModSWCALM {

using namespace MXREPOSITORY;
using namespace MXLIBRERIA;
using namespace MXLIBRERIA::file_numbers;

namespace {

constexpr int kFirstMonth = 0;
constexpr int kLastMonth = 999999;

using Test = DatedDefault::Test;

constexpr std::array kDatedDefaults{
    DatedDefault{F433, Test::equals, 0, kFirstMonth, kLastMonth, 530},
    DatedDefault{F434, Test::equals, 0, kFirstMonth, kLastMonth, 630},
    // F436, the year's bonus: 80 euro for the eight months from May 2014 (D.L. 66/2014, art. 1).
    DatedDefault{F436, Test::equals, 0, 201401, 201412, 640},
    // From 2015 for twelve months (L. 190/2014, art. 1, commi 12-15).
    DatedDefault{F436, Test::equals, 640, 201501, 201512, 960},
    // From 1 July 2020 the integrative treatment: 600 for the half year (D.L. 3/2020, art. 1) ...
    DatedDefault{F436, Test::differs, 600, 202007, 202012, 600},
    // ... while January to June 2020 keep the bonus of before.
    DatedDefault{F436, Test::differs, 960, 202001, 202006, 960},
    // 1200 from 2021 (D.L. 3/2020, art. 1).
    DatedDefault{F436, Test::differs, 1200, 202101, kLastMonth, 1200},
    // F021, the price index of December 2015, which ISTAT published on the new base 2015 = 100.
    DatedDefault{F021, Test::differs, 99.9, 201607, 201612, 99.9},
};

void rewrite_fixed_data() {
    write_whole_record(kFixedData, 1, area(Area::FISX));
    LEGGIREC(kFixedData, 1);
    area(Area::FISX) = record_buffer(kFixedData);
}

}  // namespace

std::span<const DatedDefault> dated_defaults() {
    return kDatedDefaults;
}

void apply_dated_defaults(int yyyymm) {
    for (const DatedDefault& rule : kDatedDefaults) {
        if (rule.applies(yyyymm, num(rule.field))) {
            scrivi(rule.field, rule.value);
            rewrite_fixed_data();
        }
    }
}

}  // namespace ModSWCALM
