#pragma once

#include "support/language/Translate.h"
#include "ui/envelope/EnvComponent.h"
#include "ui/widgets/MenuButton.h"
#include "ui/widgets/ResizableScrollBar.h"

class Prompts;

/** An EnvComponent with its menu, undo and redo, and the bar that pans and zooms its time. */
class EnvEditor : public juce::Component, private GraphEnvListener, private juce::ScrollBar::Listener
{
public:
    /** @param prompts   for the files of states; may be null, then there are none. Outlives the editor */
    explicit EnvEditor (Prompts* prompts);
    ~EnvEditor() override;

    EnvComponent& curves() noexcept { return component; }

    enum Item
    {
        openState = 1,
        saveState = 2,
        copyState = 3,
        pasteState = 4,
        flipLevels = 6,
        normaliseLevels = 7,
        snapX = 100,
        snapY = 101,
        sliding = 102
    };

    juce::PopupMenu menu() const;
    void choose (int item);

    void resized() override;
    void paint (juce::Graphics&) override;
    bool keyPressed (const juce::KeyPress&) override;

private:
    void graphEnvChanged (EnvComponent&) override;
    void scrollBarMoved (juce::ScrollBar*, double) override;
    void openFile();
    void saveFile();

    Prompts* const prompts;
    EnvComponent component;
    MenuButton menuButton { tr ("CURVE") };
    PXTextButton undoButton { tr ("UNDO") }, redoButton { tr ("REDO") };
    ResizableScrollBar bar { false };
};
