#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <memory>
#include <mutex>
#include <string_view>
#include <thread>

namespace tlm {

// A second thread that writes a piece of a dump's lines into room of its own while the first thread
// writes the piece before it and sends it out: on two cores a long dump takes little more than half
// the time. One job at a time; the room is made once.
class LineWorker {
public:
    explicit LineWorker(std::size_t roomBytes);
    ~LineWorker();
    LineWorker(const LineWorker&) = delete;
    LineWorker& operator=(const LineWorker&) = delete;

    // Runs `job` on the worker with the start of the room; the job gives where its text ends.
    void Start(std::function<char*(char*)> job);
    // Waits for the job and gives its text, which stays until the next Start.
    std::string_view Finish();

private:
    void Loop();

    std::unique_ptr<char[]> room;
    std::mutex mutex;
    std::condition_variable changed;
    std::function<char*(char*)> job;
    const char* end = nullptr;
    bool busy = false;
    bool stopping = false;
    std::thread thread; // last, so that it starts when everything it uses stands
};

} // namespace tlm
