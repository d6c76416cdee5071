#include "CliTestSupport.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>


namespace tlm::test {

namespace {

std::string Hex(const std::vector<std::uint8_t>& bytes)
{
    constexpr char Digits[] = "0123456789abcdef";
    std::string text;
    for (const std::uint8_t byte : bytes) {
        text.push_back(Digits[byte >> 4]);
        text.push_back(Digits[byte & 0xF]);
    }
    return text;
}

bool LeftTemporaryFile(const CliTemporaryFolder& folder)
{
    for (const std::string& name : folder.FileNames()) {
        if (name.rfind("Tolmo-", 0) == 0) {
            return true;
        }
    }
    return false;
}

// One random edit, applied to the model and written as the words of the command line.
void RandomEdit(std::mt19937& generator, std::vector<std::uint8_t>& model, std::vector<std::string>& words)
{
    const unsigned kind = model.empty() ? 1 : generator() % 3;
    const auto randomBytes = [&generator] {
        std::vector<std::uint8_t> bytes(1 + generator() % 6);
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(generator());
        }
        return bytes;
    };
    if (kind == 0) {
        std::vector<std::uint8_t> bytes = randomBytes();
        bytes.resize(std::min(bytes.size(), model.size()));
        const std::size_t offset = generator() % (model.size() - bytes.size() + 1);
        std::copy(bytes.begin(), bytes.end(), model.begin() + static_cast<std::ptrdiff_t>(offset));
        words.insert(words.end(), {"--overwrite", std::to_string(offset), Hex(bytes)});
    } else if (kind == 1) {
        const std::vector<std::uint8_t> bytes = randomBytes();
        const std::size_t offset = generator() % (model.size() + 1);
        model.insert(model.begin() + static_cast<std::ptrdiff_t>(offset), bytes.begin(), bytes.end());
        words.insert(words.end(), {"--insert", "0x" + Hex({static_cast<std::uint8_t>(offset >> 8), static_cast<std::uint8_t>(offset)}), Hex(bytes)});
    } else {
        const std::size_t offset = generator() % model.size();
        const std::size_t count = 1 + generator() % std::min<std::size_t>(5, model.size() - offset);
        model.erase(model.begin() + static_cast<std::ptrdiff_t>(offset), model.begin() + static_cast<std::ptrdiff_t>(offset + count));
        words.insert(words.end(), {"--delete", std::to_string(offset), std::to_string(count)});
    }
}

} // namespace

TEST(PatchCommand, RandomEditSequencesGiveWhatAByteVectorModelGives)
{
    std::mt19937 generator(2026);
    for (int trial = 0; trial < 60; ++trial) {
        CliTemporaryFolder folder;
        std::vector<std::uint8_t> model = RandomBytes(generator() % 600, static_cast<std::uint32_t>(trial));
        const std::filesystem::path path = folder.Write("target.bin", model);
        std::vector<std::string> words{"patch", PathText(path)};
        const int edits = 1 + static_cast<int>(generator() % 8);
        for (int edit = 0; edit < edits; ++edit) {
            RandomEdit(generator, model, words);
        }
        const CliRun run = RunCliCaptured(words);
        ASSERT_EQ(run.exitCode, 0) << run.err;
        EXPECT_EQ(ReadWholeFile(path), model) << "trial " << trial;
        EXPECT_FALSE(LeftTemporaryFile(folder));
    }
}

TEST(PatchCommand, JsonSaysWhetherTheSaveWentInPlace)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("target.bin", {1, 2, 3, 4});
    const CliRun inPlace = RunCliCaptured({"patch", PathText(path), "--overwrite", "1", "AA BB", "--json"});
    ASSERT_EQ(inPlace.exitCode, 0) << inPlace.err;
    const std::optional<JsonValue> first = ParseJson(inPlace.out);
    ASSERT_TRUE(first.has_value());
    EXPECT_FALSE((*first)["viaTemporaryFile"].boolean);
    EXPECT_TRUE((*first)["saved"].boolean);
    EXPECT_EQ((*first)["size"].number, 4u);
    const CliRun moved = RunCliCaptured({"patch", PathText(path), "--insert", "0", "FF", "--json"});
    const std::optional<JsonValue> second = ParseJson(moved.out);
    ASSERT_TRUE(second.has_value());
    EXPECT_TRUE((*second)["viaTemporaryFile"].boolean);
    EXPECT_EQ((*second)["size"].number, 5u);
    EXPECT_EQ(ReadWholeFile(path), (std::vector<std::uint8_t>{0xFF, 1, 0xAA, 0xBB, 4}));
    EXPECT_FALSE(LeftTemporaryFile(folder));
}

