#include "settings/SettingsPath.h"

#include "ScratchFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tlm {
namespace {

namespace fs = std::filesystem;
using test::PathText;
using test::ScratchFolder;

// A program folder and a user data folder inside one scratch folder.
class SettingsPathTest : public ::testing::Test {
protected:
    SettingsPathTest()
    {
        fs::create_directories(ProgramFolder());
        fs::create_directories(DataFolder());
    }

    fs::path ProgramFolder() const { return scratch.Path() / "program"; }
    fs::path DataFolder() const { return scratch.Path() / "data"; }
    void MarkPortable() const { test::WriteBytes(ProgramFolder() / "tolmo.portable", ""); }

    WindowsSettingsInputs Windows() const
    {
        WindowsSettingsInputs inputs;
        inputs.localAppData = PathText(DataFolder());
        inputs.executableFolder = PathText(ProgramFolder());
        inputs.currentFolder = PathText(scratch.Path());
        return inputs;
    }

    PosixSettingsInputs Posix() const
    {
        PosixSettingsInputs inputs;
        inputs.executableFolder = PathText(ProgramFolder());
        inputs.home = PathText(DataFolder());
        inputs.currentFolder = PathText(scratch.Path());
        return inputs;
    }

    // A file where a folder should be, so that creating the folder fails.
    void BlockFolder(const fs::path& folder) const
    {
        fs::create_directories(folder.parent_path());
        test::WriteBytes(folder, "not a folder");
    }

