#include "closing/contributions.h"
