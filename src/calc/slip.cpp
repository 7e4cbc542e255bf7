#include "calc/slip.h"
