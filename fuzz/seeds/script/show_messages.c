// Tells what each button, knob and fader of a controller sends: the first step to a script of your own.
//
// Move everything once. Each control is told the first time that it is touched.

// The controls that were told already, one place for each status and data byte
array<bool> isKnown (128 * 128);

void OnMidiMessageReceived (const string &in name, int status, int data, int value)
{
    int place = (status - 128) * 128 + data;
    if (status < 128 || isKnown[place])
        return;
    isKnown[place] = true;

    int type = status & 0xF0;
    string kind = type == 0x90   ? "note"
                  : type == 0xB0 ? "controller"
                  : type == 0xE0 ? "pitch wheel"
                                 : "message";
    log (name + ": channel " + ((status & 0x0F) + 1) + ", " + kind + " " + data + ", value " + value);
}

void OnTimerCallback() {}
void OnStart() {}
void OnStop() {}
