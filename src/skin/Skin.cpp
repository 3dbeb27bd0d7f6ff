#include "skin/Skin.h"

#include "skin/SkinRequests.h"

#include <bitset>
#include <cmath>

namespace
{
/** The decoded pictures. */
class Cache : private juce::DeletedAtShutdown
{
public:
    ~Cache() override { clearSingletonInstance(); }

    const juce::Image& image (size_t row, size_t scaleIndex)
    {
        auto& decoded = images[row * skin::scales.size() + scaleIndex];
        if (!decoded.isValid())
        {
            const auto png = skin::pngOf (row, scaleIndex);
            decoded = juce::ImageFileFormat::loadFrom (png.data(), png.size());
        }
        return decoded;
    }

    juce::Typeface::Ptr typeface()
    {
        if (face == nullptr)
            face = juce::Typeface::createSystemTypefaceFor (skin::fontData().data(), skin::fontData().size());
        return face;
    }

    std::bitset<skin::table.size()> requested;

    JUCE_DECLARE_SINGLETON_SINGLETHREADED_MINIMAL (Cache)

private:
    std::array<juce::Image, skin::table.size() * skin::scales.size()> images;
    juce::Typeface::Ptr face;
};

JUCE_IMPLEMENT_SINGLETON (Cache)

constexpr float sameScale = 0.001f; ///< scales nearer than this are one

size_t setFor (float scale)
{
    size_t index = 0;
    while (index + 1 < skin::scales.size() && skin::scales[index] < scale - sameScale)
        ++index;
    return index;
}

/** Walks along one direction of a frame that is drawn to another length: calls
    each (place in the target, place in the frame, length). The ends come last, since the middle's pieces run one pixel
    into each other and into the last end, so that no seam opens where a scale puts a border between two pixels. */
template <typename Each>
void alongPieces (int target, int frame, int end, Each&& each)
{
    end = juce::jmin (end, target / 2);
    const int tile = frame - 2 * end;
    for (int done = 0, middle = target - 2 * end; done < middle; done += juce::jmax (1, tile - 1))
        each (end + done, end, juce::jmin (tile, middle - done + 1));
    each (0, 0, end);
    each (target - end, frame - end, end);
}

/** Draws pieces that overlap: what is seen through is put together first. */
template <typename Draw>
void inOneLayer (juce::Graphics& g, juce::Rectangle<int> area, float alpha, Draw&& draw)
{
    if (alpha >= 1)
        return draw();
    const juce::Graphics::ScopedSaveState state (g);
    g.reduceClipRegion (area);
    g.beginTransparencyLayer (alpha);
    draw();
    g.endTransparencyLayer();
}
}

namespace skin
{
juce::Rectangle<int> Strip::pixels (int frame, juce::Rectangle<int> part) const
{
    const int left = scaled (part.getX(), scale), top = scaled (part.getY(), scale);
    const int first = juce::jlimit (0, frames - 1, frame) * scaled (height, scale);
    return { left, first + top, scaled (part.getRight(), scale) - left,
             scaled (part.getBottom(), scale) - top };
}

void Strip::draw (juce::Graphics& g, juce::Rectangle<int> target, int frame, float alpha) const
{
    const juce::Rectangle<int> all { width, height };
    drawPart (g, all.withCentre (target.getCentre()).getPosition(), all, frame, alpha);
}

void Strip::drawPart (juce::Graphics& g, juce::Point<int> at, juce::Rectangle<int> part, int frame,
                      float alpha) const
{
    if (!isValid() || part.isEmpty())
        return;
    // The renderer copies pixels if all that is left of the transform is a move, and it may round that move.
    const bool copies = std::abs (scaleOf (g) / scale - 1.0f) < sameScale;
    g.setImageResamplingQuality (copies ? juce::Graphics::lowResamplingQuality
                                        : juce::Graphics::mediumResamplingQuality);
    g.setOpacity (alpha);
    g.drawImageTransformed (image.getClippedImage (pixels (frame, part)),
                            juce::AffineTransform::scale (1.0f / scale).translated (at.toFloat()));
    g.setImageResamplingQuality (juce::Graphics::mediumResamplingQuality);
}

void Strip::drawWide (juce::Graphics& g, juce::Rectangle<int> target, int frame, int end, float alpha) const
{
    const int y = target.getCentreY() - height / 2;
    auto piece = [&] (int to, int from, int length) {
        drawPart (g, { target.getX() + to, y }, { from, 0, length, height }, frame);
    };
    inOneLayer (g, target.withY (y).withHeight (height), alpha,
                [&] { alongPieces (target.getWidth(), width, end, piece); });
}

void Strip::drawTall (juce::Graphics& g, juce::Rectangle<int> target, int frame, int end, float alpha) const
{
    const int x = target.getCentreX() - width / 2;
    auto piece = [&] (int to, int from, int length) {
        drawPart (g, { x, target.getY() + to }, { 0, from, width, length }, frame);
    };
    inOneLayer (g, target.withX (x).withWidth (width), alpha,
                [&] { alongPieces (target.getHeight(), height, end, piece); });
}

void Strip::drawArea (juce::Graphics& g, juce::Rectangle<int> target, int frame, int corner,
                      float alpha) const
{
    auto shelf = [&] (int toY, int fromY, int high)
    {
        alongPieces (
            target.getWidth(), width, corner,
            [&] (int toX, int fromX, int wide) {
                drawPart (g, target.getPosition().translated (toX, toY), { fromX, fromY, wide, high }, frame);
            });
    };
    inOneLayer (g, target, alpha, [&] { alongPieces (target.getHeight(), height, corner, shelf); });
}

Strip strip (std::string_view name, float scale)
{
    for (size_t row = 0; row < table.size(); ++row)
        if (table[row].name() == name)
        {
            const auto set = setFor (scale);
            Cache::getInstance()->requested.set (row);
            return { Cache::getInstance()->image (row, set), table[row].frames, table[row].width,
                     table[row].height, scales[set] };
        }
    jassertfalse;
    return {};
}

std::vector<std::string_view> takeRequests()
{
    std::vector<std::string_view> names;
    auto& requested = Cache::getInstance()->requested;
    for (size_t row = 0; row < table.size(); ++row)
        if (requested[row])
            names.push_back (table[row].name());
    requested.reset();
    return names;
}

float scaleOf (juce::Graphics& g)
{
    return g.getInternalContext().getPhysicalPixelScaleFactor();
}

std::string deckName (std::string_view family, int deck)
{
    return std::string (family).append (
        hueSuffixes[static_cast<size_t> (Hue::deckA) + static_cast<size_t> (deck)]);
}

juce::Typeface::Ptr typeface()
{
    return Cache::getInstance()->typeface();
}
}
