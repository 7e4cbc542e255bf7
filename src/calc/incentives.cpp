#include "calc/incentives.h"
