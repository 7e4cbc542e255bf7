#include "records/formula.h"
