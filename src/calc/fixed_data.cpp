#include "calc/fixed_data.h"