    ScratchFolder scratch;
};

TEST_F(SettingsPathTest, PackagedProgramUsesItsLocalStateFolder)
{
    WindowsSettingsInputs inputs = Windows();
    inputs.packageFamily = u"Tolmo.HexEditor_abc123";

    const SettingsLocation location = ResolveWindowsSettingsPath(inputs);

    const fs::path folder = DataFolder() / "Packages" / "Tolmo.HexEditor_abc123" / "LocalState";
    EXPECT_EQ(location.path, PathText(folder / "tolmo.settings.json"));
    EXPECT_TRUE(fs::is_directory(folder));
    EXPECT_TRUE(location.droppedErrors.empty());
}

TEST_F(SettingsPathTest, PortableMarkerBesideAPackagedProgramIsIgnored)
{
    MarkPortable();
    WindowsSettingsInputs inputs = Windows();
    inputs.packageFamily = u"Tolmo.HexEditor_abc123";

    const SettingsLocation location = ResolveWindowsSettingsPath(inputs);

    EXPECT_EQ(location.path,
        PathText(DataFolder() / "Packages" / "Tolmo.HexEditor_abc123" / "LocalState" / "tolmo.settings.json"));
}

TEST_F(SettingsPathTest, PackagedFolderThatCannotBeCreatedFallsToTheNextRule)
{
    BlockFolder(DataFolder() / "Packages");
    MarkPortable();
    WindowsSettingsInputs inputs = Windows();
    inputs.packageFamily = u"Family";

    const SettingsLocation location = ResolveWindowsSettingsPath(inputs);

    EXPECT_EQ(location.path, PathText(ProgramFolder() / "tolmo.settings.json"));
    ASSERT_EQ(location.droppedErrors.size(), 1u);
    EXPECT_TRUE(location.droppedErrors[0].starts_with(u"Failed to create packaged settings directory: "));
}

TEST_F(SettingsPathTest, PortableMarkerPutsTheFileBesideTheProgram)
{
    MarkPortable();
    EXPECT_EQ(ResolveWindowsSettingsPath(Windows()).path, PathText(ProgramFolder() / "tolmo.settings.json"));
    EXPECT_FALSE(fs::exists(DataFolder() / "Tolmo"));
}

TEST_F(SettingsPathTest, WithoutPackageOrMarkerTheFileIsInLocalAppDataTolmo)
{
    const SettingsLocation location = ResolveWindowsSettingsPath(Windows());
    EXPECT_EQ(location.path, PathText(DataFolder() / "Tolmo" / "tolmo.settings.json"));
    EXPECT_TRUE(fs::is_directory(DataFolder() / "Tolmo"));
}

TEST_F(SettingsPathTest, LocalAppDataFolderIsCreatedWithItsParents)
{
    WindowsSettingsInputs inputs = Windows();
    inputs.localAppData = PathText(DataFolder() / "deeper" / "still");
    EXPECT_EQ(ResolveWindowsSettingsPath(inputs).path,
        PathText(DataFolder() / "deeper" / "still" / "Tolmo" / "tolmo.settings.json"));
}

TEST_F(SettingsPathTest, UncreatableLocalAppDataFolderFallsBackBesideTheProgram)
{
    BlockFolder(DataFolder() / "Tolmo");
    const SettingsLocation location = ResolveWindowsSettingsPath(Windows());
    EXPECT_EQ(location.path, PathText(ProgramFolder() / "tolmo.settings.json"));
    ASSERT_EQ(location.droppedErrors.size(), 1u);
    EXPECT_EQ(location.droppedErrors[0],
        u"Failed to create local app data settings directory: " + PathText(DataFolder() / "Tolmo"));
}

TEST_F(SettingsPathTest, UnknownExecutableFolderUsesTheCurrentFolder)
{
    BlockFolder(DataFolder() / "Tolmo");
    WindowsSettingsInputs inputs = Windows();
    inputs.executableFolder.reset();
    inputs.executableFolderError = u"The data area passed to a system call is too small.";

    const SettingsLocation location = ResolveWindowsSettingsPath(inputs);

    EXPECT_EQ(location.path, PathText(scratch.Path() / "tolmo.settings.json"));
    ASSERT_EQ(location.droppedErrors.size(), 2u);
    EXPECT_EQ(location.droppedErrors[1],
        u"Failed to get executable directory: The data area passed to a system call is too small.");
}

TEST_F(SettingsPathTest, NothingKnownGivesTheBareFileName)
{
    WindowsSettingsInputs inputs;
    EXPECT_EQ(ResolveWindowsSettingsPath(inputs).path, u"tolmo.settings.json");
    PosixSettingsInputs posix;
    EXPECT_EQ(ResolvePosixSettingsPath(posix).path, u"tolmo.settings.json");
}

TEST_F(SettingsPathTest, PackagedProgramWithoutLocalAppDataCreatesNothingInTheCurrentFolder)
{
    WindowsSettingsInputs inputs = Windows();
    inputs.packageFamily = u"Family";
    inputs.localAppData.reset();
    const SettingsLocation location = ResolveWindowsSettingsPath(inputs);
    EXPECT_EQ(location.path, PathText(ProgramFolder() / "tolmo.settings.json"));
    EXPECT_FALSE(fs::exists(fs::path("Packages") / "Family"));
}

TEST_F(SettingsPathTest, PosixPortableMarkerPutsTheFileBesideTheProgram)
{
    MarkPortable();
    PosixSettingsInputs inputs = Posix();
    inputs.configHome = PathText(DataFolder() / "config");
    EXPECT_EQ(ResolvePosixSettingsPath(inputs).path, PathText(ProgramFolder() / "tolmo.settings.json"));
    EXPECT_FALSE(fs::exists(DataFolder() / "config"));
}

TEST_F(SettingsPathTest, PosixUsesXdgConfigHome)
{
    PosixSettingsInputs inputs = Posix();
    inputs.configHome = PathText(DataFolder() / "config");
    EXPECT_EQ(ResolvePosixSettingsPath(inputs).path, PathText(DataFolder() / "config" / "tolmo" / "tolmo.settings.json"));
    EXPECT_TRUE(fs::is_directory(DataFolder() / "config" / "tolmo"));
}

TEST_F(SettingsPathTest, PosixFallsBackToDotConfigUnderHome)
{
    PosixSettingsInputs inputs = Posix();
    EXPECT_EQ(ResolvePosixSettingsPath(inputs).path, PathText(DataFolder() / ".config" / "tolmo" / "tolmo.settings.json"));
}

TEST_F(SettingsPathTest, PosixIgnoresARelativeXdgConfigHome)
{
    PosixSettingsInputs inputs = Posix();
    inputs.configHome = u"relative/config";
    EXPECT_EQ(ResolvePosixSettingsPath(inputs).path, PathText(DataFolder() / ".config" / "tolmo" / "tolmo.settings.json"));
}

TEST_F(SettingsPathTest, PosixUncreatableFolderFallsBackBesideTheProgram)
{
    BlockFolder(DataFolder() / ".config");
    const SettingsLocation location = ResolvePosixSettingsPath(Posix());
    EXPECT_EQ(location.path, PathText(ProgramFolder() / "tolmo.settings.json"));
    EXPECT_EQ(location.droppedErrors.size(), 1u);
}

TEST_F(SettingsPathTest, PosixWithoutHomeGoesBesideTheProgram)
{
    PosixSettingsInputs inputs = Posix();
    inputs.home.clear();
    EXPECT_EQ(ResolvePosixSettingsPath(inputs).path, PathText(ProgramFolder() / "tolmo.settings.json"));
}

} // namespace
} // namespace tlm
