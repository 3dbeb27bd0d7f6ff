#include "Materials.h"

namespace
{
using juce::Path;
using skin::Sign;

// Every sign is drawn in a square of 16.

Path stroked (const Path& line, float width, bool roundEnds = false)
{
    Path result;
    juce::PathStrokeType (width, juce::PathStrokeType::mitered,
                          roundEnds ? juce::PathStrokeType::rounded : juce::PathStrokeType::butt)
        .createStrokedPath (result, line, {}, 8.0f);
    return result;
}

Path line (std::initializer_list<juce::Point<float>> points)
{
    Path path;
    path.startNewSubPath (*points.begin());
    for (const auto* point = points.begin() + 1; point != points.end(); ++point)
        path.lineTo (*point);
    return path;
}

Path shape (std::initializer_list<juce::Point<float>> points)
{
    auto path = line (points);
    path.closeSubPath();
    return path;
}

Path arc (float x, float y, float radius, float fromDegrees, float toDegrees)
{
    Path path;
    path.addCentredArc (x, y, radius, radius, 0, juce::degreesToRadians (fromDegrees),
                        juce::degreesToRadians (toDegrees), true);
    return path;
}

Path playPause()
{
    auto path = shape ({ { 0, 2 }, { 8, 8 }, { 0, 14 } });
    path.addRectangle (9.5f, 2, 2.5f, 12);
    path.addRectangle (13.5f, 2, 2.5f, 12);
    return path;
}

Path sync()
{
    auto path = stroked (arc (8, 8, 5.5f, -80, 50), 2.2f);
    path.addPath (stroked (arc (8, 8, 5.5f, 100, 230), 2.2f));
    path.addPath (shape ({ { 14.9f, 1.6f }, { 14.9f, 8.2f }, { 9.2f, 6.0f } }));
    path.addPath (shape ({ { 1.1f, 14.4f }, { 1.1f, 7.8f }, { 6.8f, 10.0f } }));
    return path;
}

Path padlock()
{
    Path path;
    path.addRoundedRectangle (2.5f, 7, 11, 8, 1.5f);
    auto shackle = line ({ { 4.75f, 7.5f }, { 4.75f, 5 } });
    shackle.addCentredArc (8, 5, 3.25f, 3.25f, 0, -juce::MathConstants<float>::halfPi,
                           juce::MathConstants<float>::halfPi);
    shackle.lineTo (11.25f, 7.5f);
    path.addPath (stroked (shackle, 2));
    return path;
}

Path headphones()
{
    auto path = stroked (arc (8, 8.5f, 6, -90, 90), 2);
    path.addRoundedRectangle (1, 8, 4, 7, 1.2f);
    path.addRoundedRectangle (11, 8, 4, 7, 1.2f);
    return path;
}

Path magnet()
{
    auto bow = line ({ { 3.5f, 5.5f }, { 3.5f, 9 } });
    bow.addCentredArc (8, 9, 4.5f, 4.5f, 0, -juce::MathConstants<float>::halfPi,
                       -juce::MathConstants<float>::halfPi - juce::MathConstants<float>::pi);
    bow.lineTo (12.5f, 5.5f);
    auto path = stroked (bow, 4);
    path.addRectangle (1.5f, 1, 4, 3);
    path.addRectangle (10.5f, 1, 4, 3);
    return path;
}

Path decks (bool four)
{
    Path path;
    for (const float x : { 1.0f, 9.0f })
        if (four)
            for (const float y : { 1.0f, 9.0f })
                path.addRectangle (x, y, 6, 6);
        else
            path.addRectangle (x, 4, 6, 8);
    return path;
}

Path gear()
{
    Path path;
    constexpr int teeth = 8;
    for (int corner = 0; corner < teeth * 4; ++corner)
    {
        // Down the flank, along the foot, up the flank, along the tip.
        static constexpr float places[] { -0.30f, -0.17f, 0.17f, 0.30f };
        const bool tip = corner % 4 == 1 || corner % 4 == 2;
        const float turn = (static_cast<float> (corner / 4) + places[corner % 4]) / teeth;
        const auto point = juce::Point<float> (8, 8).getPointOnCircumference (
            tip ? 7.6f : 5.6f, turn * juce::MathConstants<float>::twoPi);
        corner == 0 ? path.startNewSubPath (point) : path.lineTo (point);
    }
    path.closeSubPath();
    path.addEllipse (5.4f, 5.4f, 5.2f, 5.2f);
    path.setUsingNonZeroWinding (false);
    return path;
}

Path fullScreen (bool on)
{
    Path path;
    for (int corner = 0; corner < 4; ++corner)
    {
        auto bracket = on ? stroked (line ({ { 6, 1 }, { 6, 6 }, { 1, 6 } }), 2)
                          : stroked (line ({ { 2, 7 }, { 2, 2 }, { 7, 2 } }), 2);
        bracket.applyTransform (juce::AffineTransform::rotation (
            static_cast<float> (corner) * juce::MathConstants<float>::halfPi, 8, 8));
        path.addPath (bracket);
    }
    return path;
}

Path power()
{
    auto path = stroked (arc (8, 8.8f, 5.6f, 40, 320), 2.2f, true);
    path.addRoundedRectangle (6.9f, 1, 2.2f, 7.4f, 1.1f);
    return path;
}

Path plus (bool upright)
{
    Path path;
    path.addRectangle (2, 6.5f, 12, 3);
    if (upright)
        path.addRectangle (6.5f, 2, 3, 12);
    return path;
}

Path arrow (float degrees)
{
    auto path = shape ({ { 3.6f, 2 }, { 13.2f, 8 }, { 3.6f, 14 } });
    path.applyTransform (juce::AffineTransform::rotation (juce::degreesToRadians (degrees), 8, 8));
    return path;
}

Path load()
{
    Path path;
    path.addRectangle (6.5f, 1, 3, 5);
    path.addTriangle (2.5f, 5.5f, 13.5f, 5.5f, 8, 11);
    path.addRectangle (2, 12.5f, 12, 2.5f);
    return path;
}

Path eject()
{
    Path path;
    path.addTriangle (1.5f, 9.5f, 8, 2, 14.5f, 9.5f);
    path.addRectangle (2, 11.5f, 12, 2.5f);
    return path;
}

Path loop()
{
    auto track = line ({ { 10, 3.5f }, { 5.5f, 3.5f } });
    track.addCentredArc (5.5f, 8, 4.5f, 4.5f, 0, 0, -juce::MathConstants<float>::pi);
    track.lineTo (10.5f, 12.5f);
    track.addCentredArc (10.5f, 8, 4.5f, 4.5f, 0, juce::MathConstants<float>::pi, 0.9f);
    auto path = stroked (track, 2);
    path.addTriangle (8.5f, 0, 13.0f, 3.5f, 8.5f, 7);
    return path;
}

Path search()
{
    auto path = stroked (arc (6.5f, 6.5f, 4.4f, 0, 360), 2.2f);
    path.addPath (stroked (line ({ { 9.6f, 9.6f }, { 14, 14 } }), 2.8f, true));
    return path;
}

Path close()
{
    auto path = stroked (line ({ { 3, 3 }, { 13, 13 } }), 2.6f);
    path.addPath (stroked (line ({ { 13, 3 }, { 3, 13 } }), 2.6f));
    return path;
}

Path bars (std::initializer_list<float> tops)
{
    Path path;
    for (const float top : tops)
        path.addRectangle (2, top, 12, 2.4f);
    return path;
}

/** Two waves, one below the other, round one playhead. */
Path waves()
{
    Path path;
    constexpr std::array heights { 2.0f, 5.0f, 3.0f, 6.0f, 3.0f, 5.0f, 2.0f };
    for (const float middle : { 4.0f, 12.0f })
        for (size_t bar = 0; bar < heights.size(); ++bar)
            path.addRectangle (1.1f + 2.0f * static_cast<float> (bar), middle - heights[bar] / 2, 1.4f,
                               heights[bar]);
    return path;
}

Path drawn (Sign sign, bool on)
{
    Path path;
    switch (sign)
    {
    case Sign::playPause:
        return playPause();
    case Sign::sync:
        return sync();
    case Sign::padlock:
        return padlock();
    case Sign::headphones:
        return headphones();
    case Sign::record:
        path.addEllipse (2.5f, 2.5f, 11, 11);
        return path;
    case Sign::snap:
        return magnet();
    case Sign::decks:
        return decks (on);
    case Sign::waves:
        return waves();
    case Sign::gear:
        return gear();
    case Sign::fullScreen:
        return fullScreen (on);
    case Sign::power:
        return power();
    case Sign::minus:
        return plus (false);
    case Sign::plus:
        return plus (true);
    case Sign::right:
        return arrow (0);
    case Sign::down:
        return arrow (90);
    case Sign::left:
        return arrow (180);
    case Sign::up:
        return arrow (270);
    case Sign::load:
        return load();
    case Sign::eject:
        return eject();
    case Sign::loop:
        return loop();
    case Sign::search:
        return search();
    case Sign::close:
        return close();
    case Sign::minimise:
        return bars ({ 11 });
    case Sign::maximise:
        path.addRectangle (3, 3, 10, 10);
        return stroked (path, 2);
    case Sign::menu:
        return bars ({ 2.2f, 6.8f, 11.4f });
    case Sign::cue:
    case Sign::none:
        break;
    }
    return path;
}
}

juce::Path signPath (skin::Sign sign, juce::Rectangle<float> square, bool on)
{
    auto path = drawn (sign, on);
    path.applyTransform (
        juce::AffineTransform::scale (square.getWidth() / 16).translated (square.getX(), square.getY()));
    return path;
}

void paintSign (const Pen& pen, const skin::Row& row, int frame)
{
    const std::array colours { palette::label, palette::value, palette::ink };
    pen.fill (colours[static_cast<size_t> (frame)], signPath (row.sign, pen.all(), false));
}
