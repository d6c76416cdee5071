#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tlm::test {

// A fresh folder under the system's temporary folder, removed with its files at the end.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    std::filesystem::path Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const;
    // A file of `size` bytes that holds no data blocks: every byte reads as 0 except `tail`, written at
    // its end.
    std::filesystem::path WriteSparse(const std::string& name, std::uint64_t size,
        const std::vector<std::uint8_t>& tail) const;

    const std::filesystem::path& Path() const { return folder; }

private:
    std::filesystem::path folder;
};

std::vector<std::uint8_t> ReadWholeFile(const std::filesystem::path& path);

} // namespace tlm::test
