// Removes what a killed process left of a replacement of the settings store's folder.
#include <dirent.h>
#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

#include "platform/store/store_files.h"
#include "platform/text.h"

namespace camera {

// One name, so that the next process finds it.
std::string PosixStoreFiles::newFolder() const {
  return joined({std::string_view(folder_).substr(0, folder_.size() - 1), ".new/"});
}

void PosixStoreFiles::removeNewFolder() const {
  const std::string folder = newFolder();
  if (DIR* names = opendir(folder.c_str()); names != nullptr) {
    while (const dirent* entry = readdir(names)) unlinkat(dirfd(names), entry->d_name, 0);
    closedir(names);
  }
  rmdir(folder.c_str());
}

// After a power failure, the folder is then not in the place of the one whose files are removed.
void PosixStoreFiles::removeLeftovers() const {
  if (rmdir(newFolder().c_str()) != 0 && errno == ENOTEMPTY && syncParent() == 0) removeNewFolder();
}

int PosixStoreFiles::syncParent() const {
  const Descriptor parent(::open((folder_ + "..").c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  return parent.isOpen() && fsync(parent.number()) == 0 ? 0 : errno;
}

}  // namespace camera
