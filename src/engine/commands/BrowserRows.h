#pragma once

#include "engine/BrowserRequests.h"
#include "engine/commands/RowHelpers.h"

/** The browser and the preview. Every write is posted to the browser in sight. */
namespace CommandTable
{
template <BrowserRequest request>
void askBrowser (CPlatterdex& engine, const CommandCall& call)
{
    BrowserRequests::ofProcess().post (engine, request, call.deck);
}

template <BrowserRequest up, BrowserRequest down>
void stepBrowser (CPlatterdex& engine, const CommandCall& call)
{
    BrowserRequests::ofProcess().post (engine, call.step() > 0 ? down : up, 0);
}

constexpr CommandRow browserRows[] {
    {
        .numbers = { .first = 409 },
        .name = N_ ("Playlist Up"),
        .constant = "PLAYLIST_UP",
        .write = askBrowser<BrowserRequest::listUp>,
        .writes = "selects the row above",
        .reads = "0",
    },
    {
        .numbers = { .first = 410 },
        .name = N_ ("Playlist Down"),
        .constant = "PLAYLIST_DOWN",
        .write = askBrowser<BrowserRequest::listDown>,
        .writes = "selects the row below",
        .reads = "0",
    },
    {
        .numbers = { .first = 411 },
        .name = N_ ("Playlist Page Up"),
        .constant = "PLAYLIST_PAGE_UP",
        .write = askBrowser<BrowserRequest::listPageUp>,
        .writes = "a page up",
        .reads = "0",
    },
    {
        .numbers = { .first = 412 },
        .name = N_ ("Playlist Page Down"),
        .constant = "PLAYLIST_PAGE_DOWN",
        .write = askBrowser<BrowserRequest::listPageDown>,
        .writes = "a page down",
        .reads = "0",
    },
    {
        .numbers = { .first = 413 },
        .name = N_ ("Playlist Select"),
        .constant = "PLAYLIST_SELECT",
        .kind = Kind::relative,
        .shape = Shape::stepped,
        .write = stepBrowser<BrowserRequest::listUp, BrowserRequest::listDown>,
        .writes = "down for +1, up for -1",
        .reads = "0",
    },
    {
        .numbers = perDeck (414),
        .name = N_ ("Playlist Load {d}"),
        .constant = "PLAYLIST_LOAD_{d}",
        .write = askBrowser<BrowserRequest::listLoad>,
        .writes = "loads the selected song",
        .reads = "0",
    },
    {
        .numbers = { .first = 418 },
        .name = N_ ("Playlist Preview"),
        .constant = "PLAYLIST_PREVIEW",
        .write = askBrowser<BrowserRequest::listPreview>,
        .writes = "previews the selected song on the headphones",
        .reads = "0",
    },
    {
        .numbers = { .first = 419 },
        .name = N_ ("Preview Play/Pause"),
        .constant = "PREVIEW_PLAY_PAUSE",
        .write = askBrowser<BrowserRequest::previewPause>,
        .writes = "pauses the preview, or goes on with it",
        .reads = "0",
    },
    {
        .numbers = { .first = 420 },
        .name = N_ ("Directory Up"),
        .constant = "DIRECTORY_UP",
        .write = askBrowser<BrowserRequest::sourceUp>,
        .writes = "selects the source above",
        .reads = "0",
    },
    {
        .numbers = { .first = 421 },
        .name = N_ ("Directory Down"),
        .constant = "DIRECTORY_DOWN",
        .write = askBrowser<BrowserRequest::sourceDown>,
        .writes = "selects the source below",
        .reads = "0",
    },
    {
        .numbers = { .first = 422 },
        .name = N_ ("Directory Select"),
        .constant = "DIRECTORY_SELECT",
        .kind = Kind::relative,
        .shape = Shape::stepped,
        .write = stepBrowser<BrowserRequest::sourceUp, BrowserRequest::sourceDown>,
        .writes = "down for +1, up for -1",
        .reads = "0",
    },
    {
        .numbers = { .first = 423 },
        .name = N_ ("Directory Enter"),
        .constant = "DIRECTORY_ENTER",
        .write = askBrowser<BrowserRequest::sourceEnter>,
        .writes = "opens the source, or goes on to its songs",
        .reads = "0",
    },
    {
        .numbers = { .first = 424 },
        .name = N_ ("Directory Exit"),
        .constant = "DIRECTORY_EXIT",
        .write = askBrowser<BrowserRequest::sourceExit>,
        .writes = "closes the source, or goes to the one that holds it",
        .reads = "0",
    },
    {
        .numbers = { .first = 425 },
        .name = N_ ("File Browser Up"),
        .constant = "FILE_BROWSER_UP",
        .write = askBrowser<BrowserRequest::fileUp>,
        .writes = "selects the file above",
        .reads = "0",
    },
    {
        .numbers = { .first = 426 },
        .name = N_ ("File Browser Down"),
        .constant = "FILE_BROWSER_DOWN",
        .write = askBrowser<BrowserRequest::fileDown>,
        .writes = "selects the file below",
        .reads = "0",
    },
    {
        .numbers = { .first = 427 },
        .name = N_ ("File Browser Select"),
        .constant = "FILE_BROWSER_SELECT",
        .kind = Kind::relative,
        .shape = Shape::stepped,
        .write = stepBrowser<BrowserRequest::fileUp, BrowserRequest::fileDown>,
        .writes = "down for +1, up for -1",
        .reads = "0",
    },
    {
        .numbers = { .first = 428 },
        .name = N_ ("File Browser Enter"),
        .constant = "FILE_BROWSER_ENTER",
        .write = askBrowser<BrowserRequest::fileEnter>,
        .writes = "goes into the folder",
        .reads = "0",
    },
    {
        .numbers = { .first = 429 },
        .name = N_ ("File Browser Exit"),
        .constant = "FILE_BROWSER_EXIT",
        .write = askBrowser<BrowserRequest::fileExit>,
        .writes = "goes out of the folder",
        .reads = "0",
    },
    {
        .numbers = perDeck (430),
        .name = N_ ("File Browser Load {d}"),
        .constant = "FILE_BROWSER_LOAD_{d}",
        .write = askBrowser<BrowserRequest::fileLoad>,
        .writes = "loads the selected file",
        .reads = "0",
    },
    {
        .numbers = { .first = 434 },
        .name = N_ ("File Browser Preview"),
        .constant = "FILE_BROWSER_PREVIEW",
        .write = askBrowser<BrowserRequest::filePreview>,
        .writes = "previews the selected file on the headphones",
        .reads = "0",
    },
};
}
