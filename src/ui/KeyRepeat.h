#pragma once

/** Asks the X server to send one release for a key that is held, and not one before each of its repeats. JUCE cannot tell
    those releases from real ones when they arrive apart from the press that follows. Does nothing without an X display.
    Message thread, once a window is open. */
void askForOneKeyRelease();
