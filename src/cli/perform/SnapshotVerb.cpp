#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "cli/perform/RunRoot.h"
#include "cli/perform/SetFile.h"
#include "offline/SetPerformance.h"
#include "text/ZRRenderer.h"
#include "ui/CPlatterdexVstEditor.h"

#include <array>

namespace
{
constexpr std::array options {
    VerbOption { "--out", "FILE.png", "the picture" },
    VerbOption { "--size", "WxH", "of the window, 1024x296 to 2560x2560 (1280x800)" },
    VerbOption { "--scale", "FACTOR", "1, 1.25, 1.5 or 2: pixels of the picture for one of the window (1)" },
    VerbOption { "--four", nullptr, "four decks instead of two" },
    VerbOption { "--after", "SET.txt", "paints what stands there when this set has been performed" },
    VerbOption { "--tab", "NAME",
                 "the page of the block between the decks: mixer, fx, sampler, wav, vst or env" },
    VerbOption { "--view", "NAME",
                 "only a part: header, decka to deckd, global, ghost, browser or parameters" },
    VerbOption { "--root", "DIR", "where the engine keeps its settings (a folder removed at the end)" },
    VerbOption { "--help", nullptr, "this text" },
};

constexpr const char* usage =
    "snapshot --out FILE.png [--size WxH] [--scale FACTOR] [--four] [--after SET.txt]\n"
    "                           [--tab NAME] [--view NAME] [--root DIR]";

/** What can be asked for. */
struct Wish
{
    juce::Point<int> size { 1280, 800 };
    float scale = 1.0f;
    int tab = GlobalComponent::mixer;
    juce::String view;
    juce::String fault;
};

const juce::StringArray views { "header", "decka", "deckb",   "deckc",     "deckd",
                                "global", "ghost", "browser", "parameters" };

bool isWholeNumber (const juce::String& text)
{
    return text.isNotEmpty() && text.length() <= 5 && text.containsOnly ("0123456789");
}

Wish readWish (const VerbOptions& given)
{
    Wish wish;
    if (given.has ("--size"))
    {
        const auto text = given.valueOf ("--size").toLowerCase();
        const auto width = text.upToFirstOccurrenceOf ("x", false, false),
                   height = text.fromFirstOccurrenceOf ("x", false, false);
        wish.size = { width.getIntValue(), height.getIntValue() };
        if (!isWholeNumber (width) || !isWholeNumber (height) || wish.size.x < EditorLayout::minimumWidth
            || wish.size.y < EditorLayout::minimumHeight
            || std::max (wish.size.x, wish.size.y) > EditorLayout::maximum)
            wish.fault = "--size takes a width and a height from 1024x296 to 2560x2560, not \""
                         + given.valueOf ("--size") + "\".";
    }
    if (given.has ("--scale"))
    {
        const juce::StringArray known { "1", "1.25", "1.5", "2" };
        wish.scale = given.valueOf ("--scale").getFloatValue();
        if (!known.contains (given.valueOf ("--scale")))
            wish.fault = "--scale takes 1, 1.25, 1.5 or 2, not \"" + given.valueOf ("--scale") + "\".";
    }
    if (given.has ("--tab"))
    {
        const juce::StringArray tabs (GlobalComponent::names.data(), GlobalComponent::tabs);
        wish.tab = tabs.indexOf (given.valueOf ("--tab"), true);
        if (wish.tab < 0)
            wish.fault = "There is no page \"" + given.valueOf ("--tab")
                         + "\"; --tab takes mixer, fx, sampler, wav, vst or env.";
    }
    if (given.has ("--view"))
    {
        wish.view = given.valueOf ("--view").toLowerCase();
        if (!views.contains (wish.view))
            wish.fault = "There is no view \"" + given.valueOf ("--view") + "\"; --view takes "
                         + views.joinIntoString (", ") + ".";
    }
    if ((wish.view == "deckc" || wish.view == "deckd") && !given.has ("--four"))
        wish.fault = "Decks C and D are seen with --four only.";
    return wish;
}

juce::Component& viewOf (CPlatterdexVstEditor& editor, const juce::String& name)
{
    if (name.startsWith ("deck"))
        return editor.deck (name.getLastCharacter() - 'a');
    if (name == "header")
        return editor.headerStrip();
    if (name == "global")
        return editor.globalBlock();
    if (name == "ghost")
        return editor.ghostStrip();
    if (name == "browser")
        return editor.browserView();
    return editor;
}

void refreshAll (juce::Component& parent)
{
    if (auto* view = dynamic_cast<PollingView*> (&parent))
        view->refresh();
    // By index, since a poll may make and drop children.
    for (int i = 0; i < parent.getNumChildComponents(); ++i)
        refreshAll (*parent.getChildComponent (i));
}

juce::Image paintEditor (CPlatterdex& engine, const Wish& wish)
{
    CPlatterdexVstEditor editor (engine);
    editor.setVisible (true);
    editor.globalBlock().setCurrentTabIndex (wish.tab);
    editor.setSize (wish.size.x, wish.size.y);
    editor.showParameters (wish.view == "parameters");
    refreshAll (editor);
    auto& view = viewOf (editor, wish.view);

    const auto area =
        juce::Rectangle<int> (juce::roundToInt (static_cast<float> (view.getWidth()) * wish.scale),
                              juce::roundToInt (static_cast<float> (view.getHeight()) * wish.scale));
    const juce::Image image (juce::Image::RGB, area.getWidth(), area.getHeight(), true);
    const auto context = createTextContext (image, {}, area, GlyphBlend::Pixels::grey);
    juce::Graphics g (*context);
    g.addTransform (juce::AffineTransform::scale (wish.scale));
    view.paintEntireComponent (g, true);
    return image;
}

bool writePng (const juce::Image& image, const juce::File& file)
{
    const juce::TemporaryFile written (file);
    {
        juce::FileOutputStream stream (written.getFile());
        if (stream.failedToOpen() || !juce::PNGImageFormat().writeImageToStream (image, stream))
            return false;
        stream.flush();
        if (stream.getStatus().failed())
            return false;
    }
    return written.overwriteTargetFileWithTemporary();
}

int snapshot (const VerbOptions& given)
{
    if (!given.positional.isEmpty())
        return failWith ("snapshot takes options only; see platterdex snapshot --help.");
    if (!given.has ("--out"))
        return failWith ("snapshot needs --out FILE.png for the picture.");
    const auto wish = readWish (given);
    if (wish.fault.isNotEmpty())
        return failWith (wish.fault);

    SetScript script;
    if (given.has ("--after"))
    {
        auto read = readSetFile (given.fileOf ("--after"));
        if (!read)
            return ExitCode::badInput;
        script = std::move (*read);
    }
    const RunRoot root (given);
    if (root.fault.isNotEmpty())
        return failWith (root.fault);

    const juce::ScopedJuceInitialiser_GUI toolkit;
    OfflineHost::Options hosting;
    hosting.root = root.folder;
    hosting.decoderLibrary =
        juce::File::getSpecialLocation (juce::File::currentExecutableFile).getSiblingFile ("adec.so");
    hosting.hasTransport = script.hasHost();
    OfflineHost host (hosting);
    performSet (script, host, { given.fileOf ("--after").getParentDirectory(), {}, reportLine });
    host.engine().settings.editor[EditorPreference::fourDeckMode] = given.has ("--four") ? 1 : 0;

    const auto file = given.fileOf ("--out");
    if (!writePng (paintEditor (host.engine(), wish), file))
        return failWith (file.getFullPathName() + " can't be written.");
    return ExitCode::success;
}
}

int runSnapshot (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (helpText (
            usage,
            "Paints the window as it would stand on a screen, without one. Twice the same command gives "
            "the same picture.",
            options));
        return ExitCode::success;
    }
    return given.error().isNotEmpty() ? failWith (given.error()) : snapshot (given);
}
