// Random edit sequences checked three ways: against a plain byte vector, against the reference overlay
// with the first, linear algorithms (every result and every container identical), and, after a save,
// against the file on disk. A trial whose file is saved in place also saves a copy with the same
// edits, opened by a two-slash path, which is always rewritten through a temporary file: both paths
// must write the same bytes. Searches over the edited view are checked against a scan of the vector.
#include "ReferenceDocument.h"
#include "TestFolder.h"

#include "document/ByteSearch.h"
#include "document/EditableDocument.h"
#include "document/FileFaults.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <random>

namespace tlm {
namespace {

using test::ReferenceDocument;
using test::TestFolder;

constexpr std::uint64_t MiB = 1048576;

// Which edits a trial makes; all but Mixed keep every byte in place, so the save goes in place.
enum class EditMix {
    Mixed,
    OverwritesOnly,
    OverwritesAndAppends,
    OverwritesAndTailCuts,
    // An appended run and a cut tail together, in any order, with the run edited inside as well.
    AppendsAndTailCuts,
};

// How many saves of each kind a test made, and of the in-place saves with both an appended run and a
// cut tail, how the run's length compared with the cut's.
struct SaveTally {
    int temporary = 0;
    int inPlace = 0;
    int runShorterThanCut = 0;
    int runAsLongAsCut = 0;
    int runLongerThanCut = 0;
};

class ModelTrial {
public:
    ModelTrial(const TestFolder& folder, std::uint32_t seed, std::uint64_t fileSize, EditMix mix)
        : random(seed)
        , mix(mix)
        , lean(seed / 7 % 4)
    {
        original = test::RandomBytes(static_cast<std::size_t>(fileSize), seed ^ 0x5EEDu);
        // Small alphabets make reverts (a byte overwritten with its own value) frequent.
        if (seed % 3 == 0) {
            for (std::uint8_t& byte : original) {
                byte &= 3;
            }
        }
        path = folder.Write("model-" + std::to_string(seed) + ".bin", original);
        twinName = "model-" + std::to_string(seed) + "-twin.bin";
        folder.Write(twinName, original);
        model = original;
        EXPECT_TRUE(document.file.Open(path));
        EXPECT_TRUE(reference.file.Open(path));
        EXPECT_TRUE(twin.file.Open(folder.TwoSlashPath(twinName)));
    }

    std::uint64_t Pick(std::uint64_t upTo)
    {
        return std::uniform_int_distribution<std::uint64_t>(0, upTo)(random);
    }

    // A view offset in [0, limit], often near the ends and near the 1 MiB block seam.
    std::uint64_t PickOffset(std::uint64_t limit)
    {
        switch (Pick(7)) {
        case 0:
            return std::min<std::uint64_t>(Pick(3), limit);
        case 1:
            return limit - std::min<std::uint64_t>(Pick(3), limit);
        case 2:
            if (limit > MiB + 4) {
                return MiB - 4 + Pick(8);
            }
            [[fallthrough]];
        default:
            return Pick(limit);
        }
    }

    std::uint8_t PickValue()
    {
        return static_cast<std::uint8_t>(Pick(3) == 0 ? Pick(3) : Pick(255));
    }

    void Overwrite(std::uint64_t v, std::uint8_t value)
    {
        const bool done = document.OverwriteByte(v, value);
        ASSERT_EQ(done, reference.OverwriteByte(v, value)) << "overwrite at " << v;
        ASSERT_EQ(done, twin.OverwriteByte(v, value)) << "overwrite at " << v;
        ASSERT_EQ(done, v < model.size());
        if (done) {
            model[static_cast<std::size_t>(v)] = value;
        }
    }

    void Insert(std::uint64_t v, std::uint8_t value)
    {
        const bool done = document.InsertByte(v, value);
        ASSERT_EQ(done, reference.InsertByte(v, value)) << "insert at " << v;
        ASSERT_EQ(done, twin.InsertByte(v, value)) << "insert at " << v;
        ASSERT_EQ(done, v <= model.size());
        if (done) {
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(v), value);
        }
    }

