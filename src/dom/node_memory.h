// Memory for tree nodes and their small companions (attribute maps, live lists).
//
// A document tree is made of millions of small objects of a handful of sizes. Each one costing
// its own malloc means a header per object and, worse, fresh 4 KiB pages faulted in one by one.
// This allocator hands out blocks of size classes (multiples of 8 bytes, from 24 up to
// kLargestClass) carved from 2 MiB-aligned chunks that ask for transparent huge pages. Freed
// blocks go to a per-thread free list, so the common case takes no lock and no atomic
// operation; surplus blocks move in batches through a shared depot, so memory freed on one
// thread (nodes may be released by any thread, and may outlive their document) is reused by
// the others.
//
// Memory is kept for reuse and not given back to the system: the footprint of a process is the
// peak of its live nodes. Under AddressSanitizer every block comes from the global operator
// new instead, so that use-after-free and leaks of nodes are reported.
#pragma once

#include <cstddef>

namespace ZtCommonNS::NodeMemory {

// Blocks larger than this come from the global operator new.
inline constexpr std::size_t kLargestClass = 256;

// A block of at least `size` bytes, aligned to 8 (16 for sizes above kLargestClass). Throws
// std::bad_alloc when the system refuses memory.
void* allocate(std::size_t size);
// Gives back a block obtained from allocate(size) with the same size.
void deallocate(void* block, std::size_t size) noexcept;

// The size a request of `size` bytes really occupies (its size class).
std::size_t blockSize(std::size_t size) noexcept;

// Bytes in blocks handed out and not yet given back, counted in size-class bytes. Exact for
// the calling thread's own work plus what threads that ended have done; blocks counted by
// other running threads are included only once they end. For measurements.
long long bytesInUse() noexcept;
// Bytes reserved from the system for blocks so far.
long long bytesReserved() noexcept;
// True when blocks come from chunks (false under the sanitizers).
bool usesChunks() noexcept;

} // namespace ZtCommonNS::NodeMemory
