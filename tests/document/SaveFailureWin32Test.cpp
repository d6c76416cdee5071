// Save failures under real conditions Windows produces: a target another program holds open without
// sharing, a read-only target, a folder whose access list refuses new files. Where the system (or
// Wine) cannot give the condition the test says so and skips; the injected variant of the same
// failure (SaveTest) still runs. A failed reopen has no real variant here: the in-place write handle
// shares only reading, so nobody can move or delete the target during the save, and a rewrite reopens
// right after the replace with nothing in between.
#include "TestFolder.h"

#include "document/EditableDocument.h"

#include <windows.h>

#include <aclapi.h>

#include <gtest/gtest.h>

namespace tlm {
namespace {

using test::TestFolder;
using Bytes = std::vector<std::uint8_t>;

const wchar_t* Wide(const std::u16string& text)
{
    return reinterpret_cast<const wchar_t*>(text.c_str());
}

// Another program holding the target open for reading and letting others only read.
class LockedFile {
public:
    explicit LockedFile(const std::u16string& path)
        : handle(CreateFileW(Wide(path), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    ~LockedFile()
    {
        if (handle != INVALID_HANDLE_VALUE) {
            CloseHandle(handle);
        }
    }
    bool Works() const { return handle != INVALID_HANDLE_VALUE; }

private:
    HANDLE handle;
};

// Denies everybody the right to add files to a folder, through its access control list.
class FolderRefusingNewFiles {
public:
    explicit FolderRefusingNewFiles(std::u16string folder)
        : folder(std::move(folder))
    {
        PACL current = nullptr;
        if (GetNamedSecurityInfoW(Wide(this->folder), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                &current, nullptr, &descriptor)
            != ERROR_SUCCESS) {
            return;
        }
        original = current;
        SID_IDENTIFIER_AUTHORITY world = SECURITY_WORLD_SID_AUTHORITY;
        PSID everyone = nullptr;
        if (!AllocateAndInitializeSid(&world, 1, SECURITY_WORLD_RID, 0, 0, 0, 0, 0, 0, 0, &everyone)) {
            return;
        }
        EXPLICIT_ACCESSW deny{};
        deny.grfAccessPermissions = FILE_ADD_FILE;
        deny.grfAccessMode = DENY_ACCESS;
        deny.grfInheritance = NO_INHERITANCE;
        deny.Trustee.TrusteeForm = TRUSTEE_IS_SID;
        deny.Trustee.TrusteeType = TRUSTEE_IS_WELL_KNOWN_GROUP;
        deny.Trustee.ptstrName = static_cast<LPWSTR>(everyone);
        PACL denying = nullptr;
        if (SetEntriesInAclW(1, &deny, current, &denying) == ERROR_SUCCESS) {
            applied = SetNamedSecurityInfoW(const_cast<wchar_t*>(Wide(this->folder)), SE_FILE_OBJECT,
                          DACL_SECURITY_INFORMATION, nullptr, nullptr, denying, nullptr)
                == ERROR_SUCCESS;
            LocalFree(denying);
        }
        FreeSid(everyone);
    }
    ~FolderRefusingNewFiles()
    {
        if (applied) {
            SetNamedSecurityInfoW(const_cast<wchar_t*>(Wide(folder)), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION,
                nullptr, nullptr, original, nullptr);
        }
        if (descriptor != nullptr) {
            LocalFree(descriptor);
        }
    }

    // Whether the system really refuses a new file now (Wine ignores access lists).
    bool Works() const
    {
        if (!applied) {
            return false;
        }
        const std::u16string probe = folder + u"\\probe.bin";
        const HANDLE handle = CreateFileW(Wide(probe), GENERIC_WRITE, 0, nullptr, CREATE_NEW, FILE_ATTRIBUTE_NORMAL, nullptr);
        if (handle == INVALID_HANDLE_VALUE) {
            return true;
        }
        CloseHandle(handle);
        DeleteFileW(Wide(probe));
        return false;
    }

private:
    std::u16string folder;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    PACL original = nullptr;
    bool applied = false;
};

// Whether this system refuses to write or replace a file with the read-only attribute (Wine running
// as root does not).
bool ReadOnlyAttributeIsEnforced(const TestFolder& folder)
{
    const std::u16string probe = folder.Write("read-only-probe.bin", {1});
    const std::u16string other = folder.Write("read-only-other.bin", {2});
    SetFileAttributesW(Wide(probe), FILE_ATTRIBUTE_READONLY);
    const HANDLE handle = CreateFileW(Wide(probe), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    bool enforced = handle == INVALID_HANDLE_VALUE;
    if (handle != INVALID_HANDLE_VALUE) {
        CloseHandle(handle);
    }
    enforced = enforced && !MoveFileExW(Wide(other), Wide(probe), MOVEFILE_REPLACE_EXISTING);
    SetFileAttributesW(Wide(probe), FILE_ATTRIBUTE_NORMAL);
    DeleteFileW(Wide(probe));
    DeleteFileW(Wide(other));
    return enforced;
}

class SaveFailureWin32Test : public ::testing::Test {
protected:
    void Open(const Bytes& bytes)
    {
        original = bytes;
        path = folder.Write("target.bin", bytes);
        ASSERT_TRUE(document.file.Open(path));
    }

    Bytes Shown() const { return document.Read(0, document.GetEditedSize()).bytes; }

    void ExpectNothingChanged(const Bytes& shown)
    {
        EXPECT_EQ(test::ReadWholeFile(folder.File("target.bin")), original);
        EXPECT_TRUE(document.IsOpen());
        EXPECT_TRUE(document.IsModified());
        EXPECT_EQ(Shown(), shown);
        EXPECT_FALSE(document.lastError.empty());
        EXPECT_TRUE(folder.TemporaryFiles().empty());
    }

    TestFolder folder;
    std::u16string path;
    Bytes original;
    EditableDocument document;
};

TEST_F(SaveFailureWin32Test, ALockedTargetCannotBeReplacedAndTheDocumentReopens)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.InsertByte(2, 0xEE));
    const Bytes shown = Shown();
    {
        LockedFile lock(path);
        ASSERT_TRUE(lock.Works());
        EXPECT_FALSE(document.Save());
        ExpectNothingChanged(shown);
    }
    EXPECT_TRUE(document.Save());
    EXPECT_EQ(test::ReadWholeFile(folder.File("target.bin")), shown);
}

TEST_F(SaveFailureWin32Test, ALockedTargetFailsTheInPlaceOpen)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.OverwriteByte(2, 0xEE));
    const Bytes shown = Shown();
    LockedFile lock(path);
    ASSERT_TRUE(lock.Works());
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatWin32Error(ERROR_SHARING_VIOLATION));
}

