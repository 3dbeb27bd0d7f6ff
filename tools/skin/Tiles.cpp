#include "Materials.h"

namespace
{
constexpr float headHigh = 48;  ///< a deck's head, above the waveform
constexpr float waveEnds = 190; ///< the waveform's lower end

/** A ground that runs on past its left and right border unless it ends there. */
void drawRun (const Pen& pen, const Surface& surface, float radius, bool endsLeft, bool endsRight)
{
    drawSurface (pen, pen.all(), radius, surface, { endsLeft, endsRight });
}
}

void paintDeckStrip (const Pen& pen, const skin::Row&, int)
{
    drawRun (pen, { palette::panel, palette::edgeLight, palette::edgeDark }, 4, true, true);
    // The head is raised, the waveform lies in a well that goes from end to end.
    const float hair = pen.hair(), head = pen.snap (headHigh), foot = pen.snap (waveEnds);
    const float left = hair, wide = pen.width - 2 * hair;
    pen.fill (palette::raised, { left, 4, wide, head - 4 });
    pen.fill (palette::raised, { 4, hair, pen.width - 8, 4 - hair });
    pen.fill (palette::ground, { 0, head, pen.width, foot - head });
    pen.fill (palette::edgeDark, { 0, head, pen.width, hair });
    pen.fill (palette::edgeLight, { 0, foot, pen.width, hair });
}

void paintDeckColumn (const Pen& pen, const skin::Row&, int)
{
    drawRun (pen, { palette::panel, palette::edgeLight, palette::edgeDark }, 0, false, false);
    pen.fill (palette::edgeDark, { pen.width - pen.hair(), 0, pen.hair(), pen.height });
}

void paintHeader (const Pen& pen, const skin::Row& row, int)
{
    drawRun (pen, { palette::panel, palette::edgeLight, palette::edgeDark }, 4, row.name() == "header_left",
             row.name() == "header_right");
}

void paintGhostMixer (const Pen& pen, const skin::Row&, int)
{
    drawRun (pen, { palette::panel, palette::edgeLight, palette::edgeDark }, 4, false, false);
}
