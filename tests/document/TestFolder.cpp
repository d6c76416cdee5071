#include "TestFolder.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <random>

namespace tlm::test {

namespace {

std::atomic<std::uint32_t> folderCounter{0};

} // namespace

TestFolder::TestFolder()
{
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    std::random_device device;
    for (int attempt = 0;; ++attempt) {
        folder = std::filesystem::temp_directory_path()
            / ("tolmo-document-test-" + std::to_string(stamp) + "-" + std::to_string(device()) + "-"
                + std::to_string(folderCounter++));
        if (std::filesystem::create_directory(folder) || attempt > 100) {
            break;
        }
    }
}

TestFolder::~TestFolder()
{
    std::error_code error;
    std::filesystem::remove_all(folder, error);
}

std::u16string TestFolder::Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const
{
    WriteWholeFile(File(name), bytes);
    return PathText(File(name));
}

std::u16string TestFolder::TwoSlashPath(const std::string& name) const
{
    const std::u16string absolute = PathText(std::filesystem::absolute(File(name)));
#if defined(_WIN32)
    // The long-path prefix in its slash form, before a drive letter.
    return u"//?/" + absolute;
#else
    // A doubled leading slash is an ordinary root here.
    return u"/" + absolute;
#endif
}

std::vector<std::string> TestFolder::TemporaryFiles() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("Tolmo-") && name.ends_with(".tmp")) {
            names.push_back(name);
        }
    }
    return names;
}

std::u16string PathText(const std::filesystem::path& path)
{
    return path.u16string();
}

std::vector<std::uint8_t> ReadWholeFile(const std::filesystem::path& path)
{
    std::ifstream stream(path, std::ios::binary);
    return std::vector<std::uint8_t>(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

void WriteWholeFile(const std::filesystem::path& path, const std::vector<std::uint8_t>& bytes)
{
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::vector<std::uint8_t> RandomBytes(std::size_t count, std::uint32_t seed)
{
    std::mt19937 generator(seed);
    std::vector<std::uint8_t> bytes(count);
    for (std::uint8_t& byte : bytes) {
        byte = static_cast<std::uint8_t>(generator());
    }
    return bytes;
}

} // namespace tlm::test
