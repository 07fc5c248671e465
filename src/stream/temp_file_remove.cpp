// Robust removal of temporary files: a file is deleted only when no other process holds a lock
// on it, and a busy file is retried a few times before giving up.
#include <atomic>
#include <cerrno>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "stream/temp_file_internal.h"

namespace ZtCommonNS {

namespace {
constexpr int kRemoveAttempts = 10;
std::atomic<long long> retryDelayMs{1000};

// True when this process can take a write lock on the first byte, that is when no other process
// holds a conflicting lock. The lock is dropped again at once. Sets errno on failure.
bool lockTestPasses(int fd) {
    struct flock lock {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = 0;
    lock.l_len = 1;
    if (fcntl(fd, F_SETLK, &lock) != 0)
        return false;
    lock.l_type = F_UNLCK;
    fcntl(fd, F_SETLK, &lock);
    return true;
}
} // namespace

void setTempFileRetryDelay(std::chrono::milliseconds delay) {
    retryDelayMs.store(delay.count());
}

std::chrono::milliseconds getTempFileRetryDelay() {
    return std::chrono::milliseconds(retryDelayMs.load());
}

int removeTempFilePath(const std::string& path) {
    struct stat info {};
    if (lstat(path.c_str(), &info) != 0 && errno == ENOENT)
        return 0;
    int error = 0;
    for (int attempt = 0; attempt < kRemoveAttempts; ++attempt) {
        if (attempt > 0)
            std::this_thread::sleep_for(getTempFileRetryDelay());
        // Non-blocking so that a FIFO left behind cannot stall the removal.
        const int fd = open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
        if (fd < 0) {
            error = errno;
            if (error == ENOENT)
                return 0;
            continue;
        }
        const bool free = lockTestPasses(fd);
        if (!free)
            error = errno;
        close(fd);
        if (!free)
            continue;
        if (unlink(path.c_str()) == 0)
            return 0;
        error = errno;
        if (error == ENOENT)
            return 0;
    }
    return error;
}

} // namespace ZtCommonNS
