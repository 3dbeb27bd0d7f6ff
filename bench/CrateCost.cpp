#include "measure/Machine.h"
#include "measure/MadeUpSongs.h"
#include "measure/PlayingDecks.h"
#include "measure/Timing.h"

#include "library/import/SongBatch.h"
#include "shared/TemporaryFolder.h"
#include "text/ZRRenderer.h"
#include "ui/browser/SongManager.h"
#include "ui/browser/table/TableColumn.h"
#include "ui/look/DefaultLook.h"

#include <cstdio>
#include <optional>
#include <thread>

// bench_crate [--songs=N]... [--import]: what the browser's view costs the message thread while it is scrolled, and how long a
// source, an order, a search and an edit take until their rows are painted, 1920 wide, at 1x and 2x, while four decks play;
// --import with an import beside all of it. Counts the decks' blocks that come too late.

namespace
{
constexpr int width = 1920, height = 500, frames = 200, rowsOfFrame = 3, questions = 11, quietMs = 2000;

int64_t timed (const std::function<void()>& work)
{
    const auto begin = Timing::nanoseconds();
    work();
    return Timing::nanoseconds() - begin;
}

class Crate
{
public:
    explicit Crate (int songs) : engine (false, PlayingDecks::rate, PlayingDecks::blockFrames)
    {
        Session::Options options;
        options.folders.root = folder;
        options.library.folder = folder.file ("SongManager");
        session = std::make_shared<Session> (std::move (options));
        auto& database = session->browser()->database;
        {
            MadeUpSongs source { songs };
            auto transaction = database.beginTransaction(); // holds the library's lock until it goes
            for (int i = 0; i < songs; ++i)
                juce::ignoreUnused (database.insertSong (source.song (i)));
            juce::ignoreUnused (transaction.commit());
        }
        session->browser()->watch.look();
        browser = std::make_unique<SongManager> (*engine, session.get());
        browser->setBounds (0, 0, width, height);
        browser->setVisible (true);
        browser->settle();
    }

    ~Crate() { browser.reset(); } // before what it shows

    /** Paints the table as a screen of a scale shows it. */
    void paint (float scale)
    {
        auto& table = browser->songs();
        const auto area = (table.getLocalBounds().toFloat() * scale).getSmallestIntegerContainer();
        if (image.getBounds() != area)
            image = juce::Image (juce::Image::RGB, area.getWidth(), area.getHeight(), true,
                                 juce::SoftwareImageType());
        const auto context = createTextContext (image, {}, area);
        juce::Graphics g (*context);
        g.addTransform (juce::AffineTransform::scale (scale));
        table.paintEntireComponent (g, true);
    }

    /** The message thread's time for one step of scrolling, without the reading, which is others'. */
    void scroll (float scale)
    {
        auto& table = browser->songs();
        auto& bar = table.getVerticalScrollBar();
        Timing::Durations steps, paints;
        bar.setCurrentRangeStart (0.0);
        for (int frame = 0; frame < frames; ++frame)
        {
            steps.add (timed (
                [&] {
                    bar.setCurrentRangeStart (bar.getCurrentRangeStart()
                                              + rowsOfFrame * table.getRowHeight());
                }));
            table.settle();
            paints.add (timed ([&] { paint (scale); }));
        }
        std::printf ("%-36s %8.2f %8.2f\n", "a step of scrolling", steps.quantile (0.5) / 1e6,
                     steps.quantile (1.0) / 1e6);
        std::printf ("%-36s %8.2f %8.2f\n",
                     scale > 1.0f ? "a paint of all rows, 2x" : "a paint of all rows, 1x",
                     paints.quantile (0.5) / 1e6, paints.quantile (1.0) / 1e6);
    }

    /** From a question to its rows in the picture. What the library had to tell before is told between two questions. */
    void ask (const char* what, const std::function<void (int)>& question)
    {
        measure (what, question, [this] { browser->songs().settleRows(); });
    }

    /** From an edit until its row can be painted with it, whatever else is done to the library meanwhile. */
    void edit (const char* what, const std::function<void (int)>& change)
    {
        measure (what, change,
                 [this]
                 {
                     room().edits.settle();
                     room().watch.settle();
                     browser->songs().settleRows();
                 });
    }

