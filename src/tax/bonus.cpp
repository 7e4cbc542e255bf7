#include "tax/bonus.h"
