#pragma once

#include <string>

/** Serves the orders of a mailbox until it is told to close or the master has gone.
    @returns the process's exit code: 0, or 2 without such a mailbox */
int runScanner (const std::string& mailboxName);
