#include "calc/seniority.h"
