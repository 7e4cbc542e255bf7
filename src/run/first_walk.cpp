#include "run/first_walk.h"
