#include "session/LibraryPresence.h"

#include <utility>

namespace
{
constexpr int lookMs = 2000;
constexpr Worker::Key look = 0;
}

LibraryPresence::LibraryPresence (const juce::File& f, std::function<void()> g)
    : file (f),
      gone (std::move (g))
{
    startTimer (lookMs);
}

void LibraryPresence::timerCallback()
{
    if (!isMissing)
    {
        worker.post (look, { [this] (const std::stop_token&)
                             {
                                 const auto isThere = file.existsAsFile();
                                 isMissing = wasThere && !isThere;
                                 wasThere = wasThere || isThere;
                             } });
        return;
    }
    stopTimer();
    gone();
}
