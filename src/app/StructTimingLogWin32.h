#pragma once

// An opt-in timing log for measuring the struct view under a benchmark: with the environment variable
// TOLMO_STRUCT_TIMING naming a file, every caret move that the struct view answers writes the time
// from the move to its rows being handed to the window, and every paint of the struct view writes its
// duration. Without the variable nothing is measured or written. Included by Windows code only.

#include <windows.h>

#include <cstdint>
#include <cstdio>

namespace tlm {

class StructTimingLog {
public:
    static StructTimingLog& Instance()
    {
        static StructTimingLog log;
        return log;
    }

    bool Enabled() const { return file != nullptr; }

    static std::int64_t Now()
    {
        LARGE_INTEGER counter{};
        QueryPerformanceCounter(&counter);
        return counter.QuadPart;
    }

    // The first move not yet answered is the one the next rows are timed from.
    void CaretMoved(std::uint64_t caretOffset)
    {
        if (!file) {
            return;
        }
        lastCaret = caretOffset;
        ++moves;
        if (pendingSince == 0) {
            pendingSince = Now();
        }
    }

    void RowsShown()
    {
        if (!file || pendingSince == 0) {
            return;
        }
        std::fprintf(file, "rows %.3f caret %llu moves %llu\n", Milliseconds(Now() - pendingSince),
            static_cast<unsigned long long>(lastCaret), static_cast<unsigned long long>(moves));
        std::fflush(file);
        pendingSince = 0;
    }

    void Painted(std::int64_t start)
    {
        if (!file) {
            return;
        }
        std::fprintf(file, "paint %.3f\n", Milliseconds(Now() - start));
        std::fflush(file);
    }

private:
    StructTimingLog()
    {
        wchar_t path[MAX_PATH]{};
        const DWORD length = GetEnvironmentVariableW(L"TOLMO_STRUCT_TIMING", path, MAX_PATH);
        if (length > 0 && length < MAX_PATH) {
            file = _wfopen(path, L"a");
        }
        LARGE_INTEGER perSecond{};
        QueryPerformanceFrequency(&perSecond);
        frequency = perSecond.QuadPart > 0 ? perSecond.QuadPart : 1;
    }

    ~StructTimingLog()
    {
        if (file) {
            std::fclose(file);
        }
    }

    double Milliseconds(std::int64_t ticks) const { return static_cast<double>(ticks) * 1000.0 / frequency; }

    std::FILE* file = nullptr;
    std::int64_t frequency = 1;
    std::int64_t pendingSince = 0;
    std::uint64_t lastCaret = 0;
    std::uint64_t moves = 0;
};

} // namespace tlm
