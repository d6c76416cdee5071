#include "hexview/Direct2DFactoriesWin32.h"

namespace tlm {

float WindowDpi(std::uint32_t dpi)
{
    return dpi == 0 ? 96.0f : static_cast<float>(dpi);
}

bool Direct2DFactories::EnsureD2D()
{
    if (!d2dFactory) {
        if (!d2dLibrary) {
            d2dLibrary = std::make_unique<SystemLibrary>(L"d2d1.dll");
        }
        using CreateFactory = HRESULT WINAPI(D2D1_FACTORY_TYPE, REFIID, const D2D1_FACTORY_OPTIONS*, void**);
        if (const auto create = d2dLibrary->Find<CreateFactory>("D2D1CreateFactory")) {
            create(D2D1_FACTORY_TYPE_SINGLE_THREADED, __uuidof(ID2D1Factory), nullptr,
                reinterpret_cast<void**>(d2dFactory.Put()));
        }
    }
    return static_cast<bool>(d2dFactory);
}

bool Direct2DFactories::EnsureDWrite()
{
    if (!dwriteFactory) {
        *dwriteFactory.Put() = directWrite.TakeFactory();
    }
    return static_cast<bool>(dwriteFactory);
}

bool Direct2DFactories::MakeWindowTarget(HWND window, std::uint32_t dpi, ComRef<ID2D1HwndRenderTarget>& target) const
{
    target.Reset();
    if (!d2dFactory) {
        return false;
    }
    RECT client{};
    GetClientRect(window, &client);
    const D2D1_SIZE_U size{static_cast<UINT32>(client.right - client.left),
        static_cast<UINT32>(client.bottom - client.top)};
    const D2D1_RENDER_TARGET_PROPERTIES properties = D2D1::RenderTargetProperties();
    const D2D1_HWND_RENDER_TARGET_PROPERTIES windowProperties = D2D1::HwndRenderTargetProperties(window, size);
    if (FAILED(d2dFactory->CreateHwndRenderTarget(&properties, &windowProperties, target.Put())) || !target) {
        target.Reset();
        return false;
    }
    target->SetDpi(WindowDpi(dpi), WindowDpi(dpi));
    return true;
}

} // namespace tlm
