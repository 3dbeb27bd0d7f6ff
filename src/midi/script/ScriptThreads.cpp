#include "midi/script/ScriptThreads.h"

#include <angelscript.h>

ScriptThreadCleanup::~ScriptThreadCleanup()
{
    AngelScript::asThreadCleanup();
}

void InputControllerThread::run()
{
    const ScriptThreadCleanup cleanup;
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
}

void TimerControllerThread::run()
{
    const ScriptThreadCleanup cleanup;
    while (!threadShouldExit())
    {
        tick();
        wait (static_cast<int> (pause.count()));
    }
}
