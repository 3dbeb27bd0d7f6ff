#include "cli/Verbs.h"

#include "cli/TerminalOutput.h"
#include "cli/VerbOptions.h"
#include "cli/perform/RunRoot.h"
#include "cli/perform/SetFile.h"
#include "cli/perform/WavInput.h"
#include "session/Session.h"
#include "support/language/Translate.h"
#include "text/ZRRenderer.h"
#include "text/ZRRendererLookAndFeel.h"
#include "ui/CPlatterdexVstEditor.h"
#include "ui/ParameterList.h"
#include "ui/browser/table/TableColumn.h"
#include "ui/manual/ManualReader.h"
#include "ui/midi/MidiMappingComponent.h"
#include "ui/midi/MidiPortsPage.h"
#include "ui/midi/MidiScriptingPage.h"
#include "ui/midi/MidiWindows.h"
#include "ui/plugins/VstPluginsPreferencesPage.h"
#include "ui/preferences/Preferences.h"
#include "ui/slicegate/SlicegateEditorComponent.h"
#include "ui/smartknob/SmartKnobEditorComponent.h"
#include "ui/timecode/CDControlGeneratorPreferencesPage.h"
#include "ui/timecode/TimecodePreferencesPage.h"

#include <array>
#include <optional>

namespace
{
constexpr std::array options {
    VerbOption { "--out", "FILE.png", N_ ("the picture") },
    VerbOption { "--size", "WxH", N_ ("of the window, 1024x296 to 2560x2560 (1280x800)") },
    VerbOption { "--scale", "FACTOR",
                 N_ ("1, 1.25, 1.5, 1.75 or 2: pixels of the picture for one of the window (1)") },
    VerbOption { "--four", nullptr, N_ ("four decks instead of two") },
    VerbOption { "--waves", nullptr, N_ ("the stacked waves on top") },
    VerbOption { "--after", "SET.txt", N_ ("paints what stands there when this set has been performed") },
    VerbOption { "--in", "FILE", N_ ("a WAV file of up to 10 channels for the inputs of the set") },
    VerbOption { "--tab", "NAME",
                 N_ ("the page of the block between the decks: mixer, fx, sampler, wav, vst or env") },
    VerbOption {
        "--view", "NAME",
        N_ ("only a part: header, decka to deckd, global, ghost or browser; or a window of its "
            "own: parameters, "
            "midi-mapping, midi-ports, midi-scripts, timecode, control-cd, plugins, plugin-hangs, pad-editor "
            "or "
            "knob-editor (of deck A's first), or preferences, or preferences-PAGE by a word of its name; or "
            "manual, or manual-PAGE") },
    VerbOption { "--root", "DIR", N_ ("where the engine keeps its settings (a folder removed at the end)") },
    VerbOption { "--help", nullptr, N_ ("this text") },
};

constexpr const char *pagePrefix = "preferences-", *manualPrefix = "manual-";

constexpr const char* usage =
    "snapshot --out FILE.png [--size WxH] [--scale FACTOR] [--four] [--waves] [--after SET.txt]\n"
    "                           [--in FILE] [--tab NAME] [--view NAME] [--root DIR]";

/** The picture that is asked for. */
struct Request
{
    juce::Point<int> size { 1280, 800 };
    float scale = 1.0f;
    int tab = GlobalComponent::mixer;
    bool waves = false;
    juce::String view;
    juce::String fault;
};

/** The parts of the window, and the windows of its own, that can be painted alone. */
juce::StringArray views()
{
    return { "header",      "decka",        "deckb",      "deckc",        "deckd",
             "global",      "ghost",        "browser",    "parameters",   "midi-mapping",
             "midi-ports",  "midi-scripts", "pad-editor", "knob-editor",  "timecode",
             "preferences", "control-cd",   "plugins",    "plugin-hangs", "manual" };
}

bool isWholeNumber (const juce::String& text)
{
    return text.isNotEmpty() && text.length() <= 5 && text.containsOnly ("0123456789");
}

Request readRequest (const VerbOptions& given)
{
    Request request;
    if (given.has ("--size"))
    {
        const auto text = given.valueOf ("--size").toLowerCase();
        const auto width = text.upToFirstOccurrenceOf ("x", false, false),
                   height = text.fromFirstOccurrenceOf ("x", false, false);
        request.size = { width.getIntValue(), height.getIntValue() };
        if (!isWholeNumber (width) || !isWholeNumber (height) || request.size.x < EditorLayout::minimumWidth
            || request.size.y < EditorLayout::minimumHeight
            || std::max (request.size.x, request.size.y) > EditorLayout::maximum)
            request.fault = tr ("--size takes a width and a height from 1024x296 to 2560x2560, not \"%1\".",
                                given.valueOf ("--size"));
    }
    if (given.has ("--scale"))
    {
        const juce::StringArray known { "1", "1.25", "1.5", "1.75", "2" };
        request.scale = given.valueOf ("--scale").getFloatValue();
        if (!known.contains (given.valueOf ("--scale")))
            request.fault =
                tr ("--scale takes 1, 1.25, 1.5, 1.75 or 2, not \"%1\".", given.valueOf ("--scale"));
    }
    request.waves = given.has ("--waves");
    if (given.has ("--tab"))
    {
        const juce::StringArray tabs (GlobalComponent::names.data(), GlobalComponent::tabs);
        request.tab = tabs.indexOf (given.valueOf ("--tab"), true);
        if (request.tab < 0)
            request.fault = tr ("There is no page \"%1\"; --tab takes mixer, fx, sampler, wav, vst or env.",
                                given.valueOf ("--tab"));
    }
    if (given.has ("--view"))
    {
        request.view = given.valueOf ("--view").toLowerCase();
        if (!views().contains (request.view) && !request.view.startsWith (pagePrefix)
            && !request.view.startsWith (manualPrefix))
            request.fault = tr ("There is no view \"%1\"; --view takes %2.", given.valueOf ("--view"),
                                views().joinIntoString (", "));
    }
    if ((request.view == "deckc" || request.view == "deckd") && !given.has ("--four"))
        request.fault = tr ("Decks C and D are seen with --four only.");
    return request;
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

juce::Image paintView (juce::Component& view, float scale)
{
    const auto area = juce::Rectangle<int> (juce::roundToInt (static_cast<float> (view.getWidth()) * scale),
                                            juce::roundToInt (static_cast<float> (view.getHeight()) * scale));
    const juce::Image image (juce::Image::RGB, area.getWidth(), area.getHeight(), true);
    // Views that keep pictures of their own ask the look.
    if (auto* const look = dynamic_cast<ZRRendererLookAndFeel*> (&view.getLookAndFeel()))
        look->setTextPixels (GlyphBlend::Pixels::grey);
    const auto context = createTextContext (image, {}, area, GlyphBlend::Pixels::grey);
    juce::Graphics g (*context);
    g.addTransform (juce::AffineTransform::scale (scale));
    view.paintEntireComponent (g, true);
    return image;
}

/** A window of MIDI, which no editor holds. */
juce::Image paintMidi (CPlatterdex& engine, const Request& request)
{
    const juce::SharedResourcePointer<DefaultLook> look;
    MidiSystem::Options options;
    options.hasThreads = false;
    MidiSystem midi (engine, std::move (options));
    midi.ports.lookNow();
    std::unique_ptr<juce::Component> view;
    if (request.view == "midi-ports")
        view = std::make_unique<MidiPortsPage> (midi, [] {});
    else if (request.view == "midi-scripts")
    {
        const auto isRead = midi.scripts.loadSetup (midi.scripts.folder().getChildFile ("script_setup.xml"));
        juce::ignoreUnused (isRead); // a damaged list shows as an empty one
        midi.scripts.waitUntilIdle();
        view = std::make_unique<MidiScriptingPage> (midi);
    }
    else
        view = std::make_unique<MidiMappingComponent> (midi);
    view->setVisible (true);
    refreshAll (*view);
    return paintView (*view, request.scale);
}

/** The preferences at one of their pages, as the application shows them. */
juce::Image paintPreferences (CPlatterdex& engine, const Request& request)
{
    const juce::SharedResourcePointer<DefaultLook> look;
    MidiSystem::Options options;
    options.hasThreads = false;
    MidiSystem midi (engine, std::move (options));
    midi.ports.lookNow();
    MidiWindows windows (midi);
    HeaderActions actions;
    actions.audioSettings = [] {};
    actions.manual = [] {};
    actions.layoutChanged = [] {};
    actions.setScale = [] (int) {};
    actions.scale = [&request] { return juce::roundToInt (100.0f * request.scale); };
    actions.pages = windows.pages();
    Preferences view (engine, actions, [] {});
    const auto word = request.view.fromFirstOccurrenceOf (pagePrefix, false, false);
    const auto texts = view.pageTexts();
    for (int page = 0; page < texts.size(); ++page)
        if (word.isNotEmpty() && texts[page].containsIgnoreCase (word))
        {
            view.showPage (page);
            break;
        }
    view.setVisible (true);
    refreshAll (view);
    return paintView (view, request.scale);
}

/** An editor of curves or a page, which stands in a window of its own. */
juce::Image paintWindow (CPlatterdex& engine, const Request& request)
{
    const juce::SharedResourcePointer<DefaultLook> look;
    std::unique_ptr<juce::Component> view;
    if (request.view == "pad-editor")
        view = std::make_unique<SlicegateEditorComponent> (engine, 0, 0);
    else if (request.view == "timecode")
        view = std::make_unique<TimecodePreferencesPage> (engine);
    else if (request.view.startsWith ("plugin"))
    {
        auto page = std::make_unique<VstPluginsPreferencesPage> (*VstSlots::of (engine));
        if (request.view == "plugin-hangs")
            page->scanner().show ({ ScanMessage::Kind::hanging, {}, {}, true, 0.5 });
        view = std::move (page);
    }
    else if (request.view == "parameters")
        view = std::make_unique<ParameterList> (engine);
    else if (request.view == "control-cd")
        view = std::make_unique<CDControlGeneratorPreferencesPage> (engine);
    else
        view = std::make_unique<SmartKnobEditorComponent> (engine, 0, 0);
    view->setVisible (true);
    refreshAll (*view);
    return paintView (*view, request.scale);
}

juce::Image paintManual (const Request& request)
{
    const juce::SharedResourcePointer<DefaultLook> look;
    ManualReader reader;
    if (const auto page = request.view.fromFirstOccurrenceOf (manualPrefix, false, false).toStdString();
        !page.empty())
        reader.show ({ page });
    reader.setVisible (true);
    return paintView (reader, request.scale);
}

/** A session whose library lies below the engine's own folder. */
std::shared_ptr<Session> sessionOf (const CPlatterdex& engine)
{
    Session::Options made;
    made.folders = engine.environment.folders;
    made.library.folder = made.folders.root.getChildFile ("SongManager");
    made.decoderLibrary = engine.environment.decoderLibrary;
    return std::make_shared<Session> (std::move (made));
}

/** Does in the browser what the set's lines say. @returns a sentence on what can't be done, or nothing */
juce::String browse (SongManager& browser, const SetScript& script)
{
    using Action = SetScript::Browse::Action;
    browser.settle();
    for (const auto& event : script.events)
    {
        const auto* line = std::get_if<SetScript::Browse> (&event.action);
        if (line == nullptr)
            continue;
        const juce::String text (line->text);
        const auto columns = TableColumn::all();
        const auto column =
            std::find_if (columns.begin(), columns.end(),
                          [&text] (const auto& each) { return text.equalsIgnoreCase (each.text); });
        auto& songs = browser.songs();
        if (line->action == Action::source && !browser.showSourceNamed (text))
            return tr ("The browser has no source \"%1\".", text);
        if (line->action == Action::sort && column == columns.end())
            return tr ("The browser has no column \"%1\".", text);
        if (line->action == Action::sort)
            songs.sortBy (column->id, line->number > 0);
        else if (line->action == Action::search)
            browser.searchField().setText (text);
        else if (line->action == Action::select)
            songs.selectRow (line->number - 1);
        browser.settle();
    }
    return {};
}

juce::Image paintEditor (CPlatterdex& engine, const Request& request, const SetScript& script)
{
    if (request.view == "preferences" || request.view.startsWith (pagePrefix))
        return paintPreferences (engine, request);
    if (request.view.startsWith ("manual"))
        return paintManual (request);
    if (request.view.startsWith ("midi-"))
        return paintMidi (engine, request);
    if (request.view.endsWith ("-editor") || request.view.startsWith ("plugin") || request.view == "timecode"
        || request.view == "control-cd" || request.view == "parameters")
        return paintWindow (engine, request);
    const auto session = sessionOf (engine);
    CPlatterdexVstEditor editor (engine, session.get());
    editor.setVisible (true);
    editor.globalBlock().setCurrentTabIndex (request.tab);
    editor.setSize (request.size.x, request.size.y);
    editor.showWaves (request.waves);
    if (const auto fault = browse (editor.browserView(), script); fault.isNotEmpty())
        reportLine ("platterdex: " + fault);
    refreshAll (editor);
    return paintView (viewOf (editor, request.view), request.scale);
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
        return failWith (tr ("snapshot takes options only; see platterdex snapshot --help."));
    if (!given.has ("--out"))
        return failWith (tr ("snapshot needs --out FILE.png for the picture."));
    if (!requireEnding (given.fileOf ("--out"), "png"))
        return ExitCode::badInput;
    if (given.has ("--after") && given.fileOf ("--out") == given.fileOf ("--after"))
        return failWith (tr ("--out and --after name the same file."));
    const auto request = readRequest (given);
    if (request.fault.isNotEmpty())
        return failWith (request.fault);

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

    const juce::ScopedJuceInitialiser_GUI juceScope;
    const auto hosting = hostingOf (script, root);
    std::optional<WavInput> input;
    if (given.has ("--in"))
        if (input.emplace (given.fileOf ("--in"), hosting.sampleRate, CPlatterdex::inputChannels);
            input->error().isNotEmpty())
            return failWith (input->error());
    OfflineHost host (hosting);
    if (input)
        host.input = [&input] (auto& inputs, int64_t first) { input->read (inputs, first); };
    VstSlots slots (host.engine(), { .scanner = {}, .keepsSlots = false, .hasMessageLoop = false });
    const auto notLoaded = performSetFile (script, host, given.fileOf ("--after"));
    for (int deck = 0; deck < deckCount; ++deck)
        host.engine().timecodeListener.listen (deck);
    host.engine().timecodeListener.waitUntilIdle();
    host.engine().settings.editor[EditorPreference::fourDeckMode] = given.has ("--four") ? 1 : 0;

    const auto file = given.fileOf ("--out");
    if (!writePng (paintEditor (host.engine(), request, script), file))
        return failWith (tr ("%1 can't be written.", file.getFullPathName()));
    printLine (tr ("Wrote %1.", file.getFullPathName()));
    return endOfSet (notLoaded);
}
}

int runSnapshot (const juce::StringArray& arguments)
{
    const VerbOptions given (options, arguments);
    if (given.has ("--help"))
    {
        printLine (helpText (
            usage,
            N_ ("Paints the window as it would stand on a screen, without one. Twice the same command gives "
                "the same picture."),
            options));
        return ExitCode::success;
    }
    return given.error().isNotEmpty() ? failWith (given.error()) : snapshot (given);
}
