#include "tax/income_tax.h"
