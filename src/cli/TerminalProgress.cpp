#include "cli/TerminalProgress.h"

#include "cli/TerminalOutput.h"

#include <cstdio>

#include <sys/ioctl.h>
#include <unistd.h>

namespace
{
constexpr juce::uint32 milliseconds = 100;
constexpr const char* wipe = "\r\x1b[K";

int terminalColumns()
{
    winsize size {};
    return ioctl (STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : 80;
}

void write (const juce::String& text)
{
    std::fwrite (text.toRawUTF8(), 1, text.getNumBytesAsUTF8(), stderr);
}
}

TerminalProgress::TerminalProgress() : isTerminal (isatty (STDERR_FILENO) == 1) {}

TerminalProgress::~TerminalProgress()
{
    if (shownAt != 0)
        write (wipe);
}

void TerminalProgress::setStatusText (const juce::String& text)
{
    if (isTerminal)
        status = text;
}

void TerminalProgress::setProgress (double part)
{
    const auto now = juce::Time::getMillisecondCounter();
    if (!isTerminal || now - shownAt < milliseconds)
        return;
    shownAt = now;
    // One column stays free: some terminals begin a new line in the last one.
    const auto line =
        juce::String (juce::roundToInt (part * 100.0)).paddedLeft (' ', 3) + " % " + oneLine (status);
    write (wipe + line.substring (0, terminalColumns() - 1));
}
