#include "closing/closing.h"
