#include "severance/advances.h"
