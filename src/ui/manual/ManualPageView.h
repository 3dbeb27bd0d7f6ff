#pragma once

#include "ui/manual/Manual.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

/** A page of the manual, as high as its text for its width. Message thread. */
class ManualPageView : public juce::Component
{
public:
    ManualPageView();

    /** Called with the target of a link that is clicked. */
    std::function<void (const juce::String& target)> onLink;

    /** Shows a page. @param folder   where its pictures are */
    void show (const Manual::Page&, const juce::File& folder);

    /** Shows one sentence. */
    void say (const juce::String& sentence);

    /** Sets the text for a width, and the height for the text. */
    void fit (int width);

    /** The top of a heading, by its anchor; 0 if the page has none of that name. */
    int topOf (const juce::String& anchor) const;

    /** The target of the link at a place, or nothing. */
    juce::String linkAt (juce::Point<int>) const;

    void paint (juce::Graphics&) override;
    void mouseMove (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

private:
    struct Link
    {
        juce::Rectangle<int> area;
        juce::String target;
    };

    struct Row
    {
        juce::Rectangle<int> area;
        juce::TextLayout words;
        juce::String mark; ///< before a row of a list
        juce::Image picture;
        juce::String anchor;
    };

    Row rowOf (const ManualBlock&, int left, int top, int width);
    void addLinks (const ManualBlock&, const Row&);

    std::vector<ManualBlock> blocks;
    juce::File pictures;
    std::vector<Row> rows;
    std::vector<Link> links;
};
