#include "hexview/HexViewMetrics.h"
#include "hexview/TextMeasurer.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace tlm {
namespace {

// A measurer with separate answers per character, and a log of what it was asked.
struct ScriptedMeasurer {
    bool formatOk = true;
    std::optional<std::vector<float>> lines = std::vector<float>{18.0f, 20.0f, 22.0f, 20.0f};
    float hexDigitWidth = 9.0f;
    float colonWidth = 4.0f;
    float letterWidth = 7.0f;
    float wideLetterWidth = 11.0f; // 'W'
    bool failW = false;
    std::vector<float> formatSizes;
    std::u16string lineSample;
    int widthCalls = 0;

    TextMeasurer Make()
    {
        TextMeasurer measurer;
        measurer.makeTextFormat = [this](const HexViewFont&, float size) {
            formatSizes.push_back(size);
            return formatOk;
        };
        measurer.lineHeights = [this](std::u16string_view text, float width, float height) {
            lineSample = std::u16string(text);
            EXPECT_EQ(width, 4096.0f);
            EXPECT_EQ(height, 4096.0f);
            return lines;
        };
        measurer.width = [this](std::u16string_view text, float width, float height) -> std::optional<float> {
            ++widthCalls;
            EXPECT_EQ(text.size(), 1u);
            EXPECT_EQ(width, 256.0f);
            EXPECT_EQ(height, 256.0f);
            const char16_t c = text[0];
            if (c == u'W') {
                if (failW) {
                    return std::nullopt;
                }
                return wideLetterWidth;
            }
            if ((c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'F')) {
                return hexDigitWidth;
            }
            if (c == u':') {
                return colonWidth;
            }
            return letterWidth;
        };
        return measurer;
    }
};

TEST(HexViewMetrics, ConstructionValues)
{
    const HexViewMetrics metrics;
    EXPECT_EQ(metrics.dpi, 96u);
    EXPECT_EQ(metrics.rowHeight, 19.0f);
    EXPECT_EQ(metrics.margin, 8.0f);
    EXPECT_EQ(metrics.offsetWidth, 126.0f);
    EXPECT_EQ(metrics.hexWidth, 470.0f);
    EXPECT_EQ(metrics.textWidth, 160.0f);
    EXPECT_EQ(metrics.columnGap, 12.0f);
    EXPECT_EQ(metrics.baseFontSize, 16.0f);
    EXPECT_EQ(metrics.fontSize, 16.0f);
    EXPECT_EQ(metrics.hexCellWidth, 8.0f);
    EXPECT_EQ(metrics.textCellWidth, 8.0f);
    EXPECT_EQ(metrics.zoom, 1.0f);
}

TEST(HexViewMetrics, WidthsComeFromTheWidestCharacters)
{
    ScriptedMeasurer script;
    HexViewMetrics metrics;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    EXPECT_EQ(metrics.hexCellWidth, 9.0f);
    EXPECT_EQ(metrics.textCellWidth, 11.0f);
    EXPECT_EQ(metrics.offsetWidth, 81.0f);
    EXPECT_EQ(metrics.hexWidth, 9.0f * 3.0f * 16.0f);
    EXPECT_EQ(metrics.textWidth, 176.0f);
    EXPECT_EQ(script.widthCalls, 95 + 17);
    EXPECT_EQ(script.lineSample, u"0\r\n0\r\n0\r\n0");
}

TEST(HexViewMetrics, RowHeightIsTheMeanLineHeightPlusLeading)
{
    ScriptedMeasurer script;
    HexViewMetrics metrics;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    // Mean 20, leading 16 * 0.15 = 2.4; 16 * 1.35 = 21.6 is smaller.
    EXPECT_FLOAT_EQ(metrics.rowHeight, 22.4f);
}

TEST(HexViewMetrics, RowHeightFollowsTheFontSizeRule)
{
    ScriptedMeasurer script;
    script.lines = std::vector<float>{10.0f};
    HexViewMetrics metrics;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    EXPECT_FLOAT_EQ(metrics.rowHeight, 21.6f);
}

TEST(HexViewMetrics, RowHeightNeverFallsBelowSeventeen)
{
    ScriptedMeasurer script;
    script.lines = std::vector<float>{5.0f};
    HexViewMetrics metrics;
    metrics.baseFontSize = 8.0f;
    metrics.zoom = 1.0f;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    EXPECT_EQ(metrics.rowHeight, 17.0f);
}

TEST(HexViewMetrics, AtFontSizeFourTheLeadingIsItsFloor)
{
    ScriptedMeasurer script;
    script.lines = std::vector<float>{20.0f};
    HexViewMetrics metrics;
    metrics.baseFontSize = 4.0f;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    EXPECT_EQ(metrics.fontSize, 4.0f);
    EXPECT_FLOAT_EQ(metrics.rowHeight, 20.75f);
}

TEST(HexViewMetrics, FontSizeIsZoomTimesBase)
{
    ScriptedMeasurer script;
    HexViewMetrics metrics;
    metrics.zoom = 1.5f;
    metrics.baseFontSize = 20.0f;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    EXPECT_EQ(metrics.fontSize, 30.0f);
    ASSERT_EQ(script.formatSizes.size(), 1u);
    EXPECT_EQ(script.formatSizes[0], 30.0f);
}

TEST(HexViewMetrics, WithoutTextFormatWidthsStayZero)
{
    ScriptedMeasurer script;
    script.formatOk = false;
    HexViewMetrics metrics;
    RecomputeMetrics(metrics, HexViewFont{}, true, script.Make());
    EXPECT_EQ(metrics.offsetWidth, 0.0f);
    EXPECT_EQ(metrics.hexWidth, 0.0f);
    EXPECT_EQ(metrics.textWidth, 0.0f);
    EXPECT_EQ(metrics.rowHeight, 17.0f);
    EXPECT_EQ(metrics.hexCellWidth, 8.0f);
    EXPECT_EQ(metrics.textCellWidth, 8.0f);
    EXPECT_EQ(script.widthCalls, 0);
}

TEST(HexViewMetrics, AnEmptyMeasurerCountsAsNoTextFormat)
{
    HexViewMetrics metrics;
    RecomputeMetrics(metrics, HexViewFont{}, false, TextMeasurer{});
    EXPECT_EQ(metrics.hexWidth, 0.0f);
    EXPECT_EQ(metrics.rowHeight, 17.0f);
}

TEST(HexViewMetrics, FailedLineMetricsFallBackToTheCurrentRowHeight)
{
    ScriptedMeasurer script;
    script.lines = std::nullopt;
    HexViewMetrics metrics;
    metrics.baseFontSize = 10.0f;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    // lineHeight is 17 (just set), plus 1.5 of leading.
    EXPECT_FLOAT_EQ(metrics.rowHeight, 18.5f);

    script.lines = std::vector<float>{};
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    EXPECT_FLOAT_EQ(metrics.rowHeight, 18.5f);
}

TEST(HexViewMetrics, ACharacterWhoseLayoutFailsIsSkipped)
{
    ScriptedMeasurer script;
    script.failW = true;
    HexViewMetrics metrics;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    EXPECT_EQ(metrics.textCellWidth, 9.0f); // the hex digits are now the widest printable characters
}

TEST(HexViewMetrics, MeasuredWidthsHaveAFloorOfOne)
{
    ScriptedMeasurer script;
    script.hexDigitWidth = 0.25f;
    script.colonWidth = 0.0f;
    script.letterWidth = 0.5f;
    script.wideLetterWidth = 0.5f;
    HexViewMetrics metrics;
    RecomputeMetrics(metrics, HexViewFont{}, false, script.Make());
    EXPECT_EQ(metrics.hexCellWidth, 1.0f);
    EXPECT_EQ(metrics.textCellWidth, 1.0f);
}

TEST(HexViewMetrics, WideOffsetColumnIsSeventeenDigitsWide)
{
    ScriptedMeasurer script;
    HexViewMetrics metrics;
    RecomputeMetrics(metrics, HexViewFont{}, true, script.Make());
    EXPECT_EQ(metrics.offsetWidth, 9.0f * 17.0f);
}

TEST(HexViewMetrics, FontPointsAreClampedAndConverted)
{
    EXPECT_FLOAT_EQ(*FontSizeFromPoints(12.0f), 16.0f);
    EXPECT_FLOAT_EQ(*FontSizeFromPoints(100.0f), 64.0f);
    EXPECT_FLOAT_EQ(*FontSizeFromPoints(1.0f), 8.0f);
    EXPECT_FALSE(FontSizeFromPoints(std::nanf("")).has_value());
}

TEST(HexViewMetrics, SameFontIgnoresCaseAndTinySizeDifferences)
{
    const HexViewFont consolas{u"Consolas", false, false};
    EXPECT_TRUE(IsSameFont(consolas, 16.0f, HexViewFont{u"CONSOLAS", false, false}, 16.005f));
    EXPECT_FALSE(IsSameFont(consolas, 16.0f, HexViewFont{u"Consolas", false, false}, 16.02f));
    EXPECT_FALSE(IsSameFont(consolas, 16.0f, HexViewFont{u"Consolas", true, false}, 16.0f));
    EXPECT_FALSE(IsSameFont(consolas, 16.0f, HexViewFont{u"Consolas", false, true}, 16.0f));
    EXPECT_FALSE(IsSameFont(consolas, 16.0f, HexViewFont{u"Courier New", false, false}, 16.0f));
    EXPECT_TRUE(IsSameFont(HexViewFont{u"\u00C9crit", false, false}, 16.0f, HexViewFont{u"\u00E9CRIT", false, false}, 16.0f));
}

TEST(HexViewMetrics, ZoomStepsAreClampedAndTinyChangesIgnored)
{
    EXPECT_FLOAT_EQ(*ZoomAfterStep(1.0f, 0.1f), 1.1f);
    EXPECT_FLOAT_EQ(*ZoomAfterStep(2.45f, 0.1f), 2.5f);
    EXPECT_FALSE(ZoomAfterStep(2.5f, 0.1f).has_value());
    EXPECT_FALSE(ZoomAfterStep(0.6f, -0.1f).has_value());
    EXPECT_FALSE(ZoomAfterStep(1.0f, 0.0005f).has_value());
    EXPECT_FALSE(ZoomAfterStep(1.0f, std::nanf("")).has_value());
}

TEST(HexViewMetrics, FixedMeasurerScalesWithTheFontSize)
{
    const TextMeasurer measurer = FixedTextMeasurer(16.0f, 8.0f);
    HexViewMetrics metrics;
    metrics.zoom = 2.0f;
    RecomputeMetrics(metrics, HexViewFont{}, false, measurer);
    EXPECT_EQ(metrics.hexCellWidth, 16.0f);
    EXPECT_FLOAT_EQ(metrics.rowHeight, 32.0f * 1.35f);
}

} // namespace
} // namespace tlm
