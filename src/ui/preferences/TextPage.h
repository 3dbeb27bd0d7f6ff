#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <span>

/** A titled paragraph. */
struct TextSection
{
    const char *title, *text;
};

/** A page of paragraphs, as high as its text. Message thread. */
class TextPage : public juce::Component
{
public:
    static constexpr int width = 640, margin = 16, titleHeight = 24;

    explicit TextPage (std::span<const TextSection>);

    /** All that stands on it. */
    juce::String text() const;

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    struct Block
    {
        juce::TextLayout layout;
        juce::Rectangle<int> title, body;
    };

    const std::span<const TextSection> sections;
    std::vector<Block> blocks;
};
