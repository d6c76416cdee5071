#include "ScratchFolder.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>
#include <random>

namespace tlm::test {

namespace {

std::atomic<unsigned> folderCounter{0};

} // namespace

ScratchFolder::ScratchFolder()
{
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    std::random_device device;
    for (int attempt = 0; attempt < 100; ++attempt) {
        folder = std::filesystem::temp_directory_path()
            / ("tolmo-settings-test-" + std::to_string(stamp) + "-" + std::to_string(device()) + "-"
                + std::to_string(folderCounter++));
        if (std::filesystem::create_directory(folder))
            break;
    }
}

ScratchFolder::~ScratchFolder()
{
    std::error_code error;
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, error);
    std::filesystem::remove_all(folder, error);
}

std::string ReadBytes(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

void WriteBytes(const std::filesystem::path& path, std::string_view bytes)
{
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::u16string PathText(const std::filesystem::path& path)
{
    return path.u16string();
}

} // namespace tlm::test
