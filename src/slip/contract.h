#pragma once
// The pay scale of the employee's collective agreement.

namespace ModSWCALM {

/// Copies the agreement's pay scale (file 71, record P331, grade P332) into the employee's record
/// copy (slip.record_copy), with dated rises, reduced contracts, seniority and conversion.
void PASSQUAL();

}  // namespace ModSWCALM
