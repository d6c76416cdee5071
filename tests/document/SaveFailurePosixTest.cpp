// Save failures under real conditions the system produces: a read-only file system, an immutable
// target, another user's target in a sticky folder, a full disk, a target moved away during the save,
// a target its user may write but not read. Each needs some privilege; where this
// machine cannot give the condition the test says so and skips, and the injected variant of the same
// failure (SaveTest) still runs.
#include "TestFolder.h"

#include "document/EditableDocument.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <grp.h>
#include <optional>
#include <pwd.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>
#if defined(__linux__)
#include <linux/fs.h>
#endif

namespace tlm {
namespace {

using test::TestFolder;
using Bytes = std::vector<std::uint8_t>;

bool IsRoot()
{
    return geteuid() == 0;
}

bool Run(const std::string& command)
{
    return std::system((command + " >/dev/null 2>&1").c_str()) == 0;
}

std::string Quoted(const std::filesystem::path& path)
{
    return "'" + path.string() + "'";
}

bool CanCreateIn(const std::filesystem::path& folder)
{
    const std::filesystem::path probe = folder / "probe";
    const int descriptor = open(probe.c_str(), O_WRONLY | O_CREAT | O_EXCL, 0600);
    if (descriptor < 0) {
        return false;
    }
    close(descriptor);
    unlink(probe.c_str());
    return true;
}

struct UserIds {
    uid_t user = 65534;
    gid_t group = 65534;
};

UserIds Nobody()
{
    const passwd* entry = getpwnam("nobody");
    return entry ? UserIds{entry->pw_uid, entry->pw_gid} : UserIds{};
}

// Acts as the unprivileged user "nobody" until restored: root passes every permission bit, so a test
// running as root drops to a user whom the bits bind. Only root can switch; `works` says whether it did.
class ActingAsNobody {
public:
    ActingAsNobody()
    {
        if (!IsRoot()) {
            return;
        }
        const auto [user, group] = Nobody();
        groups.resize(static_cast<std::size_t>(std::max(getgroups(0, nullptr), 0)));
        if (getgroups(static_cast<int>(groups.size()), groups.data()) < 0) {
            groups.clear();
        }
        // Root's own groups would still grant their bits; drop them too.
        if (setgroups(0, nullptr) != 0 || setegid(group) != 0) {
            Restore();
            return;
        }
        groupChanged = true;
        works = seteuid(user) == 0;
        if (!works) {
            Restore();
        }
    }
    ~ActingAsNobody() { Restore(); }
    ActingAsNobody(const ActingAsNobody&) = delete;
    ActingAsNobody& operator=(const ActingAsNobody&) = delete;

    void Restore()
    {
        if (works) {
            seteuid(0);
            works = false;
        }
        if (groupChanged) {
            setegid(0);
            groupChanged = false;
        }
        setgroups(groups.size(), groups.data());
    }

    bool works = false;

private:
    std::vector<gid_t> groups;
    bool groupChanged = false;
};

// Makes a folder refuse new files: as root a read-only bind mount of it over itself, or where root may
// not mount, its permission bits with the test acting as "nobody"; the permission bits otherwise.
// Undone at the end.
class ReadOnlyFolder {
public:
    explicit ReadOnlyFolder(std::filesystem::path folder)
        : folder(std::move(folder))
    {
        if (IsRoot()) {
            mounted = Run("mount --bind " + Quoted(this->folder) + " " + Quoted(this->folder));
            if (mounted && !Run("mount -o remount,bind,ro " + Quoted(this->folder))) {
                Undo();
            }
        }
        if (!mounted) {
            chmodded = chmod(this->folder.c_str(), 0555) == 0;
            if (chmodded && IsRoot()) {
                nobody.emplace();
            }
        }
        works = (mounted || chmodded) && (!nobody || nobody->works) && !CanCreateIn(this->folder);
    }
    ~ReadOnlyFolder() { Undo(); }

