#include "mixer/AutoCrossfader.h"

#include <algorithm>

AutoCrossfader::State AutoCrossfader::advance (EngineSettings& settings, double milliseconds) noexcept
{
    const auto state = settings.autoFadeState.get();
    if (state != toLeft && state != toRight)
        return idle;

    const auto seconds = settings.automixFadeSeconds.get();
    const auto step = seconds > 0 ? milliseconds / (seconds * 1000.0) : 1.0;
    const auto end = state == toLeft ? 0.0 : 1.0;
    settings.crossfader = std::clamp (settings.crossfader + (state == toLeft ? -step : step), 0.0, 1.0);
    if (settings.crossfader != end)
        return idle;
    settings.autoFadeState = idle;
    return static_cast<State> (state);
}
