// The SD card, mounted by the system.
#include "platform/card/card.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string>

#include "platform/card/beneath.h"
#include "platform/descriptor.h"
#include "platform/log.h"
#include "platform/shell.h"
#include "platform/text.h"

namespace camera {
namespace {

// A path counts as missing if it leads outside or access is denied. Other errors are failures of the card.
int errorOf(int error) {
  switch (error) {
    case EACCES:
    case ELOOP:
    case ENAMETOOLONG:
    case ENOTDIR:
    case EXDEV:
      return ENOENT;
    default:
      return error;
  }
}

// Returns no descriptor, with errno set, on failure.
Descriptor openInside(const ProductFolder& product, std::string_view path, int flags) {
  const std::string model{product.model};
  const bool isTooLong = product.card.size() + model.size() + path.size() >= PATH_MAX;
  if (!isFolderName(model) || path.find('\0') != path.npos || isTooLong) {
    errno = ENOENT;
    return Descriptor();
  }
  const Descriptor card(open(std::string{product.card}.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!card.isOpen()) return Descriptor();
  const Descriptor folder = openBeneath(card.number(), model.c_str(), O_PATH | O_DIRECTORY);
  if (!folder.isOpen()) return Descriptor();
  while (path.starts_with('/')) path.remove_prefix(1);
  return openBeneath(folder.number(), path.empty() ? "." : std::string{path}.c_str(), flags);
}

// Opens the folder of an entry, and sets the entry's name in it.
Descriptor openParent(const ProductFolder& product, std::string_view path, std::string* name) {
  const std::size_t slash = path.rfind('/');
  *name = slash == path.npos ? path : path.substr(slash + 1);
  return openInside(product, slash == path.npos ? std::string_view{} : path.substr(0, slash),
                    O_PATH | O_DIRECTORY);
}

EntryKind kindOf(mode_t mode) {
  return S_ISDIR(mode) ? EntryKind::kFolder : S_ISREG(mode) ? EntryKind::kFile : EntryKind::kOther;
}

EntryKind kindOf(const dirent& entry) {
  return entry.d_type == DT_UNKNOWN ? EntryKind::kUnknown : kindOf(static_cast<mode_t>(DTTOIF(entry.d_type)));
}

// Calls take for each entry of the folder of that name, also for "." and "..". Returns 0 or an errno value.
template <class Take>
int forEachEntry(int folder, const char* name, Take take) {
  Descriptor descriptor(openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  DIR* stream = descriptor.isOpen() ? fdopendir(descriptor.number()) : nullptr;
  if (stream == nullptr) return errno;
  descriptor.release();  // the stream owns it
  for (;;) {
    errno = 0;  // at the end of the folder, readdir does not change it
    const dirent* entry = readdir(stream);
    if (entry == nullptr) break;
    take(*entry);
  }
  const int error = errno;
  closedir(stream);
  return error;
}

}  // namespace

int CardFolder::open(const ProductFolder& product, std::string_view path) {
  descriptor_ = openInside(product, path, O_RDONLY | O_DIRECTORY);
  return descriptor_.isOpen() ? 0 : errorOf(errno);
}

int CardFolder::list(NameFilter wanted, NameList* names) const {
  const auto take = [&](const dirent& entry) {
    const std::string_view name = entry.d_name;
    if (name != "." && name != ".." && wanted(name)) names->add(name, kindOf(entry));
  };
  return errorOf(forEachEntry(descriptor_.number(), ".", take));
}

int CardFolder::examine(const char* name, EntryKind* kind, std::int64_t* number) const {
  *number = 0;
  if (*kind == EntryKind::kFile || *kind == EntryKind::kUnknown) {
    struct stat found {};
    const bool isThere = fstatat(descriptor_.number(), name, &found, AT_SYMLINK_NOFOLLOW) == 0;
    if (*kind == EntryKind::kUnknown) *kind = isThere ? kindOf(found.st_mode) : EntryKind::kOther;
    if (isThere && S_ISREG(found.st_mode)) *number = found.st_size;
  }
  if (*kind != EntryKind::kFolder) return 0;
  std::int64_t count = 0;
  const int error = forEachEntry(descriptor_.number(), name, [&](const dirent& entry) {
    if (*entry.d_name != '.') ++count;  // as isVisible, but without counting the characters
  });
  if (error == 0) *number = count;
  return error == ENOMEM ? error : 0;
}

int findEntry(const ProductFolder& product, std::string_view path, EntryKind* kind) {
  const Descriptor entry = openInside(product, path, O_PATH);
  struct stat found {};
  if (!entry.isOpen() || fstat(entry.number(), &found) != 0) return errorOf(errno);
  *kind = kindOf(found.st_mode);
  return 0;
}

bool canReadFile(const ProductFolder& product, std::string_view path) {
  return openInside(product, path, O_RDONLY | O_NONBLOCK).isOpen();
}

int removeFile(const ProductFolder& product, std::string_view path) {
  std::string name;
  const Descriptor parent = openParent(product, path, &name);
  if (!parent.isOpen()) return errorOf(errno);
  return unlinkat(parent.number(), name.c_str(), 0) == 0 ? 0 : errno;
}

// A path from the root would be resolved again, through links that have taken a folder's place meanwhile.
int removeFolder(const ProductFolder& product, std::string_view path) {
  std::string name;
  const Descriptor parent = openParent(product, path, &name);
  if (!parent.isOpen() || fchdir(parent.number()) != 0) return errorOf(errno);
  return runShell(joined({"rm -rf './", shellQuoted(name), "'"}).c_str()) == 0 ? 0 : EIO;
}

void awaitMount() {
  sleep(1);
}

void makeCardFolder(const std::string& path) {
  if (mkdir(path.c_str(), 0777) != 0 && errno != EEXIST) logDebug(joined({path, ": ", errorText(errno)}));
}

}  // namespace camera
