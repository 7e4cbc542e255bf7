#include "severance/tfr.h"
