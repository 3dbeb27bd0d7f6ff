#include "ui/envelope/EnvHistory.h"

void EnvHistory::record (Edit edit)
{
    edits.resize (done);
    edits.push_back (std::move (edit));
    if (edits.size() > capacity)
        edits.pop_front();
    done = edits.size();
}

const EnvHistory::Edit* EnvHistory::undo()
{
    return canUndo() ? &edits[--done] : nullptr;
}

const EnvHistory::Edit* EnvHistory::redo()
{
    return canRedo() ? &edits[done++] : nullptr;
}

void EnvHistory::forget()
{
    edits.clear();
    done = 0;
}
