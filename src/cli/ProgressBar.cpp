#include "cli/ProgressBar.h"

#include <string>

namespace tlm {

ProgressBar::ProgressBar(CliStreams& target, std::uint64_t work)
    : streams(target)
    , total(work)
    , enabled(target.errorIsTerminal && target.writeError && work >= ShownFrom)
{
}

ProgressBar::~ProgressBar()
{
    Finish();
}

void ProgressBar::Update(std::uint64_t done)
{
    if (!enabled || total == 0) {
        return;
    }
    const int percent = static_cast<int>((done >= total ? total : done) * 100 / total);
    if (percent == lastPercent) {
        return;
    }
    lastPercent = percent;
    const int filled = percent * Width / 100;
    std::string line = "\r[";
    line.append(static_cast<std::size_t>(filled), '#');
    line.append(static_cast<std::size_t>(Width - filled), '.');
    line += "] ";
    const std::string number = std::to_string(percent);
    line.append(3 - number.size(), ' ');
    line += number;
    line += '%';
    streams.writeError(line);
    drawn = true;
}

void ProgressBar::Finish()
{
    if (drawn) {
        streams.writeError("\r" + std::string(Width + 7, ' ') + "\r");
        drawn = false;
    }
    enabled = false;
}

} // namespace tlm
