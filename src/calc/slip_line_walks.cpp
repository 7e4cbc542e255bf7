#include "calc/slip_lines.h"
