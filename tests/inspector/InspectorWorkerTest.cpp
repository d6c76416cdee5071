#include "inspector/InspectorWorker.h"

#include "app/AppMessage.h"

#include <gtest/gtest.h>

#include <chrono>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace tlm {
namespace {

constexpr auto ResultMessage = static_cast<std::uint32_t>(AppMessage::InspectorResult);

// The inspector's road from a snapshot to the window: submit, compute on the worker, post, receive.
TEST(InspectorWorker, RowsOfTheLatestSnapshotReachTheWindow)
{
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<std::intptr_t> posted;
    InspectorWorker worker(ComputeInspectorJob);
    worker.Start(
        [&](std::uint32_t message, std::uintptr_t, std::intptr_t lParam) {
            EXPECT_EQ(message, ResultMessage);
            std::lock_guard lock(mutex);
            posted.push_back(lParam);
            arrived.notify_all();
            return true;
        },
        ResultMessage);

    InspectorJob job;
    job.request.offset = 16;
    job.request.encoding = TextEncoding::Ascii;
    job.request.bytes = {0x20, 0x00, 0x00, 0x00};
    job.unavailableText = u"-";
    worker.Submit(job);

    std::vector<std::u16string> values;
    while (values.empty()) {
        std::unique_lock lock(mutex);
        ASSERT_TRUE(arrived.wait_for(lock, std::chrono::seconds(10), [&] { return !posted.empty(); }));
        const std::intptr_t lParam = posted.front();
        posted.pop_front();
        lock.unlock();
        worker.ReceiveResult(lParam, true, [&](std::vector<std::u16string>&& rows) { values = std::move(rows); });
    }
    worker.Stop();

    ASSERT_EQ(values.size(), 12u);
    EXPECT_EQ(values[0], u"0b0010_0000");
    EXPECT_EQ(values[4], u"32 / 0x00000020");
    EXPECT_EQ(values[8], u"Space (U+0020)");
    EXPECT_EQ(values[11], u"Space (20)");
    EXPECT_EQ(values[6], u"-");
}

// A burst of caret moves: every snapshot is submitted, but only the rows of the last one are applied.
TEST(InspectorWorker, ABurstOfSnapshotsAppliesOnlyTheLast)
{
    std::mutex mutex;
    std::condition_variable arrived;
    std::deque<std::intptr_t> posted;
    InspectorWorker worker(ComputeInspectorJob);
    for (std::uint8_t value = 1; value <= 10; ++value) {
        InspectorJob job;
        job.request.offset = value;
        job.request.bytes = {value};
        job.unavailableText = u"-";
        worker.Submit(job);
    }
    worker.Start(
        [&](std::uint32_t, std::uintptr_t, std::intptr_t lParam) {
            std::lock_guard lock(mutex);
            posted.push_back(lParam);
            arrived.notify_all();
            return true;
        },
        ResultMessage);

    std::vector<std::vector<std::u16string>> applied;
    {
        std::unique_lock lock(mutex);
        ASSERT_TRUE(arrived.wait_for(lock, std::chrono::seconds(10), [&] { return !posted.empty(); }));
    }
    worker.Stop();
    for (const std::intptr_t lParam : posted) {
        worker.ReceiveResult(lParam, true, [&](std::vector<std::u16string>&& rows) { applied.push_back(std::move(rows)); });
    }
    EXPECT_EQ(posted.size(), 1u);
    ASSERT_EQ(applied.size(), 1u);
    EXPECT_EQ(applied.front()[1], u"10 / 0x0A");
}

} // namespace
} // namespace tlm
