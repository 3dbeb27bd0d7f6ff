#include "../UiBench.h"
#include "ui/HelpTopics.h"
#include "ui/command/CommandWidget.h"
#include "ui/manual/ManualReader.h"
#include "ui/preferences/Preferences.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace
{
const juce::File manualFolder { PX_MANUAL_DIR };

bool hasHeading (const Manual::Page& page, const juce::String& anchor)
{
    return std::any_of (page.blocks.begin(), page.blocks.end(),
                        [&] (const auto& block) {
                            return block.kind == ManualBlock::Kind::heading
                                   && ManualText::anchorOf (block.text()) == anchor;
                        });
}

juce::String stringOf (std::string_view text)
{
    return { text.data(), text.size() };
}

/** The page is there, and so is its heading. */
void expectTopic (const Manual& manual, const HelpTopic& topic, const juce::String& of)
{
    const auto page = manual.find (stringOf (topic.page));
    ASSERT_GE (page, 0) << topic.page << " of " << of;
    const auto isThere = topic.heading.empty()
                         || hasHeading (manual.pages()[static_cast<size_t> (page)], stringOf (topic.heading));
    EXPECT_TRUE (isThere) << topic.page << "#" << topic.heading << " of " << of;
}

juce::String shape (const std::vector<ManualBlock>& blocks)
{
    constexpr const char* kinds[] { "title", "heading", "paragraph", "bullet", "step", "picture" };
    constexpr const char* marks[] { "", "!", "@" };
    juce::String all;
    for (const auto& block : blocks)
    {
        all << kinds[static_cast<size_t> (block.kind)]
            << (block.number > 0 ? juce::String (block.number) : "") << ":";
        for (const auto& span : block.spans)
            all << marks[static_cast<size_t> (span.style)] << "(" << span.text << ")" << span.target;
        all << block.file << ";";
    }
    return all;
}

HelpTopic topicOf (juce::Component& root, const juce::String& name)
{
    for (auto* component : descendants (root))
        if (component->getComponentID() == name || component->getName() == name)
            return HelpTopics::of (component);
    ADD_FAILURE() << "there is no " << name;
    return {};
}
}

TEST (ManualText, ReadsWhatPagesAreMadeOf)
{
    for (const auto& [text, expected] : {
             std::pair { "# A\n\n## B\nc\nd\n\ne", "title:(A);heading:(B);paragraph:(c d);paragraph:(e);" },
             { "- one\ntwo\n- three", "bullet:(one two);bullet:(three);" },
             { "1. a\n2. b\n12. c", "step1:(a);step2:(b);step12:(c);" },
             { "press **Play** or `Space`.", "paragraph:(press )!(Play)( or )!(Space)(.);" },
             { "see [there](b.md#x) now", "paragraph:(see )@(there)b.md#x( now);" },
             { "a\n![words](c.png)\nb", "paragraph:(a);picture:(words)c.png;paragraph:(b);" },
             // Marks without an end stay as they are written.
             { "2 ** 3 and `x", "paragraph:(2 ** 3 and `x);" },
             { "[a] (b) [c", "paragraph:([a] (b) [c);" },
             { "**** `` []()", "paragraph:(**** `` []());" },
             { "1.a\n-b\n#c", "paragraph:(1.a -b #c);" },
             { "", "" },
         })
        EXPECT_EQ (shape (ManualText::read (text)), expected) << text;
}

TEST (ManualPages, EveryLinkPictureAndFileIsThere)
{
    const Manual manual (manualFolder);
    ASSERT_GE (manual.pages().size(), 12u);
    auto pictures = 0;
    for (const auto& page : manual.pages())
    {
        EXPECT_FALSE (page.blocks.empty()) << page.name;
        EXPECT_NE (page.title, page.name) << "a page begins with its title";
        for (const auto& block : page.blocks)
        {
            if (block.kind == ManualBlock::Kind::picture)
            {
                const auto file = manual.folder().getChildFile (block.file);
                EXPECT_TRUE (juce::ImageFileFormat::loadFrom (file).isValid()) << file.getFullPathName();
                ++pictures;
            }
            for (const auto& span : block.spans)
                if (span.style == ManualSpan::Style::link)
                    expectTopic (manual,
                                 { span.target.upToFirstOccurrenceOf (".md", false, false).toStdString(),
                                   span.target.fromFirstOccurrenceOf ("#", false, false).toStdString() },
                                 page.name);
        }
    }
    EXPECT_GE (pictures, 10);
    // A page that the index doesn't name is never seen.
    EXPECT_EQ (manual.folder().findChildFiles (juce::File::findFiles, false, "*.md").size(),
               static_cast<int> (manual.pages().size()));
}