TEST(PatchCommand, OneByteInASparseFileOverFourGigabytesIsWrittenInPlace)
{
    CliTemporaryFolder folder;
    const std::uint64_t size = 0x100000000ull + 16;
    const std::filesystem::path path = folder.WriteSparse("big.bin", size, {0x11});
    const CliRun run = RunCliCaptured({"patch", PathText(path), "--overwrite", "0x100000002", "7F", "--json"});
    ASSERT_EQ(run.exitCode, 0) << run.err;
    const std::optional<JsonValue> json = ParseJson(run.out);
    ASSERT_TRUE(json.has_value());
    EXPECT_FALSE((*json)["viaTemporaryFile"].boolean);
    EXPECT_EQ(std::filesystem::file_size(path), size);
    std::ifstream in(path, std::ios::binary);
    in.seekg(static_cast<std::streamoff>(0x100000000ull));
    char bytes[16] = {};
    in.read(bytes, 16);
    EXPECT_EQ(bytes[2], 0x7F);
    EXPECT_EQ(bytes[1], 0);
    EXPECT_EQ(bytes[15], 0x11);
    EXPECT_FALSE(LeftTemporaryFile(folder));
}

TEST(PatchCommand, ARefusedPatchLeavesTheFileUnchanged)
{
    CliTemporaryFolder folder;
    const std::vector<std::uint8_t> original = RandomBytes(32, 8);
    const std::filesystem::path path = folder.Write("target.bin", original);
    const std::string file = PathText(path);
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases{
        {{"patch", file, "--overwrite", "0", "AA", "--overwrite", "31", "AA BB"},
            "tolmo-cli patch: --overwrite 31 reaches past the end of the file (the file then holds 32 bytes)\n"},
        {{"patch", file, "--insert", "0", "AA", "--insert", "34", "BB"},
            "tolmo-cli patch: --insert 34 is past the end of the file (the file then holds 33 bytes)\n"},
        {{"patch", file, "--delete", "30", "3"},
            "tolmo-cli patch: --delete 30 3 reaches past the end of the file (the file then holds 32 bytes)\n"},
        {{"patch", file, "--delete", "3", "0"}, "tolmo-cli patch: --delete count \"0\" is not a number above 0\n"},
        {{"patch", file, "--overwrite", "0", "A"},
            "tolmo-cli patch: --overwrite \"A\": The hexadecimal bytes are not valid. Enter each byte as two hexadecimal digits, for example 4A 6F.\n"},
        {{"patch", file, "--overwrite", "zero", "AA"}, "tolmo-cli patch: --overwrite offset \"zero\" is not a number\n"},
        {{"patch", file, "--overwrite", "0"}, "tolmo-cli patch: --overwrite needs 2 values\n"},
        {{"patch", file}, "tolmo-cli patch: no edit given (--overwrite N HEX, --insert N HEX or --delete N COUNT)\n"},
    };
    for (const auto& [arguments, message] : cases) {
        const CliRun run = RunCliCaptured(arguments);
        EXPECT_EQ(run.exitCode, 2) << message;
        EXPECT_EQ(run.err, message);
        EXPECT_EQ(ReadWholeFile(path), original) << message;
        EXPECT_FALSE(LeftTemporaryFile(folder));
    }
}

TEST(PatchCommand, AFileThatCannotBeOpenedIsRefused)
{
    CliTemporaryFolder folder;
    const std::string missing = PathText(folder.Path() / "missing.bin");
    const CliRun run = RunCliCaptured({"patch", missing, "--overwrite", "0", "AA"});
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err, "tolmo-cli patch: The file could not be opened. (" + missing + ")\n");
    EXPECT_FALSE(std::filesystem::exists(folder.Path() / "missing.bin"));
}

TEST(PatchCommand, AReadOnlyFileIsRefusedWithTheSaveFailureAndLeftUnchanged)
{
    CliTemporaryFolder folder;
    const std::vector<std::uint8_t> original = RandomBytes(64, 12);
    const std::filesystem::path path = folder.Write("locked.bin", original);
    std::filesystem::permissions(path, std::filesystem::perms::owner_read | std::filesystem::perms::group_read
        | std::filesystem::perms::others_read);
    {
        // The superuser, and Wine run by it, may write to a read-only file all the same.
        std::fstream probe(path, std::ios::binary | std::ios::in | std::ios::out);
        if (probe.is_open()) {
            std::filesystem::permissions(path, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
            GTEST_SKIP() << "this account may write to a read-only file";
        }
    }
    const CliRun run = RunCliCaptured({"patch", PathText(path), "--overwrite", "3", "00"});
    std::filesystem::permissions(path, std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.err.rfind("tolmo-cli patch: The file could not be saved.", 0), 0u) << run.err;
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1);
    EXPECT_EQ(ReadWholeFile(path), original);
    EXPECT_FALSE(LeftTemporaryFile(folder));
}

TEST(PatchCommand, AnEmptyFileTakesInsertedBytes)
{
    CliTemporaryFolder folder;
    const std::filesystem::path path = folder.Write("empty.bin", {});
    const CliRun run = RunCliCaptured({"patch", PathText(path), "--insert", "0", "41 42", "--insert", "1", "43"});
    EXPECT_EQ(run.exitCode, 0) << run.err;
    EXPECT_EQ(ReadWholeFile(path), (std::vector<std::uint8_t>{0x41, 0x43, 0x42}));
}

} // namespace tlm::test
