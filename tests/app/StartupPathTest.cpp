#include "app/StartupPath.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tlm {
namespace {

TEST(StartupPath, CommandLineThatCouldNotBeSplitNamesNoFile)
{
    const std::vector<std::u16string> arguments;
    EXPECT_FALSE(TakeStartupPath(arguments).has_value());
}

TEST(StartupPath, StartedWithNoArgumentNamesNoFile)
{
    const std::vector<std::u16string> arguments{u"C:\\Programs\\tolmo.exe"};
    EXPECT_FALSE(TakeStartupPath(arguments).has_value());
}

TEST(StartupPath, EmptySecondArgumentBehavesAsNoArgument)
{
    const std::vector<std::u16string> arguments{u"tolmo.exe", u""};
    EXPECT_FALSE(TakeStartupPath(arguments).has_value());
}

TEST(StartupPath, SecondArgumentIsTheFileToOpen)
{
    const std::vector<std::u16string> arguments{u"tolmo.exe", u"D:\\data\\dump.bin"};
    EXPECT_EQ(TakeStartupPath(arguments), std::u16string(u"D:\\data\\dump.bin"));
}

TEST(StartupPath, ThirdArgumentIsIgnored)
{
    const std::vector<std::u16string> arguments{u"tolmo.exe", u"first.bin", u"second.bin"};
    EXPECT_EQ(TakeStartupPath(arguments), std::u16string(u"first.bin"));
}

TEST(StartupPath, EmptySecondArgumentIsNotReplacedByTheThird)
{
    const std::vector<std::u16string> arguments{u"tolmo.exe", u"", u"third.bin"};
    EXPECT_FALSE(TakeStartupPath(arguments).has_value());
}

TEST(StartupPath, ArgumentThatLooksLikeAnOptionIsStillAPath)
{
    const std::vector<std::u16string> arguments{u"tolmo.exe", u"--help"};
    EXPECT_EQ(TakeStartupPath(arguments), std::u16string(u"--help"));
}

TEST(StartupPath, PathOutsideTheBasicPlaneIsKeptUnchanged)
{
    const std::u16string path = u"C:\\\u6587\u4EF6\\\U0001F600.bin";
    const std::vector<std::u16string> arguments{u"tolmo.exe", path};
    EXPECT_EQ(TakeStartupPath(arguments), path);
}

} // namespace
} // namespace tlm
