// The plainest fast search there is, as a yardstick for tolmo-cli's find: map the whole file, call
// glibc's memmem from one past each hit to the end, and print how many hits there were. Overlapping
// hits count, as they do for find --all.
//   tolmo_memmem_scan FILE HEX [--offsets]
// HEX is the pattern as hexadecimal digits, blanks allowed ("4A 4B" or "4a4b"). With --offsets every
// hit's offset is printed in decimal, one per line, instead of the count, the way grep -ob lists them.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

int DigitValue(char c)
{
    if (c >= '0' && c <= '9') {
        return c - '0';
    }
    if (c >= 'a' && c <= 'f') {
        return c - 'a' + 10;
    }
    if (c >= 'A' && c <= 'F') {
        return c - 'A' + 10;
    }
    return -1;
}

std::optional<std::vector<unsigned char>> ParseHex(std::string_view text)
{
    std::vector<unsigned char> bytes;
    int high = -1;
    for (char c : text) {
        if (c == ' ') {
            continue;
        }
        const int value = DigitValue(c);
        if (value < 0) {
            return std::nullopt;
        }
        if (high < 0) {
            high = value;
        } else {
            bytes.push_back(static_cast<unsigned char>(high * 16 + value));
            high = -1;
        }
    }
    if (high >= 0 || bytes.empty()) {
        return std::nullopt;
    }
    return bytes;
}

// Output goes through one large buffer: printf per hit would time stdio, not the search.
class OffsetWriter {
public:
    void Write(std::uint64_t offset)
    {
        if (buffer.size() - used < 32) {
            Flush();
        }
        used += static_cast<std::size_t>(std::snprintf(buffer.data() + used, 32, "%llu\n",
                                                       static_cast<unsigned long long>(offset)));
    }

    void Flush()
    {
        std::fwrite(buffer.data(), 1, used, stdout);
        used = 0;
    }

private:
    std::vector<char> buffer = std::vector<char>(1 << 16);
    std::size_t used = 0;
};

std::uint64_t CountHits(const unsigned char* data, std::size_t size, const std::vector<unsigned char>& pattern,
                        OffsetWriter* writer)
{
    std::uint64_t hits = 0;
    const unsigned char* from = data;
    const unsigned char* end = data + size;
    while (from < end) {
        const void* hit = memmem(from, static_cast<std::size_t>(end - from), pattern.data(), pattern.size());
        if (hit == nullptr) {
            break;
        }
        const auto* at = static_cast<const unsigned char*>(hit);
        if (writer != nullptr) {
            writer->Write(static_cast<std::uint64_t>(at - data));
        }
        ++hits;
        from = at + 1;
    }
    return hits;
}

} // namespace

int main(int argc, char** argv)
{
    const bool offsets = argc == 4 && std::string_view(argv[3]) == "--offsets";
    if (argc != 3 && !offsets) {
        std::fprintf(stderr, "usage: tolmo_memmem_scan FILE HEX [--offsets]\n");
        return 2;
    }
    const auto pattern = ParseHex(argv[2]);
    if (!pattern) {
        std::fprintf(stderr, "not a hexadecimal byte pattern: %s\n", argv[2]);
        return 2;
    }
    const int fd = open(argv[1], O_RDONLY);
    struct stat info {};
    if (fd < 0 || fstat(fd, &info) != 0) {
        std::perror(argv[1]);
        return 2;
    }
    const auto size = static_cast<std::size_t>(info.st_size);
    std::uint64_t hits = 0;
    OffsetWriter writer;
    if (size > 0) {
        void* mapped = mmap(nullptr, size, PROT_READ, MAP_PRIVATE, fd, 0);
        if (mapped == MAP_FAILED) {
            std::perror("mmap");
            return 2;
        }
        // One pass from front to back: the kernel may read ahead as far as it likes.
        madvise(mapped, size, MADV_SEQUENTIAL);
        hits = CountHits(static_cast<const unsigned char*>(mapped), size, *pattern, offsets ? &writer : nullptr);
        munmap(mapped, size);
    }
    close(fd);
    if (offsets) {
        writer.Flush();
    } else {
        std::printf("%llu\n", static_cast<unsigned long long>(hits));
    }
    return hits > 0 ? 0 : 1;
}
