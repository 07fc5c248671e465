// Internal knobs and helpers of the temporary-file code, reachable by the tests.
#pragma once

#include <chrono>
#include <string>

namespace ZtCommonNS {

// The pause between two removal attempts of a locked file (one second unless changed). Tests
// shorten it so that the ten attempts take milliseconds.
void setTempFileRetryDelay(std::chrono::milliseconds delay);
std::chrono::milliseconds getTempFileRetryDelay();

// Removes `path` with the lock test and the retries of ZtTempFile::removeTempFile. Returns 0
// when the file is gone, else the errno value of the last failed attempt.
int removeTempFilePath(const std::string& path);

// The next value of the process-wide name counter (post-increment).
unsigned int nextTempFileCounter();

} // namespace ZtCommonNS
