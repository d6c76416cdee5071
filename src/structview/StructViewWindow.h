#pragma once

#include "app/AppMessage.h"
#include "settings/Theme.h"
#include "structview/StructRow.h"
#include "structview/StructValueFormat.h"
#include "structview/StructViewGeometry.h"
#include "structview/StructViewLabels.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tlm {

enum class StructViewState : std::uint32_t { Empty = 0, Loaded = 1, Error = 2 };

// Everything the struct view asks of its window. The Windows window fills these; tests record them. An
// empty function does nothing and a query without one gives the stated default.
struct StructViewHost {
    std::function<void(AppMessage message, std::uintptr_t wParam)> postToOwner;
    std::function<void()> requestRedraw;
    std::function<void()> controlsChanged; // texts, enabling or places of the buttons and edits
    std::function<void(const std::u16string& text)> copyToClipboard;
    std::function<void(int x, int y)> openFormatMenu; // at a client point
    std::function<void()> captureMouse;
    std::function<void()> releaseCapture;
    std::function<int(int width)> measureInfoText; // the info text's height wrapped at a width; 0 without it
};

// One item of the value-format menu.
struct StructFormatMenuItem {
    std::uint32_t id = 0;
    std::u16string label;
    bool checked = false;
};

// One sub-menu of the value-format menu, with its two choices.
struct StructFormatMenu {
    std::u16string label;
    std::vector<StructFormatMenuItem> items;
};

inline constexpr std::uint32_t StructFormatMenuFirstId = 4201;
inline constexpr std::uint32_t StructFormatMenuLastId = 4206;

// What a press of the left button did.
enum class StructPress : std::uint8_t { None, OpenedMenu, StartedDrag, Selected };

// The struct view's logic: what it shows, where, and what its input does. It only displays; every
// decision about patterns goes to the owner as a posted message.
class StructViewWindow {
public:
    void SetHost(StructViewHost host) { this->host = std::move(host); }

    void SetLabels(StructViewLabels labels);
    const StructViewLabels& Labels() const { return labels; }
    void SetTheme(Theme theme);
    Theme CurrentTheme() const { return theme; }
    void SetValueFormat(StructValueFormat format);
    const StructValueFormat& ValueFormat() const { return valueFormat; }

    // Enters Loaded with these rows; a selection past the new end moves to the last row, or to none.
    void ShowRows(std::u16string definitionName, std::vector<StructRow> rows, std::u16string infoText);
    // Enters Empty with the message, clearing the name, rows and info text.
    void ShowMessage(std::u16string message);
    // Enters Error with the loader's text; otherwise as ShowMessage.
    void ShowError(std::u16string message);

    StructViewState State() const { return state; }
    const std::u16string& DefinitionName() const { return definitionName; }
    const std::u16string& Message() const { return message; }
    const std::u16string& InfoText() const { return infoText; }
    const std::vector<StructRow>& Rows() const { return rows; }
    std::int32_t SelectedRow() const { return selectedRow; }
    int ScrollX() const { return scrollX; }
    int ScrollY() const { return scrollY; }
    bool InfoVisible() const { return infoVisible; }
    const StructColumnWidths& ColumnWidths() const { return columnWidths; }

    // The text of the message edit: the message, behind the error prefix in Error.
    std::u16string MessageEditText() const;
    // The definition line under the title: label, ": " and the name, or ": -" without one.
    std::u16string DefinitionLine() const;
    bool ButtonEnabled(StructViewButton button) const;
    std::u16string ButtonText(StructViewButton button) const;

    // Geometry.
    void SetClientSize(int width, int height);
    const StructViewLayout& Layout() const { return layout; }
    void Relayout();

    // Input. Each answers whether it was handled; false lets the default handling run.
    void OnButton(std::uint32_t controlId);
    bool OnKeyDown(std::uint32_t virtualKey, bool control);
    void OnWheel(int delta);
    void ScrollTo(int x, int y); // clamped to the content
    void OnVerticalScroll(int code, int trackPosition);
    void OnHorizontalScroll(int code, int trackPosition);
    StructPress OnLeftDown(int x, int y);
    void OnMouseMove(int x, int y);
    void OnLeftUp();
    void OnCaptureLost();
    void OnDoubleClick(int x, int y);
    // Whether the sizing cursor belongs at a point: over a grab edge, or anywhere while dragging.
    bool WantsSizingCursor(int x, int y) const;
    bool Dragging() const { return drag.has_value(); }
    void OnClose();
    void Copy();
    void OnMenuChoice(std::uint32_t menuId);

    std::vector<StructFormatMenu> FormatMenu() const;
    std::u16string CopyText() const;

private:
    void CallIfSetPost(AppMessage notice, std::uintptr_t wParam);
    void EnterMessageState(StructViewState newState, std::u16string text);
    void SelectRow(std::int32_t row);
    void ScrollRowIntoView(std::int32_t row);
    void Redraw();
    void ControlsChanged();

    struct ColumnDrag {
        StructColumn column = StructColumn::Offset;
        int startX = 0;
        int startWidth = 0;
    };

    StructViewHost host;
    StructViewLabels labels;
    Theme theme = Theme::Light;
    StructViewState state = StructViewState::Empty;
    std::u16string definitionName;
    std::u16string message;
    std::u16string infoText;
    std::vector<StructRow> rows;
    std::int32_t selectedRow = -1;
    int scrollX = 0;
    int scrollY = 0;
    int clientWidth = 0;
    int clientHeight = 0;
    StructColumnWidths columnWidths = StructColumnDefaults;
    bool infoVisible = false;
    StructValueFormat valueFormat;
    StructViewLayout layout = LayoutStructView(StructViewLayoutInput{});
    std::optional<ColumnDrag> drag;
};

} // namespace tlm
