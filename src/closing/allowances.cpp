#include "closing/allowances.h"
