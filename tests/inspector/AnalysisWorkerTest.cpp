#include "inspector/AnalysisWorker.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

namespace tlm {
namespace {

using namespace std::chrono_literals;

constexpr std::uint32_t ResultMessage = 0x800A;
constexpr auto Patience = 10s;

// A row that counts its live copies and notes the threads that destroy it, to prove what is freed where.
struct CountedRow {
    static inline std::atomic<int> live{0};
    static inline std::mutex destroyersMutex;
    static inline std::vector<std::thread::id> destroyers;

    int value = 0;

    explicit CountedRow(int value)
        : value(value)
    {
        ++live;
    }
    CountedRow(const CountedRow& other)
        : value(other.value)
    {
        ++live;
    }
    CountedRow(CountedRow&& other) noexcept
        : value(other.value)
    {
        ++live;
    }
    CountedRow& operator=(const CountedRow&) = default;
    CountedRow& operator=(CountedRow&&) = default;
    ~CountedRow()
    {
        --live;
        std::lock_guard lock(destroyersMutex);
        destroyers.push_back(std::this_thread::get_id());
    }
};

struct Request {
    int value = 0;
};

using Worker = AnalysisWorker<Request, CountedRow>;

// A gate the computation waits at, so a test can hold the worker inside a computation.
class Gate {
public:
    void Open()
    {
        {
            std::lock_guard lock(mutex);
            open = true;
        }
        changed.notify_all();
    }
    void Pass()
    {
        std::unique_lock lock(mutex);
        ++entered;
        changed.notify_all();
        changed.wait(lock, [this] { return open; });
    }
    bool WaitEntered(int count)
    {
        std::unique_lock lock(mutex);
        return changed.wait_for(lock, Patience, [&] { return entered >= count; });
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    bool open = false;
    int entered = 0;
};

// Stands in for the message queue of the receiving window.
class MessageQueue {
public:
    struct Message {
        std::uint32_t number = 0;
        std::uintptr_t wParam = 0;
        std::intptr_t lParam = 0;
    };

    ResultPoster Poster()
    {
        return [this](std::uint32_t number, std::uintptr_t wParam, std::intptr_t lParam) {
            std::lock_guard lock(mutex);
            ++attempts;
            arrived.notify_all();
            if (failing) {
                return false;
            }
            messages.push_back({number, wParam, lParam});
            return true;
        };
    }

    std::optional<Message> Pop(std::chrono::milliseconds wait = Patience)
    {
        std::unique_lock lock(mutex);
        if (!arrived.wait_for(lock, wait, [this] { return !messages.empty(); })) {
            return std::nullopt;
        }
        const Message message = messages.front();
        messages.pop_front();
        return message;
    }

    bool WaitAttempts(int count)
    {
        std::unique_lock lock(mutex);
        return arrived.wait_for(lock, Patience, [&] { return attempts >= count; });
    }

    void SetFailing(bool fail)
    {
        std::lock_guard lock(mutex);
        failing = fail;
    }

    int Attempts()
    {
        std::lock_guard lock(mutex);
        return attempts;
    }

private:
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<Message> messages;
    bool failing = false;
    int attempts = 0;
};

class AnalysisWorkerTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        std::lock_guard lock(CountedRow::destroyersMutex);
        CountedRow::destroyers.clear();
    }

    void TearDown() override { EXPECT_EQ(CountedRow::live.load(), 0); }

    Worker::Compute Counting(Gate* gate = nullptr)
    {
        return [this, gate](const Request& request) {
            ++computations;
            if (gate != nullptr) {
                gate->Pass();
            }
            return std::vector<CountedRow>{CountedRow(request.value)};
        };
    }

    // Receives one message as the window would; the applied value, if any.
    std::optional<int> Receive(Worker& worker, const MessageQueue::Message& message, bool wanted = true)
    {
        EXPECT_EQ(message.number, ResultMessage);
        EXPECT_EQ(message.wParam, 0u);
        std::optional<int> applied;
        worker.ReceiveResult(message.lParam, wanted, [&](std::vector<CountedRow>&& rows) {
            EXPECT_EQ(rows.size(), 1u);
            applied = rows.front().value;
        });
        return applied;
    }

