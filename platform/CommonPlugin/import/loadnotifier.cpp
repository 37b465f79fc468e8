#include "loadnotifier.h"
