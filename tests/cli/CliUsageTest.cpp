#include "CliTestSupport.h"

#include "cli/CliArguments.h"
#include "cli/CliEncoding.h"
#include "cli/CliOffset.h"
#include "cli/JsonWriter.h"

#include <gtest/gtest.h>

#include <array>

namespace tlm::test {

TEST(CliUsage, HelpForEveryCommandGoesToStandardOutputWithExitCodeZero)
{
    for (const std::string command : {"dump", "find", "inspect", "struct", "patch"}) {
        const CliRun run = RunCliCaptured({command, "--help"});
        EXPECT_EQ(run.exitCode, 0) << command;
        EXPECT_EQ(run.out.rfind("Usage: tolmo-cli " + command + " FILE", 0), 0u) << run.out;
        EXPECT_EQ(run.err, "");
    }
    const CliRun overview = RunCliCaptured({"--help"});
    EXPECT_EQ(overview.exitCode, 0);
    for (const std::string command : {"dump", "find", "inspect", "struct", "patch"}) {
        EXPECT_NE(overview.out.find("  " + command + " "), std::string::npos) << command;
    }
}

TEST(CliUsage, NoCommandOrAnUnknownOneIsBadUsage)
{
    const CliRun none = RunCliCaptured({});
    EXPECT_EQ(none.exitCode, 2);
    EXPECT_EQ(none.err, "tolmo-cli: a command is missing\n");
    const CliRun unknown = RunCliCaptured({"show", "file"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_EQ(unknown.err, "tolmo-cli: unknown command \"show\" (dump, find, inspect, struct or patch)\n");
}

TEST(CliUsage, EveryCommandNamesAMissingFileAndAnExtraArgument)
{
    for (const std::string command : {"dump", "find", "inspect", "struct", "patch"}) {
        const CliRun missing = RunCliCaptured({command});
        EXPECT_EQ(missing.exitCode, 2);
        EXPECT_EQ(missing.err, "tolmo-cli " + command + ": FILE is missing\n");
        const CliRun extra = RunCliCaptured({command, "a.bin", "b.bin"});
        EXPECT_EQ(extra.exitCode, 2);
        EXPECT_EQ(extra.err, "tolmo-cli " + command + ": unexpected argument \"b.bin\"\n");
        const CliRun twice = RunCliCaptured({command, "a.bin", "--json", "--json"});
        EXPECT_EQ(twice.exitCode, 2);
        EXPECT_EQ(twice.err, "tolmo-cli " + command + ": --json is given more than once\n");
    }
}

TEST(CliOffset, NumbersAreDecimalOrHexadecimalAfterZeroX)
{
    EXPECT_EQ(ParseCliNumber("0"), 0u);
    EXPECT_EQ(ParseCliNumber("4096"), 4096u);
    EXPECT_EQ(ParseCliNumber("0x1F40"), 0x1F40u);
    EXPECT_EQ(ParseCliNumber("0X1f40"), 0x1F40u);
    EXPECT_EQ(ParseCliNumber("18446744073709551615"), UINT64_MAX);
    EXPECT_EQ(ParseCliNumber("0xFFFFFFFFFFFFFFFF"), UINT64_MAX);
    EXPECT_FALSE(ParseCliNumber("18446744073709551616"));
    EXPECT_FALSE(ParseCliNumber("0x10000000000000000"));
    EXPECT_FALSE(ParseCliNumber(""));
    EXPECT_FALSE(ParseCliNumber("0x"));
    EXPECT_FALSE(ParseCliNumber("1F"));
    EXPECT_FALSE(ParseCliNumber("-1"));
    EXPECT_FALSE(ParseCliNumber("+1"));
    EXPECT_FALSE(ParseCliNumber(" 1"));
}

TEST(CliArguments, OptionsKeepTheirOrderAndValuesMayLookLikeOptions)
{
    constexpr std::array<CliOptionRule, 3> rules{{{"--text", 1, false}, {"--insert", 2, true}, {"--json", 0, false}}};
    const std::vector<std::string> words{"file", "--insert", "1", "AA", "--text=-x", "--insert", "0", "BB", "--json"};
    std::string error;
    const std::optional<CliArguments> arguments = ParseCliArguments(words, rules, error);
    ASSERT_TRUE(arguments.has_value()) << error;
    EXPECT_EQ(arguments->positionals, std::vector<std::string>{"file"});
    ASSERT_EQ(arguments->options.size(), 4u);
    EXPECT_EQ(arguments->options[0].values, (std::vector<std::string>{"1", "AA"}));
    EXPECT_EQ(arguments->Value("--text"), "-x");
    EXPECT_EQ(arguments->options[2].values, (std::vector<std::string>{"0", "BB"}));
    EXPECT_TRUE(arguments->Has("--json"));
    const std::vector<std::string> dashed{"--text", "--", "--", "-file"};
    const std::optional<CliArguments> ended = ParseCliArguments(dashed, rules, error);
    ASSERT_TRUE(ended.has_value());
    EXPECT_EQ(ended->Value("--text"), "--");
    EXPECT_EQ(ended->positionals, std::vector<std::string>{"-file"});
}

TEST(CliEncoding, DisplayNamesAndAliasesAreAcceptedAndUnknownNamesRefused)
{
    EXPECT_EQ(ParseCliEncoding("ASCII"), TextEncoding::Ascii);
    EXPECT_EQ(ParseCliEncoding("UTF-16 LE"), TextEncoding::Utf16Le);
    EXPECT_EQ(ParseCliEncoding("utf16be"), TextEncoding::Utf16Be);
    EXPECT_EQ(ParseCliEncoding("windows-31j"), TextEncoding::ShiftJis);
    EXPECT_EQ(ParseCliEncoding("Windows-31K"), TextEncoding::Windows949);
    EXPECT_EQ(ParseCliEncoding("EUC-KR"), TextEncoding::EucKr);
    EXPECT_EQ(ParseCliEncoding("cp936"), TextEncoding::Gbk);
    EXPECT_EQ(ParseCliEncoding("ISO-8859-11"), TextEncoding::Tis620);
    EXPECT_EQ(ParseCliEncoding("cp1258"), TextEncoding::Windows1258);
    EXPECT_EQ(ParseCliEncoding("ISCII (Devanagari)"), TextEncoding::IsciiDevanagari);
    EXPECT_FALSE(ParseCliEncoding("latin1"));
    EXPECT_FALSE(ParseCliEncoding(""));
}

TEST(JsonWriter, WritesNestedValuesWithEscapesThatReadBack)
{
    JsonWriter json;
    json.BeginObject();
    json.Key("text");
    json.String("a\"b\\c\n\x01\xE3\x81\x82");
    json.Key("list");
    json.BeginArray();
    json.Number(18446744073709551615ull);
    json.Bool(true);
    json.BeginObject();
    json.EndObject();
    json.EndArray();
    json.EndObject();
    const std::string text = json.TakeText();
    EXPECT_EQ(text, "{\"text\":\"a\\\"b\\\\c\\n\\u0001\xE3\x81\x82\",\"list\":[18446744073709551615,true,{}]}");
    const std::optional<JsonValue> parsed = ParseJson(text);
    ASSERT_TRUE(parsed.has_value());
    EXPECT_EQ((*parsed)["text"].text, "a\"b\\c\n\x01\xE3\x81\x82");
    EXPECT_EQ((*parsed)["list"].items[0].number, UINT64_MAX);
    EXPECT_TRUE((*parsed)["list"].items[1].boolean);
}

} // namespace tlm::test
