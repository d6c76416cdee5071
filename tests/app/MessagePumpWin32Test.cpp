#include "app/MessagePumpWin32.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace tlm {
namespace {

// A quit request that arrives while work pumps messages is posted again, so the main loop ends.
TEST(MessagePumpWin32Test, QuitMetDuringThePumpIsPostedAgainWithItsCode)
{
    PostQuitMessage(7);
    PumpMessages();
    MSG message{};
    ASSERT_TRUE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(message.message, static_cast<UINT>(WM_QUIT));
    EXPECT_EQ(message.wParam, 7u);
}

TEST(MessagePumpWin32Test, WaitingThreadMessagesAreTakenAndThePumpReturns)
{
    ASSERT_TRUE(PostThreadMessageW(GetCurrentThreadId(), WM_APP + 5, 0, 0));
    PumpMessages();
    MSG message{};
    EXPECT_FALSE(PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE));
}

} // namespace
} // namespace tlm
