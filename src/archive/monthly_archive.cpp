#include "archive/monthly_archive.h"
