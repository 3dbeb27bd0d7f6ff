// Two jog wheels that scratch while they are touched and bend the tempo otherwise, and a pitch fader of 14 bits.
//
// Channel 1 is deck A, channel 2 deck B. A wheel sends one message a tick: 65 and above forwards, 63 and below backwards,
// farther from 64 when it turns faster.

#include "px_commands.h"

const int NOTE_TOUCH = 0x36;
const int NOTE_SHIFT = 0x3F;
const int CC_WHEEL = 0x22;
const int CC_PITCH_HIGH = 0x00; // the upper 7 bits of the fader
const int CC_PITCH_LOW = 0x20;  // the lower 7 bits

// The wheel's effect: of one tick on the tempo, and on the record under the hand
const float BEND = -0.01f;
const float SCRATCH = 0.1f;

// With shift held the wheel searches through the track: the part of the track that one tick passes
const float SEARCH = 0.002f;

array<bool> isShifted (2);
array<int> pitchHigh (2);

void OnMidiMessageReceived (const string &in name, int status, int data, int value)
{
    int deck = status & 0x0F;
    if (deck > 1)
        return;

    if ((status & 0xF0) == 0x90)
    {
        if (data == NOTE_TOUCH)
            set (JOG_SCRATCH_ON_A + deck, value > 0 && !isShifted[deck] ? 1.0f : 0.0f);
        if (data == NOTE_SHIFT)
            isShifted[deck] = value > 0;
    }
    else if ((status & 0xF0) == 0xB0)
    {
        if (data == CC_WHEEL)
            OnWheel (deck, value - 64);
        // A fader of 14 bits sends its upper half first. The lower half completes it.
        if (data == CC_PITCH_HIGH)
            pitchHigh[deck] = value;
        if (data == CC_PITCH_LOW)
            set (PITCH_A + deck, (128 * pitchHigh[deck] + value) / 16383.0f);
    }
}

void OnWheel (int deck, int ticks)
{
    if (!isShifted[deck])
    {
        set (JOG_A + deck, ticks, BEND, SCRATCH);
        return;
    }
    float place = get (SEEK_A + deck) + ticks * SEARCH;
    set (SEEK_A + deck, place < 0.0f ? 0.0f : place > 1.0f ? 1.0f : place);
}

void OnTimerCallback()
{
    for (int deck = 0; deck < 2; deck++)
        sendMidiMessage (0x90 + deck, NOTE_TOUCH, get (JOG_SCRATCH_ON_A + deck) > 0.0f ? 127 : 0);
}

void OnStart() {}

// A wheel that is touched while the script ends must not hold the record for ever.
void OnStop()
{
    for (int deck = 0; deck < 2; deck++)
    {
        set (JOG_SCRATCH_ON_A + deck, 0.0f);
        sendMidiMessage (0x90 + deck, NOTE_TOUCH, 0);
    }
}
