// Opens only what lies beneath a folder. A path that leads outside or through a symbolic link is an error.
#pragma once

#include "platform/descriptor.h"

namespace camera {

// Returns no descriptor, with errno set, on failure. flags are those of open(2), without any that create.
Descriptor openBeneath(int folder, const char* path, int flags);

// The same step by step, for kernels that cannot do it in one call.
Descriptor walkBeneath(int folder, const char* path, int flags);

}  // namespace camera