    void Undo()
    {
        nobody.reset();
        if (mounted) {
            Run("umount -l " + Quoted(folder));
            mounted = false;
        }
        if (chmodded) {
            chmod(folder.c_str(), 0755);
            chmodded = false;
        }
    }

    // What opening a file in the folder for writing fails with.
    int WriteError() const { return mounted ? EROFS : EACCES; }

    bool works = false;

private:
    std::filesystem::path folder;
    bool mounted = false;
    bool chmodded = false;
    std::optional<ActingAsNobody> nobody;
};

// A small tmpfs mounted on a folder, to fill up.
class SmallFileSystem {
public:
    explicit SmallFileSystem(std::filesystem::path folder, std::uint64_t bytes)
        : folder(std::move(folder))
    {
        mounted = IsRoot() && Run("mount -t tmpfs -o size=" + std::to_string(bytes) + " tmpfs " + Quoted(this->folder));
    }
    ~SmallFileSystem()
    {
        if (mounted) {
            Run("umount -l " + Quoted(folder));
        }
    }

    bool mounted = false;

private:
    std::filesystem::path folder;
};

// Sets the immutable attribute, which even root cannot write, rename over or delete through.
class ImmutableFile {
public:
    explicit ImmutableFile(const std::filesystem::path& path)
    {
#if defined(FS_IOC_SETFLAGS)
        descriptor = open(path.c_str(), O_RDONLY);
        int flags = 0;
        if (descriptor >= 0 && ioctl(descriptor, FS_IOC_GETFLAGS, &flags) == 0) {
            flags |= FS_IMMUTABLE_FL;
            works = ioctl(descriptor, FS_IOC_SETFLAGS, &flags) == 0;
        }
#else
        (void)path;
#endif
    }
    ~ImmutableFile()
    {
#if defined(FS_IOC_SETFLAGS)
        if (works) {
            int flags = 0;
            ioctl(descriptor, FS_IOC_GETFLAGS, &flags);
            flags &= ~FS_IMMUTABLE_FL;
            ioctl(descriptor, FS_IOC_SETFLAGS, &flags);
        }
        if (descriptor >= 0) {
            close(descriptor);
        }
#endif
    }

    bool works = false;

private:
    int descriptor = -1;
};

class SaveFailurePosixTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        subfolder = folder.Path() / "target-folder";
        std::filesystem::create_directory(subfolder);
    }

    void Open(const Bytes& bytes)
    {
        original = bytes;
        test::WriteWholeFile(Target(), bytes);
        ASSERT_TRUE(document.file.Open(test::PathText(Target())));
    }

    std::filesystem::path Target() const { return subfolder / "target.bin"; }
    Bytes Shown() const { return document.Read(0, document.GetEditedSize()).bytes; }

    std::vector<std::string> TemporaryFiles() const
    {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(subfolder)) {
            const std::string name = entry.path().filename().string();
            if (name.starts_with("Tolmo-")) {
                names.push_back(name);
            }
        }
        return names;
    }

    void ExpectNothingChanged(const Bytes& shown)
    {
        EXPECT_EQ(test::ReadWholeFile(Target()), original);
        EXPECT_TRUE(document.IsOpen());
        EXPECT_TRUE(document.IsModified());
        EXPECT_EQ(Shown(), shown);
        EXPECT_FALSE(document.lastError.empty());
        EXPECT_TRUE(TemporaryFiles().empty());
    }

    TestFolder folder;
    std::filesystem::path subfolder;
    Bytes original;
    EditableDocument document;
};

TEST_F(SaveFailurePosixTest, TargetFolderNotWritableFailsTheRewriteAndKeepsEverything)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.InsertByte(3, 0xEE));
    const Bytes shown = Shown();
    ReadOnlyFolder readOnly(subfolder);
    if (!readOnly.works) {
        GTEST_SKIP() << "this machine cannot make a folder refuse new files";
    }
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
    readOnly.Undo();
    EXPECT_TRUE(document.Save());
    EXPECT_EQ(test::ReadWholeFile(Target()), shown);
}

