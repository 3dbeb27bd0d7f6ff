#include "ui/header/TooltipOffer.h"

#include "engine/CPlatterdex.h"
#include "session/PreferencesFile.h"
#include "support/language/Translate.h"
#include "ui/header/HeaderNews.h"

namespace
{
constexpr const char *firstWindowName = "tooltips_since", *offered = "offered";
constexpr juce::int64 sessionMs = 6 * 3'600'000; ///< as long as a night
}

void TooltipOffer::make (CPlatterdex& engine, PreferencesFile& preferences, HeaderNews& news)
{
    const auto since = preferences.get (firstWindowName);
    const auto now = engine.environment.wallClock().toMilliseconds();
    if (since.isEmpty())
    {
        preferences.set (firstWindowName, juce::String (now));
        return;
    }
    auto& shown = engine.settings.editor[EditorPreference::showTooltips];
    if (since == offered || shown == 0 || now - since.getLargeIntValue() < sessionMs)
        return;
    preferences.set (firstWindowName, offered);
    news.tell (tr ("TOOLTIPS ARE ON. CLICK: OFF"), [&shown] { shown = 0; });
}
