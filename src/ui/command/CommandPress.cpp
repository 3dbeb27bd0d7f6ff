#include "ui/command/CommandPress.h"

void CommandPress::setCommand (const CommandBinding& next)
{
    setDown (false);
    command = next;
}

void CommandPress::setDown (bool isDown)
{
    if (down == isDown)
        return;
    down = isDown;
    if (down)
        command.press();
    else
        command.release();
}
