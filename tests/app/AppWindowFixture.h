#pragma once

#include "app/AppWindow.h"
#include "app/WindowPlacement.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <filesystem>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tlm::test {

// The system's "access denied", for failures injected into file operations.
#if defined(_WIN32)
inline constexpr std::uint32_t AccessDenied = 5;
#else
inline constexpr std::uint32_t AccessDenied = EACCES;
#endif

// A fresh folder under the system's temporary folder, removed with its files at the end.
class AppScratchFolder {
public:
    AppScratchFolder();
    ~AppScratchFolder();
    AppScratchFolder(const AppScratchFolder&) = delete;
    AppScratchFolder& operator=(const AppScratchFolder&) = delete;

    const std::filesystem::path& Path() const { return folder; }
    std::u16string File(std::string_view name) const { return (folder / std::filesystem::path(name)).u16string(); }

private:
    std::filesystem::path folder;
};

std::vector<std::uint8_t> ReadFileBytes(const std::u16string& path);
void WriteFileBytes(const std::u16string& path, const std::vector<std::uint8_t>& bytes);
std::string ReadFileText(const std::u16string& path);
void WriteFileText(const std::u16string& path, std::string_view text);
// A file of `size` bytes that takes no room: its end is set on an empty file.
bool WriteSparseFile(const std::u16string& path, std::uint64_t size);

// One result a worker posted to the main window. The record at `lParam` belongs to whoever receives it.
struct PostedResult {
    std::uint32_t message = 0;
    std::intptr_t lParam = 0;
};

// The worker results waiting in the main window's queue, as PostMessageW leaves them. Workers post from
// their own threads; the test takes them on its thread and hands them to the window. Records nobody
// received are freed at the end, by their kind.
class ResultQueue {
public:
    ResultQueue() = default;
    ResultQueue(const ResultQueue&) = delete;
    ResultQueue& operator=(const ResultQueue&) = delete;
    ~ResultQueue();

    bool Post(std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam);
    // Waits until `count` results of `message` have been posted since the start; false on a timeout.
    bool WaitForPosted(AppMessage message, std::size_t count,
        std::chrono::milliseconds timeout = std::chrono::seconds(10));
    std::size_t PostedCount(AppMessage message) const;
    std::vector<PostedResult> TakeAll();

private:
    mutable std::mutex mutex;
    std::condition_variable posted;
    std::deque<PostedResult> waiting;
    std::map<std::uint32_t, std::size_t> counts;
};

// A message waiting in the main thread's queue while a save pumps it.
struct QueuedMessage {
    enum class Kind { App, Close, Command, Quit };
    Kind kind = Kind::App;
    AppMessage app = AppMessage::ViewChanged;
    std::uint32_t command = 0;
};

struct ShownBox {
    std::u16string text;
    std::u16string caption;
    MessageBoxKind kind = MessageBoxKind::Stop;
};

struct ShownPrompt {
    std::u16string title;
    std::u16string prompt;
    std::u16string text;
};

struct StartedProcess {
    std::u16string application;
    std::u16string commandLine;
};

struct ShownStructRows {
    std::u16string definitionName;
    std::vector<StructRow> rows;
    std::u16string infoText;
};

struct PatternDialog {
    std::u16string title;
    std::u16string folder;
};

// The repository's root, where "resources/strings" holds the language files.
std::u16string RepositoryRoot();

// Runs an AppWindow over a platform that records every call in order and answers as scripted: real
// files in a scratch folder, the real settings file and language files, the view measured with fixed
// numbers, a clock and timers the test advances, and the main thread's queue emptied by the save's pump.
class AppWindowFixture : public ::testing::Test {
protected:
    AppWindowFixture();
    ~AppWindowFixture() override;

    // The platform the tests start with; a test may change it before Start.
    AppPlatform MakePlatform();
    // Creates the application over MakePlatform and the scripted answers; the answer of Create.
    bool Start(std::optional<std::u16string> path = std::nullopt);
    // Start with a settings file written beforehand from `stored`.
    bool StartWith(AppSettings stored, std::optional<std::u16string> path = std::nullopt);

    std::u16string WriteFile(std::string_view name, const std::vector<std::uint8_t>& bytes) const;
    std::u16string SettingsFile() const { return folder.File("tolmo.settings.json"); }
    AppSettings StoredSettings() const;

    // Opens a file through the application and drops what that recorded; fails the test if it fails.
    void OpenFile(const std::u16string& path);
    // Opens a file of `bytes`, turns editing on and overwrites its first byte with "AB".
    std::u16string OpenModified(std::string_view name, const std::vector<std::uint8_t>& bytes);
    void TypeHex(std::u16string_view digits);

    // Hands the view's posted messages to the window, in order, as the queue would.
    void DeliverViewMessages();
    // Hands every queued worker result to the window.
    void DeliverResults();
    // Moves the clock on, firing the main window's timers that come due, in order of their time.
    void AdvanceClock(std::uint64_t milliseconds);

