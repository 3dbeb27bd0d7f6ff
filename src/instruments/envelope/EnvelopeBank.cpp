#include "instruments/envelope/EnvelopeBank.h"

#include "support/CallbackLock.h"

EnvelopeBank::EnvelopeBank (int count, const juce::CriticalSection& lock)
    : callbackLock (lock),
      rows (static_cast<std::size_t> (count))
{
}

EnvelopeBank::Row& EnvelopeBank::at (int row) noexcept
{
    jassert (row >= 0 && row < size());
    return rows[static_cast<std::size_t> (juce::jlimit (0, size() - 1, row))];
}

const EnvelopeBank::Row& EnvelopeBank::at (int row) const noexcept
{
    return const_cast<EnvelopeBank*> (this)->at (row);
}

const Envelope& EnvelopeBank::audible (int row) const noexcept
{
    return rows[static_cast<std::size_t> (row)].envelope;
}

void EnvelopeBank::changed (Row& row) noexcept
{
    row.revision.fetch_add (1, std::memory_order_relaxed);
    changes.fetch_add (1, std::memory_order_relaxed);
}

void EnvelopeBank::setVisible (int row, bool isVisible) noexcept
{
    at (row).visible = isVisible;
    changed (at (row));
}

void EnvelopeBank::setEnabled (int row, bool isEnabled) noexcept
{
    at (row).enabled = isEnabled;
    changed (at (row));
}

bool EnvelopeBank::isVisible (int row) const noexcept
{
    return rows[static_cast<std::size_t> (row)].visible;
}

bool EnvelopeBank::isEnabled (int row) const noexcept
{
    return rows[static_cast<std::size_t> (row)].enabled;
}

std::uint32_t EnvelopeBank::revision (int row) const noexcept
{
    return at (row).revision.load (std::memory_order_relaxed);
}

std::uint32_t EnvelopeBank::revision() const noexcept
{
    return changes.load (std::memory_order_relaxed);
}

Envelope EnvelopeBank::copy (int row) const
{
    const std::lock_guard lock (editing);
    return at (row).envelope;
}

void EnvelopeBank::replace (int row, Envelope next)
{
    std::vector<Envelope> one;
    one.push_back (std::move (next));
    replace (row, std::move (one));
}

void EnvelopeBank::replace (int firstRow, std::vector<Envelope> next)
{
    for (auto& envelope : next)
        envelope.recalculate();
    const std::lock_guard lock (editing);
    {
        const CallbackLock audio (callbackLock, "envelopes");
        for (std::size_t i = 0; i < next.size(); ++i)
            std::swap (at (firstRow + static_cast<int> (i)).envelope, next[i]);
    }
    for (std::size_t i = 0; i < next.size(); ++i)
        changed (at (firstRow + static_cast<int> (i)));
}
