#include "midi/native/surface/Surface.h"

#include "midi/control/MidiControl.h"
#include "midi/native/surface/SurfaceHand.h"
#include "midi/native/surface/SurfaceLamps.h"

void Surface::input (MidiControl& control, const Model& model, int status, int data, int value)
{
    if (inputBegins.exchange (false))
    {
        reader.reset();
        for (auto& pickup : pickups)
            pickup.stamp (startedMs);
    }
    for (const auto& row : model.controls)
    {
        auto isOurs = false;
        for (size_t place = 0; place < row.at.size(); ++place)
        {
            if (!ValueReader::isOf (row.at[place], row.form, status, data))
                continue;
            const auto deck = state.deckAt (row.decks, place);
            if (!state.isIn (row.layer, deck))
                continue;
            isOurs = true;
            if (const auto read = reader.read (row.at[place], row.form, status, data, value))
                SurfaceHand (control, model, state, pickups).act (row.function, deck, row.decks, *read);
        }
        if (isOurs)
            return;
    }
}

void Surface::output (MidiControl& control, const Model& model, uint32_t tick)
{
    if (outputBegins.exchange (false))
        texts.forget();
    SurfaceLamps::state (control, model, state, tick);
    texts.state (control, model, state);
}

void Surface::start (MidiControl& control, const Model& model)
{
    state.reset();
    startedMs = control.engine.decks.clock();
    inputBegins = outputBegins = true;
    if (model.clearsCache)
        control.sender.clearCache();
    send (control, model.wake);
    if (model.forcesLamps)
        SurfaceLamps::state (control, model, state, 0, true);
}

void Surface::send (MidiControl& control, std::span<const Message> messages)
{
    for (const auto& each : messages)
    {
        if (each.size == 3)
            control.sender.sendMidiShort (each.bytes[0], each.bytes[1], each.bytes[2], true);
        else
            control.sender.sendMidiSysEx (std::span (each.bytes).first (each.size));
    }
}
