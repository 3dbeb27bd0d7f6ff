#include "UiBench.h"

#include "engine/SettingChange.h"
#include "shared/ScriptedPrompts.h"
#include "ui/preferences/AboutPreferencesPage.h"
#include "ui/preferences/Preferences.h"
#include "ui/preferences/SettingsPage.h"
#include "ui/slicegate/PadMenu.h"
#include "ui/smartknob/SmartKnobMenu.h"
#include "ui/timecode/CDControlGeneratorPreferencesPage.h"
#include "ui/timecode/TimecodePreferencesPage.h"

#include <gtest/gtest.h>

namespace
{
/** The dialog on an engine. */
struct PreferencesBench
{
    EngineWorld world() const
    {
        EngineWorld made;
        made.folders.root = folder;
        made.pacing = Pacing::Mode::offline;
        made.prompts = prompts;
        return made;
    }

    template <typename Type>
    static Type& find (juce::Component& root, const juce::String& id = {})
    {
        for (auto* component : descendants (root))
            if (auto* found = dynamic_cast<Type*> (component);
                found != nullptr
                && (id.isEmpty() || component->getComponentID() == id || component->getName() == id))
                return *found;
        throw std::runtime_error (("there is no " + id).toStdString());
    }

    /** Moves a row's control to another of its values, as a hand would. */
    static void change (SettingRow& row)
    {
        for (auto* component : descendants (row))
        {
            if (auto* toggle = dynamic_cast<juce::ToggleButton*> (component))
                return toggle->setToggleState (!toggle->getToggleState(), juce::sendNotificationSync);
            if (auto* box = dynamic_cast<juce::ComboBox*> (component))
                return box->setSelectedItemIndex (box->getSelectedItemIndex() == 0 ? 1 : 0,
                                                  juce::sendNotificationSync);
            if (auto* slider = dynamic_cast<juce::Slider*> (component))
                return slider->setValue (slider->getValue()
                                             + (slider->getMaximum() - slider->getMinimum()) / 4,
                                         juce::sendNotificationSync);
            if (auto* field = dynamic_cast<juce::TextEditor*> (component))
            {
                field->setText ("/somewhere/else");
                return field->onReturnKey();
            }
        }
        ADD_FAILURE() << row.getComponentID() << " has no control";
    }

    TemporaryFolder folder;
    std::shared_ptr<ScriptedPrompts> prompts = std::make_shared<ScriptedPrompts>();
    CPlatterdex engine { world() };
    HeaderActions actions = [this]
    {
        HeaderActions made;
        made.layoutChanged = [this] { ++layouts; };
        return made;
    }();
    Preferences dialog { engine, actions, [] {} };
    int layouts = 0;
};
}

TEST (Preferences, EverySettingOfAPageActsAtOnceAndComesBackByThePagesDefault)
{
    PreferencesBench desk;
    auto& engine = desk.engine;
    auto changed = 0;
    for (int number = 0; number < desk.dialog.pageTexts().size(); ++number)
    {
        desk.dialog.showPage (number);
        auto* page = dynamic_cast<SettingsPage*> (&desk.dialog.pageAt (number));
        if (page == nullptr)
            continue;
        page->refresh();
        for (const auto& setting : page->settings())
        {
            const auto name = setting.fullName();
            const auto before = setting.valueIn (engine.settings);
            desk.change (desk.find<SettingRow> (*page, name));
            EXPECT_NE (setting.valueIn (engine.settings), before) << name;
            ++changed;
        }
        desk.prompts->yes = false;
        desk.find<juce::Button> (desk.dialog, "_defaultSettingsButton").onClick();
        const auto first = page->settings().front();
        const auto atFirst = defaultSettings (engine.environment.folders);
        EXPECT_NE (first.valueIn (engine.settings), first.valueIn (atFirst)) << "the question was denied";
        desk.prompts->yes = true;
        desk.find<juce::Button> (desk.dialog, "_defaultSettingsButton").onClick();
        for (const auto& setting : page->settings())
            EXPECT_EQ (setting.valueIn (engine.settings), setting.valueIn (atFirst)) << setting.fullName();
    }
    EXPECT_GT (changed, 50);
    EXPECT_GT (desk.layouts, 10) << "the layout follows at once";
    EXPECT_EQ (desk.prompts->asked[0],
               "Confirm Restore|Are you sure you want to restore default settings for the "
               "selected preferences page?");
}