    void Delete(std::uint64_t v)
    {
        const bool done = document.DeleteByte(v);
        ASSERT_EQ(done, reference.DeleteByte(v)) << "delete at " << v;
        ASSERT_EQ(done, twin.DeleteByte(v)) << "delete at " << v;
        ASSERT_EQ(done, v < model.size());
        if (done) {
            model.erase(model.begin() + static_cast<std::ptrdiff_t>(v));
        }
    }

    void RandomEdit()
    {
        const std::uint64_t size = model.size();
        const std::uint64_t roll = Pick(99);
        switch (mix) {
        case EditMix::Mixed:
            if (roll < 35) {
                Overwrite(PickOffset(size), PickValue());
            } else if (roll < 65) {
                Insert(PickOffset(size), PickValue());
            } else if (roll < 95) {
                Delete(PickOffset(size));
            } else {
                // A burst at one place: typing, or deleting a selection from its end.
                const std::uint64_t at = PickOffset(size);
                const std::uint64_t length = 1 + Pick(40);
                for (std::uint64_t i = 0; i < length; ++i) {
                    if (roll % 2 == 0) {
                        Insert(at + i, PickValue());
                    } else if (at + length - 1 - i < model.size()) {
                        Delete(at + length - 1 - i);
                    }
                }
            }
            break;
        case EditMix::OverwritesOnly:
            Overwrite(PickOffset(size + 1), PickValue());
            break;
        case EditMix::OverwritesAndAppends:
            if (roll < 60) {
                Overwrite(PickOffset(size), PickValue());
            } else {
                Insert(size, PickValue());
            }
            break;
        case EditMix::OverwritesAndTailCuts:
            if (roll < 60) {
                Overwrite(PickOffset(size), PickValue());
            } else if (size > 0) {
                Delete(size - 1);
            }
            break;
        case EditMix::AppendsAndTailCuts:
            AppendOrCutTail(roll);
            break;
        }
    }

    // Edits that keep the one run at the file's end and the deletions at its tail: cut the last file
    // byte in front of the run, type anywhere in the run or behind it, take a byte out of the run, or
    // overwrite. The trial's lean shifts the weight from typing to cutting, so that runs come out
    // shorter than, as long as and longer than the cut.
    void AppendOrCutTail(std::uint64_t roll)
    {
        const std::uint64_t size = model.size();
        const std::uint64_t runLength = document.insertedRuns.TotalLength();
        const std::uint64_t fileBytesShown = size - runLength;
        const std::uint64_t cutUpTo = 35 + 15 * lean;
        if (roll < 20) {
            Overwrite(PickOffset(size), PickValue());
        } else if (roll < cutUpTo) {
            if (fileBytesShown > 0) {
                Delete(fileBytesShown - 1);
            }
        } else if (roll < 90) {
            Insert(fileBytesShown + Pick(runLength), PickValue());
        } else if (runLength > 0) {
            Delete(fileBytesShown + Pick(runLength - 1));
        }
    }

    void CheckSizesAndContainers()
    {
        ASSERT_EQ(document.GetEditedSize(), model.size());
        ASSERT_EQ(document.GetSize(), model.size());
        ASSERT_EQ(reference.GetEditedSize(), model.size());
        ASSERT_EQ(document.IsModified(), reference.IsModified());
        ASSERT_EQ(document.SavesViaTemporaryFile(), reference.SavesViaTemporaryFile());
        ASSERT_EQ(document.insertedRuns.ToMap(), reference.insertedRuns);
        ASSERT_EQ(document.deletedOffsets.ToSet(), reference.deletedOffsets);
        ASSERT_EQ(document.overwrites, reference.overwrites);
    }

