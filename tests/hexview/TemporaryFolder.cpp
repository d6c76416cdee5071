#include "TemporaryFolder.h"

#include <atomic>
#include <chrono>
#include <fstream>
#include <iterator>
#include <string>

namespace tlm::test {

namespace {

std::filesystem::path UniqueFolder()
{
    static std::atomic<unsigned> counter{0};
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    return std::filesystem::temp_directory_path()
        / ("tolmo-test-" + std::to_string(stamp) + "-" + std::to_string(counter++));
}

} // namespace

TemporaryFolder::TemporaryFolder()
    : folder(UniqueFolder())
{
    std::filesystem::create_directories(folder);
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    // A test may have taken the folder's own write permission away.
    std::filesystem::permissions(folder, std::filesystem::perms::owner_all, std::filesystem::perm_options::add, ignored);
    std::filesystem::remove_all(folder, ignored);
}

std::filesystem::path TemporaryFolder::Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const
{
    const std::filesystem::path path = folder / name;
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    return path;
}

std::filesystem::path TemporaryFolder::WriteSparse(const std::string& name, std::uint64_t size,
    const std::vector<std::uint8_t>& tail) const
{
    const std::filesystem::path path = Write(name, {});
    std::filesystem::resize_file(path, size);
    std::fstream out(path, std::ios::binary | std::ios::in | std::ios::out);
    out.seekp(static_cast<std::streamoff>(size - tail.size()));
    out.write(reinterpret_cast<const char*>(tail.data()), static_cast<std::streamsize>(tail.size()));
    return path;
}

std::vector<std::uint8_t> ReadWholeFile(const std::filesystem::path& path)
{
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

} // namespace tlm::test
