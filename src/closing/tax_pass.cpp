#include "closing/tax_pass.h"
