#pragma once

#include "app/AppHost.h"
#include "app/AboutDialog.h"
#include "app/FontDialog.h"
#include "app/MenuTree.h"
#include "app/SearchDialog.h"
#include "inspector/AnalysisWorker.h"
#include "settings/Theme.h"
#include "structview/StructRow.h"
#include "structview/StructValueFormat.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tlm {

// Everything AppWindow asks of the system around it. The Windows program fills these with calls on
// the main window, its status bar and the hex view's window; tests fill them with recorders and
// scripted answers. An empty function does nothing, and a query without one gives the stated default.
struct AppPlatform {
    // Start-up. Each answers whether it worked; an empty one counts as success.
    std::function<std::optional<std::u16string>()> executableFolder; // nothing when unknown
    std::function<std::optional<std::u16string>()> currentFolder;    // nothing when unknown
    std::function<std::u16string()> settingsPath;                    // where the settings file lives
    std::function<void()> initCommonControls;
    std::function<bool()> registerHexViewClass;
    std::function<bool()> registerMainClass;
    // Creates the main window hidden. The window's creation runs AppWindow::OnCreate before it returns.
    std::function<bool()> createMainWindow;
    std::function<bool()> createStatusBar;
    // Creates the hex view's child window over AppWindow's view and fills the view's host.
    std::function<bool()> createHexView;
    std::function<void()> sizeAndCentre;
    std::function<bool()> createAccelerators;
    std::function<void()> showWindow; // shown and painted at once
    // Queues a message for the main window, as the workers' results travel; false when it could not.
    ResultPoster postToMainWindow;

    // The main window and its children.
    std::function<void(const std::u16string& title)> setTitle;
    std::function<void()> destroyWindow; // the main window; its teardown follows
    std::function<void()> layoutChildren;
    std::function<void()> placeAnalysisWindows;
    std::function<void(const MenuItem& bar)> installMenu; // replaces the menu bar, drawn at once
    std::function<void()> removeMenu;                     // detaches and frees the bar
    std::function<void()> destroyAccelerators;
    std::function<void(const std::u16string& text)> setStatusText;
    std::function<void(Theme theme)> colourStatusBar; // background by theme, repainted at once
    std::function<void()> updateStatusBarNow;
    std::function<void(bool enabled)> enableHexView;
    std::function<void()> postQuit; // ends the message loop with exit code 0

    // Time, sound, dialogs and processes.
    std::function<void(unsigned id, unsigned milliseconds)> setTimer;
    std::function<void(unsigned id)> killTimer;
    std::function<void()> beep;
    std::function<MessageBoxResult(const std::u16string& text, const std::u16string& caption, MessageBoxKind kind)>
        messageBox; // Cancel without one
    // The file dialog for opening; nothing when cancelled.
    std::function<std::optional<std::u16string>(const std::u16string& title)> chooseFileToOpen;
    std::function<std::optional<std::u16string>()> executablePath;
    std::function<bool(const std::u16string& application, const std::u16string& commandLine)> createProcess;
    std::function<void()> pumpMessages;
    std::function<std::uint64_t()> tickCount;

    // The analysis windows. Until their windows exist on a platform these stay empty: nothing is shown.
    std::function<bool()> ensureInspectorWindow; // creates it when missing; false when there is none
    std::function<void()> destroyInspectorWindow;
    std::function<void(std::vector<std::u16string> values)> showInspectorValues;
    std::function<bool()> ensureStructViewWindow;
    std::function<void()> destroyStructViewWindow;
    std::function<void(const std::u16string& message)> showStructMessage;
    // The struct view's own parts: its rows or error, its value format, its pattern dialog and the
    // activation a reload takes from it and gives back.
    std::function<void(const std::u16string& definitionName, std::vector<StructRow> rows,
        const std::u16string& infoText)>
        showStructRows;
    std::function<void(const std::u16string& error)> showStructError;
    std::function<void(const StructValueFormat& format)> setStructValueFormat;
    // The file dialog for a pattern, starting in `folder` when it is not empty; nothing when cancelled.
    std::function<std::optional<std::u16string>(const std::u16string& title, const std::u16string& folder)>
        chooseStructPattern;
    std::function<bool(const std::u16string& folder)> folderExists; // false without it
    std::function<bool()> structViewHasActivation; // foreground, focused, or holding the focus in a child
    std::function<void()> restoreStructViewActivation;
    std::function<void(Theme theme)> themeAnalysisWindows;
    std::function<void()> relabelAnalysisWindows;

    // The dialogs. Each runs modal to the main window and returns when it closes.
    // The one-line prompt; nothing when cancelled or when it could not be shown.
    std::function<std::optional<std::u16string>(
        const std::u16string& title, const std::u16string& prompt, const std::u16string& text)>
        runPrompt;
    // The find dialog over `dialog`, calling `callback` for each request from inside its loop.
    std::function<void(SearchDialog& dialog, const SearchDialogCallback& callback)> runSearchDialog;
    // Whether Esc is held down now, asked while a search runs.
    std::function<bool()> escapeKeyDown;
    std::function<void()> focusHexView;
    // The font families of the screen, as enumerated for every character set.
    std::function<std::vector<FontFamilyFace>()> fontFamilies;
    std::function<void(FontDialog& dialog)> runFontDialog;
    std::function<void(AboutDialog& dialog)> runAboutDialog;
};

} // namespace tlm
