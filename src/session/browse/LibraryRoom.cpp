#include "session/browse/LibraryRoom.h"

LibraryRoom::LibraryRoom (SongDatabase& d, const Places& p)
    : database (d),
      places (p),
      history (p.history),
      watch (d),
      edits (*this),
      jobs (*this)
{
}

void LibraryRoom::settle()
{
    edits.settle();
    jobs.settle();
    watch.settle();
}
