#include "run/messages.h"
