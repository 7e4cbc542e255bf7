#include "severance/pension_funds.h"
