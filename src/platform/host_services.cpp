#include "platform/host_services.h"