TEST_F(SaveFailurePosixTest, ReadOnlyFileSystemFailsTheInPlaceOpenAndKeepsEverything)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.OverwriteByte(3, 0xEE));
    const Bytes shown = Shown();
    std::optional<ReadOnlyFolder> readOnly;
    if (IsRoot()) {
        readOnly.emplace(subfolder);
    } else if (chmod(Target().c_str(), 0444) != 0) {
        GTEST_SKIP() << "cannot make the target read-only";
    }
    if (readOnly && !readOnly->works) {
        GTEST_SKIP() << "this machine can neither mount the folder read-only nor act as another user";
    }
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(readOnly ? readOnly->WriteError() : EACCES));
}

TEST_F(SaveFailurePosixTest, AnImmutableTargetCannotBeReplacedAndTheTemporaryFileGoes)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.DeleteByte(2));
    const Bytes shown = Shown();
    ImmutableFile immutable(Target());
    if (!immutable.works) {
        GTEST_SKIP() << "this file system or user cannot set the immutable attribute";
    }
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(EPERM));
}

TEST_F(SaveFailurePosixTest, AnotherUsersTargetInAStickyFolderCannotBeReplacedAndTheTemporaryFileGoes)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.InsertByte(5, 0xEE));
    const Bytes shown = Shown();
    // Anybody may create files in a sticky folder, but only a file's owner may rename over it.
    ASSERT_EQ(chmod(subfolder.c_str(), 01777), 0);
    ActingAsNobody nobody;
    if (!nobody.works) {
        GTEST_SKIP() << "only root can act as another user";
    }
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(EPERM));
    nobody.Restore();
    EXPECT_TRUE(document.Save());
    EXPECT_EQ(test::ReadWholeFile(Target()), shown);
}

TEST_F(SaveFailurePosixTest, AnImmutableTargetFailsTheInPlaceOpen)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.OverwriteByte(2, 0xEE));
    const Bytes shown = Shown();
    ImmutableFile immutable(Target());
    if (!immutable.works) {
        GTEST_SKIP() << "this file system or user cannot set the immutable attribute";
    }
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
}

TEST_F(SaveFailurePosixTest, ATargetMovedAwayDuringAnInPlaceSaveCannotBeReopened)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.OverwriteByte(1, 0xA1));
    ASSERT_TRUE(document.OverwriteByte(6, 0xA6));
    const Bytes shown = Shown();
    const std::filesystem::path moved = subfolder / "moved.bin";
    bool movedAway = false;
    // Another program renames the file while the save writes through its open handle.
    EXPECT_FALSE(document.Save([&](std::uint64_t, std::uint64_t) {
        if (!movedAway) {
            std::filesystem::rename(Target(), moved);
            movedAway = true;
        }
    }));
    EXPECT_EQ(test::ReadWholeFile(moved), shown);
    EXPECT_FALSE(std::filesystem::exists(Target()));
    EXPECT_FALSE(document.IsOpen());
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(document.lastError, FormatSystemError(ENOENT));
    EXPECT_TRUE(TemporaryFiles().empty());
}

// The target belongs to the user saving it, who may write it but not read it: the save itself goes
// through, and only the reopen after it fails.
class UnreadableTargetTest : public SaveFailurePosixTest {
protected:
    void MakeTargetWriteOnlyForNobody()
    {
        const UserIds nobody = Nobody();
        ASSERT_EQ(chown(Target().c_str(), nobody.user, nobody.group), 0);
        ASSERT_EQ(chmod(Target().c_str(), 0200), 0);
        ASSERT_EQ(chmod(subfolder.c_str(), 0777), 0);
    }

    void ExpectSavedButClosed(const Bytes& shown)
    {
        EXPECT_EQ(test::ReadWholeFile(Target()), shown);
        EXPECT_FALSE(document.IsOpen());
        EXPECT_FALSE(document.IsModified());
        EXPECT_EQ(document.lastError, FormatSystemError(EACCES));
        EXPECT_TRUE(TemporaryFiles().empty());
    }
};

