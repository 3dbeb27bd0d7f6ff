#include "plugins/ipc/ScannerProtocol.h"
#include "plugins/ipc/SimpleInterprocessConnection.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <thread>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using Connection = SimpleInterprocessConnection;

namespace
{
/** Both ends of a mailbox and its bare bytes. */
struct Mailbox
{
    std::unique_ptr<Connection> master = Connection::make();
    std::unique_ptr<Connection> scanner = Connection::open (master->name(), Connection::Side::scanner);
    int descriptor = ::shm_open (master->name().c_str(), O_RDWR, 0);
    unsigned char* bytes = static_cast<unsigned char*> (
        ::mmap (nullptr, Connection::sharedBytes, PROT_READ | PROT_WRITE, MAP_SHARED, descriptor, 0));

    ~Mailbox()
    {
        ::munmap (bytes, Connection::sharedBytes);
        ::close (descriptor);
    }

    uint32_t wordAt (size_t offset) const
    {
        uint32_t word = 0;
        std::memcpy (&word, bytes + offset, sizeof word);
        return word;
    }
};
}

TEST (Mailbox, LiesInMemoryAtItsOffsetsForThisUserAlone)
{
    Mailbox box;
    struct stat status = {};
    ASSERT_EQ (::fstat (box.descriptor, &status), 0);
    EXPECT_EQ (status.st_size, 2000008);
    EXPECT_EQ (status.st_mode & 0777u, 0600u);
    ASSERT_TRUE (box.master->send ("to", 0));
    ASSERT_TRUE (box.scanner->send ("from", 0));
    EXPECT_EQ (box.wordAt (0), 3u);
    EXPECT_STREQ (reinterpret_cast<char*> (box.bytes + 4), "to");
    EXPECT_EQ (box.wordAt (1000004), 5u);
    EXPECT_STREQ (reinterpret_cast<char*> (box.bytes + 1000008), "from");
    EXPECT_EQ (box.scanner->receive(), "to");
    EXPECT_EQ (box.wordAt (0), 0u);
    EXPECT_EQ (box.scanner->receive(), "");
    ASSERT_EQ (::fchmod (box.descriptor, 0660), 0);
    EXPECT_EQ (Connection::open (box.master->name(), Connection::Side::scanner), nullptr);
}

TEST (Mailbox, RefusesWhatDoesNotFitAndWhatIsNotTaken)
{
    Mailbox box;
    EXPECT_FALSE (box.master->send (std::string (1000000, 'x'), 0)); // its zero is the byte too many
    EXPECT_TRUE (box.master->send (std::string (999999, 'x'), 0));
    EXPECT_FALSE (box.master->send ("next", 3));
    EXPECT_EQ (box.scanner->receive().size(), 999999u);
    EXPECT_TRUE (box.master->send ("next", 0));
}

TEST (Mailbox, BelievesNoLengthOfTheOtherSide)
{
    Mailbox box;
    for (const uint32_t length : { 1000001u, 5000000u, 0xffffffffu })
    {
        std::memcpy (box.bytes + 1000004, &length, sizeof length);
        std::memset (box.bytes + 1000008, 'z', 1000000);
        EXPECT_EQ (box.master->receive().size(), 1000000u);
    }
}

TEST (Mailbox, LosesAndDoublesNothingBetweenThreads)
{
    Mailbox box;
    constexpr int count = 200;
    const std::jthread writer (
        [&]
        {
            for (int i = 0; i < count; ++i)
                EXPECT_TRUE (box.scanner->send (std::to_string (i), 5000));
        });
    for (int i = 0; i < count;)
        if (const auto text = box.master->receive(); !text.empty())
        {
            EXPECT_EQ (text, std::to_string (i));
            ++i;
        }
}

TEST (Mailbox, OfADeadProcessIsRemovedAtTheNextStart)
{
    const auto child = ::fork();
    if (child == 0)
    {
        const auto box = Connection::make();
        ::_exit (box == nullptr ? 1 : 0); // without the destructor, as when it is killed
    }
    int status = 0;
    ASSERT_EQ (::waitpid (child, &status, 0), child);
    ASSERT_EQ (status, 0);
    const auto living = Connection::make();
    EXPECT_GE (Connection::removeLeftovers(), 1);
    EXPECT_NE (Connection::open (living->name(), Connection::Side::scanner), nullptr);
}

TEST (ScannerProtocol, ReadsItsOwnMessagesAndRefusesOthers)
{
    using namespace ScannerProtocol;
    EXPECT_EQ (processIdIn (processIdMessage (77)), 77);
    EXPECT_EQ (messageOf (ScanOrder { "/a b.so", 64 }), "scan \"/a b.so\" 64");
    const auto order = scanOrderIn (messageOf (ScanOrder { "/a \"b\" 32", 32 }));
    ASSERT_TRUE (order);
    EXPECT_EQ (order->path, "/a \"b\" 32");
    EXPECT_EQ (order->width, 32);
    const auto trial = trialOrderIn (messageOf (TrialOrder { 48000.0, 64, "<x/>\n<y/>", "/state \"1\"" }));
    ASSERT_TRUE (trial);
    EXPECT_EQ (trial->list, "<x/>\n<y/>");
    EXPECT_EQ (trial->stateFile, "/state \"1\"");
    EXPECT_EQ (trial->blockSize, 64);
    for (const auto* text :
         { "", "slaveprocessid", "slaveprocessid x", "slaveprocessid -4", "slaveprocessid 4 5", "scan",
           "scan \"\" 64", "scan \"/a\" 65", "scan \"/a 64", "scan \"/a\" 64 ", "trial 48000 64 \"\"",
           "trial 0 64 \"\"\n", "trial 48000 0 \"\"\n" })
        EXPECT_FALSE (processIdIn (text) || scanOrderIn (text) || trialOrderIn (text)) << text;
}
