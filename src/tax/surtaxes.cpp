#include "tax/surtaxes.h"
