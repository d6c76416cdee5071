#include "hexview/DirectWriteStartWin32.h"

#include "hexview/SystemLibraryWin32.h"

namespace tlm {

namespace {

// Asks for what the view asks for first, so that the fonts are read here and not in the first paint.
void WarmUp(IDWriteFactory& factory)
{
    IDWriteFontCollection* fonts = nullptr;
    if (SUCCEEDED(factory.GetSystemFontCollection(&fonts, FALSE)) && fonts) {
        fonts->Release();
    }
    IDWriteTextFormat* format = nullptr;
    if (SUCCEEDED(factory.CreateTextFormat(L"Consolas", nullptr, DWRITE_FONT_WEIGHT_NORMAL, DWRITE_FONT_STYLE_NORMAL,
            DWRITE_FONT_STRETCH_NORMAL, 16.0f, L"", &format))
        && format) {
        format->Release();
    }
}

} // namespace

DirectWriteStart::DirectWriteStart()
    : thread([this] { Run(); })
{
}

DirectWriteStart::~DirectWriteStart()
{
    thread.join();
    if (factory) {
        factory->Release();
    }
}

void DirectWriteStart::Run()
{
    // Loaded here too, so that not even the library holds up the window.
    library = std::make_unique<SystemLibrary>(L"dwrite.dll");
    IDWriteFactory* made = nullptr;
    const auto create = library->Find<decltype(DWriteCreateFactory)>("DWriteCreateFactory");
    if (!create
        || FAILED(create(DWRITE_FACTORY_TYPE_SHARED, __uuidof(IDWriteFactory), reinterpret_cast<IUnknown**>(&made)))) {
        made = nullptr;
    }
    if (made) {
        WarmUp(*made);
    }
    std::lock_guard lock(mutex);
    factory = made;
    finished = true;
    if (readyWindow) {
        PostMessageW(readyWindow, readyMessage, 0, 0);
    }
}

IDWriteFactory* DirectWriteStart::TakeFactory()
{
    std::lock_guard lock(mutex);
    if (factory) {
        factory->AddRef();
    }
    return factory;
}

void DirectWriteStart::NotifyWhenReady(HWND window, UINT message)
{
    std::lock_guard lock(mutex);
    if (finished) {
        PostMessageW(window, message, 0, 0);
        return;
    }
    readyWindow = window;
    readyMessage = message;
}

} // namespace tlm
