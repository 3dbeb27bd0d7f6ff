#include "library/sql/SqlConnection.h"

#include <unistd.h>

// library_holder FILE STATEMENT...: another program at work in a library. It runs the statements, says "." or "x" for each,
// and keeps what they hold until its input ends.

int main (int count, char** arguments)
{
    SqlConnection connection;
    if (count < 3 || connection.open (juce::String (arguments[1])) != 0)
        return 2;
    connection.setPatience (0);
    for (int i = 2; i < count; ++i)
        if (::write (STDOUT_FILENO, connection.run (arguments[i]) == 0 ? "." : "x", 1) != 1)
            return 1;
    char end = 0;
    return ::read (STDIN_FILENO, &end, 1) == 0 ? 0 : 1;
}
