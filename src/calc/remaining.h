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

/// PCTDATORE by insurance (P040), class and group; 0 where none is listed, never negative.
void employer_percentage();
/// PCTDATORE2: the same, halved for the codes 55 and 82 (P537).
void second_employer_percentage();
/// Relief of the employer's contributions on what of the month's severance pay stays in the
/// company: P748, or P604 to P606 and P749; Q687, Q690, Q744 to date. D.L. 203/2005, art. 8
void severance_fund_relief();

/// After the month of the leaving (P017): clears or settles the further deduction's instalments
/// (QA05 to QA11) of an employee whose fund has been paid (Q055).
void year_end_clearing();

}  // namespace ModSWCALM