TEST_F(UnreadableTargetTest, AnInPlaceSaveWritesTheFileButCannotReopenIt)
{
    if (!IsRoot()) {
        GTEST_SKIP() << "only root can give the target to another user";
    }
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.OverwriteByte(2, 0xA2));
    ASSERT_TRUE(document.InsertByte(8, 0xB0));
    ASSERT_FALSE(document.SavesViaTemporaryFile());
    const Bytes shown = Shown();
    ASSERT_NO_FATAL_FAILURE(MakeTargetWriteOnlyForNobody());
    ActingAsNobody nobody;
    if (!nobody.works) {
        GTEST_SKIP() << "this machine cannot act as another user";
    }
    EXPECT_FALSE(document.Save());
    nobody.Restore();
    ExpectSavedButClosed(shown);
}

TEST_F(UnreadableTargetTest, ARewriteReplacesTheFileButCannotReopenIt)
{
    if (!IsRoot()) {
        GTEST_SKIP() << "only root can give the target to another user";
    }
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.InsertByte(3, 0xEE));
    ASSERT_TRUE(document.DeleteByte(6));
    ASSERT_TRUE(document.SavesViaTemporaryFile());
    const Bytes shown = Shown();
    ASSERT_NO_FATAL_FAILURE(MakeTargetWriteOnlyForNobody());
    ActingAsNobody nobody;
    if (!nobody.works) {
        GTEST_SKIP() << "this machine cannot act as another user";
    }
    EXPECT_FALSE(document.Save());
    nobody.Restore();
    ExpectSavedButClosed(shown);
    // The replacement took the target's permission bits, which is why it cannot be read.
    struct stat status {};
    ASSERT_EQ(stat(Target().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0200u);
}

TEST_F(SaveFailurePosixTest, AFullDiskStopsAnInPlaceSavePartWayAndKeepsTheEdits)
{
    SmallFileSystem small(subfolder, 64 * 1024);
    if (!small.mounted) {
        GTEST_SKIP() << "this machine cannot mount a small file system";
    }
    Open(Bytes(16 * 1024, 0x11));
    ASSERT_TRUE(document.OverwriteByte(5, 0x55));
    for (int i = 0; i < 200 * 1024; ++i) {
        ASSERT_TRUE(document.InsertByte(document.GetEditedSize(), 0x22));
    }
    const Bytes shown = Shown();
    EXPECT_FALSE(document.Save());
    EXPECT_TRUE(document.IsOpen());
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.file.GetSize(), 16u * 1024);
    EXPECT_EQ(Shown(), shown);
    EXPECT_EQ(document.lastError, FormatSystemError(ENOSPC));
    // Partly written: the overwrite went in before the disk filled up.
    const Bytes onDisk = test::ReadWholeFile(Target());
    ASSERT_GT(onDisk.size(), 5u);
    EXPECT_EQ(onDisk[5], 0x55);
    document.Close();
}

TEST_F(SaveFailurePosixTest, AFullDiskFailsTheRewriteAndRemovesTheTemporaryFile)
{
    SmallFileSystem small(subfolder, 64 * 1024);
    if (!small.mounted) {
        GTEST_SKIP() << "this machine cannot mount a small file system";
    }
    Open(Bytes(40 * 1024, 0x11));
    ASSERT_TRUE(document.InsertByte(0, 0x22));
    const Bytes shown = Shown();
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatSystemError(ENOSPC));
    document.Close();
}

TEST_F(SaveFailurePosixTest, ARewriteKeepsTheTargetsPermissionBits)
{
    Open({0, 1, 2, 3});
    ASSERT_EQ(chmod(Target().c_str(), 0640), 0);
    ASSERT_TRUE(document.InsertByte(1, 0xEE));
    ASSERT_TRUE(document.Save());
    struct stat status {};
    ASSERT_EQ(stat(Target().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0640u);
    EXPECT_EQ(test::ReadWholeFile(Target()), (Bytes{0, 0xEE, 1, 2, 3}));
}

} // namespace
} // namespace tlm
