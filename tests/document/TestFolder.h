#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tlm::test {

// A fresh folder under the system's temporary folder, removed with everything in it at the end.
class TestFolder {
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& Path() const { return folder; }
    std::filesystem::path File(const std::string& name) const { return folder / name; }
    // Writes `bytes` to a file in the folder and gives its path as the document takes it.
    std::u16string Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const;
    // The path of a file in the folder written so that it begins with two slashes. It names the same
    // local file, but such a path is never saved in place: every save rewrites it through a temporary file.
    std::u16string TwoSlashPath(const std::string& name) const;
    // Names of leftover temporary files of a save ("Tolmo-*.tmp").
    std::vector<std::string> TemporaryFiles() const;

private:
    std::filesystem::path folder;
};

std::u16string PathText(const std::filesystem::path& path);
std::vector<std::uint8_t> ReadWholeFile(const std::filesystem::path& path);
void WriteWholeFile(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes);
std::vector<std::uint8_t> RandomBytes(std::size_t count, std::uint32_t seed);

} // namespace tlm::test
