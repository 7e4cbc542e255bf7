#include "run/period.h"
