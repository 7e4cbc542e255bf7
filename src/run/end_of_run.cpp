#include "run/end_of_run.h"
