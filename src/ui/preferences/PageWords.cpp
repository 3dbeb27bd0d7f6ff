#include "ui/preferences/PageWords.h"

#include "ui/preferences/SettingRow.h"
#include "ui/preferences/TextPage.h"

namespace
{
juce::String ownWords (const juce::Component& component)
{
    juce::String words;
    const auto add = [&words] (const juce::String& text) { words << text << "\n"; };
    add (component.getName()); // "_rumbleSlider", whose caption the panel paints
    add (component.getComponentID());
    if (const auto* row = dynamic_cast<const SettingRow*> (&component))
        add (row->caption());
    if (const auto* page = dynamic_cast<const TextPage*> (&component))
        add (page->text());
    if (const auto* button = dynamic_cast<const juce::Button*> (&component))
        add (button->getButtonText());
    if (const auto* label = dynamic_cast<const juce::Label*> (&component))
        add (label->getText());
    if (const auto* box = dynamic_cast<const juce::ComboBox*> (&component))
        for (int i = 0; i < box->getNumItems(); ++i)
            add (box->getItemText (i));
    if (auto* tipped = dynamic_cast<juce::TooltipClient*> (const_cast<juce::Component*> (&component)))
        add (tipped->getTooltip()); // which is not const
    return words;
}

void find (juce::Component& within, const juce::Component& page, const juce::String& words,
           std::vector<juce::Rectangle<int>>& found)
{
    const auto before = found.size();
    if (!PageWords::holds (PageWords::of (within), words))
        return;
    // A row and what lies in it are one thing to the eye.
    if (dynamic_cast<SettingRow*> (&within) == nullptr)
        for (auto* child : within.getChildren())
            find (*child, page, words, found);
    if (found.size() == before && &within != &page)
        found.push_back (page.getLocalArea (&within, within.getLocalBounds()));
}
}

namespace PageWords
{
juce::String of (const juce::Component& component)
{
    auto words = ownWords (component);
    for (const auto* child : component.getChildren())
        words << of (*child);
    return words;
}

bool holds (const juce::String& text, const juce::String& words)
{
    for (const auto& word : juce::StringArray::fromTokens (words, true))
        if (word.isNotEmpty() && !text.containsIgnoreCase (word))
            return false;
    return true;
}

std::vector<juce::Rectangle<int>> find (juce::Component& page, const juce::String& words)
{
    std::vector<juce::Rectangle<int>> found;
    if (words.trim().isNotEmpty())
        ::find (page, page, words, found);
    return found;
}
}
