#include "files/isam.h"
