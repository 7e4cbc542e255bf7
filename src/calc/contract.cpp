#include "calc/contract.h"
