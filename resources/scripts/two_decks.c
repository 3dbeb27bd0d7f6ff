// A controller for two decks, with lamps.
//
// Channel 1 of the controller plays deck A, channel 2 deck B. Change the numbers of notes and controls below to those
// that your controller sends; the script "show_messages.c" tells them.

#include "px_commands.h"

// Buttons, as notes. The lamp of a button has its note.
const int NOTE_CUE = 0x0C;
const int NOTE_PLAY = 0x0B;
const int NOTE_SYNC = 0x05;
const int NOTE_PFL = 0x1B;
const int NOTE_LOOP = 0x10;
const int NOTE_LOOP_HALF = 0x12;
const int NOTE_LOOP_DOUBLE = 0x13;
const int NOTE_PAD_1 = 0x20; // hot cues 1 to 4 are four notes in a row

// Knobs and faders, as controllers
const int CC_PITCH = 0x00;
const int CC_GAIN = 0x04;
const int CC_HIGH = 0x07;
const int CC_MID = 0x0B;
const int CC_LOW = 0x0F;
const int CC_FILTER = 0x17;
const int CC_VOLUME = 0x13;
const int CC_CROSSFADER = 0x1F; // on channel 1 or 2

void OnMidiMessageReceived (const string &in name, int status, int data, int value)
{
    int deck = status & 0x0F;
    if (deck > 1)
        return;

    int type = status & 0xF0;
    if (type == 0x90)
        OnButton (deck, data, value > 0);
    if (type == 0xB0)
        OnKnob (deck, data, value / 127.0f);
}

// The constants of decks A and B stand in a row: deck A's plus 1 is deck B's.
void OnButton (int deck, int note, bool isDown)
{
    // These act when they are pressed and when they are released.
    if (note == NOTE_CUE)
        set (CUE_STUTTER_A + deck, isDown ? 1.0f : 0.0f);
    if (!isDown)
        return;

    if (note == NOTE_PLAY)
        set (PLAY_PAUSE_A + deck);
    if (note == NOTE_SYNC)
        set (SYNC_A + deck);
    if (note == NOTE_PFL)
        set (PFL_A + deck);
    if (note == NOTE_LOOP)
        set (LOOP_A + deck);
    if (note == NOTE_LOOP_HALF)
        set (LOOP_HALF_A + deck);
    if (note == NOTE_LOOP_DOUBLE)
        set (LOOP_DOUBLE_A + deck);

    int pad = note - NOTE_PAD_1;
    if (pad >= 0 && pad < 4)
        set (HOT_CUE_1_A + 4 * pad + deck);
}

void OnKnob (int deck, int control, float value)
{
    if (control == CC_PITCH)
        set (PITCH_A + deck, value);
    if (control == CC_GAIN)
        set (GAIN_A + deck, value);
    if (control == CC_HIGH)
        set (EQ_HIGH_A + deck, value);
    if (control == CC_MID)
        set (EQ_MID_A + deck, value);
    if (control == CC_LOW)
        set (EQ_LOW_A + deck, value);
    if (control == CC_FILTER)
        set (FILTER_A + deck, value);
    if (control == CC_VOLUME)
        set (VOLUME_A + deck, value);
    if (control == CC_CROSSFADER)
        set (CROSSFADER, value);
}

// The lamps are stated anew every 50 ms; only what has changed is sent.
void OnTimerCallback()
{
    for (int deck = 0; deck < 2; deck++)
    {
        Lamp (deck, NOTE_PLAY, get (PLAY_PAUSE_A + deck));
        Lamp (deck, NOTE_CUE, get (CUE_A + deck));
        Lamp (deck, NOTE_SYNC, get (SYNC_A + deck));
        Lamp (deck, NOTE_PFL, get (PFL_A + deck));
        Lamp (deck, NOTE_LOOP, get (LOOP_A + deck));
        for (int pad = 0; pad < 4; pad++)
            Lamp (deck, NOTE_PAD_1 + pad, get (HOT_CUE_1_A + 4 * pad + deck));
    }
}

void Lamp (int deck, int note, float state)
{
    sendMidiMessage (0x90 + deck, note, state > 0.0f ? 127 : 0);
}

void OnStart() {}

void OnStop()
{
    for (int deck = 0; deck < 2; deck++)
        for (int note = 0; note < 128; note++)
            sendMidiMessage (0x90 + deck, note, 0);
}
