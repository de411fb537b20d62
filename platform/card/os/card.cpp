// The SD card, mounted by the system.
#include "platform/card/card.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <string>
#include <utility>

#include "platform/card/beneath.h"

namespace camera {
namespace {

class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;

  int number() const { return number_; }
  int release() { return std::exchange(number_, -1); }

 private:
  int number_;
};

// All that is no failure of the card means that there is nothing.
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

// A descriptor of what lies there, -1 with errno.
int openInside(const ProductFolder& product, std::string_view path, int flags) {
  const std::string model{product.model};
  const bool isTooLong = product.card.size() + model.size() + path.size() >= PATH_MAX;
  if (!isFolderName(model) || path.find('\0') != path.npos || isTooLong) {
    errno = ENOENT;
    return -1;
  }
  const Descriptor card(open(std::string{product.card}.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (card.number() < 0) return -1;
  const Descriptor folder(openBeneath(card.number(), model.c_str(), O_PATH | O_DIRECTORY));
  if (folder.number() < 0) return -1;
  while (path.starts_with('/')) path.remove_prefix(1);
  return openBeneath(folder.number(), path.empty() ? "." : std::string{path}.c_str(), flags);
}

EntryKind kindOf(mode_t mode) {
  return S_ISDIR(mode) ? EntryKind::kFolder : S_ISREG(mode) ? EntryKind::kFile : EntryKind::kOther;
}

EntryKind kindOf(const dirent& entry) {
  return entry.d_type == DT_UNKNOWN ? EntryKind::kUnknown : kindOf(static_cast<mode_t>(DTTOIF(entry.d_type)));
}

// Hands the entries of a folder of that folder to take(name, kind). 0 or an errno value.
template <class Take>
int forEachEntry(int folder, const char* name, Take take) {
  Descriptor descriptor(openat(folder, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
  DIR* stream = descriptor.number() < 0 ? nullptr : fdopendir(descriptor.number());
  if (stream == nullptr) return errno;
  descriptor.release();
  for (;;) {
    errno = 0;  // readdir leaves it alone at the end of the folder
    const dirent* entry = readdir(stream);
    if (entry == nullptr) break;
    const std::string_view found = entry->d_name;
    if (found != "." && found != "..") take(found, kindOf(*entry));
  }
  const int error = errno;
  closedir(stream);
  return error;
}

}  // namespace

CardFolder::~CardFolder() {
  if (descriptor_ >= 0) close(descriptor_);
}

int CardFolder::open(const ProductFolder& product, std::string_view path) {
  descriptor_ = openInside(product, path, O_RDONLY | O_DIRECTORY);
  return descriptor_ < 0 ? errorOf(errno) : 0;
}

int CardFolder::list(NameFilter wanted, NameList* names) const {
  const auto take = [&](std::string_view name, EntryKind kind) {
    if (wanted(name)) names->add(name, kind);
  };
  return errorOf(forEachEntry(descriptor_, ".", take));
}

int CardFolder::examine(const char* name, EntryKind* kind, std::int64_t* number) const {
  *number = 0;
  if (*kind == EntryKind::kFile || *kind == EntryKind::kUnknown) {
    struct stat found {};
    const bool isThere = fstatat(descriptor_, name, &found, AT_SYMLINK_NOFOLLOW) == 0;
    if (*kind == EntryKind::kUnknown) *kind = isThere ? kindOf(found.st_mode) : EntryKind::kOther;
    if (isThere && S_ISREG(found.st_mode)) *number = found.st_size;
  }
  if (*kind != EntryKind::kFolder) return 0;
  std::int64_t count = 0;
  const int error = forEachEntry(descriptor_, name, [&](std::string_view entry, EntryKind /*kind*/) {
    if (isVisible(entry)) ++count;
  });
  if (error == 0) *number = count;
  return error == ENOMEM ? error : 0;
}

int findEntry(const ProductFolder& product, std::string_view path, EntryKind* kind) {
  const Descriptor entry(openInside(product, path, O_PATH));
  struct stat found {};
  if (entry.number() < 0 || fstat(entry.number(), &found) != 0) return errorOf(errno);
  *kind = kindOf(found.st_mode);
  return 0;
}

bool canReadFile(const ProductFolder& product, std::string_view path) {
  return Descriptor(openInside(product, path, O_RDONLY | O_NONBLOCK)).number() >= 0;
}

int removeFile(const ProductFolder& product, std::string_view path) {
  const std::size_t slash = path.rfind('/');
  const std::string_view folder = slash == path.npos ? std::string_view{} : path.substr(0, slash);
  const std::string name{slash == path.npos ? path : path.substr(slash + 1)};
  const Descriptor parent(openInside(product, folder, O_PATH | O_DIRECTORY));
  if (parent.number() < 0) return errorOf(errno);
  return unlinkat(parent.number(), name.c_str(), 0) == 0 ? 0 : errno;
}

}  // namespace camera
