#include "text/FaceFontCache.h"

JUCE_IMPLEMENT_SINGLETON (FaceFontCache)

FaceFontCache::~FaceFontCache()
{
    clearSingletonInstance();
}

std::shared_ptr<CachedFace> FaceFontCache::getFace (const juce::String& name, const void* data, size_t size,
                                                    int32_t pixelHeight, bool hinted, double embolden,
                                                    double slant)
{
    const juce::ScopedLock hold (lock);
    for (const auto& face : faces)
        if (face->pixelHeight == pixelHeight && face->hinted == hinted && face->name == name
            && juce::approximatelyEqual (face->embolden, embolden)
            && juce::approximatelyEqual (face->slant, slant))
            return face;

    auto made = std::make_shared<CachedFace> (name, data, size, pixelHeight, hinted, embolden, slant);
    if (faces.size() >= maxFaces)
        faces.erase (faces.begin());
    faces.push_back (made);
    return made;
}

int FaceFontCache::getNumFaces() const
{
    const juce::ScopedLock hold (lock);
    return static_cast<int> (faces.size());
}
