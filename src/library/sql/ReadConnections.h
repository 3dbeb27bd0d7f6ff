#pragma once

#include "library/sql/SqlConnection.h"

#include <memory>
#include <vector>

/** Connections that only read, one for each thread that reads at a time: none waits for another, nor for the one that
    writes. Any thread may take one; opening and closing is for the owner alone, while none is taken. */
class ReadConnections
{
public:
    using Prepare = std::function<void (SqlConnection&)>;

    /** A connection on loan; it comes back when this goes. */
    class Loan
    {
    public:
        /** @param fallback   where there is no connection to be had
            @param patience   as SqlConnection::setPatience() takes it */
        Loan (ReadConnections&, SqlConnection& fallback, int patience);
        explicit Loan (SqlConnection& lent) : connection (lent) {}
        ~Loan();
        Loan (const Loan&) = delete;
        Loan& operator= (const Loan&) = delete;

        SqlConnection& operator*() const { return connection; }
        SqlConnection* operator->() const { return &connection; }

    private:
        ReadConnections* lender = nullptr;
        std::unique_ptr<SqlConnection> own;
        SqlConnection& connection;
    };

    /** @param prepare   called for each connection when it was opened */
    void open (const juce::String& path, Prepare prepare);
    void close();

private:
    std::unique_ptr<SqlConnection> take();

    juce::CriticalSection lock;
    juce::String path;
    Prepare prepare;
    std::vector<std::unique_ptr<SqlConnection>> idle;
};
