#pragma once

#include "cli/CliStreams.h"

#include <string>
#include <string_view>

namespace tlm {

// Gathers standard output into large writes: a row at a time is far too slow for a dump of gigabytes.
class CliOutput {
public:
    static constexpr std::size_t FlushSize = 256 * 1024;

    explicit CliOutput(CliStreams& streams);
    ~CliOutput();
    CliOutput(const CliOutput&) = delete;
    CliOutput& operator=(const CliOutput&) = delete;

    std::string& Buffer() { return buffer; }
    void Append(std::string_view text) { buffer += text; }
    // Writes the buffer out once it holds FlushSize bytes or more.
    void FlushIfFull()
    {
        if (buffer.size() >= FlushSize) {
            Flush();
        }
    }
    void Flush();

private:
    CliStreams& streams;
    std::string buffer;
};

} // namespace tlm
