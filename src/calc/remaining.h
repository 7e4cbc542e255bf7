#pragma once
// Late calculations of the slip: clearing, employer percentages, severance-fund relief.

namespace ModSWCALM {

/// The employer's contribution percentage of the employee.
struct EmployerPercentages {
    double PCTDATORE = 0;   ///< for the incentives and exemptions
    double PCTDATORE2 = 0;  ///< for the limit of P326
};
extern EmployerPercentages employer_percentages;

/// Blanks the texts of the record that hold only zeros: fields added to the record over the years
/// were filled with zeros when it grew.
void clear_all_zero_texts();
void first_blanking_list();
void second_blanking_list();

void employer_percentage();
void second_employer_percentage();
void severance_fund_relief();

/// After the month of the leaving (P017): clears or settles the further deduction's instalments
/// (QA05 to QA11) of an employee whose fund has been paid (Q055).
void year_end_clearing();

}  // namespace ModSWCALM
