#pragma once

class CPlatterdex;
class HeaderNews;
class PreferencesFile;

/** The question, put once and quietly, whether tooltips are still wanted by somebody who knows the window by now. */
namespace TooltipOffer
{
/** Offers to switch them off when the first window was opened a session or more ago. Notes when that was. Message thread. */
void make (CPlatterdex&, PreferencesFile&, HeaderNews&);
}
