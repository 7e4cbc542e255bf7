#pragma once
// The slip under calculation: the state that the calculation, the closing, the taxes and the
// archives share. Amounts in euro as doubles unless a comment says otherwise.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ModSWCALM {

/// Tax brackets: cells 1 to 20 the first table, 21 to 40 the alternate one, limit then percent.
/// A cell outside is failure 9.
struct BracketTable {
    std::array<double, 41> cells{};
    [[nodiscard]] double at(double index) const;
    void set(double index, double value);
};

/// The bracket files as the run has read them: a file may end before its tenth row.
struct LoadedBrackets {
    BracketTable table;
    int rows = 0;            ///< of cells 1 to 20
    int alternate_rows = 0;  ///< of cells 21 to 40
};

/// A line of the treasury fund's control list: an employee who left, with what the month's
/// contributions can bear.
struct TreasuryRow {
    std::string company;       ///< number and name, for the company's total
    std::string employee;      ///< code and name
    double contributions = 0;  ///< contributions of the month with CF01
    double benefit = 0;        ///< severance pay to recover from the treasury fund
    double cf01 = 0;           ///< contribution of the month to the treasury fund
};

/// What lives as long as the run.
struct RunTables {
    std::optional<LoadedBrackets> brackets;  ///< read once, copied for each employee
    std::array<double, 57> TABFISSO{};       ///< fixed data, 1 to 56
    double F197 = 0;
    double F199 = 0;
    double F162 = 0;
    double F152 = 0;
    double F041 = 0;
    double F153 = 0;
    double family_income_limit = 0;           ///< F084, or F408 by the letter P158
    double days_of_year = 366;                ///< 365 when F169 = 1
    double revaluation = 0;                   ///< revaluation percentage of the run (from F021)
    double revaluation2 = 0;                  ///< F022
    double agreement_number = 0;              ///< positions 35-40 of the installation record
    std::array<std::string, 51> PARAMETRI;    ///< regional table, 1 to 50
    std::array<std::string, 1000> list_1000;  ///< control list of the municipal surtax
    double list_1000_count = 0;
    std::vector<std::string> list_9999 =
        std::vector<std::string>(10000);  ///< collaborators' ceiling
    double list_9999_count = 0;
    std::vector<std::string> list_999 = std::vector<std::string>(1000);  ///< integrative sum
    double list_999_count = 0;
    std::vector<std::string> bonus_list;
    std::vector<TreasuryRow> treasury_rows;  ///< employees who left, company by company
};
extern RunTables run_tables;

/// What lives as long as the company is loaded.
struct CompanyState {
    double DITTACORRENTE = -1;  ///< company now loaded, -1 when none
    double DIVISOREANNO = 0;    ///< T291
};
extern CompanyState company;

/// What belongs to the employee; put back to the defaults when the slip opens.
struct Slip {
    bool CEDOLINOFINALE = false;  ///< closes the year or the employment
    double employee_record = 0;   ///< record number in file 2
    std::string record_copy;      ///< copy of the employee record, on which PASSQUAL works
    BracketTable TABIRP;
    BracketTable TABIRPAC;
    std::array<double, 11> PCTCONTR{};  ///< contribution percentages, 1 to 10
    std::string GIORNIMESE = "31312831303130313130313031";

    // Divisors and hourly values
    double DIVISOREORE = 173;
    double DIVISOREGG = 26;
    double PAGAORARIA = 0;            ///< sum of the pay elements
    double ELEMENTINONBASE = 0;       ///< elements kept apart from the base
    double QUOTABASE = 1;             ///< share of the pay that carries the base elements
    double GGLAVORABILI = 0;          ///< days of the month for this employee
    double severance_divisor = 13.5;  ///< yearly monthly payments for the fund; P467 replaces it
    std::string reference_values;     ///< four reference values of 10 characters, for the closing
    bool month_counted = false;       ///< the leaver scan counted the month

    // Slip lines: pieces 2 to 5 of 25 lines of 35 characters
    std::array<std::string, 4> RIGHECEDOLINO;
    int piece = 2;
    int position = 1;
    bool last_line = false;                      ///< the next line's code is 999
    double IMPORTOVOCE = 0;                      ///< amount of the line under evaluation
    std::string note_item;                       ///< code of the last item of kind "note only"
    std::array<double, 11> totals_Z021{};        ///< the three totals, 1 to 3
    std::array<double, 11> severance_buckets{};  ///< buckets 1 to 5 (Z045), eighth, ninth total
    double carried_amount = 0;                   ///< amount kept by the year-end carry
    bool carry_opened = false;                   ///< Q359 has been formed on this slip

