#include "document/WholeFile.h"

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace tlm {

namespace {

constexpr std::uint32_t TemporaryNameAttempts = 64;

bool WriteAll(int descriptor, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t written = ::write(descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

// Makes the rename itself durable; a folder that cannot be synced still holds a whole file.
void SyncFolderOf(const std::filesystem::path& file)
{
    const std::filesystem::path folder = file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
    const int descriptor = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor >= 0) {
        ::fsync(descriptor);
        ::close(descriptor);
    }
}

} // namespace

bool ReplaceWholeFile(const std::u16string& path, std::string_view bytes)
{
    const auto target = PathFromText(path);
    if (!target)
        return false;
    for (std::uint32_t attempt = 0; attempt < TemporaryNameAttempts; ++attempt) {
        const auto temporary = PathFromText(TemporarySiblingPath(path, attempt));
        if (!temporary)
            return false;
        const int descriptor = ::open(temporary->c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (descriptor < 0) {
            if (errno == EEXIST)
                continue;
            return false;
        }
        const bool written = WriteAll(descriptor, bytes) && ::fsync(descriptor) == 0;
        const bool closed = ::close(descriptor) == 0;
        if (!written || !closed || ::rename(temporary->c_str(), target->c_str()) != 0) {
            ::unlink(temporary->c_str());
            return false;
        }
        SyncFolderOf(*target);
        return true;
    }
    return false;
}

} // namespace tlm
