// Opening what lies beneath a folder and nothing else: a path that leads out, through "..", a slash or a
// symbolic link, fails.
#pragma once

namespace camera {

// A descriptor, -1 with errno. flags are those of open(2), without any that create.
int openBeneath(int folder, const char* path, int flags);

// The same step by step, for kernels that cannot do it in one.
int walkBeneath(int folder, const char* path, int flags);

}  // namespace camera
