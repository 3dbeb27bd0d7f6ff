#pragma once

#include "plugin/Vst2Record.h"

/** The parameter calls of a VST 2 record, by command number.

    In this format a parameter's index is the number of its command: index 0 has no name and does nothing, 465 and the
    special call (3180, 3180.0) arrive although the host counts 465 parameters from 0, and every write arrives, equal
    to the last one or not, because a trigger is a write. JUCE's wrapper shifts the numbers by one, ends at 464
    and drops equal writes; so these functions stand in the record in place of the wrapper's. */
namespace Vst2Parameters
{
/** Any thread. A value that is not finite is dropped. */
void set (Vst2::AEffect*, int number, float value);

/** Any thread. Unknown numbers read 0. */
float get (Vst2::AEffect*, int number);

/** Answers the opcodes about parameters and the product's name, and hands the rest to the wrapper's dispatcher.
    Closing ends the record. Texts take at most 32 bytes of the host's memory, with their terminator. */
Vst2::VstIntPtr dispatch (Vst2::AEffect*, int opcode, int index, Vst2::VstIntPtr value, void* data,
                          float option);

/** Stands between the wrapper and the host: parameter numbers of the wrapper become command numbers on their way out;
    the last command, which the host's count leaves no room for, is not reported. */
Vst2::VstIntPtr callHost (Vst2::AEffect*, int opcode, int index, Vst2::VstIntPtr value, void* data,
                          float option);

/** Lives while a record is being made or closed on this thread, and says who its host is when it is not, or no
    longer, in the table. */
class HostScope
{
public:
    explicit HostScope (Vst2::audioMasterCallback) noexcept;
    ~HostScope();
    HostScope (const HostScope&) = delete;
    HostScope& operator= (const HostScope&) = delete;

private:
    const Vst2::audioMasterCallback outer;
};
}
