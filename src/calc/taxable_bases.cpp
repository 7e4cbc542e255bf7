#include "calc/taxable_bases.h"
