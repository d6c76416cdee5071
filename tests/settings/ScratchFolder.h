#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace tlm::test {

// A fresh folder under the system's temporary folder, removed with its content at the end.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return folder; }
    std::u16string Text() const { return folder.u16string(); }
    std::filesystem::path File(std::string_view name) const { return folder / std::filesystem::path(name); }

private:
    std::filesystem::path folder;
};

std::string ReadBytes(const std::filesystem::path& path);
void WriteBytes(const std::filesystem::path& path, std::string_view bytes);
std::u16string PathText(const std::filesystem::path& path);

} // namespace tlm::test
