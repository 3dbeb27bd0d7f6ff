#include "text/ZRRendererFontManager.h"

#include "text/FreeTypeFace.h"

ZRRendererFontManager& ZRRendererFontManager::getInstance()
{
    static ZRRendererFontManager manager;
    return manager;
}

bool ZRRendererFontManager::addFont (const juce::String& name, const void* data, size_t size)
{
    const juce::ScopedLock hold (lock);
    if (findFont (name))
        return true;
    if (!FreeTypeFace (data, size).isLoaded())
        return false;
    fonts.push_back ({ name, data, size });
    return true;
}

std::optional<ZRRendererFontManager::FontFile>
ZRRendererFontManager::findFont (const juce::String& name) const
{
    const juce::ScopedLock hold (lock);
    for (const auto& font : fonts)
        if (font.name == name)
            return font;
    return {};
}
