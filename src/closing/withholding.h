#pragma once
// Tax of the month: what separate taxation adds to it, its taxable amount and what is withheld.

#include "records/descriptor.h"

namespace ModSwCalm2 {

/// An amount under separate taxation (P244, P245): its contributions off, then its tax as twelve
/// such amounts, into P257. Months and deductions are not counted here. On an adjusting slip the
/// year's tax covers it.
void separate_taxation(const MXREPOSITORY::Descriptor& field);

/// P256 from the wage to the taxable amount of the month, contributions off; never below 0.
void taxable_of_the_month();

/// The month's tax into Q137, P258 and P259; nothing where the year's tax is settled at once.
void tax_of_the_month();

}  // namespace ModSwCalm2
