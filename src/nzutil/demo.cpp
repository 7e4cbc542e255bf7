#include "platform/failure.h"
