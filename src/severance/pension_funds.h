#pragma once
// Supplementary pension funds (D.Lgs. 252/2005). The fund of an employee is the record of logical
// file 403 whose number is P401; it says what he, his employer and his severance accrual pay in.
//
//   wage        P260, the severance wage of the slip; Q037 is that of the year before it
//   employee    R004 and his own P402, percent of the wage; P450 beside it, in euro
//   employer    R003 percent, into P407 and Q314
//   accrual     R005 percent of what the slip accrues, into Q201 and Q236
//   one band    R007: wage of the year up to which the percentages are due
//   two bands   R054 and R056: wages of the year at which the first and the second band end
//               (employee R057 and R059, employer R058 and R055); one of them alone ends the first

#include <vector>

namespace ModSwCalm2 {

// ---- The run ----

/// Funds that the run has met, for INCREMENTAMESIFP.
struct FundsOfRun {
    bool file_exists = false;
    std::vector<double> codes;  ///< record numbers, each once
    std::size_t counted = 0;    ///< how many of them have had their month counted
};
extern FundsOfRun funds_of_run;

/// Opens the funds, where the installation has them, with an empty list of those met.
void INIZIALIZZAFP();

/// Reads the fund of the employee (P401; not with P187 1) into FOPX$ and takes it into the list of
/// the run; tells the operator of one that is not in the archive.
void AZZERACONTRIBUTOFP(int month);

/// A run that was killed has counted the months of the funds met so far.
void months_of_funds_are_counted();

/// Adds 1 to the months (R052) of each fund that the list has taken since the last call.
void INCREMENTAMESIFP();

// ---- The slip ----

/// Contributions of the month to the employee's fund: his own into Q224, his employer's into P407
/// and Q314, the severance accrual's into Q201 and Q236. Nothing on a slip of adjustment only.
void FONDOPENSIONE();

/// The whole accrual of the slip to a fund under the yearly ceiling of the wage (Q170); R052 is the
/// month from which a year counts for it. Members with P184, and FONDOPENSIONE leaves their accrual
/// alone then.
void FONDOPREV();

/// Contributions of the year above what may be deducted (F420; TUIR, art. 10, c. 1, e-bis) join the
/// taxable: P794, Q804, P256. The months before are those of the rows J363 and J563.
void DEDUCIBILITA_CTR_FP();

}  // namespace ModSwCalm2
