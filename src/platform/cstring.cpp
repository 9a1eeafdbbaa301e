#include "platform/cstring.h"