    // Taxable bases
    double TOTCOMPETENZE = 0;
    double TOTTRATTENUTE = 0;
    double IMPFISCALE = 0;
    double IMPSOCIALE1 = 0;
    double IMPSOCIALE2 = 0;
    double IMPSOCIALE3 = 0;
    double IMPMINIMALE = 0;
    double ESENTEA = 0;
    double ESENTEB = 0;
    double FRANCHIGIALINEA = 0;
    double wage_in_cents = 0;  ///< the wage of the lines behind P240, before its rounding
    double wage_of_lines = 0;  ///< P240 as the lines left it
    double minimum_base = 0;   ///< minimum contribution base of the month
    double rounded_base = 0;   ///< the kept, rounded value of P240 when F041 = 1
    double travel_excess = 0;
    bool class8_seen = false;  ///< an item of fiscal class 8 was on the slip
    bool ceiling_flag =
        false;  ///< ceiling test at the opening: class-6 items go to the totals below
    /// Items of fiscal class 6 and 9: 1 ordinary pay told as premium, inside 2; 2 premiums that
    /// leave ordinary tax; 3 premiums that stay in it; 4 tips
    std::array<double, 5> ceiling_totals{};
    double RETRIBUZIONEDIFF = 0;  ///< January difference, ends in Q780 or Q781

    // Flags and values kept across phases
    bool calendar_days = false;      ///< T180 = 1
    bool same_month_repeat = false;  ///< Q179 lies in the period's month (entertainers)
    bool exemption_over = false;     ///< the exemption of P916 has ended
    std::array<std::string, 10> regional_columns;  ///< limits and rates of the employee's region
    bool suspended_tax_joined = false;             ///< the adjustment took Q801 into Q014
    bool ordinary_worker = false;                  ///< P168 = 0: no worker in entertainment
    double former_Q173 = 0;                        ///< net of the earlier slip
    double former_Q110 = 0;                        ///< premiums to date before the slip's lines
    double former_P268 = 0;                ///< P268 as the earlier slip of the month left it
    double sector_rate = 0;                ///< S004, reduced
    std::string former_P563;               ///< employee's former code, as the record brought it
    bool earlier_slip_this_month = false;  ///< Q179 came with a date of the period's month
    double month_days_previous = 0;        ///< P215 and P216 of the previous slip, joined
    double base_value = 0;                 ///< base for the closing (P213)

    /// A dependant has a share and no tax code: the slip is dropped.
    bool dependant_without_tax_code = false;

    // Lines and bases: what the walk of the lines leaves for later
    double line_mode = 0;         ///< mode that the preparation of the item area gives each line
                                  ///< (Z154); 0: the item's formula rules
    double minimum_test = 0;      ///< IMPMINIMALE, or the base of 25 days, in whole euro
    double hourly_minimum = 0;    ///< minimum of a part-timer's hours
    double items_59_60_74 = 0;    ///< wage of the lines 59, 60 and 74
    double thirteenth_wage = 0;   ///< wage of the lines of the thirteenth month
    double fourteenth_wage = 0;   ///< the same of the fourteenth
    double extra_month_wage = 0;  ///< both together
    double former_PB25 = 0;       ///< month of the one-off of 2022, as the record brought it
};
extern Slip slip;

/// Ends the run through FINEPROG from this floor, which does not know it: the walk of the selection
/// catches it. The one place where a lower floor starts the end of the run.
struct EndRun {};

/// The process-wide skip flag: -1 drops this employee's slip.
extern std::int16_t ABORTODIP;

/// Is the loaded company (T013) the customer of this tax code?
[[nodiscard]] bool company_is(std::string_view tax_code);

/// Hours divisor of the company by P047 (T063 ... T660), replaced by P891 when not 0; may be 0.
[[nodiscard]] double hours_divisor();
/// Days divisor of the company by P048 (T059 ... T622); may be 0.
[[nodiscard]] double days_divisor();

/// Length of month m (0: December before) from GIORNIMESE.
[[nodiscard]] int month_length(int month);

}  // namespace ModSWCALM
