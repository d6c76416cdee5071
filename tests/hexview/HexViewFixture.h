#pragma once

#include "MemoryDocument.h"
#include "RecordingHost.h"
#include "ViewPoints.h"

#include "hexview/HexView.h"
#include "hexview/TextMeasurer.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <vector>

namespace tlm::test {

// Lines 16 high and characters 8 wide at the default 16-pixel font: rows are 21.6 high (the 1.35 rule),
// hex and text cells 8 wide, so the hex column starts at 8 + 72 + 12 = 92 and the text column at 488.
inline constexpr float TestLineHeight = 16.0f;
inline constexpr float TestCharacterWidth = 8.0f;

class HexViewFixture : public ::testing::Test {
protected:
    void SetUp() override
    {
        view.SetHost(host.Host(&view));
        view.SetTextMeasurer(FixedTextMeasurer(TestLineHeight, TestCharacterWidth));
    }

    void Open(std::vector<std::uint8_t> bytes)
    {
        document.bytes = std::move(bytes);
        view.SetDocument(&document);
        host.ClearLog();
    }

    void OpenEditable(std::vector<std::uint8_t> bytes)
    {
        Open(std::move(bytes));
        view.ToggleEditing();
        host.ClearLog();
    }

    void EnterInsertMode()
    {
        ASSERT_TRUE(view.IsEditingEnabled());
        view.OnKeyDown(VirtualKeyInsert, false);
        ASSERT_EQ(view.State().insertMode, HexEditMode::Insert);
        host.ClearLog();
    }

    void Type(const char16_t* digits)
    {
        for (; *digits != 0; ++digits) {
            view.OnChar(*digits);
        }
    }

    Point HexCell(std::int32_t line, std::int32_t column) const { return HexCellPoint(view, line, column); }
    Point TextCell(std::int32_t line, std::int32_t column) const { return TextCellPoint(view, line, column); }

    void Click(Point point)
    {
        view.OnLeftButtonDown(point.x, point.y);
        view.OnLeftButtonUp();
    }

    static constexpr std::uint32_t VirtualKeyInsert = 0x2D;

    RecordingHost host;
    MemoryDocument document;
    HexView view;
};

inline std::vector<std::uint8_t> Iota(std::size_t count)
{
    std::vector<std::uint8_t> bytes(count);
    for (std::size_t i = 0; i < count; ++i) {
        bytes[i] = static_cast<std::uint8_t>(i);
    }
    return bytes;
}

} // namespace tlm::test