    std::atomic<int> computations{0};
    MessageQueue queue;
};

TEST_F(AnalysisWorkerTest, TenSubmitsProduceAtMostTwoComputationsAndOnlyTheLastIsApplied)
{
    Gate gate;
    Worker worker(Counting(&gate));
    worker.Start(queue.Poster(), ResultMessage);
    worker.Submit({1});
    ASSERT_TRUE(gate.WaitEntered(1)); // the worker is inside the first computation
    for (int value = 2; value <= 10; ++value) {
        worker.Submit({value});
    }
    gate.Open();

    std::vector<int> applied;
    for (int received = 0; received < 2; ++received) {
        const std::optional<MessageQueue::Message> message = queue.Pop();
        ASSERT_TRUE(message.has_value());
        if (const std::optional<int> value = Receive(worker, *message)) {
            applied.push_back(*value);
        }
    }
    EXPECT_EQ(computations.load(), 2);
    EXPECT_EQ(applied, std::vector<int>{10});
    EXPECT_FALSE(queue.Pop(100ms).has_value());
    worker.Stop();
}

TEST_F(AnalysisWorkerTest, SubmitsBeforeStartCollapseIntoOneComputation)
{
    Worker worker(Counting());
    for (int value = 1; value <= 10; ++value) {
        worker.Submit({value});
    }
    EXPECT_EQ(worker.CurrentGeneration(), 10u);
    worker.Start(queue.Poster(), ResultMessage);
    const std::optional<MessageQueue::Message> message = queue.Pop();
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(Receive(worker, *message), std::optional<int>(10));
    EXPECT_EQ(computations.load(), 1);
    worker.Stop();
}

TEST_F(AnalysisWorkerTest, AResultThatArrivesAfterANewerSubmitIsFreedUnused)
{
    Worker worker(Counting());
    worker.Start(queue.Poster(), ResultMessage);
    worker.Submit({1});
    const std::optional<MessageQueue::Message> first = queue.Pop();
    ASSERT_TRUE(first.has_value());
    worker.Submit({2}); // newer than what is in the message
    EXPECT_EQ(Receive(worker, *first), std::nullopt);

    const std::optional<MessageQueue::Message> second = queue.Pop();
    ASSERT_TRUE(second.has_value());
    EXPECT_EQ(Receive(worker, *second), std::optional<int>(2));
    worker.Stop();
}

TEST_F(AnalysisWorkerTest, StopWithAFullSlotDiscardsTheRequestAndComputesNothingFurther)
{
    Gate gate;
    Worker worker(Counting(&gate));
    worker.Start(queue.Poster(), ResultMessage);
    worker.Submit({1});
    ASSERT_TRUE(gate.WaitEntered(1));
    worker.Submit({2});
    ASSERT_TRUE(worker.HasPendingRequest());

    std::thread stopper([&] { worker.Stop(); });
    // Stop asks the thread to end and empties the slot before it waits for the computation under way.
    const auto deadline = std::chrono::steady_clock::now() + Patience;
    while (worker.HasPendingRequest() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(1ms);
    }
    EXPECT_FALSE(worker.HasPendingRequest());
    gate.Open();
    stopper.join();

    EXPECT_EQ(computations.load(), 1);
    // The computation that was under way still posts; the receiver frees it as usual.
    const std::optional<MessageQueue::Message> message = queue.Pop();
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(Receive(worker, *message), std::nullopt); // request 2 is newer
    EXPECT_FALSE(queue.Pop(100ms).has_value());
}

TEST_F(AnalysisWorkerTest, StopWithARequestThatNeverRanComputesNothing)
{
    Worker worker(Counting());
    worker.Submit({1});
    worker.Stop();
    EXPECT_FALSE(worker.HasPendingRequest());
    EXPECT_EQ(computations.load(), 0);
    EXPECT_EQ(queue.Attempts(), 0);
}

TEST_F(AnalysisWorkerTest, AResultArrivingWhenTheWindowHasClosedIsFreedAndChangesNothing)
{
    Worker worker(Counting());
    worker.Start(queue.Poster(), ResultMessage);
    worker.Submit({5});
    const std::optional<MessageQueue::Message> message = queue.Pop();
    ASSERT_TRUE(message.has_value());
    bool applied = false;
    EXPECT_FALSE(worker.ReceiveResult(message->lParam, false, [&](std::vector<CountedRow>&&) { applied = true; }));
    EXPECT_FALSE(applied);
    worker.Stop();
}

TEST_F(AnalysisWorkerTest, AResultArrivingAfterStopIsStillFreedByTheReceiver)
{
    Worker worker(Counting());
    worker.Start(queue.Poster(), ResultMessage);
    worker.Submit({5});
    ASSERT_TRUE(queue.WaitAttempts(1));
    worker.Stop();
    const std::optional<MessageQueue::Message> message = queue.Pop();
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(Receive(worker, *message, false), std::nullopt);
}

TEST_F(AnalysisWorkerTest, IfPostingFailsTheResultIsFreedOnTheWorkerThread)
{
    queue.SetFailing(true);
    Worker worker(Counting());
    worker.Start(queue.Poster(), ResultMessage);
    worker.Submit({3});
    ASSERT_TRUE(queue.WaitAttempts(1));
    worker.Stop(); // after this the worker has finished with the record
    EXPECT_EQ(CountedRow::live.load(), 0);
    std::lock_guard lock(CountedRow::destroyersMutex);
    ASSERT_FALSE(CountedRow::destroyers.empty());
    EXPECT_NE(CountedRow::destroyers.back(), std::this_thread::get_id());
    EXPECT_FALSE(queue.Pop(0ms).has_value());
}

TEST_F(AnalysisWorkerTest, ThreadWithoutTargetFreesItsResults)
{
    Worker worker(Counting());
    worker.Start(ResultPoster{}, ResultMessage);
    worker.Submit({3});
    worker.Submit({4});
    worker.Stop();
    EXPECT_EQ(CountedRow::live.load(), 0);
}

TEST_F(AnalysisWorkerTest, TheAppliedRowsAreMovedNotCopied)
{
    Worker worker(Counting());
    worker.Start(queue.Poster(), ResultMessage);
    worker.Submit({8});
    const std::optional<MessageQueue::Message> message = queue.Pop();
    ASSERT_TRUE(message.has_value());
    std::vector<CountedRow> kept;
    worker.ReceiveResult(message->lParam, true, [&](std::vector<CountedRow>&& rows) { kept = std::move(rows); });
    ASSERT_EQ(kept.size(), 1u);
    EXPECT_EQ(kept.front().value, 8);
    EXPECT_EQ(CountedRow::live.load(), 1); // the record is gone; only the kept row lives
    kept.clear();
    worker.Stop();
}

TEST_F(AnalysisWorkerTest, CancelPendingEmptiesTheSlotAndKeepsTheGeneration)
{
    Worker worker(Counting());
    worker.Submit({1});
    worker.Submit({2});
    EXPECT_TRUE(worker.HasPendingRequest());
    worker.CancelPending();
    EXPECT_FALSE(worker.HasPendingRequest());
    EXPECT_EQ(worker.CurrentGeneration(), 2u);
    worker.CancelPending(); // an empty slot stays empty
    worker.Start(queue.Poster(), ResultMessage);
    EXPECT_FALSE(queue.Pop(100ms).has_value());
    EXPECT_EQ(computations.load(), 0);
    worker.Stop();
}

TEST_F(AnalysisWorkerTest, StartingTwiceKeepsTheFirstThreadAndTarget)
{
    MessageQueue other;
    Worker worker(Counting());
    worker.Start(queue.Poster(), ResultMessage);
    worker.Start(other.Poster(), 0x800E);
    worker.Submit({1});
    const std::optional<MessageQueue::Message> message = queue.Pop();
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(Receive(worker, *message), std::optional<int>(1));
    EXPECT_EQ(other.Attempts(), 0);
    worker.Stop();
}

TEST_F(AnalysisWorkerTest, AStoppedWorkerCanStartAgain)
{
    Worker worker(Counting());
    worker.Start(queue.Poster(), ResultMessage);
    worker.Stop();
    worker.Stop();
    worker.Start(queue.Poster(), ResultMessage);
    worker.Submit({6});
    const std::optional<MessageQueue::Message> message = queue.Pop();
    ASSERT_TRUE(message.has_value());
    EXPECT_EQ(Receive(worker, *message), std::optional<int>(6));
}

TEST_F(AnalysisWorkerTest, DestroyingARunningWorkerWithAFullSlotStopsIt)
{
    Gate gate;
    {
        Worker worker(Counting(&gate));
        worker.Start(queue.Poster(), ResultMessage);
        worker.Submit({1});
        ASSERT_TRUE(gate.WaitEntered(1));
        worker.Submit({2});
        gate.Open();
    }
    EXPECT_LE(computations.load(), 2);
    // Whatever was posted before the end is freed by the receiver.
    while (const std::optional<MessageQueue::Message> message = queue.Pop(0ms)) {
        delete reinterpret_cast<AnalysisResult<CountedRow>*>(message->lParam);
    }
}

TEST_F(AnalysisWorkerTest, ManySubmitsFromABusyUserInterfaceEndOnTheLastValue)
{
    Worker worker(Counting());
    worker.Start(queue.Poster(), ResultMessage);
    std::optional<int> applied;
    for (int value = 1; value <= 500; ++value) {
        worker.Submit({value});
        while (const std::optional<MessageQueue::Message> message = queue.Pop(0ms)) {
            if (const std::optional<int> got = Receive(worker, *message)) {
                applied = got;
            }
        }
    }
    while (!applied || *applied != 500) {
        const std::optional<MessageQueue::Message> message = queue.Pop();
        ASSERT_TRUE(message.has_value());
        if (const std::optional<int> got = Receive(worker, *message)) {
            applied = got;
        }
    }
    EXPECT_LE(computations.load(), 500);
    worker.Stop();
    while (const std::optional<MessageQueue::Message> message = queue.Pop(0ms)) {
        Receive(worker, *message);
    }
}

} // namespace
} // namespace tlm
