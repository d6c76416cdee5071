#include "cli/CliOutput.h"

namespace tlm {

CliOutput::CliOutput(CliStreams& target)
    : streams(target)
{
    buffer.reserve(FlushSize + 4096);
}

CliOutput::~CliOutput()
{
    Flush();
}

void CliOutput::Flush()
{
    if (!buffer.empty() && streams.writeOut) {
        streams.writeOut(buffer);
    }
    buffer.clear();
}

} // namespace tlm
