#include "ui/manual/Manual.h"

#include "support/files/OwnBinary.h"

#include <algorithm>

Manual::Manual (const juce::File& folder) : place (folder)
{
    if (!add (indexName))
        return;
    const auto index = all.front().blocks; // the list below grows
    for (const auto& block : index)
        for (const auto& span : block.spans)
            if (const auto name = span.target.upToFirstOccurrenceOf (".md", false, false);
                span.target.endsWith (".md") && find (name) < 0)
                add (name);
}

juce::File Manual::usualFolder()
{
    return ownBinary().getSiblingFile ("manual");
}

int Manual::find (const juce::String& name) const
{
    const auto found =
        std::find_if (all.begin(), all.end(), [&] (const auto& page) { return page.name == name; });
    return found != all.end() ? static_cast<int> (found - all.begin()) : -1;
}

bool Manual::add (const juce::String& name)
{
    const auto file = place.getChildFile (name + ".md");
    if (!file.existsAsFile())
        return false;
    Page page { name, name, ManualText::read (file.loadFileAsString()) };
    if (!page.blocks.empty() && page.blocks.front().kind == ManualBlock::Kind::title)
        page.title = page.blocks.front().text();
    all.push_back (std::move (page));
    return true;
}
