// Opening only what lies beneath a folder: a path that leads out, or through a symbolic link, fails.
#pragma once

#include "platform/descriptor.h"

namespace camera {

// None, with errno, on failure. flags are those of open(2), without any that create.
Descriptor openBeneath(int folder, const char* path, int flags);

// The same step by step, for kernels that cannot do it in one call.
Descriptor walkBeneath(int folder, const char* path, int flags);

}  // namespace camera
