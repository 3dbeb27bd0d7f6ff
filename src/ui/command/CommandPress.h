#pragma once

#include "ui/command/CommandBinding.h"

/** A finger on a button's command. The command goes out as the finger comes down; a held command is released by
    whatever ends the press, the button's end included. */
class CommandPress
{
public:
    CommandPress() = default;
    ~CommandPress() { setDown (false); }

    CommandPress (const CommandPress&) = delete;
    CommandPress& operator= (const CommandPress&) = delete;

    /** Releases what was held, and takes another command on. */
    void setCommand (const CommandBinding&);

    void setDown (bool);
    bool isDown() const noexcept { return down; }

private:
    CommandBinding command;
    bool down = false;
};
