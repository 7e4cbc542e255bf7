#include "history/quadri.h"
