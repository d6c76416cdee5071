#include "AppWindowFixture.h"

#include "document/FileFaults.h"
#include "document/PlatformFile.h"
#include "hexview/TextMeasurer.h"
#include "settings/SettingsFile.h"
#include "settings/SettingsReader.h"

#include <algorithm>
#include <atomic>
#include <fstream>
#include <iterator>
#include <random>

namespace tlm::test {

namespace {

std::atomic<unsigned> folderCounter{0};

// The view measures text as 16-pixel lines of 8-pixel characters, and its window is 800 by 600.
constexpr float LineHeight = 16.0f;
constexpr float CharacterWidth = 8.0f;
constexpr ClientSize ViewClient{800, 600};

const MenuItem* FindIn(const MenuItem& menu, std::uint32_t id)
{
    for (const MenuItem& item : menu.children) {
        if (item.kind == MenuItem::Kind::Command && item.id == id) {
            return &item;
        }
        if (item.kind == MenuItem::Kind::Popup) {
            if (const MenuItem* found = FindIn(item, id)) {
                return found;
            }
        }
    }
    return nullptr;
}

const MenuItem& NoItem()
{
    static const MenuItem none;
    return none;
}

} // namespace

AppScratchFolder::AppScratchFolder()
{
    const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
    std::random_device device;
    for (int attempt = 0; attempt < 100; ++attempt) {
        folder = std::filesystem::temp_directory_path()
            / ("tolmo-app-test-" + std::to_string(stamp) + "-" + std::to_string(device()) + "-"
                + std::to_string(folderCounter++));
        if (std::filesystem::create_directory(folder)) {
            break;
        }
    }
}

AppScratchFolder::~AppScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

std::vector<std::uint8_t> ReadFileBytes(const std::u16string& path)
{
    std::ifstream in(std::filesystem::path(path), std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void WriteFileBytes(const std::u16string& path, const std::vector<std::uint8_t>& bytes)
{
    std::ofstream out(std::filesystem::path(path), std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

std::string ReadFileText(const std::u16string& path)
{
    const std::vector<std::uint8_t> bytes = ReadFileBytes(path);
    return std::string(bytes.begin(), bytes.end());
}

void WriteFileText(const std::u16string& path, std::string_view text)
{
    WriteFileBytes(path, std::vector<std::uint8_t>(text.begin(), text.end()));
}

bool WriteSparseFile(const std::u16string& path, std::uint64_t size)
{
    // The document core's own file services set the end without writing, on every platform.
    const FileHandle handle = CreateNewFile(path);
    if (!IsValidFileHandle(handle)) {
        return false;
    }
    const bool sized = SetFileEnd(handle, size);
    CloseFile(handle);
    return sized;
}

std::u16string RepositoryRoot()
{
    return std::filesystem::path(TOLMO_SOURCE_DIR).u16string();
}

ResultQueue::~ResultQueue()
{
    for (const PostedResult& result : waiting) {
        if (result.message == static_cast<std::uint32_t>(AppMessage::InspectorResult)) {
            InspectorWorker::TakeResult(result.lParam);
        } else if (result.message == static_cast<std::uint32_t>(AppMessage::StructResult)) {
            StructWorker::TakeResult(result.lParam);
        }
    }
}

bool ResultQueue::Post(std::uint32_t message, std::uintptr_t, std::intptr_t lParam)
{
    {
        std::lock_guard lock(mutex);
        waiting.push_back(PostedResult{message, lParam});
        ++counts[message];
    }
    posted.notify_all();
    return true;
}

bool ResultQueue::WaitForPosted(AppMessage message, std::size_t count, std::chrono::milliseconds timeout)
{
    std::unique_lock lock(mutex);
    return posted.wait_for(lock, timeout, [&] { return counts[static_cast<std::uint32_t>(message)] >= count; });
}

std::size_t ResultQueue::PostedCount(AppMessage message) const
{
    std::lock_guard lock(mutex);
    const auto found = counts.find(static_cast<std::uint32_t>(message));
    return found == counts.end() ? 0 : found->second;
}

std::vector<PostedResult> ResultQueue::TakeAll()
{
    std::lock_guard lock(mutex);
    std::vector<PostedResult> taken(waiting.begin(), waiting.end());
    waiting.clear();
    return taken;
}

AppWindowFixture::AppWindowFixture()
{
    executablePathAnswer = folder.File("tolmo.exe");
    // The system's languages are the test's to choose, so that "system" resolves the same everywhere.
    app.Strings() = Localizer({}, [this] { return systemLanguages; });
}

AppWindowFixture::~AppWindowFixture()
{
    ClearFileFaults();
}

AppPlatform AppWindowFixture::MakePlatform()
{
    AppPlatform platform;
    const auto record = [this](const std::string& name) {
        calls.push_back(name);
        if (onCall) {
            onCall(name);
        }
    };

    platform.executableFolder = [this, record] {
        record("executableFolder");
        return executableFolderAnswer;
    };
    platform.currentFolder = [this, record] {
        record("currentFolder");
        return currentFolderAnswer;
    };
    platform.settingsPath = [this, record] {
        record("settingsPath");
        return SettingsFile();
    };
    platform.initCommonControls = [record] { record("initCommonControls"); };
    platform.registerHexViewClass = [this, record] {
        record("registerHexViewClass");
        return registerHexViewClassWorks;
    };
    platform.registerMainClass = [this, record] {
        record("registerMainClass");
        return registerMainClassWorks;
    };
    platform.createMainWindow = [this, record] {
        record("createMainWindow");
        if (!createMainWindowWorks) {
            return false;
        }
        // The window's creation delivers its creation message before it returns.
        windowStands = true;
        app.OnCreate();
        record("createMainWindow done");
        return true;
    };
    platform.createStatusBar = [record] {
        record("createStatusBar");
        return true;
    };
    platform.createHexView = [this, record] {
        record("createHexView");
        HexViewHost host;
        host.requestRedraw = [this] { ++viewRedraws; };
        host.postToParent = [this](AppMessage message) { viewPosts.push_back(message); };
        host.sendToParent = [this](AppMessage message) { app.OnAppMessage(message, 0, 0); };
        host.clientSize = [] { return ViewClient; };
        host.windowDpi = [] { return std::uint32_t{96}; };
        app.View().SetHost(std::move(host));
        app.View().SetTextMeasurer(FixedTextMeasurer(LineHeight, CharacterWidth));
        return true;
    };
    platform.sizeAndCentre = [this, record] {
        record("sizeAndCentre");
        const ScreenRect area = ChooseWorkArea(monitorWorkArea, [] { return ScreenRect{}; });
        placement = PlaceMainWindow(area, defaultWidth, defaultHeight);
    };
    platform.createAccelerators = [this, record] {
        record("createAccelerators");
        return createAcceleratorsWorks;
    };
    platform.showWindow = [this, record] {
        record("showWindow");
        shown = true;
    };
    platform.postToMainWindow = [this](std::uint32_t message, std::uintptr_t wParam, std::intptr_t lParam) {
        return results.Post(message, wParam, lParam);
    };

    platform.setTitle = [this, record](const std::u16string& title) {
        titles.push_back(title);
        record("setTitle");
    };
    platform.destroyWindow = [this, record] {
        record("destroyWindow");
        windowStands = false;
        // Destroying the window delivers its destruction message before it returns.
        app.OnDestroy();
    };
    platform.layoutChildren = [record] { record("layoutChildren"); };
    platform.placeAnalysisWindows = [record] { record("placeAnalysisWindows"); };
    platform.installMenu = [this, record](const MenuItem& bar) {
        menu = bar;
        record("installMenu");
    };
    platform.removeMenu = [this, record] {
        menu.reset();
        record("removeMenu");
    };
    platform.destroyAccelerators = [record] { record("destroyAccelerators"); };
    platform.setStatusText = [this, record](const std::u16string& text) {
        statusTexts.push_back(text);
        record("setStatusText");
    };
    platform.colourStatusBar = [this, record](Theme theme) {
        statusBarThemes.push_back(theme);
        record("colourStatusBar");
    };
    platform.updateStatusBarNow = [record] { record("updateStatusBarNow"); };
    platform.enableHexView = [this, record](bool enabled) {
        viewEnabled.push_back(enabled);
        record(enabled ? "enableHexView on" : "enableHexView off");
    };
    platform.postQuit = [this, record] {
        quitPosted = true;
        record("postQuit");
    };

    platform.setTimer = [this, record](unsigned id, unsigned milliseconds) {
        timerDeadlines[id] = now + milliseconds;
        timerPeriods[id] = milliseconds;
        record("setTimer " + std::to_string(id) + " " + std::to_string(milliseconds));
    };
    platform.killTimer = [this, record](unsigned id) {
        timerDeadlines.erase(id);
        record("killTimer " + std::to_string(id));
    };
    platform.beep = [this, record] {
        ++beeps;
        record("beep");
    };
    platform.messageBox = [this, record](const std::u16string& text, const std::u16string& caption,
                              MessageBoxKind kind) {
        boxes.push_back(ShownBox{text, caption, kind});
        record("messageBox");
        if (kind != MessageBoxKind::YesNoCancelExclamation) {
            return MessageBoxResult::Ok;
        }
        if (answers.empty()) {
            ADD_FAILURE() << "a question nobody expected";
            return MessageBoxResult::Cancel;
        }
        const MessageBoxResult answer = answers.front();
        answers.pop_front();
        return answer;
    };
    platform.chooseFileToOpen = [this, record](const std::u16string& title) {
        openDialogTitles.push_back(title);
        record("chooseFileToOpen");
        return chosenFile;
    };
    platform.executablePath = [this, record] {
        record("executablePath");
        return executablePathAnswer;
    };
    platform.createProcess = [this, record](const std::u16string& application, const std::u16string& line) {
        processes.push_back(StartedProcess{application, line});
        record("createProcess");
        return processStarts;
    };
    platform.pumpMessages = [this, record] {
        ++pumps;
        record("pumpMessages");
        if (onPump) {
            onPump();
        }
        // As the real pump: everything waiting is handled, and a quit is put back for the main loop.
        while (!queue.empty()) {
            const QueuedMessage message = queue.front();
            queue.pop_front();
            switch (message.kind) {
            case QueuedMessage::Kind::Quit:
                queue.push_back(message);
                return;
            case QueuedMessage::Kind::App:
                app.OnAppMessage(message.app, 0, 0);
                break;
            case QueuedMessage::Kind::Close:
                app.OnClose();
                break;
            case QueuedMessage::Kind::Command:
                pumpedCommandResults.push_back(app.ExecuteCommand(message.command));
                break;
            }
        }
    };
    platform.tickCount = [this] { return now; };

    platform.ensureInspectorWindow = [this, record] {
        record("ensureInspectorWindow");
        inspectorWindow = inspectorWindowWorks;
        return inspectorWindowWorks;
    };
    platform.destroyInspectorWindow = [this, record] {
        record("destroyInspectorWindow");
        inspectorWindow = false;
    };
    platform.showInspectorValues = [this, record](std::vector<std::u16string> values) {
        inspectorValues.push_back(std::move(values));
        record("showInspectorValues");
    };
    platform.ensureStructViewWindow = [this, record] {
        record("ensureStructViewWindow");
        structViewWindow = true;
        return true;
    };
    platform.destroyStructViewWindow = [this, record] {
        record("destroyStructViewWindow");
        structViewWindow = false;
    };
    platform.showStructMessage = [this, record](const std::u16string& message) {
        structMessages.push_back(message);
        record("showStructMessage");
    };
    platform.showStructRows = [this, record](const std::u16string& name, std::vector<StructRow> rows,
                                  const std::u16string& infoText) {
        structRowsShown.push_back(ShownStructRows{name, std::move(rows), infoText});
        record("showStructRows");
    };
    platform.showStructError = [this, record](const std::u16string& error) {
        structErrors.push_back(error);
        record("showStructError");
    };
    platform.setStructValueFormat = [this, record](const StructValueFormat& format) {
        structFormats.push_back(format);
        record("setStructValueFormat");
    };
    platform.chooseStructPattern = [this, record](const std::u16string& title, const std::u16string& startFolder) {
        patternDialogs.push_back(PatternDialog{title, startFolder});
        record("chooseStructPattern");
        return chosenPattern;
    };
    platform.folderExists = [this](const std::u16string& candidate) {
        return std::filesystem::is_directory(std::filesystem::path(candidate));
    };
    platform.structViewHasActivation = [this, record] {
        record("structViewHasActivation");
        return structViewActive;
    };
    platform.restoreStructViewActivation = [this, record] { record("restoreStructViewActivation"); };
    platform.themeAnalysisWindows = [this, record](Theme theme) {
        analysisThemes.push_back(theme);
        record("themeAnalysisWindows");
    };
    platform.relabelAnalysisWindows = [this, record] {
        ++relabels;
        record("relabelAnalysisWindows");
    };

    platform.runPrompt = [this, record](const std::u16string& title, const std::u16string& prompt,
                             const std::u16string& text) {
        prompts.push_back(ShownPrompt{title, prompt, text});
        record("runPrompt");
        if (promptAnswers.empty()) {
            return std::optional<std::u16string>();
        }
        std::optional<std::u16string> answer = promptAnswers.front();
        promptAnswers.pop_front();
        return answer;
    };
    platform.runSearchDialog = [this, record](SearchDialog& dialog, const SearchDialogCallback& callback) {
        record("runSearchDialog");
        SearchDialogControls controls;
        controls.queryText = [this] { return dialogQuery; };
        controls.selectedType = [this] { return dialogType; };
        controls.selectType = [this](std::uint32_t type) { dialogType = type; };
        controls.fillQueryBox = [this, record](const std::vector<std::u16string>& items, const std::u16string& text) {
            dialogItems = items;
            dialogQuery = text;
            record("fillQueryBox");
        };
        controls.limitQuery = [this](std::uint32_t limit) { dialogLimit = limit; };
        controls.enableInputs = [this, record](bool enabled) {
            dialogInputsEnabled = enabled;
            record(enabled ? "enableInputs" : "disableInputs");
        };
        controls.focusQuery = [record] { record("focusQuery"); };
        controls.destroyWindow = [record] { record("destroyDialog"); };
        controls.messageBox = [this, record](const std::u16string& text, const std::u16string& caption,
                                  MessageBoxKind kind) {
            dialogBoxes.push_back(ShownBox{text, caption, kind});
            record("dialogMessageBox");
            return MessageBoxResult::Ok;
        };
        dialog.SetControls(std::move(controls));
        dialog.OnCreate();
        openedSearchDialogs.push_back(dialog);
        if (searchScript) {
            searchScript(dialog, callback);
        }
    };
    platform.escapeKeyDown = [this] { return escapeDown ? escapeDown() : false; };
    platform.focusHexView = [record] { record("focusHexView"); };
    platform.fontFamilies = [this] { return fontFaces; };
    platform.runFontDialog = [this, record](FontDialog& dialog) {
        record("runFontDialog");
        openedFontDialogs.push_back(dialog);
        if (fontScript) {
            fontScript(dialog);
        }
    };
    platform.runAboutDialog = [this, record](AboutDialog& dialog) {
        record("runAboutDialog");
        openedAboutDialogs.push_back(dialog);
    };
    return platform;
}

bool AppWindowFixture::Start(std::optional<std::u16string> path)
{
    app.SetPlatform(MakePlatform());
    return app.Create(std::move(path));
}

bool AppWindowFixture::StartWith(AppSettings stored, std::optional<std::u16string> path)
{
    EXPECT_TRUE(SaveSettings(stored, SettingsFile()));
    return Start(std::move(path));
}

std::u16string AppWindowFixture::WriteFile(std::string_view name, const std::vector<std::uint8_t>& bytes) const
{
    const std::u16string path = folder.File(name);
    WriteFileBytes(path, bytes);
    return path;
}

AppSettings AppWindowFixture::StoredSettings() const
{
    AppSettings stored;
    EXPECT_TRUE(LoadSettings(SettingsFile(), stored));
    return stored;
}

void AppWindowFixture::OpenFile(const std::u16string& path)
{
    EXPECT_TRUE(app.OpenFile(path));
    DeliverViewMessages();
    ClearRecords();
}

std::u16string AppWindowFixture::OpenModified(std::string_view name, const std::vector<std::uint8_t>& bytes)
{
    const std::u16string path = WriteFile(name, bytes);
    OpenFile(path);
    EXPECT_TRUE(app.ExecuteCommand(ToNumber(CommandId::EditReadOnly)));
    TypeHex(u"AB");
    DeliverViewMessages();
    EXPECT_TRUE(app.Document().IsModified());
    ClearRecords();
    return path;
}

void AppWindowFixture::TypeHex(std::u16string_view digits)
{
    for (char16_t digit : digits) {
        app.View().OnChar(digit);
    }
}

void AppWindowFixture::DeliverViewMessages()
{
    // Handling one may post more; they are handled too, in order.
    while (!viewPosts.empty()) {
        const AppMessage message = viewPosts.front();
        viewPosts.erase(viewPosts.begin());
        app.OnAppMessage(message, 0, 0);
    }
}

void AppWindowFixture::DeliverResults()
{
    for (const PostedResult& result : results.TakeAll()) {
        app.OnAppMessage(static_cast<AppMessage>(result.message), 0, result.lParam);
    }
}

void AppWindowFixture::AdvanceClock(std::uint64_t milliseconds)
{
    const std::uint64_t target = now + milliseconds;
    for (;;) {
        // The earliest timer due by the target fires at its own time.
        auto due = timerDeadlines.end();
        for (auto timer = timerDeadlines.begin(); timer != timerDeadlines.end(); ++timer) {
            if (timer->second <= target && (due == timerDeadlines.end() || timer->second < due->second)) {
                due = timer;
            }
        }
        if (due == timerDeadlines.end()) {
            break;
        }
        const unsigned id = due->first;
        now = due->second;
        // A Windows timer repeats until it is killed.
        due->second = now + std::max<std::uint64_t>(timerPeriods[id], 1);
        calls.push_back("timer " + std::to_string(id));
        if (!app.OnTimer(id)) {
            timerDeadlines.erase(id);
        }
    }
    now = target;
}

bool AppWindowFixture::Called(std::string_view name) const
{
    return CallCount(name) > 0;
}

std::size_t AppWindowFixture::CallCount(std::string_view name) const
{
    return static_cast<std::size_t>(std::count(calls.begin(), calls.end(), name));
}

std::vector<std::string> AppWindowFixture::CallsAmong(const std::vector<std::string>& names) const
{
    std::vector<std::string> among;
    for (const std::string& call : calls) {
        if (std::find(names.begin(), names.end(), call) != names.end()) {
            among.push_back(call);
        }
    }
    return among;
}

void AppWindowFixture::ClearRecords()
{
    calls.clear();
    titles.clear();
    statusTexts.clear();
    statusBarThemes.clear();
    viewEnabled.clear();
    boxes.clear();
    openDialogTitles.clear();
    processes.clear();
    pumpedCommandResults.clear();
    pumps = 0;
    beeps = 0;
    viewRedraws = 0;
    relabels = 0;
    analysisThemes.clear();
    structMessages.clear();
    structRowsShown.clear();
    structErrors.clear();
    structFormats.clear();
    patternDialogs.clear();
    inspectorValues.clear();
}

const MenuItem& AppWindowFixture::Bar() const
{
    if (!menu) {
        ADD_FAILURE() << "no menu bar installed";
        return NoItem();
    }
    return *menu;
}

const MenuItem& AppWindowFixture::TopMenu(std::string_view key)
{
    return PopupIn(Bar(), key);
}

const MenuItem& AppWindowFixture::PopupIn(const MenuItem& parent, std::string_view key)
{
    const std::u16string label = app.Tr(key);
    for (const MenuItem& item : parent.children) {
        if (item.kind == MenuItem::Kind::Popup && item.label == label) {
            return item;
        }
    }
    ADD_FAILURE() << "no popup " << key;
    return NoItem();
}

const MenuItem* AppWindowFixture::FindItem(std::uint32_t id) const
{
    return menu ? FindIn(*menu, id) : nullptr;
}

const MenuItem& AppWindowFixture::Item(std::uint32_t id) const
{
    if (const MenuItem* item = FindItem(id)) {
        return *item;
    }
    ADD_FAILURE() << "no menu item " << id;
    return NoItem();
}

} // namespace tlm::test
