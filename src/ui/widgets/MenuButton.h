#pragma once

#include "ui/widgets/PXTextButton.h"

#include <functional>

/** A button that opens a menu as it goes down. Its arrow tells so. */
class MenuButton : public PXTextButton
{
public:
    explicit MenuButton (const juce::String& text = {});

    std::function<void (juce::PopupMenu&)> onFillMenu; ///< asked each time it opens
    std::function<void (int id)> onMenuChoice;         ///< not called when the menu is left without a choice

    void openMenu();

    void paintButton (juce::Graphics&, bool over, bool down) override;

    juce::Rectangle<int> textArea() const override;

protected:
    void clicked() override;

private:
    static constexpr int arrowWidth = 14;
};
