#include "offline/set/SetActions.h"

#include <array>

namespace
{
constexpr std::array actions {
    SetAction { "load", readLoad },
    SetAction { "sample", readSample },
    SetAction { "set", readSet },
    SetAction { "setting", readSetting },
    SetAction { "reverse", readReverse },
    SetAction { "grid", readGrid },
    SetAction { "host", readHost },
    SetAction { "midi", readMidi },
    SetAction { "script", readScript },
    SetAction { "browse", readBrowse },
    SetAction { "slicegate", readSlicegate },
    SetAction { "smartknob", readSmartknob },
    SetAction { "timecode", readTimecode },
    SetAction { "plugin", readPlugin },
    SetAction { "print", readPrint },
    SetAction { "end", [] (SetLine&) -> SetScript::Action { return SetScript::End {}; } },
};
}

std::span<const SetAction> SetAction::all() noexcept
{
    return actions;
}
