#pragma once

/** The one knob that the selected effect of a slot shows. */
namespace FxType
{
/** The kind that a selector's value chooses, 0 to 9. @param selector   0 to 1 */
int indexOf (double selector) noexcept;

/** The value of the knob of a kind at its creation. @param index   0 to 9, is limited to that */
double restStep (int index) noexcept;

/** The word for what the knob of a kind changes: "TIME", "RATE", "ROOM". @param index   0 to 9, is limited to that */
const char* stepName (int index) noexcept;
}