    bool Called(std::string_view name) const;
    std::size_t CallCount(std::string_view name) const;
    // The recorded calls that are among `names`, in order.
    std::vector<std::string> CallsAmong(const std::vector<std::string>& names) const;
    void ClearRecords();

    // The menu bar last installed, and its parts found by the localised label of their key.
    const MenuItem& Bar() const;
    const MenuItem& TopMenu(std::string_view key);
    const MenuItem& PopupIn(const MenuItem& menu, std::string_view key);
    const MenuItem* FindItem(std::uint32_t id) const;
    const MenuItem& Item(std::uint32_t id) const;
    const MenuItem& Item(CommandId id) const { return Item(ToNumber(id)); }

    std::u16string Tr(std::string_view key) { return app.Tr(key); }
    std::u16string AppTitle() { return app.Tr("app.title"); }
    std::u16string LastTitle() const { return titles.empty() ? std::u16string() : titles.back(); }
    std::u16string LastStatus() const { return statusTexts.empty() ? std::u16string() : statusTexts.back(); }

    AppScratchFolder folder;
    ResultQueue results;

    // Start-up answers.
    std::optional<std::u16string> executableFolderAnswer = RepositoryRoot();
    std::optional<std::u16string> currentFolderAnswer;
    bool registerHexViewClassWorks = true;
    bool registerMainClassWorks = true;
    bool createMainWindowWorks = true;
    bool createAcceleratorsWorks = true;
    std::optional<ScreenRect> monitorWorkArea = ScreenRect{0, 0, 1920, 1040};
    std::int32_t defaultWidth = 1536;
    std::int32_t defaultHeight = 864;
    std::optional<WindowPlacement> placement;
    std::vector<std::u16string> systemLanguages{u"en-US"};

    // Everything the platform was asked, by the name of its operation, in order.
    std::vector<std::string> calls;
    // Run after each recorded call with its name, to look at the application at that moment.
    std::function<void(const std::string& name)> onCall;

    bool shown = false;
    bool windowStands = false;
    std::vector<std::u16string> titles;
    std::vector<std::u16string> statusTexts;
    std::optional<MenuItem> menu;
    std::vector<Theme> statusBarThemes;
    std::vector<bool> viewEnabled;
    int beeps = 0;
    bool quitPosted = false;

    // Message boxes: the scripted answers of questions are taken in order; a stop box answers OK.
    std::vector<ShownBox> boxes;
    std::deque<MessageBoxResult> answers;
    std::optional<std::u16string> chosenFile; // the open dialog's answer; nothing is Cancel
    std::vector<std::u16string> openDialogTitles;
    std::optional<std::u16string> executablePathAnswer;
    bool processStarts = true;
    std::vector<StartedProcess> processes;

    // The clock and the main window's timers.
    std::uint64_t now = 100'000;
    std::map<unsigned, std::uint64_t> timerDeadlines;
    std::map<unsigned, std::uint64_t> timerPeriods;

    // The main thread's queue, which the save's pump empties; a quit stays for the main loop.
    std::deque<QueuedMessage> queue;
    std::vector<bool> pumpedCommandResults;
    int pumps = 0;
    std::function<void()> onPump;

    // The view's window.
    std::vector<AppMessage> viewPosts;
    int viewRedraws = 0;

    // The analysis windows.
    bool inspectorWindow = false;
    bool inspectorWindowWorks = true; // the answer of making the inspector's window
    bool structViewWindow = false;
    std::vector<std::vector<std::u16string>> inspectorValues;
    std::vector<std::u16string> structMessages;
    std::vector<ShownStructRows> structRowsShown;
    std::vector<std::u16string> structErrors;
    std::vector<StructValueFormat> structFormats;
    std::vector<PatternDialog> patternDialogs;
    std::optional<std::u16string> chosenPattern; // the pattern dialog's answer; nothing is Cancel
    bool structViewActive = false;
    std::vector<Theme> analysisThemes;
    int relabels = 0;

    // The dialogs. A prompt answers in order, and with Cancel when no answer is left; the find
    // dialog's controls are these fields, and the script plays the user inside its run.
    std::deque<std::optional<std::u16string>> promptAnswers;
    std::vector<ShownPrompt> prompts;
    std::function<void(SearchDialog& dialog, const SearchDialogCallback& callback)> searchScript;
    std::u16string dialogQuery;
    std::uint32_t dialogType = 0;
    std::vector<std::u16string> dialogItems;
    std::uint32_t dialogLimit = 0;
    bool dialogInputsEnabled = true;
    std::vector<ShownBox> dialogBoxes;
    std::vector<SearchDialog> openedSearchDialogs; // as each stood at its creation
    std::function<bool()> escapeDown;
    std::vector<FontFamilyFace> fontFaces{{u"Consolas", false}, {u"Courier New", false}, {u"Arial", true}};
    std::function<void(FontDialog& dialog)> fontScript;
    std::vector<FontDialog> openedFontDialogs;
    std::vector<AboutDialog> openedAboutDialogs;

    AppWindow app;
};

} // namespace tlm::test