TEST (Preferences, EverySettingHasAControlSomewhere)
{
    // On the desk itself, in the browser, or on the pages of control records and plug-ins.
    const juce::StringArray elsewhere { "searchText",
                                        "masterVolume",
                                        "masterDeck",
                                        "crossfader",
                                        "monitorMix",
                                        "monitorVolume",
                                        "sync",
                                        "pfl",
                                        "timecodeOn",
                                        "timecodeGain",
                                        "timecodeCalibration",
                                        "timecodeThreshold",
                                        "timecodeLeadIn",
                                        "timecodeType",
                                        "timecodeAbsolute",
                                        "timecodeInvert",
                                        "controlCdFile",
                                        "vstFolder",
                                        "vstOnMaster",
                                        "controllerPreset" };
    PreferencesBench desk;
    juce::StringArray found;
    for (int number = 0; number < desk.dialog.pageTexts().size(); ++number)
        if (const auto* page = dynamic_cast<SettingsPage*> (&desk.dialog.pageAt (number)))
            for (const auto& setting : page->settings())
                found.addIfNotAlreadyThere (
                    juce::String (setting.row->name.data(), setting.row->name.size()));
    for (const auto& row : SettingName::all())
    {
        const juce::String name (row.name.data(), row.name.size());
        const auto isSeat =
            name.startsWith ("panelLeft") || name.startsWith ("panelRight"); // in each deck's strip
        EXPECT_NE (found.contains (name), isSeat || elsewhere.contains (name)) << name;
    }
}

TEST (Preferences, EverySettingIsKeptOverARestart)
{
    const TemporaryFolder folder;
    EngineWorld world;
    world.folders.root = folder;
    world.pacing = Pacing::Mode::offline;
    const auto atFirst = defaultSettings (world.folders);
    const auto otherThan = [] (const SettingName& row, double value)
    { return value + 1.0 <= row.highest ? value + 1.0 : row.lowest + (row.highest - row.lowest) / 4.0; };
    const auto eachSetting = [] (const auto& act)
    {
        for (const auto& row : SettingName::all())
            for (int deck = 0; deck < (row.isOfDeck ? 4 : 1); ++deck)
                act (NamedSetting { &row, deck });
    };
    std::map<juce::String, juce::String> changed;
    {
        CPlatterdex engine (world);
        eachSetting (
            [&] (NamedSetting setting)
            {
                if (setting.row->isText())
                    changeSetting (engine, setting, "/elsewhere/" + setting.fullName());
                else
                    changeSetting (
                        engine, setting,
                        otherThan (*setting.row, setting.row->read (engine.settings, setting.deck)));
                changed[setting.fullName()] = setting.valueIn (engine.settings);
                EXPECT_NE (changed[setting.fullName()], setting.valueIn (atFirst)) << setting.fullName();
            });
    }
    const CPlatterdex engine (world);
    eachSetting (
        [&] (NamedSetting setting) {
            EXPECT_EQ (setting.valueIn (engine.settings), changed[setting.fullName()]) << setting.fullName();
        });
    EXPECT_GT (changed.size(), 100u);
}

