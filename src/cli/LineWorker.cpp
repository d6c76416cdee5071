#include "cli/LineWorker.h"

namespace tlm {

LineWorker::LineWorker(std::size_t roomBytes)
    : room(std::make_unique_for_overwrite<char[]>(roomBytes))
    , thread([this] { Loop(); })
{
}

LineWorker::~LineWorker()
{
    {
        std::lock_guard lock(mutex);
        stopping = true;
    }
    changed.notify_all();
    thread.join();
}

void LineWorker::Start(std::function<char*(char*)> next)
{
    {
        std::lock_guard lock(mutex);
        job = std::move(next);
        busy = true;
    }
    changed.notify_all();
}

std::string_view LineWorker::Finish()
{
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return !busy; });
    return std::string_view(room.get(), static_cast<std::size_t>(end - room.get()));
}

void LineWorker::Loop()
{
    std::unique_lock lock(mutex);
    for (;;) {
        changed.wait(lock, [this] { return stopping || busy; });
        if (stopping) {
            return;
        }
        std::function<char*(char*)> current = std::move(job);
        lock.unlock();
        const char* written = current(room.get());
        lock.lock();
        end = written;
        busy = false;
        changed.notify_all();
    }
}

} // namespace tlm
