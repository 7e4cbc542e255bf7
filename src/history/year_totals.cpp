#include "history/year_totals.h"
