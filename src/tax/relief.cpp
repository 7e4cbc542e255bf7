#include "tax/relief.h"
