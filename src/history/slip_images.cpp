#include "history/slip_images.h"
