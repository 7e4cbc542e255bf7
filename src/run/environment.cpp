#include "run/environment.h"
