#include "midi/script/ScriptThreads.h"

#include <angelscript.h>

void InputControllerThread::run()
{
    for (auto inARow = 0; !threadShouldExit();)
    {
        const auto message = queue.pop();
        if (!message || threadShouldExit())
            break;
        handle (*message);
        inARow = queue.hasMessage() ? inARow + 1 : 0;
        if (inARow >= messagesInARow)
        {
            wait (1);
            inARow = 0;
        }
    }
    AngelScript::asThreadCleanup();
}

void TimerControllerThread::run()
{
    while (!threadShouldExit())
    {
        tick();
        wait (static_cast<int> (pause.count()));
    }
    AngelScript::asThreadCleanup();
}
