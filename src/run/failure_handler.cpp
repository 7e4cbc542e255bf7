#include "run/failure_handler.h"
