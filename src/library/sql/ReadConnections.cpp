#include "library/sql/ReadConnections.h"

#include "library/sql/LibraryCode.h"

ReadConnections::Loan::Loan (ReadConnections& from, SqlConnection& fallback, int patience)
    : lender (&from),
      own (from.take()),
      connection (own != nullptr ? *own : fallback)
{
    if (own != nullptr)
        own->setPatience (patience);
}

ReadConnections::Loan::~Loan()
{
    if (own == nullptr)
        return;
    const juce::ScopedLock scope (lender->lock);
    lender->idle.push_back (std::move (own));
}

void ReadConnections::open (const juce::String& p, Prepare toPrepare)
{
    const juce::ScopedLock scope (lock);
    path = p;
    prepare = std::move (toPrepare);
}

void ReadConnections::close()
{
    const juce::ScopedLock scope (lock);
    path.clear();
    idle.clear();
}

std::unique_ptr<SqlConnection> ReadConnections::take()
{
    const juce::ScopedLock scope (lock);
    if (path.isEmpty())
        return {};
    if (!idle.empty())
    {
        auto connection = std::move (idle.back());
        idle.pop_back();
        return connection;
    }
    auto connection = std::make_unique<SqlConnection>();
    if (connection->openForReading (path) != LibraryCode::ok)
        return {};
    prepare (*connection);
    return connection;
}
