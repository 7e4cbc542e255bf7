#include "records/named_access.h"
