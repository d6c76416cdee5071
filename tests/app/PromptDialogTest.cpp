#include "app/PromptDialog.h"

#include <gtest/gtest.h>

namespace tlm {
namespace {

TEST(PromptDialogTest, OkTakesTheEditsTextAndCloses)
{
    PromptDialog dialog;
    dialog.Accept(u" 0X1f ");
    EXPECT_TRUE(dialog.accepted);
    EXPECT_TRUE(dialog.closed);
    EXPECT_EQ(dialog.result, u" 0X1f ");
}

TEST(PromptDialogTest, CancelClosesWithoutAnAnswer)
{
    PromptDialog dialog;
    dialog.Cancel();
    EXPECT_TRUE(dialog.closed);
    EXPECT_FALSE(dialog.accepted);
}

TEST(PromptDialogTest, TheWindowsEndClosesWithoutAnAnswer)
{
    PromptDialog dialog;
    dialog.OnDestroy();
    EXPECT_TRUE(dialog.closed);
    EXPECT_FALSE(dialog.accepted);
}

} // namespace
} // namespace tlm
