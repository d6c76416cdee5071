#pragma once

namespace tlm::test {

// Keeps the addresses handed back to operator delete while watching, so that a test can tell that a
// heap record whose ownership travelled with a message was freed by its receiver. The test binary
// replaces the global operator new and delete for this (FreedBlockWatch.cpp); nothing else changes.
void StartWatchingFrees();
void StopWatchingFrees();
// True when `address` was freed since the watch started.
bool WasFreed(const void* address);

} // namespace tlm::test