TEST (HelpTopics, EveryControlOfTheWindowHasItsPage)
{
    const Manual manual (manualFolder);
    UiBench bench;
    bench.engine.settings.editor[EditorPreference::fourDeckMode] = 1;
    std::set<std::string_view> pages;
    for (int tab = 0; tab < GlobalComponent::tabs; ++tab)
    {
        bench.editor->globalBlock().setCurrentTabIndex (tab);
        for (int panel = 0; panel < 8; ++panel)
        {
            bench.engine.settings.deckSetup[0].panelsLeft[0] = static_cast<int8_t> (panel);
            bench.refresh();
            for (auto* component : descendants (*bench.editor))
                if (dynamic_cast<CommandWidget*> (component) != nullptr)
                {
                    const auto topic = HelpTopics::of (component);
                    const auto name = component->getName() + component->getComponentID();
                    EXPECT_NE (topic.page, HelpTopic().page) << name;
                    expectTopic (manual, topic, name);
                    pages.insert (topic.page);
                }
        }
    }
    EXPECT_GE (pages.size(), 9u);
    const auto expect = [&] (juce::Component& root, const char* name, const char* place)
    {
        const auto topic = topicOf (root, name);
        EXPECT_EQ (stringOf (topic.page) + "#" + stringOf (topic.heading), place) << name;
    };
    expect (*bench.editor, "_recButton", "recording#");
    expect (*bench.editor, "_preferencesButton", "preferences#");
    expect (*bench.editor, "_crossfaderSlider", "headphones#the-crossfader");
    expect (bench.editor->deck (0), "_playButton", "first-mix#start-the-first-track");
    expect (bench.editor->deck (0), "_syncButton", "beat-matching#by-sync");
    EXPECT_EQ (HelpTopics::of (&bench.editor->browserView()).page, "library");
    EXPECT_EQ (HelpTopics::of (nullptr).page, "index");
}

TEST (HelpTopics, F1OpensThePageOfTheControlThatHasTheKeyboardOrTheFirstOne)
{
    UiBench bench;
    EXPECT_TRUE (bench.editor->keyPressed (juce::KeyPress (juce::KeyPress::F1Key)));
    const auto* const reader = bench.editor->toolWindows().tool<ManualReader>();
    ASSERT_NE (reader, nullptr);
    bench.editor->showHelp (&bench.editor->browserView());
    EXPECT_EQ (bench.editor->toolWindows().tool<ManualReader>(), reader) << "one window shows all pages";
}

TEST (ManualReader, GoesToAHeadingAndFollowsLinks)
{
    const juce::SharedResourcePointer<DefaultLook> look;
    ManualReader reader (manualFolder);
    const auto nameOf = [&]
    { return reader.manual().pages()[static_cast<size_t> (reader.shownPage())].name; };
    EXPECT_EQ (nameOf(), "index");
    reader.show ({ "beat-matching", "put-the-grid-right" });
    EXPECT_EQ (nameOf(), "beat-matching");
    const auto far = reader.scrolledTo();
    EXPECT_GT (far, 200);
    reader.keyPressed (juce::KeyPress (juce::KeyPress::pageUpKey));
    EXPECT_LT (reader.scrolledTo(), far);
    reader.follow ("cues-and-loops.md#loops");
    EXPECT_EQ (nameOf(), "cues-and-loops");
    EXPECT_GT (reader.scrolledTo(), 0);
    reader.follow ("#the-cue-point");
    EXPECT_EQ (nameOf(), "cues-and-loops");
    reader.follow ("nothing.md");
    EXPECT_EQ (nameOf(), "cues-and-loops") << "a link to nowhere leaves the page";

    // Every link of the first page is found where it is painted.
    reader.show ({});
    std::set<juce::String> targets;
    auto& page = reader.page();
    for (int y = 0; y < page.getHeight(); y += 4)
        for (int x = 0; x < page.getWidth() / 2; x += 8)
            if (const auto target = page.linkAt ({ x, y }); target.isNotEmpty())
                targets.insert (target);
    EXPECT_EQ (targets.size(), reader.manual().pages().size() - 1);
}

TEST (ManualReader, SaysWhichPageIsMissing)
{
    const juce::SharedResourcePointer<DefaultLook> look;
    const TemporaryFolder folder;
    ManualReader reader (folder);
    EXPECT_EQ (reader.shownPage(), -1);
    EXPECT_TRUE (reader.page().getTitle().contains ("index.md")) << reader.page().getTitle();
    reader.follow ("first-mix.md");
    EXPECT_EQ (reader.shownPage(), -1);
    reader.keyPressed (juce::KeyPress (juce::KeyPress::pageDownKey));
}