    /** Imports songs whose tags are read until it goes, and looks at the library far more often than a window does. */
    class Import
    {
    public:
        Import (LibraryRoom& room, int songs)
            : thread (
                [&room, songs] (const std::stop_token& stop)
                {
                    MadeUpSongs more { songs };
                    SongBatch batch (room.database);
                    for (auto i = songs; !stop.stop_requested(); i += portion)
                    {
                        for (auto k = 0; k < portion; ++k)
                            juce::ignoreUnused (batch.add (more.song (i + k)));
                        room.watch.look();
                        std::this_thread::sleep_for (std::chrono::milliseconds (20));
                    }
                })
        {
        }

    private:
        static constexpr int portion = 256;
        std::jthread thread;
    };

    LibraryRoom& room() { return *session->browser(); }

    /** Says how many blocks were late since the last time. */
    void printBlocks (const char* what)
    {
        const auto count = playing.take();
        std::printf ("%-36s %d of %d blocks late, the longest %.2f ms\n", what, count.late, count.blocks,
                     count.longestMs);
    }

    std::unique_ptr<SongManager> browser;

private:
    void measure (const char* what, const std::function<void (int)>& begin, const std::function<void()>& wait)
    {
        Timing::Durations times;
        for (int i = 0; i < questions; ++i)
        {
            browser->settle();
            times.add (timed (
                [&]
                {
                    begin (i);
                    wait();
                    paint (1.0f);
                }));
        }
        std::printf ("%-36s %8.2f %8.2f\n", what, times.quantile (0.5) / 1e6, times.quantile (1.0) / 1e6);
    }

    const juce::SharedResourcePointer<DefaultLook> look;
    const TemporaryFolder folder;
    BenchEngine engine;
    PlayingDecks playing { engine };
    std::shared_ptr<Session> session;
    juce::Image image;
};

void measure (int songs, bool withImport)
{
    Crate crate (songs);
    crate.printBlocks ("while the library was made");
    juce::Thread::sleep (quietMs);
    crate.printBlocks ("at rest");
    std::optional<Crate::Import> importing;
    if (withImport)
        importing.emplace (crate.room(), songs);
    std::printf ("\n%d songs%s, ms%30s %8s\n", songs, withImport ? ", an import beside" : "", "median",
                 "maximum");
    crate.scroll (1.0f);
    crate.scroll (2.0f);
    auto& table = crate.browser->songs();
    const Source library { SongListKind::library, -1, "Library" },
        automix { SongListKind::automix, -1, "Automix List" };
    crate.ask ("a source until it is painted",
               [&] (int i) { crate.browser->showSource (i % 2 == 0 ? automix : library); });
    crate.browser->showSourceNamed ("Library");
    crate.ask ("an order until it is painted",
               [&] (int i) { table.sortBy (TableColumn::of (SongField::title), i % 2 == 0); });
    crate.ask ("a search until it is painted",
               [&] (int i) { crate.browser->searchField().setText (i % 2 == 0 ? "dreams" : "dreams 12"); });
    crate.browser->searchField().setText ({});
    crate.edit ("a rating until it is painted",
                [&] (int i) { crate.room().edits.setRating ({ table.list()[i].songId }, i % 6); });
    crate.edit ("a title until it is painted",
                [&] (int i) {
                    crate.room().edits.setField (table.list()[i].songId, SongField::title,
                                                 "Edited " + juce::String (i));
                });
    importing.reset();
    crate.printBlocks ("meanwhile");
    std::printf ("%.0f MB resident\n", Machine::residentMegabytes());
}
}

int main (int argc, char** argv)
{
    const juce::ScopedJuceInitialiser_GUI juceScope;
    Machine::print();
    std::vector<int> sizes;
    auto withImport = false;
    for (int i = 1; i < argc; ++i)
    {
        const juce::String option (argv[i]);
        withImport = withImport || option == "--import";
        if (option.startsWith ("--songs="))
            sizes.push_back (option.fromFirstOccurrenceOf ("=", false, false).getIntValue());
    }
    if (sizes.empty())
        sizes = { 1000, 100'000 };
    for (const auto songs : sizes)
        measure (songs, withImport);
}
