#include "run/trace.h"
