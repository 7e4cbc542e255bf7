#include "files/logical_files.h"
