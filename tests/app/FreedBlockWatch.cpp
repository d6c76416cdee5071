#include "FreedBlockWatch.h"

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdlib>
#include <new>

namespace tlm::test {

namespace {

// A ring of the latest freed addresses. Deletes run on every thread, so the ring is lock-free and
// allocates nothing; a test looks only a few frees back, far fewer than the ring holds.
constexpr std::size_t RingSize = 1 << 16;

std::atomic<bool> watching{false};
std::atomic<std::size_t> nextSlot{0};
std::array<std::atomic<const void*>, RingSize> freed{};

void Remember(const void* address)
{
    if (address == nullptr || !watching.load(std::memory_order_relaxed)) {
        return;
    }
    const std::size_t slot = nextSlot.fetch_add(1, std::memory_order_relaxed) % RingSize;
    freed[slot].store(address, std::memory_order_relaxed);
}

} // namespace

void StartWatchingFrees()
{
    watching = false;
    for (std::atomic<const void*>& slot : freed) {
        slot.store(nullptr, std::memory_order_relaxed);
    }
    nextSlot = 0;
    watching = true;
}

void StopWatchingFrees()
{
    watching = false;
}

bool WasFreed(const void* address)
{
    const std::size_t used = nextSlot.load();
    const std::size_t count = used < RingSize ? used : RingSize;
    for (std::size_t index = 0; index < count; ++index) {
        if (freed[index].load() == address) {
            return true;
        }
    }
    return false;
}

} // namespace tlm::test

// The replaceable global forms. The array and no-throw forms of the library call these, so they are
// watched too; the aligned forms keep their own pair and are not watched.
void* operator new(std::size_t size)
{
    if (void* block = std::malloc(size == 0 ? 1 : size)) {
        return block;
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept
{
    tlm::test::Remember(block);
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    tlm::test::Remember(block);
    std::free(block);
}