TEST (Preferences, TheControlsOfRecordsAndPlugInsActAtOnceAndComeBackByTheirPagesDefault)
{
    PreferencesBench desk;
    auto& setup = desk.engine.settings.deckSetup[1];
    const auto atFirst = defaultSettings (desk.engine.environment.folders).deckSetup[1];
    TimecodePreferencesPage page (desk.engine);
    auto& deck = desk.find<juce::Component> (page, "_deckBTimecodeGroup");
    const auto choose = [&] (const char* id, int item)
    { desk.find<juce::ComboBox> (deck, id).setSelectedId (item, juce::sendNotificationSync); };
    const auto turn = [&] (const char* id, double value)
    { desk.find<juce::Slider> (deck, id).setValue (value, juce::sendNotificationSync); };
    choose ("_inputComboBox", 4);
    EXPECT_EQ (setup.inputPair, 3);
    choose ("_dvsModeComboBox", 3);
    EXPECT_EQ (setup.timecodeOn, 1);
    EXPECT_EQ (setup.timecodeAbsolute, 1);
    choose ("_dvsGeneration", 3);
    EXPECT_EQ (setup.timecodeType, 2);
    turn ("_gainSlider", 6.0);
    EXPECT_FLOAT_EQ (setup.timecodeGain, 6.0f);
    turn ("_rumbleSlider", -50.0);
    EXPECT_FLOAT_EQ (setup.timecodeThreshold, 0.5f);
    turn ("_leadinSlider", 4.0);
    EXPECT_FLOAT_EQ (setup.timecodeLeadIn, 4.0f);
    desk.find<juce::Button> (deck, "_invertPhaseButton").onClick();
    EXPECT_EQ (setup.timecodeInvert, 1);
    setup.timecodeCalibration = 1.2;

    page.restoreDefaults();
    EXPECT_EQ (setup.inputPair, atFirst.inputPair);
    EXPECT_EQ (setup.timecodeOn, atFirst.timecodeOn);
    EXPECT_EQ (setup.timecodeAbsolute, atFirst.timecodeAbsolute);
    EXPECT_EQ (setup.timecodeType, atFirst.timecodeType);
    EXPECT_FLOAT_EQ (setup.timecodeGain, atFirst.timecodeGain);
    EXPECT_FLOAT_EQ (setup.timecodeThreshold, atFirst.timecodeThreshold);
    EXPECT_FLOAT_EQ (setup.timecodeLeadIn, atFirst.timecodeLeadIn);
    EXPECT_EQ (setup.timecodeInvert, atFirst.timecodeInvert);
    EXPECT_DOUBLE_EQ (setup.timecodeCalibration, atFirst.timecodeCalibration);

    CDControlGeneratorPreferencesPage disc (desk.engine);
    auto& field = desk.find<juce::TextEditor> (disc);
    field.setText ("/discs/mine.wav");
    field.onReturnKey();
    EXPECT_EQ (desk.engine.settings.controlCdFile.get(), "/discs/mine.wav");
    disc.restoreDefaults();
    EXPECT_EQ (desk.engine.settings.controlCdFile.get(),
               defaultSettings (desk.engine.environment.folders).controlCdFile.get());
}

TEST (Preferences, PresetsLieInTheFoldersThatTheSettingsName)
{
    PreferencesBench desk;
    for (const auto& [setting, files, name] :
         { std::tuple { &desk.engine.settings.slicegateFolder, PadMenu::files (desk.engine), "my pad" },
           std::tuple { &desk.engine.settings.smartknobFolder, SmartKnobMenu::files (desk.engine),
                        "my knob" } })
    {
        const auto folder = desk.folder.file (name);
        folder.createDirectory();
        folder.getChildFile (juce::String (name) + ".xml").replaceWithText ("<preset/>");
        auto listed = files;
        setting->set (folder.getFullPathName());
        listed.menu();
        EXPECT_EQ (listed.fileOf (PresetFiles::firstId).getParentDirectory(), folder);
        setting->set ("/no/such/folder");
        listed.menu();
        EXPECT_EQ (listed.fileOf (PresetFiles::firstId), juce::File()) << "the root's own folder is empty";
    }
}

TEST (Preferences, TheTempoRangeIsTheDecksSpan)
{
    PreferencesBench desk;
    auto& page = desk.dialog.pageAt (0);
    auto& box = desk.find<juce::ComboBox> (desk.find<SettingRow> (page, "pitchRangeIndex"));
    for (const auto& [text, span] :
         { std::pair { "2%", 0.04 }, { "20%", 0.4 }, { "25%", 0.5 }, { "35%", 0.7 }, { "50%", 1.0 } })
    {
        for (int i = 0; i < box.getNumItems(); ++i)
            if (box.getItemText (i) == text)
                box.setSelectedItemIndex (i, juce::sendNotificationSync);
        EXPECT_DOUBLE_EQ (desk.engine.decks.pitchRange, span) << text;
    }
}

