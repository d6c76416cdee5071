#pragma once

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <thread>
#include <utility>
#include <vector>

namespace tlm {

// What a worker posts back: the generation of the request it answers and the rows computed for it.
// Ownership travels with the message that carries its address.
template <typename Row>
struct AnalysisResult {
    std::uint64_t generation = 0;
    std::vector<Row> rows;
};

// Queues a message for the receiving window, as PostMessageW does: message number, wParam, lParam.
// False when the message could not be queued; the record then still belongs to the sender.
using ResultPoster = std::function<bool(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam)>;

// One background thread that turns the latest request into rows. Requests replace each other in a single
// slot, so a burst of them costs one computation; results go back to the window as posted messages and
// are applied only when no newer request exists. The mutex guards the slot and the generation and is
// never held while computing or posting.
template <typename Request, typename Row>
class AnalysisWorker {
public:
    using Result = AnalysisResult<Row>;
    using Compute = std::function<std::vector<Row>(const Request&)>;

    explicit AnalysisWorker(Compute compute)
        : compute(std::move(compute))
    {
    }

    AnalysisWorker(const AnalysisWorker&) = delete;
    AnalysisWorker& operator=(const AnalysisWorker&) = delete;

    ~AnalysisWorker() { Stop(); }

    // Starts the thread; nothing happens while it runs already.
    void Start(ResultPoster poster, std::uint32_t message)
    {
        if (thread.joinable()) {
            return;
        }
        targetWindow = std::move(poster);
        resultMessage = message;
        thread = std::jthread([this](std::stop_token stop) { Run(stop); });
    }

    // Replaces whatever waits in the slot, unseen, and wakes the thread. A request made before Start waits
    // for it.
    void Submit(Request request)
    {
        std::optional<Slot> dropped;
        {
            std::lock_guard lock(mutex);
            ++generation;
            if (hasRequest) {
                dropped = std::move(requestSlot);
            }
            requestSlot.emplace(Slot{std::move(request), generation});
            hasRequest = true;
        }
        wakeCondition.notify_one();
        // The dropped request is released here, outside the lock.
    }

    // Empties the slot; the generation stays.
    void CancelPending()
    {
        std::optional<Slot> dropped;
        std::lock_guard lock(mutex);
        if (hasRequest) {
            dropped = std::move(requestSlot);
            requestSlot.reset();
            hasRequest = false;
        }
    }

    // Ends the thread and waits for it. A computation under way runs to its end; its post is harmless.
    void Stop()
    {
        thread.request_stop();
        CancelPending();
        {
            std::lock_guard lock(mutex);
            wakeCondition.notify_all();
        }
        if (thread.joinable()) {
            thread.join();
        }
    }

    std::uint64_t CurrentGeneration() const
    {
        std::lock_guard lock(mutex);
        return generation;
    }

    bool HasPendingRequest() const
    {
        std::lock_guard lock(mutex);
        return hasRequest;
    }

    // Takes over the record whose address a result message carries.
    static std::unique_ptr<Result> TakeResult(std::intptr_t lParam)
    {
        return std::unique_ptr<Result>(reinterpret_cast<Result*>(lParam));
    }

    // The receiving side, on the window's thread: owns the record, hands its rows to `apply` only when
    // it answers the newest request and the window is still `wanted`, and frees it in every case.
    // Answers whether the rows were applied.
    template <typename Apply>
    bool ReceiveResult(std::intptr_t lParam, bool wanted, Apply&& apply) const
    {
        const std::unique_ptr<Result> record = TakeResult(lParam);
        if (!record || record->generation != CurrentGeneration() || !wanted) {
            return false;
        }
        std::forward<Apply>(apply)(std::move(record->rows));
        return true;
    }

private:
    struct Slot {
        Request request;
        std::uint64_t generation = 0;
    };

    void Run(std::stop_token stop)
    {
        for (;;) {
            std::optional<Slot> work;
            {
                std::unique_lock lock(mutex);
                // The stop is read in the predicate rather than through the stop-token overload of wait,
                // whose stop callback can leave the thread asleep for good with MinGW's runtime. Stop
                // broadcasts under the mutex after requesting the stop, so no wake-up is lost.
                wakeCondition.wait(lock, [this, &stop] { return hasRequest || stop.stop_requested(); });
                if (stop.stop_requested()) {
                    return;
                }
                work = std::move(requestSlot);
                requestSlot.reset();
                hasRequest = false;
            }
            auto record = std::make_unique<Result>();
            record->generation = work->generation;
            if (compute) {
                record->rows = compute(work->request);
            }
            work.reset();
            const bool posted = targetWindow
                && targetWindow(resultMessage, 0, reinterpret_cast<std::intptr_t>(record.get()));
            if (posted) {
                record.release(); // the receiver owns it now
            }
        }
    }

    // Set before the thread starts and read by it alone.
    Compute compute;
    ResultPoster targetWindow;
    std::uint32_t resultMessage = 0;
    std::jthread thread;

    mutable std::mutex mutex;
    std::condition_variable_any wakeCondition;
    std::optional<Slot> requestSlot;
    bool hasRequest = false;
    std::uint64_t generation = 0;
};

} // namespace tlm
