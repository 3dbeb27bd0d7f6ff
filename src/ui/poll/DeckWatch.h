#pragma once

#include "ui/poll/DeckView.h"

#include <memory>
#include <vector>

class CPlatterdex;

/** A beat of a grid. */
struct GridBeat
{
    double frame = 0.0;       ///< of the file
    int32_t fromDownbeat = 0; ///< entries of the grid, half a beat each: an even number
    bool operator== (const GridBeat&) const = default;
};

/** Shows a view its deck. All views of a deck share one snapshot, which the clock takes at each tick before it asks
    them: the only place of the editor that reads a deck's record. Message thread. */
class DeckWatch
{
public:
    /** @param deck   0 to 3 */
    DeckWatch (CPlatterdex&, int deck);

    int deck() const noexcept;

    /** The deck as it stood at the last tick. */
    const DeckView* operator->() const noexcept { return &now(); }
    const DeckView& now() const noexcept;

    /** The deck as it stands: for what follows an action at once. */
    const DeckView& look() const;

    /** Copies the full beats between two frames of the file, ascending, at most 1024. Takes the callback lock. */
    void readBeats (double first, double last, std::vector<GridBeat>& into) const;

    static constexpr size_t mostBeats = 1024;

private:
    class Shared;
    std::shared_ptr<Shared> shared;
};
