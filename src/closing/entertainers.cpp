#include "closing/entertainers.h"
