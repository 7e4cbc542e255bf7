#include "run/utilities.h"