    void CheckResolution()
    {
        const std::uint64_t size = model.size();
        for (int i = 0; i < 4; ++i) {
            const std::uint64_t v = PickOffset(size + 1);
            const ResolvedPosition mine = document.ResolvePosition(v);
            const ReferenceDocument::Resolved literal = reference.ResolvePosition(v);
            ASSERT_EQ(mine.valid, literal.valid) << v;
            ASSERT_EQ(mine.inRun, literal.inRun) << v;
            ASSERT_EQ(mine.offset, literal.offset) << v;
            ASSERT_EQ(mine.indexInRun, literal.indexInRun) << v;
            ASSERT_EQ(document.ReadByteAt(v), reference.ReadByteAt(v)) << v;
            const std::uint64_t fileSize = document.file.GetSize();
            const std::uint64_t first = Pick(fileSize);
            const std::uint64_t last = first + Pick(fileSize - first + 1);
            ASSERT_EQ(document.CountDeletedIn(first, last), reference.CountDeletedIn(first, last));
            const std::uint64_t n = Pick(last - first + 2);
            ASSERT_EQ(document.SkipDeleted(first, last, n), reference.SkipDeleted(first, last, n));
        }
    }

    void CheckReads()
    {
        const std::uint64_t size = model.size();
        for (int i = 0; i < 3; ++i) {
            const std::uint64_t offset = PickOffset(size + 1);
            const std::uint64_t count = Pick(2) == 0 ? Pick(3) : Pick(i == 0 ? 2 * MiB : 300);
            const ByteBlock block = document.Read(offset, count);
            ASSERT_EQ(block.offset, offset);
            const std::uint64_t begin = std::min(offset, size);
            const std::uint64_t end = std::min(size, begin + std::min(count, size - begin));
            ASSERT_TRUE(std::equal(block.bytes.begin(), block.bytes.end(), model.begin() + static_cast<std::ptrdiff_t>(begin),
                model.begin() + static_cast<std::ptrdiff_t>(end)))
                << "read of " << count << " at " << offset;
            if (count <= 4096) {
                ASSERT_EQ(block.bytes, reference.Read(offset, count)) << "read of " << count << " at " << offset;
            }
        }
    }

    // Both search directions over the edited view agree with a plain scan of the model, for patterns
    // taken from the model (often across the block seam) and from `start` boundaries.
    void CheckSearches()
    {
        const std::uint64_t size = model.size();
        for (int i = 0; i < 4; ++i) {
            std::vector<std::uint8_t> pattern(static_cast<std::size_t>(1 + Pick(7)));
            if (size >= pattern.size() && Pick(3) != 0) {
                const std::uint64_t at = std::min(PickOffset(size), size - pattern.size());
                std::copy_n(model.begin() + static_cast<std::ptrdiff_t>(at), pattern.size(), pattern.begin());
            } else {
                for (std::uint8_t& byte : pattern) {
                    byte = PickValue();
                }
            }
            const std::uint64_t start = PickOffset(size + 1);
            ASSERT_EQ(Found(SearchForward(&document, pattern, start)), ScanForward(pattern, start))
                << "forward from " << start;
            ASSERT_EQ(Found(SearchBackward(&document, pattern, start)), ScanBackward(pattern, start))
                << "backward from " << start;
        }
    }

    static std::optional<std::uint64_t> Found(const SearchResult& result)
    {
        return result.status == SearchStatus::Found ? std::optional<std::uint64_t>(result.offset) : std::nullopt;
    }

    bool MatchesAt(const std::vector<std::uint8_t>& pattern, std::uint64_t at) const
    {
        return std::equal(pattern.begin(), pattern.end(), model.begin() + static_cast<std::ptrdiff_t>(at));
    }

    std::optional<std::uint64_t> ScanForward(const std::vector<std::uint8_t>& pattern, std::uint64_t start) const
    {
        for (std::uint64_t at = start; at + pattern.size() <= model.size(); ++at) {
            if (MatchesAt(pattern, at)) {
                return at;
            }
        }
        return std::nullopt;
    }

