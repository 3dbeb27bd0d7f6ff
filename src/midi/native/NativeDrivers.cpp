#include "midi/native/NativeDrivers.h"

#include "midi/control/MidiControl.h"

#include "midi/native/table/ModelList.h"

bool NativeDrivers::hasInput (int model) const
{
    return ModelList::entry (model).table != nullptr;
}

void NativeDrivers::handleControllerInput (MidiControl& control, int model, int status, int data, int value)
{
    if (const auto* table = ModelList::entry (model).table)
        surface.input (control, *table, status, data, value);
}

void NativeDrivers::updateControllerOutput (MidiControl& control, int model, uint32_t tick)
{
    if (const auto* table = ModelList::entry (model).table)
        surface.output (control, *table, tick);
}

void NativeDrivers::startController (MidiControl& control, int model)
{
    if (const auto* before = ModelList::entry (started).table; before != nullptr && started != model)
        Surface::send (control, before->sleep);
    started = model;
    if (const auto* table = ModelList::entry (model).table)
        surface.start (control, *table);
    else if (ModelList::entry (model).clearsCache)
        control.sender.clearCache();
}

int NativeDrivers::pauseMs (int model) const
{
    return ModelList::entry (model).pauseMs;
}
