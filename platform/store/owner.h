// The settings folder's owner, as whom the store is used.
#pragma once

namespace camera {

// Makes this process, if root runs it, act as the owner of the folder from now on, so that the web server can
// read and replace what the process stores. Nothing happens if root owns the folder or there is none.
void actAsOwner(const char* folder);

}  // namespace camera