    std::optional<std::uint64_t> ScanBackward(const std::vector<std::uint8_t>& pattern, std::uint64_t start) const
    {
        if (pattern.size() > model.size()) {
            return std::nullopt;
        }
        for (std::uint64_t at = std::min<std::uint64_t>(start, model.size() - pattern.size()) + 1; at-- > 0;) {
            if (MatchesAt(pattern, at)) {
                return at;
            }
        }
        return std::nullopt;
    }

    // Saves `saved`, whose file is `name` in the folder, and checks that the file on disk then holds
    // exactly what the document showed before: the model.
    void SaveOneAndCheck(const TestFolder& folder, EditableDocument& saved, const std::string& name, bool viaTemporaryFile)
    {
        const bool modified = saved.IsModified();
        const std::uint64_t createdBefore = FileOperationCalls(FileOperation::CreateNew);
        ASSERT_TRUE(saved.Save()) << std::string(saved.lastError.begin(), saved.lastError.end());
        ASSERT_EQ(FileOperationCalls(FileOperation::CreateNew) - createdBefore, modified && viaTemporaryFile ? 1u : 0u);
        ASSERT_TRUE(saved.IsOpen());
        ASSERT_FALSE(saved.IsModified());
        ASSERT_TRUE(saved.lastError.empty());
        const std::vector<std::uint8_t> disk = test::ReadWholeFile(folder.File(name));
        ASSERT_EQ(disk.size(), model.size());
        ASSERT_TRUE(disk == model);
        ASSERT_EQ(saved.GetEditedSize(), disk.size());
        ASSERT_TRUE(saved.Read(0, disk.size() + 1).bytes == disk);
        ASSERT_TRUE(folder.TemporaryFiles().empty());
        saved.Close();
    }

    // The file itself by the path its edits choose, which must be in place for every mix but Mixed.
    // When that is in place, the twin goes through a temporary file first, so that both paths write
    // the same edits.
    void SaveAndCheck(const TestFolder& folder, SaveTally& tally)
    {
        const bool viaTemporaryFile = document.SavesViaTemporaryFile();
        ASSERT_TRUE(mix == EditMix::Mixed || !viaTemporaryFile);
        if (!viaTemporaryFile) {
            ASSERT_TRUE(twin.Read(0, model.size() + 1).bytes == model);
            ASSERT_TRUE(twin.SavesViaTemporaryFile());
            ASSERT_NO_FATAL_FAILURE(SaveOneAndCheck(folder, twin, twinName, true));
        }
        if (document.IsModified()) {
            (viaTemporaryFile ? tally.temporary : tally.inPlace)++;
        }
        const std::uint64_t runLength = document.insertedRuns.TotalLength();
        const std::uint64_t cut = document.deletedOffsets.Count();
        if (!viaTemporaryFile && runLength > 0 && cut > 0) {
            (runLength < cut ? tally.runShorterThanCut : runLength == cut ? tally.runAsLongAsCut : tally.runLongerThanCut)++;
        }
        reference.file.Close();
        ASSERT_NO_FATAL_FAILURE(SaveOneAndCheck(folder, document, PathName(), viaTemporaryFile));
    }

    std::string PathName() const
    {
        const std::filesystem::path asPath(path);
        return asPath.filename().string();
    }

