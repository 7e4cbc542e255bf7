#include "run/main_run.h"
