// Safe file writing on POSIX systems: temporary file, fsync, permissions and owner of the old
// file, rename; a write in place after a backup copy where the folder takes no new file.
#include "files/safe_write.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <fstream>

namespace velmar {
namespace fs = std::filesystem;

namespace {

std::string Quoted(const fs::path& p) { return "\"" + p.string() + "\""; }

// The file a path finally names, following symbolic links (also dangling ones, whose target
// is then created). A loop of links is an error.
bool FinalTarget(const fs::path& path, fs::path& target) {
  target = path;
  std::error_code ec;
  for (int hop = 0; hop < 40; ++hop) {
    if (!fs::is_symlink(fs::symlink_status(target, ec))) return true;
    const fs::path next = fs::read_symlink(target, ec);
    if (ec) return false;
    target = next.is_absolute() ? next : target.parent_path() / next;
  }
  return false;
}

// Why a system call failed, for the user.
std::string Reason(int err) {
  switch (err) {
    case ENOSPC:
    case EDQUOT:
      return "the disk is full";
    case EACCES:
    case EPERM:
      return "permission was denied";
    case EROFS:
      return "the disk is read-only";
    default:
      return std::strerror(err);
  }
}

// Writes all of `bytes` to an open descriptor and flushes it to the disk; errno on failure.
int WriteAll(int fd, std::string_view bytes) {
  size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t n = ::write(fd, bytes.data() + done, bytes.size() - done);
    if (n < 0) {
      if (errno == EINTR) continue;
      return errno;
    }
    done += static_cast<size_t>(n);
  }
  return ::fsync(fd) == 0 ? 0 : errno;
}

bool FolderTakesNewFiles(const fs::path& folder) {
  struct stat st {};
  const fs::path dir = folder.empty() ? fs::path(".") : folder;
  return ::stat(dir.c_str(), &st) == 0 && (st.st_mode & 0222) != 0;
}

// The old file stays; a copy of it is kept where files can always be written, and the file
// is rewritten in place. A failure puts the copy back.
SafeWriteResult WriteInPlace(const fs::path& target, std::string_view bytes) {
  std::error_code ec;
  const fs::path backup =
      fs::temp_directory_path(ec) / (target.filename().string() + ".backup-" + std::to_string(::getpid()));
  if (ec || !fs::copy_file(target, backup, fs::copy_options::overwrite_existing, ec) || ec)
    return {false, "The file " + Quoted(target) +
                       " could not be saved: its folder is read-only and no backup copy could be made."};
  const int fd = ::open(target.c_str(), O_WRONLY | O_TRUNC);
  int err = fd < 0 ? errno : WriteAll(fd, bytes);
  if (fd >= 0 && ::close(fd) != 0 && err == 0) err = errno;
  if (err == 0) {
    fs::remove(backup, ec);
    return {true, {}};
  }
  // Put the old text back from the copy.
  std::ifstream in(backup, std::ios::binary);
  const std::string old((std::istreambuf_iterator<char>(in)), {});
  const int rfd = ::open(target.c_str(), O_WRONLY | O_TRUNC);
  const bool restored = rfd >= 0 && WriteAll(rfd, old) == 0;
  if (rfd >= 0) ::close(rfd);
  if (restored) fs::remove(backup, ec);
  return {false, "The file " + Quoted(target) + " could not be saved (" + Reason(err) + ")." +
                     (restored ? " The old file is unchanged."
                               : " A copy of the old file is kept as " + Quoted(backup) + ".")};
}

}  // namespace

bool IsReadOnlyFile(const fs::path& path) {
  struct stat st {};
  return ::stat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode) && (st.st_mode & 0222) == 0;
}

SafeWriteResult WriteFileSafely(const fs::path& path, std::string_view bytes) {
  fs::path target;
  if (!FinalTarget(path, target))
    return {false, "The file " + Quoted(path) + " is a loop of symbolic links."};
  struct stat old {};
  const bool exists = ::stat(target.c_str(), &old) == 0;
  if (exists && !S_ISREG(old.st_mode)) return {false, Quoted(target) + " is not a file."};
  if (exists && (old.st_mode & 0222) == 0)
    return {false, "The file " + Quoted(target) + " is read-only. Save the project under another name."};

  const fs::path folder = target.parent_path();
  if (!FolderTakesNewFiles(folder)) {
    if (exists && ::access(target.c_str(), W_OK) == 0) return WriteInPlace(target, bytes);
    return {false, "The folder " + Quoted(folder.empty() ? fs::path(".") : folder) + " is read-only."};
  }

  fs::path temp = target;
  temp += ".vxtmp";
  std::error_code ec;
  fs::remove(temp, ec);  // a leftover of an interrupted save
  const int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL, exists ? (old.st_mode & 07777) : 0666);
  if (fd < 0) {
    const int err = errno;
    if (exists && (err == EACCES || err == EROFS || err == EPERM) && ::access(target.c_str(), W_OK) == 0)
      return WriteInPlace(target, bytes);
    return {false, "The file " + Quoted(target) + " could not be saved (" + Reason(err) + ")."};
  }
  int err = WriteAll(fd, bytes);
  if (err == 0 && exists) {
    // The new file takes the old one's permissions and, where the process may, its owner.
    if (::fchmod(fd, old.st_mode & 07777) != 0) err = errno;
    if (::fchown(fd, old.st_uid, old.st_gid) != 0) {
      // Not allowed to give the file away: it stays the writer's own.
    }
  }
  if (::close(fd) != 0 && err == 0) err = errno;
  if (err == 0 && ::rename(temp.c_str(), target.c_str()) != 0) err = errno;
  if (err != 0) {
    fs::remove(temp, ec);
    return {false, "The file " + Quoted(target) + " could not be saved (" + Reason(err) + ")." +
                       (exists ? " The old file is unchanged." : "")};
  }
  // Make the rename itself durable.
  const int dfd = ::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY);
  if (dfd >= 0) {
    ::fsync(dfd);
    ::close(dfd);
  }
  return {true, {}};
}

}  // namespace velmar