    EditableDocument document;
    ReferenceDocument reference;
    // The same edits on a copy of the file, opened by a path that is never saved in place.
    EditableDocument twin;
    std::vector<std::uint8_t> model;

private:
    std::mt19937_64 random;
    EditMix mix;
    std::uint64_t lean = 0;
    std::vector<std::uint8_t> original;
    std::u16string path;
    std::string twinName;
};

void RunTrial(const TestFolder& folder, std::uint32_t seed, std::uint64_t fileSize, EditMix mix, int edits, SaveTally& tally)
{
    SCOPED_TRACE("seed " + std::to_string(seed) + ", file size " + std::to_string(fileSize));
    ModelTrial trial(folder, seed, fileSize, mix);
    for (int i = 0; i < edits; ++i) {
        ASSERT_NO_FATAL_FAILURE(trial.RandomEdit());
        ASSERT_NO_FATAL_FAILURE(trial.CheckSizesAndContainers());
        if (i % 4 == 0 || i == edits - 1) {
            ASSERT_NO_FATAL_FAILURE(trial.CheckResolution());
            ASSERT_NO_FATAL_FAILURE(trial.CheckReads());
        }
    }
    ASSERT_NO_FATAL_FAILURE(trial.CheckSearches());
    ASSERT_NO_FATAL_FAILURE(trial.SaveAndCheck(folder, tally));
}

TEST(EditableDocumentModel, RandomEditsOnSmallFilesMatchModelReferenceAndDisk)
{
    TestFolder folder;
    SaveTally tally;
    const EditMix mixes[] = {EditMix::Mixed, EditMix::Mixed, EditMix::OverwritesOnly, EditMix::OverwritesAndAppends,
        EditMix::OverwritesAndTailCuts, EditMix::AppendsAndTailCuts};
    for (std::uint32_t seed = 1; seed <= 2000; ++seed) {
        const std::uint64_t sizes[] = {0, 1, 2, seed % 64, seed % 700};
        const std::uint64_t fileSize = sizes[seed % 5];
        const EditMix mix = mixes[seed % 6];
        ASSERT_NO_FATAL_FAILURE(RunTrial(folder, seed, fileSize, mix, 10 + static_cast<int>(seed % 50), tally));
    }
    EXPECT_GT(tally.temporary, 300);
    EXPECT_GT(tally.inPlace, 300);
}

// An appended run and a cut tail pending together, the case where an in-place save must put the run
// where it was shown rather than at the file's old end.
TEST(EditableDocumentModel, AppendedRunsWithCutTailsMatchModelReferenceAndDiskByBothPaths)
{
    TestFolder folder;
    SaveTally tally;
    for (std::uint32_t seed = 50001; seed <= 50800; ++seed) {
        const std::uint64_t sizes[] = {1, 2, 3 + seed % 16, seed % 700};
        const std::uint64_t fileSize = sizes[seed % 4];
        ASSERT_NO_FATAL_FAILURE(
            RunTrial(folder, seed, fileSize, EditMix::AppendsAndTailCuts, 5 + static_cast<int>(seed % 40), tally));
    }
    EXPECT_EQ(tally.temporary, 0);
    EXPECT_GT(tally.runShorterThanCut, 100);
    EXPECT_GT(tally.runAsLongAsCut, 20);
    EXPECT_GT(tally.runLongerThanCut, 100);
}

TEST(EditableDocumentModel, RandomEditsAroundTheBlockSeamMatchModelReferenceAndDisk)
{
    TestFolder folder;
    SaveTally tally;
    const EditMix mixes[] = {EditMix::Mixed, EditMix::OverwritesAndAppends, EditMix::Mixed, EditMix::AppendsAndTailCuts};
    for (std::uint32_t seed = 9001; seed <= 9030; ++seed) {
        const std::uint64_t fileSize = MiB - 3 + seed % 7;
        ASSERT_NO_FATAL_FAILURE(RunTrial(folder, seed, fileSize, mixes[seed % 4], 60, tally));
    }
    EXPECT_GT(tally.temporary, 0);
    EXPECT_GT(tally.inPlace, 0);
    EXPECT_GT(tally.runShorterThanCut + tally.runAsLongAsCut + tally.runLongerThanCut, 0);
}

// Thousands of scattered edits, so that deletions, runs and run chunks fill many blocks of their
// containers and every split and merge is crossed.
TEST(EditableDocumentModel, ManyScatteredEditsMatchModelReferenceAndDisk)
{
    TestFolder folder;
    SaveTally tally;
    for (std::uint32_t seed = 40001; seed <= 40003; ++seed) {
        SCOPED_TRACE(seed);
        ModelTrial trial(folder, seed, 30000, EditMix::Mixed);
        for (int i = 0; i < 6000; ++i) {
            const std::uint64_t size = trial.model.size();
            const std::uint64_t roll = trial.Pick(9);
            if (roll < 4) {
                ASSERT_NO_FATAL_FAILURE(trial.Delete(trial.Pick(size)));
            } else if (roll < 8) {
                ASSERT_NO_FATAL_FAILURE(trial.Insert(trial.Pick(size), trial.PickValue()));
            } else {
                ASSERT_NO_FATAL_FAILURE(trial.Overwrite(trial.Pick(size), trial.PickValue()));
            }
            if (i % 500 == 0) {
                ASSERT_NO_FATAL_FAILURE(trial.CheckSizesAndContainers());
                ASSERT_NO_FATAL_FAILURE(trial.CheckResolution());
                ASSERT_NO_FATAL_FAILURE(trial.CheckReads());
            }
        }
        ASSERT_GT(trial.document.deletedOffsets.IntervalCount(), 300u);
        ASSERT_GT(trial.document.insertedRuns.RunCount(), 300u);
        ASSERT_NO_FATAL_FAILURE(trial.CheckSizesAndContainers());
        ASSERT_TRUE(trial.document.Read(0, trial.model.size()).bytes == trial.model);
        ASSERT_NO_FATAL_FAILURE(trial.SaveAndCheck(folder, tally));
    }
    EXPECT_EQ(tally.temporary, 3);
}

// After a failed save whose reopen also failed, the file is closed but the edits are kept; reads
// must still give what the first design gives, and never crash or hang.
TEST(EditableDocumentModel, ClosedFileWithKeptEditsReadsLikeTheReference)
{
    TestFolder folder;
    for (std::uint32_t seed = 20001; seed <= 20150; ++seed) {
        SCOPED_TRACE(seed);
        ModelTrial trial(folder, seed, seed % 40, EditMix::Mixed);
        for (int i = 0; i < 30; ++i) {
            ASSERT_NO_FATAL_FAILURE(trial.RandomEdit());
        }
        trial.document.file.Close();
        trial.reference.file.Close();
        ASSERT_EQ(trial.document.GetEditedSize(), trial.reference.GetEditedSize());
        for (std::uint64_t offset = 0; offset < 80; ++offset) {
            ASSERT_EQ(trial.document.Read(offset, 50).bytes, trial.reference.Read(offset, 50)) << offset;
        }
        EXPECT_FALSE(trial.document.OverwriteByte(0, 1));
        EXPECT_FALSE(trial.document.InsertByte(0, 1));
        EXPECT_FALSE(trial.document.DeleteByte(0));
    }
}

// Another program cuts the file while it is shown: reads stop where the file now ends, as the
// byte-by-byte reads of the first design do.
TEST(EditableDocumentModel, FileTruncatedUnderneathReadsLikeTheReference)
{
    TestFolder folder;
    for (std::uint32_t seed = 30001; seed <= 30060; ++seed) {
        SCOPED_TRACE(seed);
        ModelTrial trial(folder, seed, 200 + seed % 50, EditMix::Mixed);
        for (int i = 0; i < 40; ++i) {
            ASSERT_NO_FATAL_FAILURE(trial.RandomEdit());
        }
        std::filesystem::resize_file(folder.File("model-" + std::to_string(seed) + ".bin"), 120 + seed % 20);
        for (std::uint64_t offset = 0; offset < trial.model.size() + 2; offset += 7) {
            ASSERT_EQ(trial.document.Read(offset, 64).bytes, trial.reference.Read(offset, 64)) << offset;
        }
        trial.document.Close();
    }
}

} // namespace
} // namespace tlm