TEST_F(SaveFailureWin32Test, AReadOnlyTargetFailsTheInPlaceOpen)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.OverwriteByte(2, 0xEE));
    const Bytes shown = Shown();
    if (!ReadOnlyAttributeIsEnforced(folder)) {
        GTEST_SKIP() << "this system does not enforce the read-only attribute (Wine running as root)";
    }
    ASSERT_TRUE(SetFileAttributesW(Wide(path), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
    EXPECT_EQ(document.lastError, FormatWin32Error(ERROR_ACCESS_DENIED));
    SetFileAttributesW(Wide(path), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SaveFailureWin32Test, AReadOnlyTargetCannotBeReplaced)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.DeleteByte(2));
    const Bytes shown = Shown();
    if (!ReadOnlyAttributeIsEnforced(folder)) {
        GTEST_SKIP() << "this system does not enforce the read-only attribute (Wine running as root)";
    }
    ASSERT_TRUE(SetFileAttributesW(Wide(path), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
    SetFileAttributesW(Wide(path), FILE_ATTRIBUTE_NORMAL);
}

TEST_F(SaveFailureWin32Test, AFolderRefusingNewFilesFailsTheRewriteAndKeepsEverything)
{
    Open({0, 1, 2, 3, 4, 5, 6, 7});
    ASSERT_TRUE(document.InsertByte(2, 0xEE));
    const Bytes shown = Shown();
    FolderRefusingNewFiles refusing(test::PathText(folder.Path()));
    if (!refusing.Works()) {
        GTEST_SKIP() << "this system does not enforce folder access lists (Wine does not)";
    }
    EXPECT_FALSE(document.Save());
    ExpectNothingChanged(shown);
}

} // namespace
} // namespace tlm
