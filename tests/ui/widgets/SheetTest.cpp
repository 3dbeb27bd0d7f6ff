#include "../UiBench.h"
#include "WidgetSheet.h"

#include <gtest/gtest.h>

namespace
{
/** How far a widget's picture is from another's, in the mean of its pixels, 0 to 255. */
double difference (const juce::Image& sheet, const juce::Component& one, const juce::Component& other)
{
    double sum = 0.0;
    for (int y = 0; y < one.getHeight(); ++y)
        for (int x = 0; x < one.getWidth(); ++x)
        {
            const auto a = sheet.getPixelAt (one.getX() + x, one.getY() + y),
                       b = sheet.getPixelAt (other.getX() + x, other.getY() + y);
            sum += std::abs (a.getRed() - b.getRed()) + std::abs (a.getGreen() - b.getGreen())
                   + std::abs (a.getBlue() - b.getBlue());
        }
    return sum / (3.0 * one.getWidth() * one.getHeight());
}
}

TEST (WidgetSheet, EveryStateOfAButtonDiffersFromTheOthers)
{
    const DarkLook dark;
    WidgetSheet sheet;
    const auto image = UiBench::picture (sheet, "widgets");
    std::vector<juce::Component*> buttons;
    for (auto* widget : sheet.touched())
        if (dynamic_cast<PXImageButton*> (widget) != nullptr
            || dynamic_cast<PXTextButton*> (widget) != nullptr)
            buttons.push_back (widget);
    ASSERT_EQ (buttons.size() % 7, 0u);
    for (size_t first = 0; first < buttons.size(); first += 7)
        for (size_t a = first; a < first + 7; ++a)
            for (size_t b = a + 1; b < first + 7; ++b)
                EXPECT_GT (difference (image, *buttons[a], *buttons[b]), 2.0)
                    << "row " << first / 7 << ": " << a - first << " and " << b - first;
}

TEST (WidgetSheet, HandsFindEverythingAndNothingTakesTheKeyboard)
{
    const DarkLook dark;
    WidgetSheet sheet;
    UiBench::picture (sheet, "widgets", 2.0f);
    for (const auto* widget : sheet.touched())
    {
        EXPECT_GE (widget->getWidth(), CommandWidget::smallestHit);
        EXPECT_GE (widget->getHeight(), CommandWidget::smallestHit);
        EXPECT_FALSE (widget->getWantsKeyboardFocus());
    }
}
