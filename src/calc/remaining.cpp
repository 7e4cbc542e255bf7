#include "calc/remaining.h"
