#include "../../midi/MidiFixture.h"
#include "shared/ScriptedPrompts.h"
#include "ui/midi/MidiScriptingPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST (ScriptingPage, ABuildsMessagesStandInOneViewWithTheirPlaces)
{
    const juce::ScopedJuceInitialiser_GUI juceScope;
    MidiFixture f;
    const auto file = f.folder.file ("bad.c");
    file.replaceWithText ("void OnStart() { log(\"never\"); a(); }\nvoid OnStop() { b(); }\n");
    f.midi->scripts.addScript (file);
    f.midi->scripts.waitUntilIdle();
    auto& journal = f.midi->scripts.journal();
    journal.add ({ .kind = ScriptEntry::Kind::log, .file = file.getFullPathName(), .text = "a line" });

    using Shown = ScriptMessagesView::Shown;
    ScriptMessagesView messages (journal, Shown::messages), log (journal, Shown::log);
    messages.refresh();
    log.refresh();
    EXPECT_THAT (messages.shownText().toStdString(),
                 AllOf (HasSubstr ("bad.c  Error (Ln 1, Col 32) : "),
                        HasSubstr ("bad.c  Error (Ln 2, Col 17) : "), Not (HasSubstr ("a line"))));
    EXPECT_EQ (log.shownText(), "bad.c  a line\n");
    EXPECT_FALSE (ScriptMessagesView::hasNews (journal, Shown::messages, journal.newest() - 1));
    EXPECT_TRUE (ScriptMessagesView::hasNews (journal, Shown::log, journal.newest() - 1));
    EXPECT_EQ (MidiScriptingPage::stateText (f.midi->scripts.rows().front()), "has errors");
}
