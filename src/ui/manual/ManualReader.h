#pragma once

#include "ui/manual/HelpTopic.h"
#include "ui/manual/ManualPageView.h"
#include "ui/window/ToolWindows.h"

/** The manual: a list of its pages on the left, the chosen one on the right. Arrows choose a page, Page Up, Page Down and Space scroll it.
    Message thread. */
class ManualReader : public juce::Component, private juce::ListBoxModel, private juce::KeyListener
{
public:
    static constexpr int width = 900, height = 620;

    explicit ManualReader (const juce::File& folder = Manual::usualFolder());
    ~ManualReader() override;

    /** Opens the manual at a topic in a window of its own, or takes it there if it is open. */
    static void open (ToolWindows&, juce::Component& opener, const HelpTopic&);

    /** Shows a topic's page, with its heading on top. A page that there isn't is said in one sentence. */
    void show (const HelpTopic&);

    /** Follows a link of the page that is shown. */
    void follow (const juce::String& target);

    /** The page that is shown, or -1. */
    int shownPage() const noexcept { return shown; }
    const Manual& manual() const noexcept { return pages; }
    int scrolledTo() const { return viewport.getViewPositionY(); }
    const ManualPageView& page() const noexcept { return view; }

    void paint (juce::Graphics&) override;
    void resized() override;
    bool keyPressed (const juce::KeyPress&) override;
    void focusGained (FocusChangeType) override { list.grabKeyboardFocus(); }

private:
    int getNumRows() override { return static_cast<int> (pages.pages().size()); }
    void paintListBoxItem (int row, juce::Graphics&, int width, int height, bool selected) override;
    void selectedRowsChanged (int row) override;
    juce::String getNameForRow (int row) override;
    bool keyPressed (const juce::KeyPress& key, juce::Component*) override { return keyPressed (key); }
    void showPage (int page, const juce::String& anchor);

    Manual pages;
    int shown = -1;
    const juce::String note; ///< on the manual's language
    juce::ListBox list { {}, this };
    juce::Viewport viewport;
    ManualPageView view;
};
