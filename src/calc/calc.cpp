#include "calc/calc.h"
