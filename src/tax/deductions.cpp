#include "tax/deductions.h"