TEST (Preferences, TheSearchLeavesThePagesThatHaveAllWords)
{
    PreferencesBench desk;
    auto& list = desk.find<juce::ListBox> (desk.dialog);
    const auto rows = [&list]
    {
        juce::StringArray names;
        for (int row = 0; row < list.getModel()->getNumRows(); ++row)
            names.add (list.getModel()->getNameForRow (row));
        return names.joinIntoString (",");
    };
    desk.dialog.search ("font size");
    EXPECT_EQ (rows(), "- Layout");
    desk.dialog.search ("RUMBLE");
    EXPECT_TRUE (rows().contains ("- Timecode")) << rows();
    EXPECT_FALSE (rows().contains ("- Layout"));
    desk.dialog.search ("nothing has this");
    EXPECT_EQ (rows(), "");
    desk.dialog.search ("");
    EXPECT_EQ (list.getModel()->getNumRows(), desk.dialog.pageTexts().size());
}

TEST (Preferences, AboutNamesEveryPackageThatTheProgramIsBuiltOf)
{
    struct Named
    {
        const char *package, *words; ///< on the page; empty for what only builds
    };
    constexpr Named table[] {
        { "build-essential", "" },
        { "cmake", "" },
        { "ninja-build", "" },
        { "pkg-config", "" },
        { "gettext", "" },
        { "ccache", "" },
        { "lld", "" },
        { "juce-modules-source", "JUCE 7 (GPL 3)" },
        { "fst-dev", "FST's plug-in header (GPL 3)" },
        { "lv2-dev", "LV2 (ISC)" },
        { "libasound2-dev", "ALSA (LGPL 2.1)" },
        { "libjack-jackd2-dev", "JACK (LGPL 2.1)" },
        { "libdbus-1-dev", "D-Bus (GPL 2 or AFL 2.1)" },
        { "libx11-dev", "X11 (MIT)" },
        { "libxext-dev", "X11 (MIT)" },
        { "libxinerama-dev", "X11 (MIT)" },
        { "libxrandr-dev", "X11 (MIT)" },
        { "libxcursor-dev", "X11 (MIT)" },
        { "libxcomposite-dev", "X11 (MIT)" },
        { "libfreetype-dev", "FreeType (FreeType licence)" },
        { "fonts-dejavu-core", "DejaVu (" },
        { "fonts-roboto-unhinted", "Roboto (Apache 2.0)" },
        { "libpng-dev", "libpng (libpng licence)" },
        { "libjpeg-dev", "libjpeg-turbo (BSD)" },
        { "zlib1g-dev", "zlib (zlib licence)" },
        { "libflac-dev", "FLAC, Vorbis and Ogg (BSD)" },
        { "libvorbis-dev", "FLAC, Vorbis and Ogg (BSD)" },
        { "libogg-dev", "FLAC, Vorbis and Ogg (BSD)" },
        { "libavformat-dev", "FFmpeg (LGPL 2.1 or GPL 2)" },
        { "libavcodec-dev", "FFmpeg (LGPL 2.1 or GPL 2)" },
        { "libavutil-dev", "FFmpeg (LGPL 2.1 or GPL 2)" },
        { "libfftw3-dev", "FFTW 3 (GPL 2)" },
        { "libsqlite3-dev", "SQLite (public domain)" },
        { "libtag1-dev", "TagLib (LGPL 2.1)" },
        { "libarchive-dev", "libarchive (BSD)" },
        { "angelscript-dev", "AngelScript (zlib)" },
    };
    const juce::SharedResourcePointer<DefaultLook> look;
    const auto page = AboutPreferencesPage().text();
    EXPECT_TRUE (page.contains ("GNU General Public License, version 3")) << page;

    juce::StringArray lines;
    juce::File (PX_PACKAGES).readLines (lines);
    auto isBuild = false;
    auto packages = 0;
    for (const auto& line : lines)
    {
        if (line.startsWith ("["))
            isBuild = line == "[build]";
        else if (isBuild && line.isNotEmpty() && !line.startsWith ("#"))
        {
            const auto* const row =
                std::find_if (std::begin (table), std::end (table),
                              [&line] (const auto& each) { return line == each.package; });
            ASSERT_NE (row, std::end (table)) << line << ": name it on the page, and in this table";
            EXPECT_TRUE (page.contains (row->words)) << line;
            ++packages;
        }
    }
    EXPECT_EQ (packages, static_cast<int> (std::size (table)));
}
